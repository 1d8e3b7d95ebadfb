# A component: a shared library that is loaded by name and exports the four entry functions alone.
set(COMPONENT_EXPORTS ${CMAKE_CURRENT_LIST_DIR}/component.exports)

function(add_component name)
  add_library(${name} MODULE ${ARGN})
  target_link_libraries(${name} PRIVATE TalvaneRuntime)
  target_compile_options(${name} PRIVATE -fvisibility=hidden)
  target_link_options(${name} PRIVATE -Wl,--version-script=${COMPONENT_EXPORTS} -Wl,-z,nodelete)
  set_target_properties(${name} PROPERTIES PREFIX "" LINK_DEPENDS ${COMPONENT_EXPORTS})
  install_library(${name})
endfunction()
