// Texts: UTF-16 texts in expectations, compared and printed as UTF-8.
#pragma once

#include <gtest/gtest.h>

#include "platform/Text.h"

namespace Tests {

inline std::string Utf8(Platform::StringView text) {
  return Platform::ToUtf8(text);
}

}  // namespace Tests

#define EXPECT_TEXT(expected, actual) EXPECT_EQ(Tests::Utf8(expected), Tests::Utf8(actual))
#define ASSERT_TEXT(expected, actual) ASSERT_EQ(Tests::Utf8(expected), Tests::Utf8(actual))
