// Texts: UTF-16 texts in expectations, compared and printed as UTF-8, and the texts of failures.
#pragma once

#include <gtest/gtest.h>

#include "platform/Failure.h"
#include "platform/Text.h"

namespace Tests {

inline std::string Utf8(Platform::StringView text) {
  return Platform::ToUtf8(text);
}

// For EXPECT_PRED2, which prints both.
inline bool Holds(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

// The description of the failure that the act raises; empty if it raises none.
template <class Act>
std::string FailureText(Act act) {
  try {
    act();
    return {};
  } catch (const Platform::Failure& failure) {
    return failure.what();
  }
}

}  // namespace Tests

#define EXPECT_TEXT(expected, actual) EXPECT_EQ(Tests::Utf8(expected), Tests::Utf8(actual))
#define ASSERT_TEXT(expected, actual) ASSERT_EQ(Tests::Utf8(expected), Tests::Utf8(actual))
