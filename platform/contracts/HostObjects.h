// HostObjects: typed proxies for the objects that the mail-reader host passes to the component.
//
// See ObjectProxy for what every operation may raise; 91 also if a parent object (Message, From, SendLogon,
// User) is nothing. Nothing is cached: each operation reads the members again. Used on the thread of the
// call.
#pragma once

#include "platform/contracts/ObjectProxy.h"

namespace Platform {

// A mail. All texts are decoded.
class MailMessage : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // False if the mail has no sender.
  bool HasFrom() const { return From() != nullptr; }
  String FromAddress() const { return Part(From()).Text(u"Address"); }
  String Subject() const { return Part(Message()).Text(u"subject"); }
  String Body() const { return Part(Message()).Text(u"body"); }

 private:
  class Part : public ObjectProxy {
   public:
    using ObjectProxy::ObjectProxy;
    String Text(StringView member) const { return Get(member).ToString(); }
    ObjectRef Child(StringView member) const { return Get(member).ToObject(); }
  };
  ObjectRef Message() const { return Get(u"Message").ToObject(); }
  ObjectRef From() const { return Part(Message()).Child(u"From"); }
};

// The host's settings for sending a project's mail.
class Session : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  bool HasSendLogon() const { return Get(u"SendLogon").ToObject() != nullptr; }
  bool HasUser() const { return Get(u"User").ToObject() != nullptr; }
  // The text TextNumber::kMapiName or kSmtpName, if the host knows the transport.
  String Transport() const { return Part(Get(u"SendLogon").ToObject()).Text(u"Transport"); }
  String MAPIProfile() const { return Get(u"MAPIProfile").ToString(); }
  String HostName() const { return Part(Get(u"SendLogon").ToObject()).Text(u"HostName"); }
  String Address() const { return Part(Get(u"User").ToObject()).Text(u"Address"); }
  String RealName() const { return Part(Get(u"User").ToObject()).Text(u"RealName"); }

 private:
  class Part : public ObjectProxy {
   public:
    using ObjectProxy::ObjectProxy;
    String Text(StringView member) const { return Get(member).ToString(); }
  };
};

}  // namespace Platform
