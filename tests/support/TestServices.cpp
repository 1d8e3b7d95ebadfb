#include "tests/support/TestServices.h"

#include <algorithm>

namespace Tests {
namespace {

class Watcher : public Object {
 public:
  Watcher(TestServices& services, std::string name, ObjectRef target)
      : services_(services), name_(std::move(name)), target_(std::move(target)) {}

  const ObjectRef& Target() const { return target_; }

  Value Get(StringView member) override {
    const std::string key = name_ + "." + ToUtf8(member);
    services_.Calls.push_back(key);
    if (const auto planned = PlannedFor(key)) return *planned;
    return target_->Get(member);
  }

  void Set(StringView member, Value value) override {
    const std::string key = name_ + "." + ToUtf8(member);
    services_.Calls.push_back(key + "=" + TextOf(value));
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
    services_.Calls.push_back(call + ")");
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

  std::optional<Value> PlannedFor(const std::string& key) {
    const int occurrence = ++services_.Occurrences[key];
    for (const Fault& fault : services_.Faults) {
      if (fault.Member != key || (fault.Occurrence != 0 && fault.Occurrence != occurrence)) continue;
      if (const auto* failure = std::get_if<Failure>(&fault.Outcome)) throw *failure;
      return std::get<Value>(fault.Outcome);
    }
    return {};
  }

  TestServices& services_;
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
  return std::make_shared<Watcher>(*this, name.substr(name.find('.') + 1), std::move(object));
}

ObjectRef TestServices::CreateByClass(const Identity& classId) {
  Created.push_back(ToUtf8(ToText(classId)));
  if (MissingClasses.contains(classId)) Raise(FailureNumber::CannotCreate, ToText(classId));
  const auto instead = InsteadOfClass.find(classId);
  return instead != InsteadOfClass.end() ? instead->second() : real_.CreateByClass(classId);
}

String TestServices::FolderOf(const void* codeAddress) {
  return ComponentFolder ? *ComponentFolder : real_.FolderOf(codeAddress);
}

}  // namespace Tests
