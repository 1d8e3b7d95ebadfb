// ResourceServices: typed proxies for the siblings that give numbered texts and show help topics.
//
// See ObjectProxy for what every operation may raise.
#pragma once

#include <cstdint>

#include "platform/contracts/ObjectProxy.h"

namespace Platform {

// The numbered texts of one resource file, in the user's language with English as the fallback. A new object
// has no texts.
class Resource : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // Reads the catalogues that belong to a resource file ("...\TvComRes.dll" is TvComRes.LANGUAGE.txt); name
  // is that of the component whose texts they are. 57 where a catalogue is missing or damaged; the languages
  // that could be read are in use all the same.
  void LoadResources(StringView path, StringView name) const { Call(u"LoadResources", path, name); }
  // The text of a number. For a number without a text: "(no text for message NUMBER)".
  String ResourceString(std::int32_t number) const { return Call(u"ResourceString", number).ToString(); }
  // The same with the elements of the array put into the places %1 to %9. A missing element is empty. 13 for
  // an element that is no text or number.
  String ResourceStringV(std::int32_t number, const Array& arguments) const {
    return Call(u"ResourceStringV", number, arguments).ToString();
  }
  // The same with two strings.
  String ResourceStrings(std::int32_t number, StringView first, StringView second) const {
    return Call(u"ResourceStrings", number, first, second).ToString();
  }
  // The name of the font for dialogs; empty for the font of the desktop.
  String GetFontName() const { return Call(u"GetFontName").ToString(); }
};

// Shows help.
class Help : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // Opens a help page in the viewer of the process's forms toolkit. 57 if the viewer can't open it, 429
  // where the process has no toolkit. The thread whose user is to see it.
  void DisplayHelpTopic(StringView topic) const { Call(u"DisplayHelpTopic", topic); }
};

}  // namespace Platform
