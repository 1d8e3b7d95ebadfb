#include "gateway/sources/TlsSession.h"

#include <arpa/inet.h>
#include <openssl/err.h>
#include <openssl/x509v3.h>
#include <sys/socket.h>

#include <cerrno>
#include <new>
#include <utility>

#include "gateway/sources/SourceFailure.h"
#include "gateway/sources/SslLibrary.h"
#include "platform/ProgramTexts.h"
#include "runtime/SystemReason.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;

int SocketOf(BIO* bio) {
  return *static_cast<const int*>(BIO_get_data(bio));
}

int Finish(BIO* bio, ssize_t count, int retryFlag) {
  BIO_clear_retry_flags(bio);
  if (count < 0 && (errno == EAGAIN || errno == EINTR))
    BIO_set_flags(bio, retryFlag | BIO_FLAGS_SHOULD_RETRY);
  return static_cast<int>(count);
}

// OpenSSL's own way of writing to a socket raises SIGPIPE when the server has closed it.
BIO_METHOD* SocketMethod() {
  static BIO_METHOD* const method = [] {
    BIO_METHOD* made = BIO_meth_new(BIO_get_new_index() | BIO_TYPE_SOURCE_SINK, "socket");
    if (!made) throw std::bad_alloc();
    BIO_meth_set_read(made, [](BIO* bio, char* buffer, int size) {
      return Finish(bio, recv(SocketOf(bio), buffer, static_cast<std::size_t>(size), 0), BIO_FLAGS_READ);
    });
    BIO_meth_set_write(made, [](BIO* bio, const char* bytes, int size) {
      return Finish(bio, send(SocketOf(bio), bytes, static_cast<std::size_t>(size), MSG_NOSIGNAL),
                    BIO_FLAGS_WRITE);
    });
    BIO_meth_set_ctrl(made,
                      [](BIO*, int command, long, void*) { return command == BIO_CTRL_FLUSH ? 1L : 0L; });
    return made;
  }();
  return method;
}

// The first error in the library's queue of this thread.
std::string Reason() {
  const unsigned long code = ERR_get_error();
  ERR_clear_error();
  const char* text = code == 0 ? nullptr : ERR_reason_error_string(code);
  return text ? text : "the server ended the connection";
}

bool IsAddress(const std::string& host) {
  unsigned char bytes[16];
  return inet_pton(AF_INET, host.c_str(), bytes) == 1 || inet_pton(AF_INET6, host.c_str(), bytes) == 1;
}

}  // namespace

struct TlsSession::Parts {
  const SslLibrary& Ssl = SslLibrary::Get();
  int Socket = -1;
  std::unique_ptr<SSL_CTX, decltype(Ssl.SSL_CTX_free)> Context{Ssl.SSL_CTX_new(Ssl.TLS_client_method()),
                                                               Ssl.SSL_CTX_free};
  std::unique_ptr<SSL, decltype(Ssl.SSL_free)> Session{nullptr, Ssl.SSL_free};
};

TlsSession::TlsSession(int socket, const std::string& host, const std::string& caFile, std::string name)
    : parts_(new Parts), name_(std::move(name)) {
  const SslLibrary& ssl = parts_->Ssl;
  SSL_CTX* context = parts_->Context.get();
  if (!context) throw std::bad_alloc();
  ERR_clear_error();
  ssl.SSL_CTX_ctrl(context, SSL_CTRL_SET_MIN_PROTO_VERSION, TLS1_2_VERSION, nullptr);
  ssl.SSL_CTX_set_verify(context, SSL_VERIFY_PEER, nullptr);
  if (caFile.empty() ? ssl.SSL_CTX_set_default_verify_paths(context) != 1
                     : ssl.SSL_CTX_load_verify_file(context, caFile.c_str()) != 1)
    RaiseSource(TextNumber::kCaFileUnreadable, caFile, Reason());
  parts_->Session.reset(ssl.SSL_new(context));
  SSL* session = parts_->Session.get();
  BIO* bio = session ? BIO_new(SocketMethod()) : nullptr;
  if (!bio) throw std::bad_alloc();
  parts_->Socket = socket;
  BIO_set_data(bio, &parts_->Socket);
  BIO_set_init(bio, 1);
  ssl.SSL_set_bio(session, bio, bio);
  bool named = false;
  if (IsAddress(host)) {
    named = X509_VERIFY_PARAM_set1_ip_asc(ssl.SSL_get0_param(session), host.c_str()) == 1;
  } else {
    ssl.SSL_set_hostflags(session, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
    std::string server = host;
    named =
        ssl.SSL_set1_host(session, host.c_str()) == 1 &&
        ssl.SSL_ctrl(session, SSL_CTRL_SET_TLSEXT_HOSTNAME, TLSEXT_NAMETYPE_host_name, server.data()) == 1;
  }
  if (!named) RaiseSource(TextNumber::kTlsFailed, name_, Reason());
}

TlsSession::~TlsSession() = default;

TlsSession::Result TlsSession::Handshake() {
  ERR_clear_error();
  const int returned = parts_->Ssl.SSL_connect(parts_->Session.get());
  if (returned == 1) return Result::Done;
  const long fault = parts_->Ssl.SSL_get_verify_result(parts_->Session.get());
  if (fault != X509_V_OK)
    RaiseSource(TextNumber::kCertificateRefused, name_, X509_verify_cert_error_string(fault));
  return ResultOf(returned);
}

TlsSession::Result TlsSession::Read(char* buffer, std::size_t size, std::size_t& count) {
  ERR_clear_error();
  const int returned = parts_->Ssl.SSL_read_ex(parts_->Session.get(), buffer, size, &count);
  return returned == 1 ? Result::Done : ResultOf(returned);
}

TlsSession::Result TlsSession::Write(std::string_view bytes, std::size_t& count) {
  ERR_clear_error();
  const int returned = parts_->Ssl.SSL_write_ex(parts_->Session.get(), bytes.data(), bytes.size(), &count);
  return returned == 1 ? Result::Done : ResultOf(returned);
}

bool TlsSession::HasPending() const {
  return parts_->Ssl.SSL_has_pending(parts_->Session.get()) == 1;
}

TlsSession::Result TlsSession::ResultOf(int returned) {
  switch (parts_->Ssl.SSL_get_error(parts_->Session.get(), returned)) {
    case SSL_ERROR_WANT_READ:
      return Result::WantsRead;
    case SSL_ERROR_WANT_WRITE:
      return Result::WantsWrite;
    case SSL_ERROR_ZERO_RETURN:
    case SSL_ERROR_SYSCALL:
      return Result::Closed;
    default:
      break;
  }
  const unsigned long code = ERR_peek_error();
  // The server has closed the socket without ending the session.
  if (ERR_GET_REASON(code) == SSL_R_UNEXPECTED_EOF_WHILE_READING) return Result::Closed;
  RaiseSource(TextNumber::kTlsFailed, name_, Reason());
}

}  // namespace Gateway
