#include "siblings/TvGeneralServices/ProjectFileObject.h"

#include <utility>

#include "platform/StoredNames.h"
#include "runtime/DurableFile.h"

namespace TvGeneralServices {
namespace {

class ProjectSection : public ObjectWithMembers<ProjectSection> {
 public:
  explicit ProjectSection(String name) : name_(std::move(name)) {}

  static const Table& Members() {
    static const Table table = {Property(u"Name", &ProjectSection::GetName)};
    return table;
  }

 private:
  Value GetName() { return name_; }

  String name_;
  LiveObject live_{liveObjects};
};

ProjectText Parse(const std::string& path, const std::string& content) {
  try {
    ProjectText text(content);
    text.RequireProject();
    return text;
  } catch (const Failure& failure) {
    throw Failure(failure.Number(), failure.Source(), FromUtf8(path) + u" " + failure.Description());
  }
}

}  // namespace

ProjectFileObject::ProjectFileObject(std::string path)
    : path_(std::move(path)),
      text_(Parse(path_, Runtime::ReadSmallFile(path_, ProjectText::kLargestFile).Content)) {}

const ProjectFileObject::Table& ProjectFileObject::Members() {
  static const Table table = {
      Method(u"KeyValue", 2, &ProjectFileObject::KeyValue),
      Method(u"CreateKey", 3, &ProjectFileObject::CreateKey),
      Method(u"Section", 1, &ProjectFileObject::Section),
      Method(u"DeleteSection", 1, &ProjectFileObject::DeleteSection),
      Method(u"Save", 0, &ProjectFileObject::Save),
  };
  return table;
}

void ProjectFileObject::Apply(const Change& change, ProjectText& text) {
  if (change.NewValue)
    text.SetKey(change.Section, change.Key, *change.NewValue);
  else
    text.RemoveSection(change.Section);
}

Value ProjectFileObject::KeyValue(std::span<Value> arguments) {
  auto value = text_.KeyValue(arguments[0].ToString(), arguments[1].ToString());
  return value ? Value(std::move(*value)) : Value();
}

Value ProjectFileObject::CreateKey(std::span<Value> arguments) {
  changes_.push_back({arguments[0].ToString(), arguments[1].ToString(), arguments[2].ToString()});
  Apply(changes_.back(), text_);
  return {};
}

Value ProjectFileObject::Section(std::span<Value> arguments) {
  String name = arguments[0].ToString();
  if (!text_.HasSection(name)) return ObjectRef();
  return ObjectRef(std::make_shared<ProjectSection>(std::move(name)));
}

Value ProjectFileObject::DeleteSection(std::span<Value> arguments) {
  const String name = arguments[0].ToString();
  if (EqualsIgnoreCase(name, ProjectHeader::kSection)) return false;
  changes_.push_back({name, {}, {}});
  Apply(changes_.back(), text_);
  return true;
}

Value ProjectFileObject::Save(std::span<Value>) {
  if (changes_.empty()) return {};
  const Runtime::LockedFile file(path_, ProjectText::kLargestFile);
  const std::string before = file.Read().Content;
  ProjectText present = Parse(path_, before);
  for (const Change& change : changes_) Apply(change, present);
  if (const std::string after = present.ToBytes(); after != before) file.Replace(after);
  text_ = std::move(present);
  changes_.clear();
  return {};
}

}  // namespace TvGeneralServices
