# GoogleTest for both builds, and one way to register a test executable.
#
# Native: Debian's libgtest-dev; each test case is its own CTest test, its throw-away folders
# in memory where the machine has /dev/shm.
# Windows: GoogleTest built from Debian's sources in /usr/src/googletest with the
# cross compiler; each executable is one CTest test run under Wine, after a fixture
# that makes the throw-away prefix with its virtual desktop.

if(WIN32)
  set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(gtest_force_shared_crt OFF CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  # Newer GoogleTest sources define the namespaced aliases themselves.
  if(NOT TARGET GTest::gtest)
    add_library(GTest::gtest ALIAS gtest)
    add_library(GTest::gtest_main ALIAS gtest_main)
  endif()

  set(LINKWRIGHT_WINEPREFIX ${CMAKE_BINARY_DIR}/wineprefix)
  # The environment of every Wine run: the throw-away prefix, no debug output, neither Mono
  # nor Gecko, and no menu builder, which would start for every shortcut saved.
  set(LINKWRIGHT_WINE_ENVIRONMENT
      "WINEPREFIX=${LINKWRIGHT_WINEPREFIX}" "WINEDEBUG=-all" "WINEDLLOVERRIDES=mscoree,mshtml=\\;winemenubuilder.exe=d")
  add_test(NAME wine_prefix COMMAND ${CMAKE_SOURCE_DIR}/scripts/wine-test-prefix.sh)
  set_tests_properties(wine_prefix PROPERTIES FIXTURES_SETUP wine TIMEOUT 300
                       ENVIRONMENT "${LINKWRIGHT_WINE_ENVIRONMENT}")
  # The server may already have ended on its own; that is no failure.
  add_test(NAME wine_shutdown
           COMMAND ${CMAKE_COMMAND} -E env WINEPREFIX=${LINKWRIGHT_WINEPREFIX}
                   sh -c "wineserver -k 2>/dev/null; exit 0")
  set_tests_properties(wine_shutdown PROPERTIES FIXTURES_CLEANUP wine)
else()
  find_package(GTest REQUIRED)
  include(GoogleTest)
endif()

# linkwright_add_test(<target>): registers a GoogleTest executable with CTest.
function(linkwright_add_test target)
  target_link_libraries(${target} PRIVATE GTest::gtest GTest::gtest_main linkwright_warnings)
  if(WIN32)
    add_test(NAME ${target} COMMAND ${target})
    set_tests_properties(${target} PROPERTIES
      FIXTURES_REQUIRED wine
      ENVIRONMENT "${LINKWRIGHT_WINE_ENVIRONMENT}"
      TIMEOUT 600)
  elseif(EXISTS /dev/shm)
    # Throw-away folders in memory: the list files are flushed to the disk at every write.
    gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 PROPERTIES ENVIRONMENT TMPDIR=/dev/shm)
  else()
    gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60)
  endif()
endfunction()
