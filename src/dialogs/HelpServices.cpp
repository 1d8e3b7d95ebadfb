#include "src/dialogs/HelpServices.h"

#include "platform/Forms/FormsToolkit.h"
#include "platform/Services.h"

namespace TvEmailServices {
namespace {

// The help system's syntax: the name of its window follows ">".
constexpr StringView kHelpFile = u"MailPump.hlp >(w95sec)";

constexpr std::uint32_t kShowContextCommand = 1;

thread_local Help keptHelp;

bool EndsInBin(StringView folder) {
  return folder.size() >= 3 && EqualsIgnoreCase(folder.substr(folder.size() - 3), u"bin");
}

}  // namespace

String& EnsureTrailingSeparator(String& path) {
  path = Trim(path);
  if (path.empty()) return path;
  const bool onlyForward = path.find(u'\\') == String::npos && path.find(u'/') != String::npos;
  const char16_t separator = onlyForward ? u'/' : u'\\';
  if (path.back() != separator) path += separator;
  return path;
}

String HelpFolderFor(const String& componentFolder) {
  String folder = componentFolder;
  EnsureTrailingSeparator(folder);
  if (folder.empty()) return folder;
  if (EndsInBin(StringView(folder).substr(0, folder.size() - 1))) {
    folder.resize(folder.size() - 4);
    folder += u"Help\\";
  }
  return EnsureTrailingSeparator(folder);
}

String GetHelpFolder() {
  return HelpFolderFor(Services().FolderOf(reinterpret_cast<const void*>(&GetHelpFolder)));
}

void ShowHelpContext(std::int32_t context, std::intptr_t window) {
  String file = GetHelpFolder();
  EnsureTrailingSeparator(file) += kHelpFile;
  // The 8-bit text of this platform is UTF-8.
  Services().Toolkit().ShowHelp(window, ToUtf8(file), kShowContextCommand,
                                static_cast<std::uint32_t>(context));
}

void ShowHelpTopic(const String& topic, std::intptr_t /*window*/) {
  GetHelpObject().DisplayHelpTopic(topic);
}

Help GetHelpObject() {
  if (!keptHelp) keptHelp = Help(Services().CreateByName(u"TvGeneralGuiServices.Help"));
  return keptHelp;
}

}  // namespace TvEmailServices
