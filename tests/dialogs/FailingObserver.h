// FailingObserver: a form's observer that fails at each change of one control, or of the form's icon.
#pragma once

#include "platform/Forms/Form.h"

namespace Tests {

class FailingObserver : public Platform::FormObserver {
 public:
  explicit FailingObserver(Platform::StringView failing) : failing_(failing) {}

  void ControlChanged(const Platform::Control& control, Platform::ControlProperty) override {
    FailAt(control.Name());
  }
  void FormChanged(Platform::FormProperty property) override {
    if (property == Platform::FormProperty::Icon) FailAt(u"icon");
  }
  void FocusMoved(const Platform::Control& control) override { FailAt(control.Name()); }
  void Ended() override {}

 private:
  void FailAt(Platform::StringView changed) const {
    if (changed == failing_) throw Platform::Failure(57, u"test", u"boom");
  }
  Platform::StringView failing_;
};

}  // namespace Tests
