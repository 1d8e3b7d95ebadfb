// ResourceServices: typed proxies for the siblings TvResourceServices (numbered texts) and
// TvGeneralGuiServices (help).
//
// See ObjectProxy for what every operation may raise, and for threads and ownership.
#pragma once

#include <cstdint>

#include "platform/contracts/ObjectProxy.h"

namespace Platform {

// The numbered texts of one resource file, in the user's language, with English as the fallback. A new object
// has none.
class Resource : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // Loads the catalogues of a resource file: for "...\TvComRes.dll" the files TvComRes.LANGUAGE.txt. name is
  // the component's, for information only. Raises 76 if a catalogue can't be read, 57 if it is damaged;
  // catalogues that could be read are loaded all the same. A missing one of the user's language is no
  // failure.
  void LoadResources(StringView path, StringView name) const { Call(u"LoadResources", path, name); }
  // The text of a number; "(no text for message NUMBER)" if there is none.
  String ResourceString(std::int32_t number) const { return Call(u"ResourceString", number).ToString(); }
  // The same with the elements of the array in the places %1 to %9; missing ones are empty. Raises 13 for an
  // element that is no text or number.
  String ResourceStringV(std::int32_t number, const Array& arguments) const {
    return Call(u"ResourceStringV", number, arguments).ToString();
  }
  // The same with two strings.
  String ResourceStrings(std::int32_t number, StringView first, StringView second) const {
    return Call(u"ResourceStrings", number, first, second).ToString();
  }
  // The name of the font for dialogs; empty: the toolkit's default.
  String GetFontName() const { return Call(u"GetFontName").ToString(); }
};

// Shows help topics.
class Help : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // Opens a help page by FormsToolkit::ShowTopic. Raises 57 if it can't be shown, 429 if the process has no
  // toolkit.
  void DisplayHelpTopic(StringView topic) const { Call(u"DisplayHelpTopic", topic); }
};

}  // namespace Platform
