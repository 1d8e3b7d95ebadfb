#include "runtime/Texts.h"

#include <exception>

#include "platform/Failure.h"
#include "platform/StoredNames.h"
#include "runtime/Catalogue.h"
#include "runtime/EnglishTexts.h"
#include "runtime/Folders.h"
#include "runtime/Language.h"
#include "runtime/TextTemplate.h"

namespace Runtime {
namespace {

const Catalogue& BuiltIn() {
  static const Catalogue& english = *new Catalogue(EnglishTexts(), "the built-in catalogue");
  return english;
}

}  // namespace

String TextOf(std::int32_t number, StringView first, StringView second) {
  return TextIn({}, number, first, second);
}

String TextIn(StringView language, std::int32_t number, StringView first, StringView second) try {
  // A text is often loaded while a failure is reported. A missing catalogue must not be recorded as another
  // one.
  const Platform::FailureWatch unrecorded;
  const StringView file =
      number < Platform::TextNumber::kFirstOfPrograms ? u"TvEmailServicesRes.dll" : u"TvMailRes.dll";
  Languages languages;
  try {
    LoadLanguages(LibraryFolder() + u'\\' + String(file), languages,
                  language.empty() ? UserLanguage() : Platform::ToUtf8(language));
  } catch (const std::exception&) {
    // The catalogues that could be loaded are used.
  }
  const String arguments[] = {String(first), String(second)};
  for (const Catalogue* catalogue : {languages.Own.get(), languages.English.get(), &BuiltIn()}) {
    const String* text = catalogue ? catalogue->Find(number) : nullptr;
    if (text) return Expand(*text, arguments);
  }
  return {};
} catch (const std::exception&) {
  return {};
}

}  // namespace Runtime
