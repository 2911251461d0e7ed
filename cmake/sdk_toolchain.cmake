# For the preset `sdk`: on Windows the compiler of the environment; on Linux clang for Microsoft's ABI, which is AutoCAD's.
if(NOT CMAKE_HOST_WIN32)
  include(${CMAKE_CURRENT_LIST_DIR}/microsoft_abi_toolchain.cmake)
endif()
