// ReasonTexts: the numbers of the texts that tell why a file, a store, a project or an entry is refused.
// resources/TvMailRes.en.txt has them in English, with the meaning of their arguments.
#pragma once

#include <cstdint>

#include "platform/StoredNames.h"

namespace Platform::TextNumber {

// Why a system call failed, as the system's errno says.
inline constexpr std::int32_t kNoSpaceLeft = 21000;
inline constexpr std::int32_t kPermissionMissing = 21001;
inline constexpr std::int32_t kReadOnlyDisk = 21002;
inline constexpr std::int32_t kNoSuchFile = 21003;
inline constexpr std::int32_t kNotAFolder = 21004;
inline constexpr std::int32_t kIsAFolder = 21005;
inline constexpr std::int32_t kDiskFault = 21006;
inline constexpr std::int32_t kOverFileSize = 21007;
inline constexpr std::int32_t kOverFileSizeLimit = 21008;
inline constexpr std::int32_t kOverQuota = 21009;
inline constexpr std::int32_t kInUse = 21010;
inline constexpr std::int32_t kTooManyFilesOpen = 21011;
inline constexpr std::int32_t kNameTooLong = 21012;
inline constexpr std::int32_t kNotEnoughMemory = 21013;

// Why a file can't be used.
inline constexpr std::int32_t kPathMissing = 21020;
inline constexpr std::int32_t kPathTaken = 21021;
inline constexpr std::int32_t kNotReached = 21022;
inline constexpr std::int32_t kNotWritten = 21023;
inline constexpr std::int32_t kNotOpened = 21024;
inline constexpr std::int32_t kNotCreated = 21025;
inline constexpr std::int32_t kFolderTakesNoFile = 21026;
inline constexpr std::int32_t kOwnerNotSet = 21027;
inline constexpr std::int32_t kNotSynced = 21028;
inline constexpr std::int32_t kNotReplaced = 21029;
inline constexpr std::int32_t kFolderNotFile = 21030;
inline constexpr std::int32_t kNoOrdinaryFile = 21031;
inline constexpr std::int32_t kMoreBytesThanAllowed = 21032;
inline constexpr std::int32_t kWouldBeTooLarge = 21033;
inline constexpr std::int32_t kNotReleased = 21034;
inline constexpr std::int32_t kNotSaved = 21035;
inline constexpr std::int32_t kSavedUnsafely = 21036;
inline constexpr std::int32_t kHomeIsRelative = 21037;
inline constexpr std::int32_t kNoHomeFolder = 21038;

// Why a database or the registry can't be used.
inline constexpr std::int32_t kNoDatabase = 21040;
inline constexpr std::int32_t kDatabaseDamaged = 21041;
inline constexpr std::int32_t kDatabaseInUse = 21042;
inline constexpr std::int32_t kDatabaseReadOnly = 21043;
inline constexpr std::int32_t kDatabaseDiskFull = 21044;
inline constexpr std::int32_t kDatabaseNotOpened = 21045;
inline constexpr std::int32_t kDatabaseFailed = 21046;
inline constexpr std::int32_t kDatabaseWithoutItsContent = 21047;
inline constexpr std::int32_t kNoRegistry = 21048;
inline constexpr std::int32_t kRegistryNoFile = 21049;
inline constexpr std::int32_t kRegistryEmpty = 21050;
inline constexpr std::int32_t kRegistryOfAnotherKind = 21051;
inline constexpr std::int32_t kRegistryFormatUnknown = 21052;
inline constexpr std::int32_t kRegistryOpenToOthers = 21053;
inline constexpr std::int32_t kRegistryOfAnotherUser = 21054;

// Why a project can't be opened, created or changed.
inline constexpr std::int32_t kNoProjectPath = 21060;
inline constexpr std::int32_t kNoProjectFile = 21061;
inline constexpr std::int32_t kNoProperName = 21062;
inline constexpr std::int32_t kProjectFileTooNew = 21063;
inline constexpr std::int32_t kProjectFileDamaged = 21064;
inline constexpr std::int32_t kProjectDatabaseMissing = 21065;
inline constexpr std::int32_t kProjectDatabaseNoFile = 21066;
inline constexpr std::int32_t kProjectDatabaseForeign = 21067;
inline constexpr std::int32_t kProjectDatabaseTooNew = 21068;
inline constexpr std::int32_t kProjectDatabaseDamaged = 21069;
inline constexpr std::int32_t kWrongLogon = 21070;
inline constexpr std::int32_t kProjectFileExists = 21071;
inline constexpr std::int32_t kProjectFolderMissing = 21072;
inline constexpr std::int32_t kUserExists = 21073;
inline constexpr std::int32_t kProjectName = 21074;
inline constexpr std::int32_t kUserName = 21075;
inline constexpr std::int32_t kDiscussionTitle = 21076;
inline constexpr std::int32_t kNameEmpty = 21077;
inline constexpr std::int32_t kNameTooLarge = 21078;
inline constexpr std::int32_t kNameWithControl = 21079;
inline constexpr std::int32_t kNameWithBackslash = 21080;
inline constexpr std::int32_t kPasswordEmpty = 21081;
inline constexpr std::int32_t kPasswordTooLong = 21082;
inline constexpr std::int32_t kPasswordCharacters = 21083;
inline constexpr std::int32_t kPasswordBlanks = 21084;
inline constexpr std::int32_t kPasswordHashDamaged = 21085;
inline constexpr std::int32_t kProjectDatabaseNotUpgraded = 21086;

// Why an e-mail address is refused.
inline constexpr std::int32_t kAddressRefused = 21090;
inline constexpr std::int32_t kAddressWithControl = 21091;
inline constexpr std::int32_t kAddressWithoutAt = 21092;
inline constexpr std::int32_t kAddressTooLong = 21093;
inline constexpr std::int32_t kLocalPartMissing = 21094;
inline constexpr std::int32_t kLocalPartTooLong = 21095;
inline constexpr std::int32_t kLocalPartUnescaped = 21096;
inline constexpr std::int32_t kLocalPartUnquoted = 21097;
inline constexpr std::int32_t kDomainMissing = 21098;
inline constexpr std::int32_t kDomainLiteral = 21099;
inline constexpr std::int32_t kNoDomain = 21100;

// Why a user can't be changed, or a reply not be stored.
inline constexpr std::int32_t kUserUnknown = 21105;
inline constexpr std::int32_t kOwnerNotRemoved = 21106;
inline constexpr std::int32_t kNoAddressForMail = 21107;
inline constexpr std::int32_t kLanguageRefused = 21108;
inline constexpr std::int32_t kDiscussionUnknown = 21109;
inline constexpr std::int32_t kReplyEmpty = 21110;
inline constexpr std::int32_t kReplyTooLong = 21111;
inline constexpr std::int32_t kReplyWithNul = 21112;

// Why options or input of a command are refused.
inline constexpr std::int32_t kArgumentNotUtf8 = 21120;
inline constexpr std::int32_t kArgumentWithControl = 21121;
inline constexpr std::int32_t kSettingWithControl = 21122;
inline constexpr std::int32_t kFileNameEmpty = 21123;
inline constexpr std::int32_t kMailboxUnknown = 21124;
inline constexpr std::int32_t kStoreMissing = 21125;
inline constexpr std::int32_t kSetUpIncomplete = 21126;
inline constexpr std::int32_t kOptionTooLong = 21127;
inline constexpr std::int32_t kOptionLocked = 21128;
inline constexpr std::int32_t kProjectPathWithBlanks = 21129;
inline constexpr std::int32_t kUserNameWithBlanks = 21130;
inline constexpr std::int32_t kPasswordWithBlanks = 21131;
inline constexpr std::int32_t kProjectFixed = 21132;
inline constexpr std::int32_t kProjectOptionMissing = 21133;
inline constexpr std::int32_t kUserOptionMissing = 21134;
inline constexpr std::int32_t kUserOptionEmpty = 21135;
inline constexpr std::int32_t kNothingChanged = 21136;
inline constexpr std::int32_t kMailboxBound = 21137;
inline constexpr std::int32_t kMailboxIncomplete = 21138;
inline constexpr std::int32_t kMailboxNotStored = 21139;
inline constexpr std::int32_t kMailboxKept = 21140;
inline constexpr std::int32_t kNoMapiProfileYet = 21141;
inline constexpr std::int32_t kProfileNeedsMapi = 21142;
inline constexpr std::int32_t kProfileUnknown = 21143;
inline constexpr std::int32_t kOptionNeedsSmtp = 21144;
inline constexpr std::int32_t kStoredTextWouldBeLost = 21145;
inline constexpr std::int32_t kOutboundDisabled = 21146;
inline constexpr std::int32_t kSettingsNotSaved = 21147;
inline constexpr std::int32_t kProfileNameInvalid = 21148;
inline constexpr std::int32_t kOptionsBeforeSubcommand = 21149;
inline constexpr std::int32_t kInputEnded = 21150;
inline constexpr std::int32_t kTransportNotGiven = 21151;
inline constexpr std::int32_t kTransportOptionMissing = 21152;
inline constexpr std::int32_t kSmtpOptionsWithMapi = 21153;
inline constexpr std::int32_t kMapiOptionWithSmtp = 21154;
inline constexpr std::int32_t kProfileOptionMissing = 21155;
inline constexpr std::int32_t kHostOptionMissing = 21156;
inline constexpr std::int32_t kAddressOptionMissing = 21157;
inline constexpr std::int32_t kNoChangeGiven = 21158;
inline constexpr std::int32_t kMailboxKeepsPassword = 21159;
inline constexpr std::int32_t kMailboxKeepsUser = 21160;
inline constexpr std::int32_t kExportExists = 21161;
inline constexpr std::int32_t kExportForeign = 21162;
inline constexpr std::int32_t kPageDiscussions = 21163;
inline constexpr std::int32_t kPageReplies = 21164;
inline constexpr std::int32_t kPageAllDiscussions = 21165;
inline constexpr std::int32_t kNothingPosted = 21166;
inline constexpr std::int32_t kReplyNotUtf8 = 21167;
inline constexpr std::int32_t kEditorFailed = 21168;
inline constexpr std::int32_t kTextKept = 21169;

// Why a source of deliver can't be read.
inline constexpr std::int32_t kLargerThanMegabytes = 21170;
inline constexpr std::int32_t kNoMbox = 21171;
inline constexpr std::int32_t kStandardInputClosed = 21172;
inline constexpr std::int32_t kFolderNoMaildir = 21173;

// How a password is given.
inline constexpr std::int32_t kPasswordFileBroken = 21180;
inline constexpr std::int32_t kPasswordFileTooLong = 21181;
inline constexpr std::int32_t kPasswordFileReaders = 21182;
inline constexpr std::int32_t kPasswordInputClosed = 21183;
inline constexpr std::int32_t kPasswordFileUnreadable = 21184;
inline constexpr std::int32_t kPasswordOptionEmpty = 21185;
inline constexpr std::int32_t kPasswordInFileEmpty = 21186;
inline constexpr std::int32_t kPasswordFileNotUtf8 = 21187;
inline constexpr std::int32_t kPasswordNotGiven = 21188;
inline constexpr std::int32_t kPasswordNotTyped = 21189;
inline constexpr std::int32_t kPasswordTypedEmpty = 21190;
inline constexpr std::int32_t kPasswordsDiffer = 21191;
inline constexpr std::int32_t kStandardInputName = 21192;
inline constexpr std::int32_t kPasswordPrompt = 21193;
inline constexpr std::int32_t kPasswordForPrompt = 21194;
inline constexpr std::int32_t kPasswordAgain = 21195;

inline constexpr CatalogueText kReasonTexts[] = {{kNoSpaceLeft},
                                                 {kPermissionMissing},
                                                 {kReadOnlyDisk},
                                                 {kNoSuchFile},
                                                 {kNotAFolder},
                                                 {kIsAFolder},
                                                 {kDiskFault},
                                                 {kOverFileSize},
                                                 {kOverFileSizeLimit, 1},
                                                 {kOverQuota},
                                                 {kInUse},
                                                 {kTooManyFilesOpen},
                                                 {kNameTooLong},
                                                 {kNotEnoughMemory},
                                                 {kPathMissing, 1},
                                                 {kPathTaken, 1},
                                                 {kNotReached, 2},
                                                 {kNotWritten, 2},
                                                 {kNotOpened, 2},
                                                 {kNotCreated, 2},
                                                 {kFolderTakesNoFile, 2},
                                                 {kOwnerNotSet, 2},
                                                 {kNotSynced, 2},
                                                 {kNotReplaced, 2},
                                                 {kFolderNotFile, 1},
                                                 {kNoOrdinaryFile, 1},
                                                 {kMoreBytesThanAllowed, 2},
                                                 {kWouldBeTooLarge, 2},
                                                 {kNotReleased, 2},
                                                 {kNotSaved, 2},
                                                 {kSavedUnsafely, 2},
                                                 {kHomeIsRelative, 1},
                                                 {kNoHomeFolder},
                                                 {kNoDatabase, 1},
                                                 {kDatabaseDamaged, 1},
                                                 {kDatabaseInUse, 1},
                                                 {kDatabaseReadOnly, 1},
                                                 {kDatabaseDiskFull, 1},
                                                 {kDatabaseNotOpened, 1},
                                                 {kDatabaseFailed, 2},
                                                 {kDatabaseWithoutItsContent, 2},
                                                 {kNoRegistry, 2},
                                                 {kRegistryNoFile, 1},
                                                 {kRegistryEmpty, 1},
                                                 {kRegistryOfAnotherKind, 1},
                                                 {kRegistryFormatUnknown, 2},
                                                 {kRegistryOpenToOthers, 1},
                                                 {kRegistryOfAnotherUser, 2},
                                                 {kNoProjectPath},
                                                 {kNoProjectFile, 1},
                                                 {kNoProperName, 1},
                                                 {kProjectFileTooNew, 1},
                                                 {kProjectFileDamaged, 1},
                                                 {kProjectDatabaseMissing, 1},
                                                 {kProjectDatabaseNoFile, 1},
                                                 {kProjectDatabaseForeign, 1},
                                                 {kProjectDatabaseTooNew, 1},
                                                 {kProjectDatabaseDamaged, 1},
                                                 {kWrongLogon},
                                                 {kProjectFileExists, 1},
                                                 {kProjectFolderMissing, 1},
                                                 {kUserExists, 1},
                                                 {kProjectName},
                                                 {kUserName},
                                                 {kDiscussionTitle},
                                                 {kNameEmpty, 1},
                                                 {kNameTooLarge, 1},
                                                 {kNameWithControl, 1},
                                                 {kNameWithBackslash, 1},
                                                 {kPasswordEmpty},
                                                 {kPasswordTooLong},
                                                 {kPasswordCharacters},
                                                 {kPasswordBlanks},
                                                 {kPasswordHashDamaged},
                                                 {kProjectDatabaseNotUpgraded, 2},
                                                 {kAddressRefused, 2},
                                                 {kAddressWithControl},
                                                 {kAddressWithoutAt},
                                                 {kAddressTooLong},
                                                 {kLocalPartMissing},
                                                 {kLocalPartTooLong},
                                                 {kLocalPartUnescaped},
                                                 {kLocalPartUnquoted},
                                                 {kDomainMissing},
                                                 {kDomainLiteral},
                                                 {kNoDomain},
                                                 {kUserUnknown, 1},
                                                 {kOwnerNotRemoved, 1},
                                                 {kNoAddressForMail, 1},
                                                 {kLanguageRefused, 1},
                                                 {kDiscussionUnknown, 1},
                                                 {kReplyEmpty},
                                                 {kReplyTooLong, 1},
                                                 {kReplyWithNul},
                                                 {kArgumentNotUtf8},
                                                 {kArgumentWithControl, 1},
                                                 {kSettingWithControl, 1},
                                                 {kFileNameEmpty},
                                                 {kMailboxUnknown, 1},
                                                 {kStoreMissing, 1},
                                                 {kSetUpIncomplete},
                                                 {kOptionTooLong, 2},
                                                 {kOptionLocked, 1},
                                                 {kProjectPathWithBlanks},
                                                 {kUserNameWithBlanks},
                                                 {kPasswordWithBlanks},
                                                 {kProjectFixed},
                                                 {kProjectOptionMissing},
                                                 {kUserOptionMissing},
                                                 {kUserOptionEmpty},
                                                 {kNothingChanged},
                                                 {kMailboxBound, 2},
                                                 {kMailboxIncomplete, 1},
                                                 {kMailboxNotStored, 1},
                                                 {kMailboxKept, 1},
                                                 {kNoMapiProfileYet},
                                                 {kProfileNeedsMapi},
                                                 {kProfileUnknown, 2},
                                                 {kOptionNeedsSmtp, 1},
                                                 {kStoredTextWouldBeLost, 2},
                                                 {kOutboundDisabled},
                                                 {kSettingsNotSaved},
                                                 {kProfileNameInvalid},
                                                 {kOptionsBeforeSubcommand},
                                                 {kInputEnded},
                                                 {kTransportNotGiven},
                                                 {kTransportOptionMissing},
                                                 {kSmtpOptionsWithMapi},
                                                 {kMapiOptionWithSmtp},
                                                 {kProfileOptionMissing},
                                                 {kHostOptionMissing},
                                                 {kAddressOptionMissing},
                                                 {kNoChangeGiven},
                                                 {kMailboxKeepsPassword, 2},
                                                 {kMailboxKeepsUser, 2},
                                                 {kExportExists, 1},
                                                 {kExportForeign, 1},
                                                 {kPageDiscussions},
                                                 {kPageReplies, 1},
                                                 {kPageAllDiscussions},
                                                 {kNothingPosted},
                                                 {kReplyNotUtf8},
                                                 {kEditorFailed, 1},
                                                 {kTextKept, 1},
                                                 {kLargerThanMegabytes, 1},
                                                 {kNoMbox},
                                                 {kStandardInputClosed},
                                                 {kFolderNoMaildir},
                                                 {kPasswordFileBroken, 1},
                                                 {kPasswordFileTooLong, 1},
                                                 {kPasswordFileReaders, 1},
                                                 {kPasswordInputClosed},
                                                 {kPasswordFileUnreadable, 1},
                                                 {kPasswordOptionEmpty},
                                                 {kPasswordInFileEmpty, 1},
                                                 {kPasswordFileNotUtf8, 1},
                                                 {kPasswordNotGiven},
                                                 {kPasswordNotTyped},
                                                 {kPasswordTypedEmpty},
                                                 {kPasswordsDiffer},
                                                 {kStandardInputName},
                                                 {kPasswordPrompt, 1},
                                                 {kPasswordForPrompt, 1},
                                                 {kPasswordAgain, 1}};

}  // namespace Platform::TextNumber
