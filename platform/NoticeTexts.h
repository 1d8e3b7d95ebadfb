// NoticeTexts: the numbers of the texts about mail that is sent: notices of replies and answers to senders.
// resources/TvMailRes.en.txt has them in English, with the meaning of their arguments.
#pragma once

#include <cstdint>

#include "platform/StoredNames.h"

namespace Platform::TextNumber {

// In the mails themselves.
inline constexpr std::int32_t kHowToAnswer = 21300;
inline constexpr std::int32_t kWhoWrote = 21301;
inline constexpr std::int32_t kMailNotStored = 21302;
inline constexpr std::int32_t kWhatYouWrote = 21303;
inline constexpr std::int32_t kSubjectOfAnswer = 21304;

// Why a mail can't be sent.
inline constexpr std::int32_t kSmtpHostInvalid = 21330;
inline constexpr std::int32_t kSmtpMailRefused = 21331;
inline constexpr std::int32_t kSmtpMailDeferred = 21332;
inline constexpr std::int32_t kSmtpServerRefuses = 21333;
inline constexpr std::int32_t kSmtpSenderRefused = 21334;
inline constexpr std::int32_t kSmtpLogonRefused = 21335;
inline constexpr std::int32_t kSmtpNoLogon = 21336;
inline constexpr std::int32_t kSmtpPasswordUnprotected = 21337;
inline constexpr std::int32_t kSmtpNoStartTls = 21338;
inline constexpr std::int32_t kSmtpCertificate = 21339;
inline constexpr std::int32_t kSmtpNoUtf8 = 21340;
inline constexpr std::int32_t kSmtpNotConfirmed = 21341;
inline constexpr std::int32_t kSmtpServerTwice = 21343;
inline constexpr std::int32_t kSmtpSettingMissing = 21344;
inline constexpr std::int32_t kSmtpSettingUnused = 21345;
inline constexpr std::int32_t kCommandMissing = 21346;
inline constexpr std::int32_t kCommandFailed = 21347;
inline constexpr std::int32_t kCommandRefused = 21348;
inline constexpr std::int32_t kCommandTooLong = 21349;
inline constexpr std::int32_t kCommandRecipients = 21350;
inline constexpr std::int32_t kExitCode = 21351;
inline constexpr std::int32_t kEndedBySignal = 21352;
inline constexpr std::int32_t kMailAddressUnusable = 21353;
inline constexpr std::int32_t kAnswerCode = 21354;
inline constexpr std::int32_t kCommandNotExecutable = 21355;

// What waits to be sent, and what is done with it.
inline constexpr std::int32_t kNoticesInUse = 21360;
inline constexpr std::int32_t kProjectSendsNoMail = 21361;
inline constexpr std::int32_t kMailboxAddressMissing = 21362;
inline constexpr std::int32_t kSentInVain = 21363;
inline constexpr std::int32_t kSettingNotFlag = 21364;
inline constexpr std::int32_t kNoticesSwitchedOff = 21365;
inline constexpr std::int32_t kMailboxDoesNothing = 21366;
inline constexpr std::int32_t kNothingToServe = 21367;
inline constexpr std::int32_t kNobodyIsTold = 21368;
inline constexpr std::int32_t kNobodyTakesMail = 21369;
inline constexpr std::int32_t kWillBeTold = 21370;
inline constexpr std::int32_t kSenderNotTold = 21371;
inline constexpr std::int32_t kBounceNotCounted = 21372;
inline constexpr std::int32_t kRecipientIsMailbox = 21373;
inline constexpr std::int32_t kOutboundUnusable = 21374;
inline constexpr std::int32_t kUsersStopped = 21375;
inline constexpr std::int32_t kBounceOfOther = 21376;
inline constexpr std::int32_t kNoticeExpired = 21399;

inline constexpr CatalogueText kNoticeTexts[] = {
    // In the mails themselves.
    {kHowToAnswer},
    {kWhoWrote, 2},
    {kMailNotStored, 1},
    {kWhatYouWrote},
    {kSubjectOfAnswer, 1},
    // Why a mail can't be sent.
    {kSmtpHostInvalid, 1},
    {kSmtpMailRefused, 2},
    {kSmtpMailDeferred, 2},
    {kSmtpServerRefuses, 2},
    {kSmtpSenderRefused, 2},
    {kSmtpLogonRefused, 2},
    {kSmtpNoLogon, 1},
    {kSmtpPasswordUnprotected, 1},
    {kSmtpNoStartTls, 1},
    {kSmtpCertificate, 2},
    {kSmtpNoUtf8, 2},
    {kSmtpNotConfirmed, 1},
    {kSmtpServerTwice, 2},
    {kSmtpSettingMissing, 1},
    {kSmtpSettingUnused, 1},
    {kCommandMissing, 1},
    {kCommandFailed, 2},
    {kCommandRefused, 2},
    {kCommandTooLong, 2},
    {kCommandRecipients, 1},
    {kExitCode, 1},
    {kEndedBySignal, 1},
    {kMailAddressUnusable, 2},
    {kAnswerCode, 2},
    {kCommandNotExecutable, 1},
    // What waits to be sent, and what is done with it.
    {kNoticesInUse, 1},
    {kProjectSendsNoMail},
    {kMailboxAddressMissing},
    {kSentInVain, 1},
    {kSettingNotFlag, 1},
    {kNoticesSwitchedOff, 1},
    {kMailboxDoesNothing, 1},
    {kNothingToServe, 1},
    {kNobodyIsTold},
    {kNobodyTakesMail},
    {kWillBeTold, 1},
    {kSenderNotTold, 1},
    {kBounceNotCounted, 1},
    {kRecipientIsMailbox, 1},
    {kOutboundUnusable, 1},
    {kUsersStopped, 1},
    {kBounceOfOther, 1},
    {kNoticeExpired},
};

}  // namespace Platform::TextNumber
