# Where `cmake --install` puts everything. The folders lie to each other as they do below the prefix, so that an
# installed tree may be moved as a whole.
include(GNUInstallDirs)

set(TALVANE_LIBRARY_FOLDER ${CMAKE_INSTALL_LIBDIR}/talvane)  # private libraries and the components
set(TALVANE_DATA_FOLDER ${CMAKE_INSTALL_DATADIR}/talvane)    # help/ and resources/
cmake_path(ABSOLUTE_PATH TALVANE_LIBRARY_FOLDER BASE_DIRECTORY /prefix OUTPUT_VARIABLE libraries)
cmake_path(ABSOLUTE_PATH TALVANE_DATA_FOLDER BASE_DIRECTORY /prefix OUTPUT_VARIABLE data)
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_BINDIR BASE_DIRECTORY /prefix OUTPUT_VARIABLE programs)
file(RELATIVE_PATH TALVANE_DATA_FROM_LIBRARIES ${libraries} ${data})
file(RELATIVE_PATH TALVANE_LIBRARIES_FROM_PROGRAMS ${programs} ${libraries})

# A library or plug-in of the private folder. Built and installed files have the same search path for libraries: CMake
# would pad a shorter one with colons, so that the loader searches the current folder, which may be another user's.
function(install_library name)
  set_target_properties(${name} PROPERTIES BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "\$ORIGIN")
  install(TARGETS ${name} LIBRARY DESTINATION ${TALVANE_LIBRARY_FOLDER})
endfunction()

function(install_program name)
  set_target_properties(${name} PROPERTIES BUILD_WITH_INSTALL_RPATH ON
    INSTALL_RPATH "\$ORIGIN/${TALVANE_LIBRARIES_FROM_PROGRAMS};\$ORIGIN/../lib")
  install(TARGETS ${name} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endfunction()

install(DIRECTORY ${CMAKE_SOURCE_DIR}/resources DESTINATION ${TALVANE_DATA_FOLDER}
        FILES_MATCHING PATTERN "*.*.txt")
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/help DESTINATION ${TALVANE_DATA_FOLDER})
# The documents lie to each other as in the source tree, so that their relative links work.
install(FILES ${CMAKE_SOURCE_DIR}/README.md ${CMAKE_SOURCE_DIR}/CHANGELOG.md ${CMAKE_SOURCE_DIR}/CONTRIBUTING.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs DESTINATION ${CMAKE_INSTALL_DOCDIR}
        FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN "*.png" PATTERN "help" EXCLUDE)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/packaging/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples
        PATTERN "tvmail.1.in" EXCLUDE)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/samples/mail DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples
        FILES_MATCHING PATTERN "*.eml")
configure_file(${CMAKE_SOURCE_DIR}/packaging/tvmail.1.in ${CMAKE_BINARY_DIR}/tvmail.1 @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/tvmail.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
