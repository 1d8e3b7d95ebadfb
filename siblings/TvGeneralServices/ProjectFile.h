// ProjectFile: the section-and-key view of one project file.
//
// Changes lie in the object until Save. Save takes the file as it is then and makes the same changes in it,
// so that what others saved meanwhile stays.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Component.h"
#include "platform/Object.h"
#include "siblings/TvGeneralServices/LiveObjects.h"
#include "siblings/TvGeneralServices/ProjectText.h"

namespace TvGeneralServices {

inline constexpr std::size_t kLargestProjectFile = 1 << 20;  // bytes; no project file comes near it

class ProjectFile : public ObjectWithMembers<ProjectFile> {
 public:
  // Raises a failure that names the path for anything that is no readable project file.
  explicit ProjectFile(std::string path);

  static const Table& Members();

 private:
  // A key to set; without a value, a section to remove.
  struct Change {
    String Section;
    String Key;
    std::optional<String> NewValue;
  };

  Value KeyValue(std::span<Value> arguments);   // no value where the key is absent
  Value CreateKey(std::span<Value> arguments);  // the value as a string
  Value Section(std::span<Value> arguments);    // an object with the section's Name, or nothing

  // False for the section [Project], without which the file would be none; otherwise true: it is gone.
  Value DeleteSection(std::span<Value> arguments);

  // Raises 57 where the file can't be saved. The old content and the object's changes stand then.
  Value Save(std::span<Value> arguments);

  static void Apply(const Change& change, ProjectText& text);

  std::string path_;
  ProjectText text_;
  std::vector<Change> changes_;  // since the last Save, in their order
  LiveObject live_{liveObjects};
};

}  // namespace TvGeneralServices
