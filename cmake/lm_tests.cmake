# lm_add_test(NAME SOURCES... LIBS...): a GoogleTest program whose tests are registered one by one.
include(GoogleTest)
find_package(GTest REQUIRED)

function(lm_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE lm_options ${ARG_LIBS} GTest::gtest_main GTest::gmock)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()
