#include "tests/support/TestServices.h"

#include <algorithm>

namespace Tests {
namespace {

class Watcher : public Object {
 public:
  Watcher(std::weak_ptr<TestServices*> services, std::string name, ObjectRef target)
      : services_(std::move(services)), name_(std::move(name)), target_(std::move(target)) {}

  const ObjectRef& Target() const { return target_; }

  Value Get(StringView member) override {
    const std::string key = name_ + "." + ToUtf8(member);
    Record(key);
    if (const auto planned = PlannedFor(key)) return *planned;
    return target_->Get(member);
  }

  void Set(StringView member, Value value) override {
    const std::string key = name_ + "." + ToUtf8(member);
    Record(key + "=" + TextOf(value));
    if (!PlannedFor(key)) target_->Set(member, std::move(value));
  }

  Value Call(StringView member, std::span<Value> arguments) override {
    const std::string key = name_ + "." + ToUtf8(member);
    std::string call = key + "(";
    for (Value& argument : arguments) {
      call += (&argument == arguments.data() ? "" : ", ") + TextOf(argument);
      if (argument.IsObject()) {
        if (const auto watcher = std::dynamic_pointer_cast<Watcher>(argument.ToObject()))
          argument = watcher->Target();
      }
    }
    Record(call + ")");
    if (const auto planned = PlannedFor(key)) return *planned;
    Value result = target_->Call(member, arguments);
    if (member == u"RetrieveTVSFile" && result.ToObject()) {
      return ObjectRef(std::make_shared<Watcher>(services_, "ProjectFile", result.ToObject()));
    }
    return result;
  }

 private:
  static std::string TextOf(const Value& value) {
    if (value.IsObject()) return value.ToObject() ? "object" : "nothing";
    if (value.IsArray()) return "array";
    if (value.IsBytes()) return "bytes";
    return ToUtf8(value.ToString());
  }

  void Record(std::string call) {
    if (const auto services = services_.lock()) (*services)->Calls.push_back(std::move(call));
  }

  std::optional<Value> PlannedFor(const std::string& key) {
    const auto services = services_.lock();
    if (!services) return {};
    const int occurrence = ++(*services)->Occurrences[key];
    for (const Fault& fault : (*services)->Faults) {
      if (fault.Member != key || (fault.Occurrence != 0 && fault.Occurrence != occurrence)) continue;
      if (const auto* failure = std::get_if<Failure>(&fault.Outcome)) throw *failure;
      return std::get<Value>(fault.Outcome);
    }
    return {};
  }

  // The component keeps an object in each thread, which may exist longer than the test's services.
  std::weak_ptr<TestServices*> services_;
  std::string name_;
  ObjectRef target_;
};

}  // namespace

std::vector<std::string> TestServices::CallsOf(const std::string& beginning) const {
  std::vector<std::string> found;
  std::copy_if(Calls.begin(), Calls.end(), std::back_inserter(found),
               [&](const std::string& call) { return call.starts_with(beginning); });
  return found;
}

ObjectRef TestServices::CreateByName(StringView programmaticName) {
  const std::string name = ToUtf8(programmaticName);
  Created.push_back(name);
  if (Missing.contains(name)) Raise(FailureNumber::CannotCreate, programmaticName);
  const auto instead = Instead.find(name);
  ObjectRef object = instead != Instead.end() ? instead->second() : real_.CreateByName(programmaticName);
  if (!Watching || !object) return object;
  return std::make_shared<Watcher>(self_, name.substr(name.find('.') + 1), std::move(object));
}

ObjectRef TestServices::CreateByClass(const Guid& classId) {
  Created.push_back(ToUtf8(ToText(classId)));
  if (MissingClasses.contains(classId)) Raise(FailureNumber::CannotCreate, ToText(classId));
  const auto instead = InsteadOfClass.find(classId);
  return instead != InsteadOfClass.end() ? instead->second() : real_.CreateByClass(classId);
}

String TestServices::FolderOf(const void* codeAddress) {
  if (FolderIsUnknown) Raise(FailureNumber::PathNotFound);
  return ComponentFolder ? *ComponentFolder : real_.FolderOf(codeAddress);
}

}  // namespace Tests
