// GeneralOf: a general service that tells the platform in its first answer and the version in its second.
#pragma once

#include "platform/Object.h"

namespace Tests {

class GeneralOf : public Platform::Object {
 public:
  explicit GeneralOf(Platform::String platform, Platform::String version = {})
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
