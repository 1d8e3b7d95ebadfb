#include "platform/Failure.h"

#include <cstddef>
#include <new>
#include <utility>

namespace Platform {
namespace {

StringView StandardDescription(std::int32_t number) {
  switch (number) {
    case FailureNumber::InvalidArgument:
      return u"Invalid argument";
    case FailureNumber::Overflow:
      return u"Overflow: a number or a length is too large";
    case FailureNumber::Subscript:
      return u"Position out of range";
    case FailureNumber::TypeMismatch:
      return u"Type mismatch: the value can't be used here";
    case FailureNumber::AlreadyExists:
      return u"Already exists";
    case FailureNumber::PathNotFound:
      return u"Path not found";
    case FailureNumber::ObjectNotSet:
      return u"Object not set";
    case FailureNumber::RefusedInput:
      return u"The entry can't be taken";
    case FailureNumber::WrongPassword:
      return u"The password is wrong";
    case FailureNumber::CannotCreate:
      return u"Component can't be created";
    case FailureNumber::NoSuchMember:
      return u"The object has no such member";
    case FailureNumber::WrongArguments:
      return u"Wrong number of arguments";
    case FailureNumber::FileDialogCancelled:
      return u"The file dialog was cancelled";
    default:
      return u"The operation failed";
  }
}

thread_local FailureWatch* innermostWatch = nullptr;

}  // namespace

Failure::Failure(std::int32_t number, String source, String description)
    : number_(number),
      source_(std::move(source)),
      description_(std::move(description)),
      what_(ToUtf8(description_)) {
  FailureWatch::Record(*this);
}

Failure::~Failure() = default;

FailureWatch::FailureWatch() : outer_(std::exchange(innermostWatch, this)) {}

FailureWatch::~FailureWatch() {
  innermostWatch = outer_;
}

std::vector<Failure> FailureWatch::TakeNew() {
  if (!innermostWatch) return {};
  const auto& failures = innermostWatch->failures_;
  const std::size_t first = std::exchange(innermostWatch->taken_, failures.size());
  return {failures.begin() + static_cast<std::ptrdiff_t>(first), failures.end()};
}

void FailureWatch::Record(const Failure& failure) noexcept try {
  if (innermostWatch) innermostWatch->failures_.push_back(failure);
} catch (const std::bad_alloc&) {
  // The failure itself is raised all the same.
}

void Raise(std::int32_t number, StringView detail) {
  String description(StandardDescription(number));
  if (!detail.empty()) description.append(u": ").append(detail);
  throw Failure(number, {}, std::move(description));
}

Failure CurrentFailure() {
  try {
    throw;
  } catch (const Failure& failure) {
    return failure;
  } catch (const std::bad_alloc&) {
    return Failure(FailureNumber::DeviceFailed, {}, u"Out of memory");
  } catch (const std::exception& exception) {
    return Failure(FailureNumber::DeviceFailed, {}, FromUtf8(exception.what()));
  } catch (...) {
    return Failure(FailureNumber::DeviceFailed, {}, String(StandardDescription(0)));
  }
}

}  // namespace Platform
