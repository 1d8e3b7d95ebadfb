// Catalogue: the numbered texts of one resource file in the user's language, with English behind them.
//
// The file of a language lies beside the resource file that a caller names: "/x/lib\TvComRes.dll" stands for
// "/x/lib/TvComRes.de.txt". Where the library folder holds none, it is resources/TvComRes.de.txt in the
// folder of the installed data. Each line is "NUMBER = text", "font = name", a comment behind "#", or empty;
// the text's escapes are "\n", "\r", "\t", "\\" and "\s" for a blank at an end. Read once in a process and
// shared from then on; a catalogue never changes. Any thread may call.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>

#include "platform/Text.h"

namespace TvResourceServices {

using namespace Platform;

class Catalogue {
 public:
  // Raises 57, with the file and the line, for a line that is no text, a number that comes twice and bytes
  // that are no UTF-8; 76 for a file that can't be read.
  explicit Catalogue(const std::filesystem::path& file);

  // The text of a number, which holds as long as the catalogue, or null.
  const String* Find(std::int32_t number) const;

  // The font that the dialogs are to have; empty for the toolkit's own.
  const String& FontName() const { return fontName_; }

 private:
  void ReadLine(StringView line);

  std::map<std::int32_t, String> texts_;
  String fontName_;
};

// What a resource file gives: the user's language where it has a catalogue, and English.
struct Languages {
  std::shared_ptr<const Catalogue> Own;  // null where there is none
  std::shared_ptr<const Catalogue> English;
};

// The catalogues for a resource file. English is the user's language where LC_ALL, LC_MESSAGES and LANG name
// none. A catalogue in another language that isn't there is no failure. What is damaged stays null in
// languages and raises as the constructor does, after all the rest has been put in. Found once in a process; a
// failure is tried again at the next call.
void LoadLanguages(StringView resourceFile, Languages& languages);

}  // namespace TvResourceServices
