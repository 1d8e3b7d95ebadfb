// ResourceServices: typed windows on the siblings that give numbered texts and show help topics.
#pragma once

#include <cstdint>

#include "platform/contracts/ObjectProxy.h"

namespace Platform {

// Numbered texts of one resource file. All arguments pass by reference; none is changed.
class Resource : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  void LoadResources(StringView path, StringView name) const { Call(u"LoadResources", path, name); }
  String ResourceString(std::int32_t number) const { return Call(u"ResourceString", number).ToString(); }
  String ResourceStringV(std::int32_t number, const Array& arguments) const {
    return Call(u"ResourceStringV", number, arguments).ToString();
  }
  String ResourceStrings(std::int32_t number, StringView first, StringView second) const {
    return Call(u"ResourceStrings", number, first, second).ToString();
  }
  String GetFontName() const { return Call(u"GetFontName").ToString(); }
};

class Help : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  void DisplayHelpTopic(StringView topic) const { Call(u"DisplayHelpTopic", topic); }
};

}  // namespace Platform
