# What the Windows build needs beside the shared options; included by them.

enable_language(RC)

# A program finds the libraries that lie beside it.
set(CMAKE_SHARED_LIBRARY_PREFIX "")
set(CMAKE_SHARED_MODULE_PREFIX "")
set(LM_OUTPUT_FOLDER ${CMAKE_BINARY_DIR}/bin CACHE PATH "Where programs and libraries go")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${LM_OUTPUT_FOLDER})
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${LM_OUTPUT_FOLDER})

add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601 WINVER=0x0601)
if(LM_MICROSOFT_ABI)
  include(lm_microsoft_abi)
endif()
if(NOT MINGW)
  return()
endif()

# The runtimes go into each file, so that the module asks for nothing but the system, the host and the client
# library. The same sources give the same bytes: no time stamp, no path of the machine that built.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -ffile-prefix-map=${CMAKE_BINARY_DIR}/=)
# This compiler takes the members of a variant that are not there for read when it moves one.
add_compile_options(-Wno-maybe-uninitialized)
add_link_options(-static -s -Wl,--no-insert-timestamp,--dynamicbase,--high-entropy-va,--nxcompat)
# As large a stack as on Linux: blocks of a drawing are nested up to a hundred times.
add_link_options(-Wl,--stack,8388608)

# Libraries that are headers only are the machine's own, each from a folder that holds nothing else: the machine's
# other headers are not for Windows.
function(lm_header_library package target header)
  find_file(header_${package} ${header} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH NO_CACHE)
  if(NOT header_${package})
    message(FATAL_ERROR "${package}: no ${header} in /usr/include")
  endif()
  set(folder ${CMAKE_BINARY_DIR}/headers/${package})
  file(MAKE_DIRECTORY ${folder})
  file(CREATE_LINK ${header_${package}} ${folder}/${header} SYMBOLIC)
  # find_package of the lists that ask for it ends here.
  file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/${package}Config.cmake
    "if(NOT TARGET ${target})
  add_library(${target} INTERFACE IMPORTED)
  target_include_directories(${target} SYSTEM INTERFACE ${folder})
endif()\n")
endfunction()
lm_header_library(CLI11 CLI11::CLI11 CLI)
lm_header_library(nlohmann_json nlohmann_json::nlohmann_json nlohmann)
