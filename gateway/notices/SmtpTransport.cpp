#include "gateway/notices/SmtpTransport.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <climits>
#include <cstring>
#include <new>
#include <utility>

#include "gateway/notices/CurlLibrary.h"
#include "gateway/notices/ForeignText.h"
#include "gateway/notices/SmtpHost.h"
#include "gateway/notices/SmtpResult.h"
#include "gateway/notices/SmtpSockets.h"
#include "gateway/sources/PasswordFile.h"
#include "platform/Failure.h"
#include "platform/NoticeTexts.h"
#include "platform/ProgramTexts.h"
#include "runtime/MailAddress.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;
using Kind = SendResult::Kind;
using Platform::FromUtf8;
using Runtime::TextOf;
using Stage = SmtpDialogue::Stage;

constexpr int kUsualPort = 25, kTlsPort = 465;

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// This machine's name for the server; a name that DNS couldn't have isn't told.
std::string HelloName() {
  std::array<char, HOST_NAME_MAX + 1> buffer{};
  if (gethostname(buffer.data(), buffer.size() - 1) != 0) return "localhost";
  const auto host = ParseSmtpHost(FromUtf8(buffer.data()));
  return host && host->Port == 0 && !host->IsIpv6() && host->Name.find('_') == std::string::npos
             ? host->Name
             : "localhost";
}

// Every line end becomes CR LF, a lone CR too: servers differ in what they take for the mail's end.
std::string WithCrLf(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 32);
  for (std::size_t begin = 0; begin < bytes.size();) {
    const std::size_t end = std::min(bytes.find_first_of("\r\n", begin), bytes.size());
    text.append(bytes.substr(begin, end - begin)).append("\r\n");
    begin = end + (bytes.substr(end).starts_with("\r\n") ? 2 : 1);
  }
  return text;
}

// An address with its domain as DNS has it.
struct EnvelopeAddress {
  explicit EnvelopeAddress(const std::string& address) : Text(address) {
    const std::size_t at = address.rfind('@') + 1;
    const std::string domain = Platform::ToUtf8(Runtime::AsciiDomain(FromUtf8(address.substr(at))));
    if (!domain.empty()) Text = address.substr(0, at) + domain;
  }
  bool NeedsUtf8() const { return !IsAscii(Text); }

  std::string Text;
};

SendResult Unreachable(std::int32_t text, const String& first = {}, const String& second = {}) {
  return {Kind::Unreachable, TextOf(text, first, second)};
}

}  // namespace

class SmtpTransport::Session {
 public:
  Session(StringView host, SmtpServer server, SmtpTimes times);
  ~Session();

  // A null mail sends none.
  SendResult Run(const OutgoingMail* mail);
  void Interrupt();

 private:
  void Prepare();
  void SetServer();
  void SetCallbacks();
  void SetLogon();
  void SetMail(const EnvelopeAddress& sender, const EnvelopeAddress& recipient, const std::string& bytes);
  void SetNoMail();
  CURLcode Transfer();
  SendResult Attempt(const OutgoingMail* mail, SmtpNeeds needs, bool fresh, bool& stale);
  SendResult FailureOf(CURLcode code) const;

  template <typename T>
  void Set(CURLoption option, T value) {
    const CURLcode code = curl_->EasySetopt(easy_, option, value);
    if (code == CURLE_OUT_OF_MEMORY) throw std::bad_alloc();
    if (code != CURLE_OK) RaiseCurl(curl_->EasyStrerror(code));
  }

  static std::size_t OnRead(char* buffer, std::size_t size, std::size_t count, void* self);
  static std::size_t OnAnswer(char* line, std::size_t size, std::size_t count, void* self);
  static int OnDebug(CURL* easy, curl_infotype kind, char* bytes, std::size_t size, void* self);

  SmtpHost host_;
  SmtpServer server_;
  SmtpTimes times_;
  String name_;  // "host:port"
  bool tls_ = false;
  const CurlLibrary* curl_ = nullptr;
  SmtpSockets sockets_;
  CURL* easy_ = nullptr;
  std::atomic<CURLM*> multi_ = nullptr;
  curl_slist* recipients_ = nullptr;
  std::string_view unsent_;
  SmtpDialogue dialogue_;
  std::array<char, CURL_ERROR_SIZE> error_{};
  std::atomic<bool> interrupted_ = false;
};

