// ProjectFileFuzz: any text as a project file, and as the value of a key.
#include "fuzz/FuzzFiles.h"
#include "platform/Failure.h"
#include "runtime/ProjectText.h"
#include "siblings/Talvane40/ProjectLocation.h"

namespace {

using namespace Platform;
using Runtime::ProjectText;

// What is set reads back, also from the bytes, and a removed section is gone.
void ChangeAndReadBack(ProjectText& text, const String& name) {
  text.SetKey(u"EMail", name, name);
  text.SetKey(name, u"Key", name);
  const ProjectText read(text.ToBytes());
  Fuzz::Require(read.KeyValue(u"email", name) == name);
  Fuzz::Require(read.KeyValue(name, u"KEY") == name);
  text.RemoveSection(u"email");
  Fuzz::Require(!ProjectText(text.ToBytes()).HasSection(u"EMail"));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = Fuzz::TextOf(data, size);
  try {
    ProjectText text(bytes);
    Fuzz::Require(text.ToBytes() == bytes);
    text.RequireProject();
  } catch (const Failure& failure) {
    Fuzz::Require(failure.Number() == FailureNumber::RefusedInput);
  }
  const Fuzz::FileInMemory file(bytes);
  try {
    Fuzz::Require(!Talvane40::ReadProjectLocation(FromUtf8(file.Path())).Name.empty());
  } catch (const Failure& failure) {
    Fuzz::Require(failure.Number() == FailureNumber::DeviceFailed ||
                  failure.Number() == FailureNumber::RefusedInput);
  }
  ProjectText fresh("[Project]\nFormat=1\nName=A\nDatabase=a.db\n");
  const String name = FromUtf8(bytes.substr(0, 200));
  if (!EqualsIgnoreCase(name, u"EMail") && !EqualsIgnoreCase(name, u"Project"))
    ChangeAndReadBack(fresh, name);
  return 0;
}
