// Failure: what is raised when an operation can't do its work, and what passes upward until someone catches
// it.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "platform/Text.h"

namespace Platform {

// The numbers of failures that the run time and the siblings raise. A caller decides by them; the description
// is for people.
namespace FailureNumber {
inline constexpr std::int32_t InvalidArgument = 5;
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t Subscript = 9;
inline constexpr std::int32_t TypeMismatch = 13;
inline constexpr std::int32_t DeviceFailed = 57;
inline constexpr std::int32_t AlreadyExists = 58;
inline constexpr std::int32_t PermissionDenied = 70;  // this user may not read or write a file or folder
inline constexpr std::int32_t PathNotFound = 76;
inline constexpr std::int32_t ObjectNotSet = 91;
inline constexpr std::int32_t RefusedInput = 380;   // what was entered can't be taken; another entry can
inline constexpr std::int32_t WrongPassword = 419;  // also of a sealed file that was changed
inline constexpr std::int32_t CannotCreate = 429;
inline constexpr std::int32_t NoSuchMember = 438;
inline constexpr std::int32_t WrongArguments = 450;
inline constexpr std::int32_t FileDialogCancelled = 32755;
}  // namespace FailureNumber

// A raised failure. Its destructor lives in the run-time library, so that one raised in a loaded library can
// be caught anywhere.
class Failure : public std::exception {
 public:
  Failure(std::int32_t number, String source, String description);
  Failure(const Failure&) = default;
  Failure& operator=(const Failure&) = default;
  ~Failure() override;

  std::int32_t Number() const noexcept { return number_; }
  const String& Source() const noexcept { return source_; }
  const String& Description() const noexcept { return description_; }

  // The description in UTF-8.
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  std::int32_t number_;
  String source_;
  String description_;
  std::string what_;
};

// The numbers of the failures that were raised on this thread since it was made, also of those that a caller
// below turned into False or a message. For a host that has to tell why an act of the component failed, whose
// interface gives only that. Watches may be nested; the innermost notes. Used on one thread.
class FailureWatch {
 public:
  FailureWatch();
  ~FailureWatch();
  FailureWatch(const FailureWatch&) = delete;
  FailureWatch& operator=(const FailureWatch&) = delete;

  const std::vector<std::int32_t>& Numbers() const { return numbers_; }

 private:
  friend class Failure;
  static void Note(std::int32_t number) noexcept;

  FailureWatch* outer_;
  std::vector<std::int32_t> numbers_;
};

// Raises one of FailureNumber with its standard description; detail, where there is one, names the culprit
// and follows behind a colon.
[[noreturn]] void Raise(std::int32_t number, StringView detail = {});

// The failure being handled, whatever its C++ type: to be called in a catch block alone. An exception that is
// no Failure comes as number 57 with what() as its description.
Failure CurrentFailure();

}  // namespace Platform