SmtpTransport::Session::Session(StringView host, SmtpServer server, SmtpTimes times)
    : server_(std::move(server)), times_(times) {
  const auto parsed = ParseSmtpHost(host);
  if (!parsed)
    throw Platform::Failure(Platform::FailureNumber::RefusedInput, u"Gateway.MailTransport",
                            TextOf(TextNumber::kSmtpHostInvalid, host));
  host_ = *parsed;
  if (host_.Port == 0) host_.Port = server_.Port;
  if (host_.Port == 0) host_.Port = server_.Security == SmtpSecurity::Tls ? kTlsPort : kUsualPort;
  tls_ = server_.Security == SmtpSecurity::Tls ||
         (server_.Security == SmtpSecurity::Auto && host_.Port == kTlsPort);
  name_ = FromUtf8((host_.IsIpv6() ? "[" + host_.Name + "]" : host_.Name) + ":" + std::to_string(host_.Port));
}

SmtpTransport::Session::~Session() {
  sockets_.StopReading();  // QUIT is sent, and its answer not waited for
  if (easy_) curl_->EasyCleanup(easy_);
  if (multi_) curl_->MultiCleanup(multi_);
  if (recipients_) curl_->SlistFreeAll(recipients_);
}

void SmtpTransport::Session::Interrupt() {
  interrupted_ = true;
  sockets_.Shut();
  // It ends the wait for a name's address.
  if (CURLM* const multi = multi_) curl_->MultiWakeup(multi);
}

void SmtpTransport::Session::Prepare() {
  if (multi_) return;
  curl_ = &CurlLibrary::Get();
  if (!easy_) easy_ = curl_->EasyInit();
  if (!easy_) throw std::bad_alloc();
  SetServer();
  SetCallbacks();
  multi_ = curl_->MultiInit();
  if (!multi_) throw std::bad_alloc();
}

void SmtpTransport::Session::SetServer() {
  const std::string url = (tls_ ? "smtps://" : "smtp://") + Platform::ToUtf8(name_) + "/" + HelloName();
  Set(CURLOPT_URL, url.c_str());
  Set(CURLOPT_PROXY, "");
  Set(CURLOPT_NOSIGNAL, 1L);
  Set(CURLOPT_QUICK_EXIT, 1L);  // don't wait for the resolver's thread
  Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(times_.Connect.count()));
  Set(CURLOPT_TIMEOUT_MS, static_cast<long>(times_.Longest.count()));
  Set(CURLOPT_SERVER_RESPONSE_TIMEOUT, static_cast<long>(times_.Silence.count()));
  Set(CURLOPT_LOW_SPEED_LIMIT, 1L);
  Set(CURLOPT_LOW_SPEED_TIME, static_cast<long>(times_.Silence.count()));
  const bool checked = !host_.IsThisMachine() || !server_.CaFile.empty();
  Set(CURLOPT_SSL_VERIFYPEER, checked ? 1L : 0L);
  Set(CURLOPT_SSL_VERIFYHOST, checked ? 2L : 0L);
  Set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
  if (!server_.CaFile.empty()) {
    Set(CURLOPT_CAINFO, server_.CaFile.c_str());
    Set(CURLOPT_CAPATH, static_cast<const char*>(nullptr));
  }
}

void SmtpTransport::Session::SetCallbacks() {
  Set(CURLOPT_READFUNCTION, &OnRead);
  Set(CURLOPT_READDATA, static_cast<void*>(this));
  Set(CURLOPT_HEADERFUNCTION, &OnAnswer);
  Set(CURLOPT_HEADERDATA, static_cast<void*>(this));
  Set(CURLOPT_VERBOSE, 1L);  // for the commands that are sent
  Set(CURLOPT_DEBUGFUNCTION, &OnDebug);
  Set(CURLOPT_DEBUGDATA, static_cast<void*>(this));
  Set(CURLOPT_ERRORBUFFER, error_.data());
  Set(
      CURLOPT_OPENSOCKETFUNCTION, +[](void* sockets, curlsocktype, curl_sockaddr* address) {
        return static_cast<SmtpSockets*>(sockets)->Open(address->family, address->socktype,
                                                        address->protocol);
      });
  Set(CURLOPT_OPENSOCKETDATA, static_cast<void*>(&sockets_));
  Set(
      CURLOPT_CLOSESOCKETFUNCTION,
      +[](void* sockets, curl_socket_t number) { return static_cast<SmtpSockets*>(sockets)->Close(number); });
  Set(CURLOPT_CLOSESOCKETDATA, static_cast<void*>(&sockets_));
}

std::size_t SmtpTransport::Session::OnRead(char* buffer, std::size_t size, std::size_t count, void* self) {
  std::string_view& unsent = static_cast<Session*>(self)->unsent_;
  const std::size_t taken = std::min(size * count, unsent.size());
  std::memcpy(buffer, unsent.data(), taken);
  unsent.remove_prefix(taken);
  return taken;
}

