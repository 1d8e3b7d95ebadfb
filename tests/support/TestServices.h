// TestServices: the real platform services, with parts that a test can remove, replace or make fail.
//
// While Watching is true, every object created by name is wrapped by a watcher. It records each call and
// property as "RegUtil.AddKey(Apollo)" or "RegValue.DataType=1", and replaces it by a planned fault.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "platform/Object.h"
#include "platform/Services.h"

namespace Tests {

using namespace Platform;

// Replaces the nth call of a member: it gives a value, or raises a failure.
struct Fault {
  std::string Member;  // "RegUtil.AddKey"
  int Occurrence = 1;  // counts from 1; 0 is every call
  std::variant<Value, Failure> Outcome = Value(false);
};

class TestServices : public PlatformServices {
 public:
  explicit TestServices(PlatformServices& real) : real_(real) {}

  std::set<std::string> Missing;  // programmatic names that can't be created
  std::set<Guid> MissingClasses;  // the same for classes by identity
  std::map<std::string, std::function<ObjectRef()>> Instead;
  std::map<Guid, std::function<ObjectRef()>> InsteadOfClass;
  std::optional<String> ComponentFolder;  // what FolderOf gives
  bool FolderIsUnknown = false;           // FolderOf raises
  std::optional<Moment> Present;          // what Now gives
  RandomSource* RandomInstead = nullptr;

  bool Watching = false;
  std::vector<Fault> Faults;
  std::vector<std::string> Calls;    // what the watchers recorded
  std::vector<std::string> Created;  // each programmatic name or class identifier of a creation

  std::map<std::string, int> Occurrences;  // how often each member was called

  // The recorded calls that begin so, in their order.
  std::vector<std::string> CallsOf(const std::string& beginning) const;

  ObjectRef CreateByName(StringView programmaticName) override;
  ObjectRef CreateByClass(const Guid& classId) override;
  String FolderOf(const void* codeAddress) override;
  Moment Now() override { return Present ? *Present : real_.Now(); }
  RandomSource& Random() override { return RandomInstead ? *RandomInstead : real_.Random(); }
  FormsToolkit& Toolkit() override { return *ToolkitInUse; }

  FormsToolkit* ToolkitInUse = nullptr;

 private:
  PlatformServices& real_;
  std::shared_ptr<TestServices*> self_ = std::make_shared<TestServices*>(this);
};

}  // namespace Tests
