// StoredNames: the names and numbers in stores, mails and catalogues.
//
// They are formats: a change makes existing stores, mails or catalogues unreadable. That spellings differ
// (Email, EMail) is part of the formats.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace Platform {

// Keys of the registry, without their hive.
namespace RegistryPath {
inline constexpr StringView kMailBoxes = u"Software\\Ostrand Software\\Email\\MailBoxes";  // machine-wide
inline constexpr StringView kTalvane = u"Software\\Ostrand Software\\Talvane\\4.0";        // the user's
inline constexpr StringView kOutbound = u"Software\\Ostrand Software\\Talvane\\4.0\\Email";
inline constexpr StringView kOutboundKey = u"Email";  // the last name of kOutbound
inline constexpr StringView kMapiProfiles = u"Software\\Microsoft\\Windows Messaging Subsystem\\Profiles";
inline constexpr StringView kMapiProfilesOfNt =
    u"Software\\Microsoft\\Windows NT\\CurrentVersion\\Windows Messaging Subsystem\\Profiles";
inline constexpr StringView kClasses = u"Software\\Classes";
}  // namespace RegistryPath

// Keys below RegistryPath::kClasses, and two of their values: the registration of the libraries' classes.
namespace ClassesKey {
inline constexpr StringView kClassId = u"CLSID";
inline constexpr StringView kInterface = u"Interface";
inline constexpr StringView kTypeLibrary = u"TypeLib";
inline constexpr StringView kServer = u"InprocServer32";
inline constexpr StringView kThreadingModel = u"ThreadingModel";  // a value of kServer
inline constexpr StringView kProgrammaticName = u"ProgID";
inline constexpr StringView kVersion = u"VERSION";
inline constexpr StringView kHelpFolder = u"HELPDIR";
inline constexpr StringView kFile = u"File";  // a value of a type library's version
}  // namespace ClassesKey

// Values of a mailbox's key below RegistryPath::kMailBoxes.
namespace MailBoxValue {
inline constexpr StringView kProjectPath = u"TVSFilePath";
inline constexpr StringView kUserId = u"DBUID";
inline constexpr StringView kPassword = u"DBPWD";  // as the encoder of ComponentSecurity writes it
}  // namespace MailBoxValue

// The settings of sent mail: values of RegistryPath::kOutbound and keys of a project file's section.
namespace SendingValue {
inline constexpr StringView kEnabled = u"DiscussionEmailEnabled";  // "True" or "False"; only in the registry
inline constexpr StringView kTransportId = u"TransportID";         // a TransportId in decimal
inline constexpr StringView kMapiProfile = u"MAPIProfile";
inline constexpr StringView kHostName = u"SMTPHostName";
inline constexpr StringView kAddress = u"EMailAddress";
inline constexpr StringView kRealName = u"RealName";
inline constexpr StringView kProfileCommand = u"Command";  // of a profile's key: what sends its mail
}  // namespace SendingValue

namespace TransportId {
inline constexpr std::int32_t kMapi = 1;
inline constexpr std::int32_t kSmtp = 2;
}  // namespace TransportId

// The first section of a project file, and its keys.
namespace ProjectHeader {
inline constexpr StringView kSection = u"Project";
inline constexpr StringView kFormat = u"Format";
inline constexpr StringView kFormatNumber = u"1";  // the value of kFormat that this version reads and writes
inline constexpr StringView kName = u"Name";
inline constexpr StringView kDatabase = u"Database";  // a path relative to the project file
}  // namespace ProjectHeader

// The section of a project file with the project's e-mail settings. Names of sections match in any case.
namespace ProjectSection {
inline constexpr StringView kWritten = u"EMail";
inline constexpr StringView kRead = u"Email";
}  // namespace ProjectSection

// The Message-ID of a notification that this host sends begins with this text after its "<".
namespace Notice {
inline constexpr StringView kMessageIdStart = u"talvane.notice.";
}  // namespace Notice

