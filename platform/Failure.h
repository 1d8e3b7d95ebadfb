// Failure: the exception that an operation raises when it can't do its work.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "platform/Text.h"

namespace Platform {

// The numbers of failures that the run time and the siblings raise. A caller decides by the number; the
// description is for the user, in the user's language if it reports a fault of files, stores or entries,
// otherwise in English.
namespace FailureNumber {
inline constexpr std::int32_t InvalidArgument = 5;
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t Subscript = 9;
inline constexpr std::int32_t TypeMismatch = 13;
inline constexpr std::int32_t DeviceFailed = 57;  // input or output failed, or a store is damaged
inline constexpr std::int32_t AlreadyExists = 58;
inline constexpr std::int32_t PermissionDenied = 70;  // to read or write a file or folder
inline constexpr std::int32_t PathNotFound = 76;
inline constexpr std::int32_t ObjectNotSet = 91;
inline constexpr std::int32_t RefusedInput = 380;   // another entry is needed
inline constexpr std::int32_t WrongPassword = 419;  // or a sealed file was changed
inline constexpr std::int32_t CannotCreate = 429;
inline constexpr std::int32_t NoSuchMember = 438;
inline constexpr std::int32_t WrongArguments = 450;
inline constexpr std::int32_t FileDialogCancelled = 32755;
}  // namespace FailureNumber

// The numbers of the failures that the component's ComponentSecurity raises. They are no numbers of texts.
namespace SecurityFailure {
inline constexpr std::int32_t kCipher = 10005;        // a text can't be decoded, or the cipher failed
inline constexpr std::int32_t kNotEncrypted = 10006;  // the password encoder refused the password, or failed
inline constexpr std::int32_t kNoKeyStore = 10007;    // no file name of a key store is set
}  // namespace SecurityFailure

// A raised failure. Its key function is in the run-time library, so that a failure raised in one library can
// be caught in another.
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

// Records each Failure created on this thread during its life, also those that were caught. A host uses it to
// find out why an operation of the component failed whose result is only False. Watches may be nested; only
// the innermost one records. Created, used and destroyed on one thread.
class FailureWatch {
 public:
  FailureWatch();
  ~FailureWatch();
  FailureWatch(const FailureWatch&) = delete;
  FailureWatch& operator=(const FailureWatch&) = delete;

  // In the order of creation; one is missing if there was no memory for it.
  const std::vector<Failure>& Failures() const { return failures_; }

  // The failures that the innermost watch of this thread has recorded since the last call; none without a
  // watch.
  static std::vector<Failure> TakeNew();

 private:
  friend class Failure;
  static void Record(const Failure& failure) noexcept;

  FailureWatch* outer_;
  std::vector<Failure> failures_;
  std::size_t taken_ = 0;
};

// Raises a Failure with one of FailureNumber and its standard description, followed by a colon and the
// detail, if there is one. The source is empty.
[[noreturn]] void Raise(std::int32_t number, StringView detail = {});

// The exception being handled; to be called in a catch block only. An exception of another type becomes a
// Failure with number 57 and what() as its description.
Failure CurrentFailure();

}  // namespace Platform
