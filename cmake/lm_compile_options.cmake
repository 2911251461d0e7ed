# The compile options that every target of the project shares: `lm_options`.

set(LM_SANITIZER "" CACHE STRING "Sanitizers for the whole build: 'address,undefined', 'thread' or empty")

if(WIN32)
  include(lm_windows)
endif()
if(LM_MICROSOFT_ABI)
  set(threads lm_runtime)
elseif(MSVC)
  # The POSIX threads that Windows lacks.
  find_package(PThreads4W REQUIRED)
  set(threads PThreads4W::PThreads4W)
else()
  find_package(Threads REQUIRED)
  set(threads Threads::Threads)
endif()

add_library(lm_options INTERFACE)
target_include_directories(lm_options INTERFACE ${PROJECT_SOURCE_DIR})
target_link_libraries(lm_options INTERFACE ${threads})
if(MSVC AND NOT LM_MICROSOFT_ABI)
  target_compile_options(lm_options INTERFACE /W4 /EHsc /permissive- /utf-8 /Zc:__cplusplus)
  target_link_options(lm_options INTERFACE /Brepro)
  return()
endif()
target_compile_options(lm_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror
  -fvisibility=hidden -fvisibility-inlines-hidden
  # g++ 12 takes the moves of a std::variant for reads of members that it does not hold.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
  # A unique symbol would pin the module in memory: the host could never unmap it.
  $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
  # Replays are equal byte for byte on every machine only when no multiply-add is fused.
  -ffp-contract=off)
if(LM_SANITIZER)
  target_compile_options(lm_options INTERFACE
    -fsanitize=${LM_SANITIZER} -fno-sanitize-recover=all -fno-omit-frame-pointer
    # A test takes g++ more than twice as long when it is optimised, and runs no faster.
    $<$<NOT:$<BOOL:$<TARGET_PROPERTY:LM_IS_TEST>>>:-O1>)
  target_link_options(lm_options INTERFACE -fsanitize=${LM_SANITIZER})
endif()