// The numbers of the catalogues' texts. Other texts are appended to some: a reason to kSettingsRefused,
// kSectionNotRemoved and kRecordNotRemoved to kNotDeleted.
namespace TextNumber {
inline constexpr std::int32_t kHostCaption = 1000;
inline constexpr std::int32_t kProfileCaption = 1001;
inline constexpr std::int32_t kTransportCaption = 1002;
inline constexpr std::int32_t kAddressCaption = 1003;
inline constexpr std::int32_t kRealNameCaption = 1004;
inline constexpr std::int32_t kEnableCaption = 1005;
inline constexpr std::int32_t kPasswordCaption = 1006;
inline constexpr std::int32_t kProjectPathCaption = 1007;
inline constexpr std::int32_t kUserNameCaption = 1008;
inline constexpr std::int32_t kValueMissing = 2057;
inline constexpr std::int32_t kCutMarker = 2166;
inline constexpr std::int32_t kOkCaption = 8000;
inline constexpr std::int32_t kCancelCaption = 8001;
inline constexpr std::int32_t kHelpCaption = 8002;
inline constexpr std::int32_t kBrowseCaption = 8003;
inline constexpr std::int32_t kBoxTitle = 9000;  // title of message boxes and of the outbound dialog
inline constexpr std::int32_t kFileDialogTitle = 9001;
inline constexpr std::int32_t kInboundTitle = 9002;
inline constexpr std::int32_t kMapiName = 9100;
inline constexpr std::int32_t kSmtpName = 9101;
inline constexpr std::int32_t kOutboundSmtpName = 9102;
inline constexpr std::int32_t kMailboxNotAllowed = 10000;
inline constexpr std::int32_t kLogonRefused = 10001;
inline constexpr std::int32_t kNoDiscussionSubject = 10005;
inline constexpr std::int32_t kMailNotice = 10006;  // in every failure text of a mail
inline constexpr std::int32_t kNoSuchDiscussion = 10007;
inline constexpr std::int32_t kRecordNotStored = 10011;
inline constexpr std::int32_t kRecordNotEntered = 10012;
inline constexpr std::int32_t kKeyNotAdded = 10013;
inline constexpr std::int32_t kHiveRefused = 10014;
inline constexpr std::int32_t kKeyNotReached = 10015;
inline constexpr std::int32_t kPathRefused = 10016;
inline constexpr std::int32_t kMailboxWithoutProfile = 10018;
inline constexpr std::int32_t kSettingsRefused = 10019;
inline constexpr std::int32_t kMailboxWithoutAddress = 10020;
inline constexpr std::int32_t kMailboxWithoutHost = 10021;
inline constexpr std::int32_t kTransportUnknown = 10022;
inline constexpr std::int32_t kNoRegValue = 10024;
inline constexpr std::int32_t kRecordUnreadable = 10029;
inline constexpr std::int32_t kProjectNotOpened = 10030;
inline constexpr std::int32_t kSenderUnknown = 10032;
inline constexpr std::int32_t kActingUserRefused = 10033;
inline constexpr std::int32_t kValueNotWritten = 10034;
inline constexpr std::int32_t kMailboxesNotListed = 10036;
inline constexpr std::int32_t kMailboxExists = 10037;
inline constexpr std::int32_t kNoUserId = 10039;
inline constexpr std::int32_t kNoProfile = 10040;
inline constexpr std::int32_t kNoAddress = 10041;
inline constexpr std::int32_t kNoHostName = 10042;
inline constexpr std::int32_t kNoProfilesOnMachine = 10043;
inline constexpr std::int32_t kComponentMissing = 10044;
inline constexpr std::int32_t kConfiguringFailed = 10045;
inline constexpr std::int32_t kNoSessionGiven = 10046;
inline constexpr std::int32_t kNotDeleted = 10047;
inline constexpr std::int32_t kProjectFileUnreadable = 10048;
inline constexpr std::int32_t kKeyNotDeleted = 10050;
inline constexpr std::int32_t kSettingsUnreadable = 10051;
inline constexpr std::int32_t kNoUserInSession = 10052;
inline constexpr std::int32_t kNoSendLogon = 10053;
inline constexpr std::int32_t kNoSession = 10054;
inline constexpr std::int32_t kRecordNotRestored = 10055;
inline constexpr std::int32_t kSettingsNotRestored = 10056;
inline constexpr std::int32_t kSectionNotRemoved = 10058;
inline constexpr std::int32_t kRecordNotRemoved = 10059;
inline constexpr std::int32_t kNoSender = 10060;
inline constexpr std::int32_t kNoUsers = 10061;
inline constexpr std::int32_t kMailNotAccepted = 10062;
inline constexpr std::int32_t kHelpTitle = 12000;
inline constexpr std::int32_t kHelpPageMissing = 12001;
inline constexpr std::int32_t kAllFiles = 12002;
inline constexpr std::int32_t kFilesOfKind = 12003;
inline constexpr std::int32_t kNoDisplay = 12004;
inline constexpr std::int32_t kProbeNotRun = 12005;
inline constexpr std::int32_t kDisplayRefused = 12006;

// From here on, texts of the programs and libraries around the component, which have a catalogue of their
// own, TvMailRes: see ProgramTexts.h, ReasonTexts.h and NoticeTexts.h.
inline constexpr std::int32_t kFirstOfPrograms = 20000;

// A text of a catalogue, and the number of its places for arguments.
struct CatalogueText {
  std::int32_t Number;
  int Arguments = 0;
};

inline constexpr CatalogueText kSharedTexts[] = {{kCutMarker}};

inline constexpr CatalogueText kDesktopTexts[] = {
    {kHelpTitle, 1}, {kHelpPageMissing, 2}, {kAllFiles},         {kFilesOfKind, 1},
    {kNoDisplay},    {kProbeNotRun, 1},     {kDisplayRefused, 1}};

inline constexpr CatalogueText kComponentTexts[] = {{kHostCaption},
                                                    {kProfileCaption},
                                                    {kTransportCaption},
                                                    {kAddressCaption},
                                                    {kRealNameCaption},
                                                    {kEnableCaption},
                                                    {kPasswordCaption},
                                                    {kProjectPathCaption},
                                                    {kUserNameCaption},
                                                    {kValueMissing},
                                                    {kOkCaption},
                                                    {kCancelCaption},
                                                    {kHelpCaption},
                                                    {kBrowseCaption},
                                                    {kBoxTitle},
                                                    {kFileDialogTitle},
                                                    {kInboundTitle},
                                                    {kMapiName},
                                                    {kSmtpName},
                                                    {kOutboundSmtpName},
                                                    {kMailboxNotAllowed},
                                                    {kLogonRefused},
                                                    {kNoDiscussionSubject},
                                                    {kMailNotice},
                                                    {kNoSuchDiscussion},
                                                    {kRecordNotStored},
                                                    {kRecordNotEntered, 1},
                                                    {kKeyNotAdded, 1},
                                                    {kHiveRefused, 1},
                                                    {kKeyNotReached},
                                                    {kPathRefused, 1},
                                                    {kMailboxWithoutProfile},
                                                    {kSettingsRefused},
                                                    {kMailboxWithoutAddress},
                                                    {kMailboxWithoutHost},
                                                    {kTransportUnknown},
                                                    {kNoRegValue},
                                                    {kRecordUnreadable},
                                                    {kProjectNotOpened, 1},
                                                    {kSenderUnknown},
                                                    {kActingUserRefused},
                                                    {kValueNotWritten},
                                                    {kMailboxesNotListed},
                                                    {kMailboxExists},
                                                    {kNoUserId},
                                                    {kNoProfile},
                                                    {kNoAddress},
                                                    {kNoHostName},
                                                    {kNoProfilesOnMachine},
                                                    {kComponentMissing, 1},
                                                    {kConfiguringFailed},
                                                    {kNoSessionGiven},
                                                    {kNotDeleted},
                                                    {kProjectFileUnreadable},
                                                    {kKeyNotDeleted, 1},
                                                    {kSettingsUnreadable, 1},
                                                    {kNoUserInSession},
                                                    {kNoSendLogon},
                                                    {kNoSession},
                                                    {kRecordNotRestored},
                                                    {kSettingsNotRestored},
                                                    {kSectionNotRemoved},
                                                    {kRecordNotRemoved},
                                                    {kNoSender},
                                                    {kNoUsers},
                                                    {kMailNotAccepted}};
}  // namespace TextNumber

}  // namespace Platform
