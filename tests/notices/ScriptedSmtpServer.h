// ScriptedSmtpServer: an SMTP server on loopback that answers each command as a test says.
#pragma once

#include <openssl/ssl.h>
#include <signal.h>

#include <map>
#include <memory>
#include <mutex>

#include "tests/sources/LoopbackServer.h"

namespace Tests {

class ScriptedSmtpServer {
 public:
  // By verb: "" for the greeting, "." for the end of the mail, "line" for a line of a logon. An answer needs
  // no last line end; with "close" at its end the connection ends after it. "silent" waits, "endless" and
  // "flood" send one answer, or one line, without end.
  using Answers = std::map<std::string, std::string>;

  // With a certificate, a PEM file with its key, the server takes STARTTLS, or TLS from the start.
  explicit ScriptedSmtpServer(Answers answers, const std::string& certificate = {}, bool tlsFromStart = false)
      : answers_(std::move(answers)), context_(SSL_CTX_new(TLS_server_method()), SSL_CTX_free) {
    if (!certificate.empty()) {
      SSL_CTX_use_certificate_file(context_.get(), certificate.c_str(), SSL_FILETYPE_PEM);
      SSL_CTX_use_PrivateKey_file(context_.get(), certificate.c_str(), SSL_FILETYPE_PEM);
    }
    server_ = std::make_unique<LoopbackServer>(
        [this, tlsFromStart](LoopbackServer&, int client) { Serve(client, tlsFromStart); });
  }

  // All lines that arrived, with "+" before those of a connection and "*" before those that are encrypted.
  std::string Received() {
    const std::scoped_lock lock(mutex_);
    return received_;
  }
  // ":port"
  std::string Port() const { return ":" + std::to_string(server_->Port); }

 private:
  struct Peer {
    int Client;
    std::unique_ptr<SSL, decltype(&SSL_free)> Tls{nullptr, SSL_free};

    bool Send(std::string_view bytes) const {
      return Tls ? SSL_write(Tls.get(), bytes.data(), static_cast<int>(bytes.size())) > 0
                 : LoopbackServer::Send(Client, bytes);
    }
  };

  std::string Line(const Peer& peer) const {
    if (!peer.Tls) return server_->Line(peer.Client);
    std::string line;
    char c;
    while (!line.ends_with('\n') && (SSL_pending(peer.Tls.get()) > 0 || server_->Readable(peer.Client)) &&
           SSL_read(peer.Tls.get(), &c, 1) == 1)
      line += c;
    return line;
  }

  bool Encrypt(Peer& peer) const {
    peer.Tls.reset(SSL_new(context_.get()));
    SSL_set_fd(peer.Tls.get(), peer.Client);
    return SSL_accept(peer.Tls.get()) == 1;
  }

  // Returns false at the end of the connection.
  bool Answer(const Peer& peer, const std::string& verb) {
    const auto found = answers_.find(verb);
    const std::string answer = found != answers_.end()              ? found->second
                               : verb == "DATA"                     ? "354 go on"
                               : verb.empty() || verb == "STARTTLS" ? "220 hello"
                                                                    : "250 fine";
    if (answer == "silent") return !Line(peer).empty();
    while (answer == "endless" && peer.Send("250-again\r\n")) continue;
    while (answer == "flood" && peer.Send(std::string(1 << 16, '2'))) continue;
    const bool close = answer.ends_with("close");
    return peer.Send(close ? answer.substr(0, answer.size() - 5) : answer + "\r\n") && !close;
  }

  void Serve(int client, bool tlsFromStart) {
    // OpenSSL writes to sockets that the client has closed. The client has to do without this.
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    Peer peer{client};
    const auto note = [&](const std::string& line) {
      const std::scoped_lock lock(mutex_);
      received_ += line;
    };
    note("+");
    if ((tlsFromStart && !Encrypt(peer)) || !Answer(peer, "")) return;
    bool logon = false, content = false;
    for (std::string line; !(line = Line(peer)).empty();) {
      note((peer.Tls ? "*" : "") + line);
      std::string verb = line.substr(0, line.find_first_of(" \r"));
      if (content && line != ".\r\n") continue;
      if (logon && verb.size() > 4) verb = "line";
      content = verb == "DATA" && !answers_.contains(verb);
      logon = logon || verb == "AUTH";
      if (!Answer(peer, verb) || (verb == "STARTTLS" && !answers_.contains(verb) && !Encrypt(peer))) return;
    }
  }

  Answers answers_;
  std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> context_;
  std::mutex mutex_;
  std::string received_;
  std::unique_ptr<LoopbackServer> server_;
};

}  // namespace Tests
