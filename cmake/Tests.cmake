find_package(GTest 1.12 REQUIRED)
include(GoogleTest)

# How the threads of libraries wait for each other the thread sanitizer cannot see; what libraries leak is not ours to
# mend.
if(CINDERTOP_SANITIZERS STREQUAL "thread")
  set(CINDERTOP_SANITIZER_OPTIONS TSAN_OPTIONS=ignore_noninstrumented_modules=1)
else()
  set(CINDERTOP_SANITIZER_OPTIONS
    LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/leaks.supp:print_suppressions=0)
endif()

# cindertop_test(NAME [SEPARATE] [SOURCES file...] [LINKS library...])
# All *Tests.cpp of the folder, and SOURCES.
#
# Every test case runs by itself; the whole program runs once more where numbers have a decimal comma and clocks are
# not on UTC, because both creep into code unnoticed. SEPARATE is for files whose helpers share names: each is a unit of
# its own then, over a precompiled GoogleTest.
function(cindertop_test name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "SEPARATE" "" "SOURCES;LINKS")
  file(GLOB tests CONFIGURE_DEPENDS *Tests.cpp)
  add_executable(${name}_tests ${tests} ${ARG_SOURCES})
  target_link_libraries(${name}_tests PRIVATE
    ${ARG_LINKS} cindertop_fakes cindertop_test_main cindertop_options GTest::gmock)
  target_compile_definitions(${name}_tests PRIVATE
    CINDERTOP_FIXTURES="${PROJECT_SOURCE_DIR}/tests/fixtures")
  if(ARG_SEPARATE)
    set_target_properties(${name}_tests PROPERTIES UNITY_BUILD OFF)
    target_precompile_headers(${name}_tests PRIVATE <gmock/gmock.h> <gtest/gtest.h> <string> <vector>)
  endif()
  gtest_discover_tests(${name}_tests TEST_PREFIX ${name}/ DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60 # on a busy machine
    PROPERTIES ENVIRONMENT "${CINDERTOP_SANITIZER_OPTIONS}")
  add_test(NAME ${name}/everywhere COMMAND ${name}_tests)
  set_tests_properties(${name}/everywhere PROPERTIES ENVIRONMENT
    "${CINDERTOP_SANITIZER_OPTIONS};LOCPATH=${CMAKE_BINARY_DIR}/locale;LC_ALL=de_DE.UTF-8;TZ=Asia/Kolkata")
endfunction()
