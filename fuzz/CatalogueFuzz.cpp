// CatalogueFuzz: any text as a catalogue of texts, with values put into each text that it has.
#include "fuzz/FuzzFiles.h"
#include "platform/Failure.h"
#include "runtime/Catalogue.h"
#include "runtime/TextTemplate.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Platform;
  const Fuzz::FileInMemory file(Fuzz::TextOf(data, size));
  try {
    const Runtime::Catalogue catalogue(file.Path());
    for (std::int32_t number = -10; number < 100; ++number) {
      const String* text = catalogue.Find(number);
      const String values[] = {u"first %2", u"second"};
      if (text) Runtime::Expand(*text, values);
    }
  } catch (const Failure& failure) {
    Fuzz::Require(failure.Number() == FailureNumber::DeviceFailed);
  }
  return 0;
}
