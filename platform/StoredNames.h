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

// Texts of the programs and libraries around the component. They have a catalogue of their own, TvMailRes.
inline constexpr std::int32_t kFirstOfPrograms = 20000;
inline constexpr std::int32_t kFormIntroduction = 20000;
inline constexpr std::int32_t kAsTyped = 20001;
inline constexpr std::int32_t kFixedField = 20002;
inline constexpr std::int32_t kDisabledField = 20003;
inline constexpr std::int32_t kTextCut = 20004;
inline constexpr std::int32_t kYes = 20005;
inline constexpr std::int32_t kNo = 20006;
inline constexpr std::int32_t kAnswerYesOrNo = 20007;
inline constexpr std::int32_t kEmptyList = 20008;
inline constexpr std::int32_t kNumberPrompt = 20009;
inline constexpr std::int32_t kAnswerFromList = 20010;
inline constexpr std::int32_t kEditAgain = 20011;
inline constexpr std::int32_t kNotUtf8 = 20012;
inline constexpr std::int32_t kHelpMissing = 20013;
inline constexpr std::int32_t kEntryWithControl = 20014;
inline constexpr std::int32_t kSubjectOfNoReply = 20020;
inline constexpr std::int32_t kReplyTooLarge = 20021;
inline constexpr std::int32_t kEncryptedMail = 20022;
inline constexpr std::int32_t kMailWithoutText = 20023;
inline constexpr std::int32_t kNoTextAboveMarker = 20024;
inline constexpr std::int32_t kTextBelowMarkerOnly = 20025;
inline constexpr std::int32_t kRefusedUnread = 20026;
inline constexpr std::int32_t kPathNotWhole = 20030;
inline constexpr std::int32_t kFileMissing = 20031;
inline constexpr std::int32_t kFileIsFolder = 20032;
inline constexpr std::int32_t kFileNotOrdinary = 20033;
inline constexpr std::int32_t kFileTooLarge = 20034;
inline constexpr std::int32_t kFileUnreadable = 20035;
inline constexpr std::int32_t kPathEmpty = 20038;
inline constexpr std::int32_t kContentNotUtf8 = 20040;
inline constexpr std::int32_t kNoProjectSection = 20041;
inline constexpr std::int32_t kNoProjectFormat = 20042;
inline constexpr std::int32_t kProjectFormatUnknown = 20043;
inline constexpr std::int32_t kSettingsCancelled = 20050;
inline constexpr std::int32_t kMailboxCancelled = 20051;
inline constexpr std::int32_t kDialogNotOpened = 20052;
inline constexpr std::int32_t kDialogOnTerminal = 20053;
inline constexpr std::int32_t kStrangerRefused = 20100;
inline constexpr std::int32_t kUserTakesNoMail = 20101;
inline constexpr std::int32_t kMailWithoutSender = 20102;
inline constexpr std::int32_t kAutomaticField = 20103;
inline constexpr std::int32_t kNoReturnAddress = 20104;
inline constexpr std::int32_t kMailingList = 20105;
inline constexpr std::int32_t kOwnNotice = 20106;
inline constexpr std::int32_t kOwnAddress = 20107;
inline constexpr std::int32_t kFromAmbiguous = 20110;
inline constexpr std::int32_t kNotAuthenticated = 20111;
inline constexpr std::int32_t kAuthenticationFailed = 20112;
inline constexpr std::int32_t kNoAuthenticationPass = 20113;
inline constexpr std::int32_t kMailBeyondSizeLimit = 20120;
inline constexpr std::int32_t kHeldIdUnknown = 20130;
inline constexpr std::int32_t kHeldIdAmbiguous = 20131;
inline constexpr std::int32_t kHeldIdMalformed = 20132;
inline constexpr std::int32_t kHeldIdsMissing = 20133;
inline constexpr std::int32_t kHeldGone = 20134;
inline constexpr std::int32_t kNothingHeld = 20135;
inline constexpr std::int32_t kHeldNotRemoved = 20136;
inline constexpr std::int32_t kHeldAllWithIds = 20137;
inline constexpr std::int32_t kMailboxMissing = 20150;
inline constexpr std::int32_t kMailNotHeld = 20151;
inline constexpr std::int32_t kNothingStored = 20152;
inline constexpr std::int32_t kSourceUnreachable = 20160;
inline constexpr std::int32_t kSourceHostUnknown = 20161;
inline constexpr std::int32_t kSourceTimeout = 20162;
inline constexpr std::int32_t kSourceClosed = 20163;
inline constexpr std::int32_t kCertificateRefused = 20164;
inline constexpr std::int32_t kTlsFailed = 20165;
inline constexpr std::int32_t kNoStartTls = 20166;
inline constexpr std::int32_t kSourceLogonRefused = 20167;
inline constexpr std::int32_t kAnswerNotUnderstood = 20168;
inline constexpr std::int32_t kAnswerTooLarge = 20169;
inline constexpr std::int32_t kMailboxNotOpened = 20170;
inline constexpr std::int32_t kMailboxReadOnly = 20171;
inline constexpr std::int32_t kRequestRefused = 20172;
inline constexpr std::int32_t kPasswordFileOpen = 20173;
inline constexpr std::int32_t kPasswordFileOwner = 20174;
inline constexpr std::int32_t kPasswordFileContent = 20175;
inline constexpr std::int32_t kNoMaildir = 20176;
inline constexpr std::int32_t kMaildirDenied = 20177;
inline constexpr std::int32_t kMailNotMoved = 20178;
inline constexpr std::int32_t kNoUniqueIds = 20179;
inline constexpr std::int32_t kMailBeyondLimit = 20180;
inline constexpr std::int32_t kNoOrdinaryMail = 20181;
inline constexpr std::int32_t kMailUnreadable = 20182;
inline constexpr std::int32_t kSourceSettingMissing = 20183;
inline constexpr std::int32_t kSourceSettingWrong = 20184;
inline constexpr std::int32_t kCaFileUnreadable = 20185;
inline constexpr std::int32_t kSourceInterrupted = 20186;
inline constexpr std::int32_t kSettledMailsDamaged = 20187;
inline constexpr std::int32_t kEtpanMissing = 20188;
inline constexpr std::int32_t kSettingUnknown = 20190;
inline constexpr std::int32_t kSettingNotText = 20191;
inline constexpr std::int32_t kSettingNotNumber = 20192;
inline constexpr std::int32_t kSettingNotListed = 20193;
inline constexpr std::int32_t kSettingNotUsable = 20194;
inline constexpr std::int32_t kSettingNotPath = 20195;
inline constexpr std::int32_t kSettingMissing = 20196;
inline constexpr std::int32_t kSettingWithoutSource = 20197;
inline constexpr std::int32_t kSettingNotForSource = 20198;
inline constexpr std::int32_t kMoveToUnused = 20199;
inline constexpr std::int32_t kPasswordFileMissing = 20200;
inline constexpr std::int32_t kSectionUnknown = 20202;
inline constexpr std::int32_t kMailboxTwice = 20203;
inline constexpr std::int32_t kNoToml = 20204;
inline constexpr std::int32_t kConfigurationMissing = 20205;
inline constexpr std::int32_t kConfigurationOpen = 20206;
inline constexpr std::int32_t kNoQueues = 20207;
inline constexpr std::int32_t kMailboxNotInFile = 20208;
inline constexpr std::int32_t kMailboxWithoutSource = 20209;
inline constexpr std::int32_t kMailboxInUse = 20210;
inline constexpr std::int32_t kFolderDenied = 20211;
inline constexpr std::int32_t kRecordIncomplete = 20213;
inline constexpr std::int32_t kConfigurationKept = 20214;

