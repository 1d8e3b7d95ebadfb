// ProgramTexts: the numbers of the texts of the programs and libraries around the component, but for those of
// ReasonTexts.h and NoticeTexts.h. resources/TvMailRes.en.txt has them in English, with the meaning of their
// arguments.
#pragma once

#include <cstdint>

#include "platform/StoredNames.h"

namespace Platform::TextNumber {

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
inline constexpr std::int32_t kTooManyParts = 20060;
inline constexpr std::int32_t kPartsTooDeep = 20061;
inline constexpr std::int32_t kHeaderFieldTooLong = 20062;
inline constexpr std::int32_t kHeaderTooLarge = 20063;
inline constexpr std::int32_t kTooManyHeaderFields = 20064;
inline constexpr std::int32_t kTooManyFields = 20065;
inline constexpr std::int32_t kTooManyFromFields = 20066;
inline constexpr std::int32_t kFromTooLong = 20067;
inline constexpr std::int32_t kAddressesTooDeep = 20068;
inline constexpr std::int32_t kSubjectTooLong = 20069;
inline constexpr std::int32_t kContentFieldTooLong = 20070;
inline constexpr std::int32_t kTooManyComments = 20071;
inline constexpr std::int32_t kTooManyEncodedWords = 20072;
inline constexpr std::int32_t kTooManyFieldParameters = 20073;
inline constexpr std::int32_t kTooManyParameters = 20074;
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
inline constexpr std::int32_t kLibraryMissing = 20188;
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

inline constexpr CatalogueText kProgramTexts[] = {
    {kFormIntroduction},
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
    {kTooManyParts, 1},
    {kPartsTooDeep, 1},
    {kHeaderFieldTooLong, 1},
    {kHeaderTooLarge, 1},
    {kTooManyHeaderFields, 1},
    {kTooManyFields, 1},
    {kTooManyFromFields, 1},
    {kFromTooLong, 1},
    {kAddressesTooDeep, 1},
    {kSubjectTooLong, 1},
    {kContentFieldTooLong, 1},
    {kTooManyComments, 1},
    {kTooManyEncodedWords, 1},
    {kTooManyFieldParameters, 1},
    {kTooManyParameters, 1},
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
    {kLibraryMissing, 2},
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
    {kConfigurationKept},
};

}  // namespace Platform::TextNumber
