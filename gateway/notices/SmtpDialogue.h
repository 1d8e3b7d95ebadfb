// SmtpDialogue: follows what a client and a server tell each other (RFC 5321), to know what a failure means.
#pragma once

#include <string>
#include <string_view>

namespace Gateway {

// What a connection has to have before a mail is sent over it. The library for sending goes on without.
struct SmtpNeeds {
  bool Logon = false;
  bool Utf8 = false;        // addresses beyond ASCII (RFC 6531)
  bool Encryption = false;  // if the server offers STARTTLS
};

// Raises nothing, so that it can be called from C. One thread.
class SmtpDialogue {
 public:
  // The command under way. Content is the mail itself, whose end the server answers.
  enum class Stage { Greeting, Hello, StartTls, Logon, Sender, Recipient, Data, Content };

  // Why the client has to end the connection.
  enum class Fault { None, NotSmtp, TooLong, NoLogon, NoUtf8, NoEncryption };

  explicit SmtpDialogue(SmtpNeeds needs = {});

  // What the client has sent, but for the mail.
  void Command(std::string_view line);

  // A line from the server. Returns false for a fault.
  bool Answer(std::string_view line);

  Stage At() const { return stage_; }
  Fault Found() const { return fault_; }

  // The code of the answer to the command under way; 0 while its last line is missing.
  int Code() const { return code_; }

  // The answer with its code, on one line. It may hold any bytes; the end of a long one is missing.
  const std::string& Text() const { return text_; }

  // True if the connection was opened for this mail.
  bool Greeted() const { return greeted_; }
  bool Quits() const { return quits_; }

 private:
  void Begin(Stage stage);
  void Keep(std::string_view text);
  bool Judge();

  SmtpNeeds needs_;
  Stage stage_ = Stage::Greeting;
  Fault fault_ = Fault::None;
  int code_ = 0;
  std::size_t bytes_ = 0;  // of the answer
  std::string text_;
  bool greeted_ = false, quits_ = false, loggedOn_ = false, takesUtf8_ = false;
};

}  // namespace Gateway