std::size_t SmtpTransport::Session::OnAnswer(char* line, std::size_t size, std::size_t count, void* self) {
  return static_cast<Session*>(self)->dialogue_.Answer({line, size * count}) ? size * count : 0;
}

int SmtpTransport::Session::OnDebug(CURL*, curl_infotype kind, char* bytes, std::size_t size, void* self) {
  auto* const session = static_cast<Session*>(self);
  if (kind != CURLINFO_HEADER_OUT) return 0;
  session->dialogue_.Command({bytes, size});
  // The library would wait for its answer.
  if (session->dialogue_.Quits()) session->sockets_.StopReading();
  return 0;
}

// The file is read for each mail, so that a new password needs no restart.
void SmtpTransport::Session::SetLogon() {
  if (server_.User.empty()) return;
  Set(CURLOPT_USERNAME, server_.User.c_str());
  Set(CURLOPT_PASSWORD, ReadPasswordFile(server_.PasswordFile).c_str());
  // The others need passwords that the server keeps in plain form, or a Kerberos realm.
  Set(CURLOPT_LOGIN_OPTIONS, "AUTH=PLAIN;AUTH=LOGIN");
}

void SmtpTransport::Session::SetMail(const EnvelopeAddress& sender, const EnvelopeAddress& recipient,
                                     const std::string& bytes) {
  Set(CURLOPT_NOBODY, 0L);
  Set(CURLOPT_CUSTOMREQUEST, static_cast<const char*>(nullptr));
  Set(CURLOPT_UPLOAD, 1L);
  Set(CURLOPT_MAIL_FROM, sender.Text.c_str());
  if (recipients_) curl_->SlistFreeAll(recipients_);
  recipients_ = curl_->SlistAppend(nullptr, recipient.Text.c_str());
  if (!recipients_) throw std::bad_alloc();
  Set(CURLOPT_MAIL_RCPT, recipients_);
  Set(CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(bytes.size()));
  unsent_ = bytes;
}

void SmtpTransport::Session::SetNoMail() {
  Set(CURLOPT_UPLOAD, 0L);
  Set(CURLOPT_NOBODY, 1L);
  Set(CURLOPT_MAIL_RCPT, static_cast<curl_slist*>(nullptr));
  Set(CURLOPT_CUSTOMREQUEST, "NOOP");
}

CURLcode SmtpTransport::Session::Transfer() {
  if (curl_->MultiAddHandle(multi_, easy_) != CURLM_OK) throw std::bad_alloc();
  // The library looks only now and then how long the server is silent. Interrupt ends a wait at once, also
  // where the library had no descriptor left for being woken: then after this time.
  constexpr int kLongestWait = 200;  // ms
  int running = 1;
  while (running != 0 && !interrupted_) {
    if (curl_->MultiPerform(multi_, &running) != CURLM_OK) break;
    if (running != 0 && !interrupted_) curl_->MultiPoll(multi_, nullptr, 0, kLongestWait, nullptr);
  }
  CURLcode code = CURLE_ABORTED_BY_CALLBACK;
  int left = 0;
  while (const CURLMsg* message = curl_->MultiInfoRead(multi_, &left))
    if (message->msg == CURLMSG_DONE) code = message->data.result;
  curl_->MultiRemoveHandle(multi_, easy_);
  return code;
}

SendResult SmtpTransport::Session::FailureOf(CURLcode code) const {
  const String detail = ForeignText(error_[0] != '\0' ? error_.data() : curl_->EasyStrerror(code));
  switch (code) {
    case CURLE_OUT_OF_MEMORY:
      throw std::bad_alloc();
    case CURLE_COULDNT_RESOLVE_HOST:
      return Unreachable(TextNumber::kSourceHostUnknown, name_, detail);
    case CURLE_OPERATION_TIMEDOUT:
      return Unreachable(TextNumber::kSourceTimeout, name_);
    case CURLE_PEER_FAILED_VERIFICATION:
      return Unreachable(TextNumber::kSmtpCertificate, name_, detail);
    case CURLE_SSL_CACERT_BADFILE:
      return Unreachable(TextNumber::kCaFileUnreadable, FromUtf8(server_.CaFile), detail);
    case CURLE_USE_SSL_FAILED:
      return Unreachable(TextNumber::kSmtpNoStartTls, name_);
    case CURLE_SSL_CONNECT_ERROR:
      return Unreachable(TextNumber::kTlsFailed, name_, detail);
    case CURLE_LOGIN_DENIED:
      return Unreachable(TextNumber::kSmtpNoLogon, name_);  // an answer to the logon is judged elsewhere
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
      // The library's own limit for a line without end.
      if (detail.starts_with(u"Too large response")) return Unreachable(TextNumber::kAnswerTooLarge, name_);
      return Unreachable(TextNumber::kSourceClosed, name_);
    case CURLE_WEIRD_SERVER_REPLY:
      return Unreachable(TextNumber::kAnswerCode, name_, ForeignText(dialogue_.Text()));
    default:
      return Unreachable(TextNumber::kSourceUnreachable, name_, detail);
  }
}

