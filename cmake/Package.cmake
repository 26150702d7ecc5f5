# The release archive, Windows build only: cmake --build <build> --target package makes
# Linkwright-<version>-win64.zip, which holds Linkwright.exe and README.txt for the person
# installing it, at its top level, to be unpacked into the folder of Zelmar.exe.

configure_file(app/README.txt.in ${PROJECT_BINARY_DIR}/README.txt @ONLY NEWLINE_STYLE CRLF)
install(TARGETS Linkwright RUNTIME DESTINATION .)
install(FILES ${PROJECT_BINARY_DIR}/README.txt DESTINATION .)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME "Linkwright-${PROJECT_VERSION}-win64")
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
include(CPack)

# The archive as a person gets it: made afresh, unpacked beside a stand-in Zelmar.exe with
# one profile, and its Linkwright.exe run once with -RestoreAll.
add_test(NAME package_restore_all
         COMMAND ${PROJECT_SOURCE_DIR}/scripts/check-package.sh ${PROJECT_BINARY_DIR}/CPackConfig.cmake
                 ${PROJECT_BINARY_DIR}/package-check $<TARGET_FILE:ZelmarStandIn> $<TARGET_FILE:make_profile>)
set_tests_properties(package_restore_all PROPERTIES
  FIXTURES_REQUIRED wine
  ENVIRONMENT "${LINKWRIGHT_WINE_ENVIRONMENT}"
  TIMEOUT 300)
