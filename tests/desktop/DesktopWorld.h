// DesktopWorld: a world whose dialogs open in real windows. The modal calls run on a thread of their own.
#pragma once

#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "runtime/Libraries.h"
#include "src/mail/EMailManager.h"
#include "tests/desktop/DesktopUser.h"
#include "tests/mailbox/MailboxWorld.h"
#include "tests/outbound/OutboundTest.h"

namespace Tests {

class DesktopWorld : public MailboxWorld {
 public:
  DesktopWorld() {
    String reason;
    desktop_ = Runtime::LoadToolkit(u"TalvaneDesktop.so", reason);
    if (!desktop_) throw std::runtime_error(Utf8(reason));
    Services.ToolkitInUse = desktop_.get();
  }

  FormsToolkit& Desktop() { return *desktop_; }

  // Opens the mailbox dialog. When it has ended, the future has the call's result and the mailbox's name.
  std::future<std::string> Configure(bool add, const String& mailBox) {
    return std::async(std::launch::async, [this, add, mailBox] {
      EMailManager handler;
      String name = mailBox, product;
      const bool done(handler.MailHandler_Configure(add ? 1 : 0, name, product, SessionWith({})));
      return std::string(done ? "true " : "false ") + Utf8(name);
    });
  }

  std::future<bool> ConfigureOutbound() {
    return std::async(std::launch::async,
                      [] { return static_cast<bool>(EMailManager().ConfigureOutBoundEmail()); });
  }

 private:
  std::shared_ptr<FormsToolkit> desktop_;
};

// The user of a dialog whose call runs on a thread of its own. The destructor closes a dialog that is still
// open.
template <class Result>
class Dialog : public DesktopUser {
 public:
  Dialog(const char* form, std::future<Result> call) : DesktopUser(form), call_(std::move(call)) {}
  ~Dialog() {
    if (call_.valid()) CloseBox(), call_.get();
  }
  Result Ended() { return call_.get(); }

 private:
  std::future<Result> call_;
};

}  // namespace Tests
