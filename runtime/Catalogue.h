// Catalogue: the numbered texts of one resource file in one language. docs/formats.md describes the files.
//
// The catalogues of the resource file "/x/lib\TvComRes.dll" are "/x/lib/TvComRes.LANGUAGE.txt" or, if the
// library folder holds none, resources/TvComRes.LANGUAGE.txt in the folder of the installed data. They are
// read once in a process and then shared; a catalogue never changes. Any thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>

#include "platform/Text.h"

namespace Runtime {

using Platform::String;
using Platform::StringView;

class Catalogue {
 public:
  // Raises 57, with the file and the line, for an invalid line, a duplicate number or bytes that are not
  // UTF-8, and for a file that can't be read. The descriptions are in English, since they are about the
  // texts.
  explicit Catalogue(const std::filesystem::path& file);

  // The texts in the bytes of a catalogue's file, whose name is for descriptions.
  Catalogue(std::string_view bytes, const std::string& name);

  // The text of a number, owned by the catalogue; null if there is none.
  const String* Find(std::int32_t number) const;

  // The font of the dialogs; empty for the default font.
  const String& FontName() const { return fontName_; }

 private:
  void ReadLine(StringView line);

  std::map<std::int32_t, String> texts_;
  String fontName_;
};

// The catalogues of a resource file.
struct Languages {
  std::shared_ptr<const Catalogue> Own;  // in the user's language; null if there is none
  std::shared_ptr<const Catalogue> English;
};

// Loads the catalogues for a resource file: in the user's language, or in the one given, such as "de". A
// missing catalogue in that language is no failure, nor is a text that names no language. If a catalogue is
// damaged or English is missing, the other one is loaded before the failure of the constructor is raised.
// After a failure the next call tries again.
void LoadLanguages(StringView resourceFile, Languages& languages);
void LoadLanguages(StringView resourceFile, Languages& languages, const std::string& language);

}  // namespace Runtime
