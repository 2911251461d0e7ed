# lm_add_test(NAME SOURCES... LIBS... [NATIVE_ONLY TEST...] [PROPERTIES ...]): a GoogleTest program whose tests are
# registered one by one. What is said to be native only is left out on Windows.
include(GoogleTest)
if(CMAKE_CROSSCOMPILING)
  # The machine's own library is not for the system that is built for; its sources are.
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
else()
  find_package(GTest REQUIRED)
endif()

if(NOT CMAKE_CROSSCOMPILING)
  # GoogleMock's header takes most of the time that a small test takes to compile: it is compiled once.
  file(WRITE ${CMAKE_BINARY_DIR}/test_header.cpp "int main() {}\n")
  add_executable(lm_test_header EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/test_header.cpp)
  target_link_libraries(lm_test_header PRIVATE lm_options GTest::gmock)
  set_target_properties(lm_test_header PROPERTIES LM_IS_TEST ON)
  target_precompile_headers(lm_test_header PRIVATE <gmock/gmock.h>)
endif()

function(lm_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS;NATIVE_ONLY;PROPERTIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES LM_IS_TEST ON)
  target_link_libraries(${name} PRIVATE lm_options tests_support ${ARG_LIBS} GTest::gtest_main GTest::gmock)
  if(NOT CMAKE_CROSSCOMPILING)
    target_precompile_headers(${name} REUSE_FROM lm_test_header)
  endif()
  if(WIN32)
    # Only what is shipped has to be fast.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-O0>)
    set(windows_properties FIXTURES_REQUIRED display)
    if(ARG_NATIVE_ONLY)
      list(JOIN ARG_NATIVE_ONLY ":" left_out)
      set(filter TEST_FILTER "-${left_out}")
    endif()
  endif()
  gtest_discover_tests(${name} ${filter} DISCOVERY_TIMEOUT 300 PROPERTIES TIMEOUT 300 ${windows_properties} ${ARG_PROPERTIES})
endfunction()
