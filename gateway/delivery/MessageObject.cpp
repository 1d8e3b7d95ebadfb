#include "gateway/delivery/MessageObject.h"

namespace Gateway {
namespace {

using Platform::ObjectRef;
using Platform::ObjectWithMembers;
using Platform::String;
using Platform::Value;

class Sender : public ObjectWithMembers<Sender> {
 public:
  explicit Sender(String address) : address_(std::move(address)) {}
  static const Table& Members() {
    static const Table table = {Property(u"Address", &Sender::GetAddress)};
    return table;
  }

 private:
  Value GetAddress() { return address_; }
  String address_;
};

// The mail itself, as the component asks for it.
class MailPart : public ObjectWithMembers<MailPart> {
 public:
  explicit MailPart(Mime::Mail mail) : mail_(std::move(mail)) {
    if (mail_.FromAddress) from_ = std::make_shared<Sender>(*mail_.FromAddress);
  }
  static const Table& Members() {
    static const Table table = {Property(u"From", &MailPart::GetFrom),
                                Property(u"subject", &MailPart::GetSubject),
                                Property(u"body", &MailPart::GetBody)};
    return table;
  }

 private:
  Value GetFrom() { return from_; }
  Value GetSubject() { return mail_.Subject; }
  Value GetBody() { return mail_.Body; }

  Mime::Mail mail_;
  ObjectRef from_;
};

class MessageObject : public ObjectWithMembers<MessageObject> {
 public:
  explicit MessageObject(Mime::Mail mail) : mail_(std::make_shared<MailPart>(std::move(mail))) {}
  static const Table& Members() {
    static const Table table = {Property(u"Message", &MessageObject::GetMessage)};
    return table;
  }

 private:
  Value GetMessage() { return mail_; }
  ObjectRef mail_;
};

}  // namespace

ObjectRef MakeMessageObject(Mime::Mail mail) {
  return std::make_shared<MessageObject>(std::move(mail));
}

}  // namespace Gateway
