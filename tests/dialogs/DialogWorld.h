// DialogWorld: runs a test in a thread of its own, because the font's name, the resource object and the help
// object are kept in each thread, in a world with numbered texts and a font.
#pragma once

#include <thread>

#include "tests/services/NumberedTexts.h"
#include "tests/support/World.h"

namespace Tests {

template <class Body>
void InDialogWorld(const Body& body, const char16_t* fontName = u"Courier") {
  std::thread([&] {
    World world;
    world.Services.Instead["TvResourceServices.Resource"] = [] { return std::make_shared<NumberedTexts>(); };
    world.Services.Watching = true;
    world.Services.Faults = {{"Resource.GetFontName", 0, Value(fontName)}};
    body(world);
  }).join();
}

}  // namespace Tests
