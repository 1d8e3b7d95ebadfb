#include "siblings/TvGeneralServices/ProjectFile.h"

#include <utility>

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
    return ProjectText(content);
  } catch (const Failure& failure) {
    throw Failure(failure.Number(), failure.Source(), FromUtf8(path) + u" " + failure.Description());
  }
}

}  // namespace

ProjectFile::ProjectFile(std::string path)
    : path_(std::move(path)),
      text_(Parse(path_, Runtime::ReadSmallFile(path_, kLargestProjectFile).Content)) {}

const ProjectFile::Table& ProjectFile::Members() {
  static const Table table = {
      Method(u"KeyValue", 2, &ProjectFile::KeyValue),
      Method(u"CreateKey", 3, &ProjectFile::CreateKey),
      Method(u"Section", 1, &ProjectFile::Section),
      Method(u"DeleteSection", 1, &ProjectFile::DeleteSection),
      Method(u"Save", 0, &ProjectFile::Save),
  };
  return table;
}

void ProjectFile::Apply(const Change& change, ProjectText& text) {
  if (change.NewValue)
    text.SetKey(change.Section, change.Key, *change.NewValue);
  else
    text.RemoveSection(change.Section);
}

Value ProjectFile::KeyValue(std::span<Value> arguments) {
  auto value = text_.KeyValue(arguments[0].ToString(), arguments[1].ToString());
  return value ? Value(std::move(*value)) : Value();
}

Value ProjectFile::CreateKey(std::span<Value> arguments) {
  changes_.push_back({arguments[0].ToString(), arguments[1].ToString(), arguments[2].ToString()});
  Apply(changes_.back(), text_);
  return {};
}

Value ProjectFile::Section(std::span<Value> arguments) {
  String name = arguments[0].ToString();
  if (!text_.HasSection(name)) return ObjectRef();
  return ObjectRef(std::make_shared<ProjectSection>(std::move(name)));
}

Value ProjectFile::DeleteSection(std::span<Value> arguments) {
  const String name = arguments[0].ToString();
  if (EqualsIgnoreCase(name, u"Project")) return false;
  changes_.push_back({name, {}, {}});
  Apply(changes_.back(), text_);
  return true;
}

Value ProjectFile::Save(std::span<Value>) {
  if (changes_.empty()) return {};
  const Runtime::LockedFile file(path_, kLargestProjectFile);
  const std::string before = file.Read().Content;
  ProjectText present = Parse(path_, before);
  for (const Change& change : changes_) Apply(change, present);
  if (const std::string after = present.ToBytes(); after != before) file.Replace(after);
  text_ = std::move(present);
  changes_.clear();
  return {};
}

}  // namespace TvGeneralServices