// A text of a catalogue, and the number of its places for arguments.
struct CatalogueText {
  std::int32_t Number;
  int Arguments = 0;
};

inline constexpr CatalogueText kProgramTexts[] = {{kFormIntroduction},
                                                  {kAsTyped},
                                                  {kFixedField},
                                                  {kDisabledField},
                                                  {kTextCut, 1},
                                                  {kYes},
                                                  {kNo},
                                                  {kAnswerYesOrNo, 2},
                                                  {kEmptyList},
                                                  {kNumberPrompt},
                                                  {kAnswerFromList},
                                                  {kEditAgain},
                                                  {kNotUtf8},
                                                  {kHelpMissing},
                                                  {kEntryWithControl},
                                                  {kSubjectOfNoReply},
                                                  {kReplyTooLarge},
                                                  {kEncryptedMail},
                                                  {kMailWithoutText},
                                                  {kNoTextAboveMarker, 1},
                                                  {kTextBelowMarkerOnly, 1},
                                                  {kRefusedUnread, 1},
                                                  {kPathNotWhole, 1},
                                                  {kFileMissing, 1},
                                                  {kFileIsFolder, 1},
                                                  {kFileNotOrdinary, 1},
                                                  {kFileTooLarge, 1},
                                                  {kFileUnreadable, 2},
                                                  {kPathEmpty},
                                                  {kContentNotUtf8},
                                                  {kNoProjectSection},
                                                  {kNoProjectFormat},
                                                  {kProjectFormatUnknown, 1},
                                                  {kSettingsCancelled},
                                                  {kMailboxCancelled},
                                                  {kDialogNotOpened},
                                                  {kDialogOnTerminal, 1},
                                                  {kStrangerRefused, 1},
                                                  {kUserTakesNoMail, 1},
                                                  {kMailWithoutSender},
                                                  {kAutomaticField, 1},
                                                  {kNoReturnAddress},
                                                  {kMailingList, 1},
                                                  {kOwnNotice},
                                                  {kOwnAddress, 1},
                                                  {kFromAmbiguous},
                                                  {kNotAuthenticated, 1},
                                                  {kAuthenticationFailed, 1},
                                                  {kNoAuthenticationPass, 1},
                                                  {kMailBeyondSizeLimit, 2},
                                                  {kHeldIdUnknown, 1},
                                                  {kHeldIdAmbiguous, 1},
                                                  {kHeldIdMalformed, 1},
                                                  {kHeldIdsMissing},
                                                  {kHeldGone, 1},
                                                  {kNothingHeld},
                                                  {kHeldNotRemoved, 2},
                                                  {kHeldAllWithIds},
                                                  {kMailboxMissing, 1},
                                                  {kMailNotHeld, 2},
                                                  {kNothingStored},
                                                  {kSourceUnreachable, 2},
                                                  {kSourceHostUnknown, 2},
                                                  {kSourceTimeout, 1},
                                                  {kSourceClosed, 1},
                                                  {kCertificateRefused, 2},
                                                  {kTlsFailed, 2},
                                                  {kNoStartTls, 1},
                                                  {kSourceLogonRefused, 2},
                                                  {kAnswerNotUnderstood, 2},
                                                  {kAnswerTooLarge, 1},
                                                  {kMailboxNotOpened, 2},
                                                  {kMailboxReadOnly, 1},
                                                  {kRequestRefused, 2},
                                                  {kPasswordFileOpen, 1},
                                                  {kPasswordFileOwner, 2},
                                                  {kPasswordFileContent, 1},
                                                  {kNoMaildir, 2},
                                                  {kMaildirDenied, 2},
                                                  {kMailNotMoved, 2},
                                                  {kNoUniqueIds, 1},
                                                  {kMailBeyondLimit, 1},
                                                  {kNoOrdinaryMail},
                                                  {kMailUnreadable, 1},
                                                  {kSourceSettingMissing, 1},
                                                  {kSourceSettingWrong, 2},
                                                  {kCaFileUnreadable, 2},
                                                  {kSourceInterrupted},
                                                  {kSettledMailsDamaged, 2},
                                                  {kEtpanMissing, 2},
                                                  {kSettingUnknown, 2},
                                                  {kSettingNotText, 1},
                                                  {kSettingNotNumber, 2},
                                                  {kSettingNotListed, 2},
                                                  {kSettingNotUsable, 1},
                                                  {kSettingNotPath, 1},
                                                  {kSettingMissing, 1},
                                                  {kSettingWithoutSource, 1},
                                                  {kSettingNotForSource, 2},
                                                  {kMoveToUnused},
                                                  {kPasswordFileMissing, 2},
                                                  {kSectionUnknown, 1},
                                                  {kMailboxTwice, 2},
                                                  {kNoToml, 1},
                                                  {kConfigurationMissing, 1},
                                                  {kConfigurationOpen, 1},
                                                  {kNoQueues, 1},
                                                  {kMailboxNotInFile, 2},
                                                  {kMailboxWithoutSource, 1},
                                                  {kMailboxInUse, 2},
                                                  {kFolderDenied, 2},
                                                  {kRecordIncomplete, 1},
                                                  {kConfigurationKept}};

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
