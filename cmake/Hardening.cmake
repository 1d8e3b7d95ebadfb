# Compiler and linker options that make faults harder to exploit, for every program and library.
# tests/runtime/hardening.sh checks the files for them.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

check_pie_supported(LANGUAGES CXX)
add_compile_options(-fstack-protector-strong)
foreach(flag stack-clash-protection cf-protection)  # the second is for x86 alone
  string(MAKE_C_IDENTIFIER "HAS_${flag}" has)
  check_cxx_compiler_flag(-f${flag} ${has})
  if(${has})
    add_compile_options(-f${flag})
  endif()
endforeach()

# FORTIFY_SOURCE works in optimised code, and hides from the sanitizers the calls that they watch.
set(TALVANE_FORTIFIED OFF)
if(CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$" AND NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  set(TALVANE_FORTIFIED ON)
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
endif()

add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
