// EditLibrary: libedit, loaded with the first line that is edited.
#pragma once

#include <histedit.h>

#include "runtime/SystemLibrary.h"

namespace Host {

// The functions that are called, under their own names.
struct EditLibrary : Runtime::LibraryFunctions<EditLibrary> {
  static constexpr const char* kFile = "libedit.so.2";
  static constexpr const char* kPackage = "libedit2";

  decltype(&::el_deletestr) el_deletestr = Find("el_deletestr");
  decltype(&::el_end) el_end = Find("el_end");
  decltype(&::el_init) el_init = Find("el_init");
  decltype(&::el_insertstr) el_insertstr = Find("el_insertstr");
  decltype(&::el_resize) el_resize = Find("el_resize");
  decltype(&::el_set) el_set = Find("el_set");
  decltype(&::el_wget) el_wget = Find("el_wget");
  decltype(&::el_wgets) el_wgets = Find("el_wgets");
  decltype(&::el_wline) el_wline = Find("el_wline");
  decltype(&::el_wset) el_wset = Find("el_wset");
};

}  // namespace Host
