// ScriptedGeneral: general services whose first answer contains the platform, and whose later ones the
// version.
#pragma once

#include "platform/Object.h"

namespace Tests {

class ScriptedGeneral : public Platform::Object {
 public:
  explicit ScriptedGeneral(Platform::String platform, Platform::String version = {})
      : answers_{std::move(platform), std::move(version)} {}

  Platform::Value Call(Platform::StringView, std::span<Platform::Value> strings) override {
    strings[calls_ == 0 ? 5 : 2] = answers_[calls_];
    calls_ = 1;
    return true;
  }

 private:
  Platform::String answers_[2];
  int calls_ = 0;
};

}  // namespace Tests
