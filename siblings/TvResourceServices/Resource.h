// Resource: the numbered texts of one resource file, as a component asks for them.
//
// An object known by its members' names, used on the thread that created it. Catalogues are shared by all
// objects of the process, so that making one and loading a file that was loaded before costs microseconds.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"
#include "siblings/TvResourceServices/Catalogue.h"

namespace TvResourceServices {

extern std::atomic<long> liveObjects;

class Resource : public ObjectWithMembers<Resource> {
 public:
  static const Table& Members();

 private:
  // LoadResources(path, name). Raises what Catalogue raises; the languages that could be read serve all the
  // same. The name is that of the component whose texts these are, for people who read the calls.
  Value LoadResources(std::span<Value> arguments);

  // The text of a number, with no arguments, with those of an array, or with two strings. A number without a
  // text gives "(no text for message NUMBER)". Raise 13 for an argument that is no text or number.
  Value ResourceString(std::span<Value> arguments);
  Value ResourceStringV(std::span<Value> arguments);
  Value ResourceStrings(std::span<Value> arguments);

  // The name of the font for dialogs; empty for the toolkit's own.
  Value GetFontName(std::span<Value> arguments);

  String Text(std::int32_t number, std::span<const String> arguments) const;

  Languages languages_;
  LiveObject live_{liveObjects};
};

}  // namespace TvResourceServices