SendResult SmtpTransport::Session::Attempt(const OutgoingMail* mail, SmtpNeeds needs, bool fresh,
                                           bool& stale) {
  dialogue_ = SmtpDialogue(needs);
  error_[0] = '\0';
  Set(CURLOPT_FRESH_CONNECT, fresh ? 1L : 0L);
  const CURLcode code = Transfer();
  if (code == CURLE_OK) return {};
  const auto answered = SmtpResult(dialogue_, name_, mail ? FromUtf8(mail->Recipient) : String());
  if (interrupted_ && !(answered && answered->Result == Kind::Sent))
    return Unreachable(TextNumber::kSourceInterrupted);
  // A server may end a connection that waited for the next mail at any time.
  stale = !dialogue_.Greeted() && dialogue_.At() == Stage::Sender &&
          (dialogue_.Code() == 0 || dialogue_.Code() == 421);
  return answered ? *answered : FailureOf(code);
}

SendResult SmtpTransport::Session::Run(const OutgoingMail* mail) {
  const bool local = host_.IsThisMachine();
  const bool logon = !server_.User.empty(), plain = server_.Security == SmtpSecurity::None;
  if (logon && plain && !local) return Unreachable(TextNumber::kSmtpPasswordUnprotected, name_);
  const bool encrypted = server_.Security == SmtpSecurity::StartTls || (logon && !local);
  const auto unusable = [](const std::string& address, Kind kind) {
    return SendResult{kind, TextOf(TextNumber::kMailAddressUnusable, ForeignText(address),
                                   Runtime::AddressFault(FromUtf8(address)))};
  };
  const auto usable = [](const std::string& address) {
    return Runtime::AddressFault(FromUtf8(address)).empty();
  };
  if (mail && !usable(mail->Recipient)) return unusable(mail->Recipient, Kind::Refused);
  if (mail && !mail->Sender.empty() && !usable(mail->Sender))
    return unusable(mail->Sender, Kind::Unreachable);
  try {
    Prepare();
    SetLogon();
    const auto ssl = plain ? CURLUSESSL_NONE : encrypted ? CURLUSESSL_ALL : CURLUSESSL_TRY;
    Set(CURLOPT_USE_SSL, static_cast<long>(ssl));
    const EnvelopeAddress sender(mail ? mail->Sender : ""), recipient(mail ? mail->Recipient : "");
    const SmtpNeeds needs{logon, sender.NeedsUtf8() || recipient.NeedsUtf8(), encrypted || !local};
    const std::string bytes = mail ? WithCrLf(mail->Bytes) : std::string();
    // Only a new connection tells whether the server takes addresses beyond ASCII.
    bool fresh = needs.Utf8 || !mail;
    for (;; fresh = true) {
      mail ? SetMail(sender, recipient, bytes) : SetNoMail();
      if (interrupted_) return Unreachable(TextNumber::kSourceInterrupted);
      bool stale = false;
      SendResult result = Attempt(mail, needs, fresh, stale);
      if (!stale || fresh) return result;
    }
  } catch (const Platform::Failure& failure) {
    return {Kind::Unreachable, failure.Description()};
  }
}

SmtpTransport::SmtpTransport(StringView host, SmtpServer server, SmtpTimes times)
    : session_(std::make_unique<Session>(host, std::move(server), times)) {}

SmtpTransport::~SmtpTransport() = default;

SendResult SmtpTransport::Send(const OutgoingMail& mail) {
  return session_->Run(&mail);
}

void SmtpTransport::Check() {
  const SendResult result = session_->Run(nullptr);
  if (result.Result != Kind::Sent)
    throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway.MailTransport", result.Reason);
}

void SmtpTransport::Interrupt() {
  session_->Interrupt();
}

std::unique_ptr<MailTransport> MakeSmtpTransport(StringView host, const SmtpServer& server) {
  return std::make_unique<SmtpTransport>(host, server);
}

}  // namespace Gateway
