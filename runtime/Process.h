// Process: what a program does to run components: the folders, the toolkit, and the libraries by their files.
#pragma once

#include <memory>

#include "platform/Component.h"
#include "platform/Forms/FormsToolkit.h"

namespace Runtime {

using namespace Platform;

// Where the stores lie: TALVANE_HOME if set; else /var/lib/talvane for the superuser, and
// $XDG_DATA_HOME/talvane or
// ~/.local/share/talvane for a user. Without a separator at its end. Raises 76 where none can be told, and
// for a TALVANE_HOME that isn't a whole path.
String HomeFolder();

// The folder of the run time's own file, where the other libraries and the resource files lie.
String LibraryFolder();

// The toolkit of the process; null for none. To be called while no form is shown.
void InstallToolkit(std::shared_ptr<FormsToolkit> toolkit);

// The factory of a class, asked of a library file by its DllGetClassObject. A file name without a folder lies
// in LibraryFolder; one with a folder is a whole path. The library stays loaded. Raises 429, with the reason,
// for a file that is missing, is no component, or lacks the class.
const ClassFactory& LoadClassFactory(const String& file, const Guid& classId);

// As long as one lives, a class that its thread has created once is created again without a look at the
// registry and at the library's file. What has changed there counts from the end of the outermost one on.
// Meant for one piece of work, such as one message, that creates the same classes again and again.
class ClassLookupScope {
 public:
  ClassLookupScope();
  ClassLookupScope(const ClassLookupScope&) = delete;
  ClassLookupScope& operator=(const ClassLookupScope&) = delete;
  ~ClassLookupScope();
};

// Runs DllRegisterServer or DllUnregisterServer of a library file. Raises 429 as above, 57 if the
// registration itself failed.
void RegisterComponent(const String& file);
void UnregisterComponent(const String& file);

// Opens a toolkit plug-in: a library that exports `Platform::FormsToolkit* CreateFormsToolkit(std::string&
// reason)`. Null, with the reason in words, where the file is missing or the plug-in refuses.
std::shared_ptr<FormsToolkit> LoadToolkit(const String& file, String& reason);

}  // namespace Runtime
