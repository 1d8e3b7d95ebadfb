#include "host/ExitCode.h"

#include <optional>

namespace Host {

namespace {

namespace Number = Platform::FailureNumber;

constexpr struct {
  std::int32_t Failure;
  ExitCode Code;
} kCodes[] = {
    {Number::RefusedInput, DataRefused},      {Number::AlreadyExists, DataRefused},
    {Number::WrongPassword, DataRefused},     {Number::PathNotFound, DataRefused},
    {Number::DeviceFailed, TryAgain},         {Number::CannotCreate, TryAgain},
    {Number::PermissionDenied, CannotCreate}, {Platform::SecurityFailure::kNotEncrypted, DataRefused},
};

std::optional<ExitCode> Find(std::int32_t failureNumber) {
  for (const auto& [failure, code] : kCodes) {
    if (failure == failureNumber) return code;
  }
  return std::nullopt;
}

}  // namespace

ExitCode CodeOf(std::int32_t failureNumber) {
  return Find(failureNumber).value_or(TryAgain);
}

ExitCode CodeOf(const Platform::FailureWatch& watch, ExitCode withoutFailure) {
  ExitCode code = withoutFailure;
  for (const Platform::Failure& failure : watch.Failures()) {
    const auto found = Find(failure.Number());
    if (found) code = *found;
    if (found == TryAgain) break;
  }
  return code;
}

}  // namespace Host
