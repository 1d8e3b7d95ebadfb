// ProjectFileObject: the sections and keys of one project file, as Files gives it.
// platform/contracts/GeneralServices.h is the contract (ProjectFile). Save reads the file again and repeats
// the object's changes, so that changes of other programs are kept.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Component.h"
#include "platform/Object.h"
#include "runtime/ProjectText.h"
#include "siblings/TvGeneralServices/LiveObjects.h"

namespace TvGeneralServices {

using namespace Platform;
using Runtime::ProjectText;

class ProjectFileObject : public ObjectWithMembers<ProjectFileObject> {
 public:
  // Raises a failure whose description begins with the path unless it is a readable project file.
  explicit ProjectFileObject(std::string path);

  static const Table& Members();

 private:
  // A key to set; without a value, a section to remove.
  struct Change {
    String Section;
    String Key;
    std::optional<String> NewValue;
  };

  Value KeyValue(std::span<Value> arguments);
  Value CreateKey(std::span<Value> arguments);
  Value Section(std::span<Value> arguments);  // an object with the section's Name, or a null object
  Value DeleteSection(std::span<Value> arguments);
  Value Save(std::span<Value> arguments);

  static void Apply(const Change& change, ProjectText& text);

  std::string path_;
  ProjectText text_;
  std::vector<Change> changes_;  // since the last Save, in their order
  LiveObject live_{liveObjects};
};

}  // namespace TvGeneralServices
