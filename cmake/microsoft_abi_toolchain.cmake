# 64-bit Windows in Microsoft's C++ ABI, which is AutoCAD's, built on Linux: clang with libc++'s headers and the C
# library's from Wine, ld.lld with mingw-w64's start-up and import libraries. No file of Microsoft's is needed.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(LM_MICROSOFT_ABI ON)
set(llvm /usr/lib/llvm-14)
set(CMAKE_CXX_COMPILER ${llvm}/bin/clang++)
set(CMAKE_CXX_COMPILER_TARGET x86_64-pc-windows-msvc)
set(CMAKE_AR ${llvm}/bin/llvm-ar CACHE FILEPATH "")
set(CMAKE_RANLIB ${llvm}/bin/llvm-ranlib CACHE FILEPATH "")
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(LM_DLLTOOL ${llvm}/bin/llvm-dlltool)
set(LM_LINKER ${llvm}/bin/ld.lld)
set(LM_LIBRARY_LINKER ${llvm}/bin/lld-link)
# There is no program to try the compiler with: what it builds is linked by rules of our own.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_MSVC_RUNTIME_LIBRARY "")

execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-resource-dir OUTPUT_VARIABLE clang_resources
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(lm_root ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
set(LM_WINE_HEADERS /usr/include/wine/wine)
# The version decides on the protocol of local statics; 100 is the C library msvcr100, the host's own.
string(JOIN " " CMAKE_CXX_FLAGS_INIT
  -fms-compatibility-version=19.20 -fcxx-exceptions -nostdinc
  -isystem ${lm_root}/runtime/include -isystem ${llvm}/include/c++/v1 -isystem ${clang_resources}/include
  -isystem ${LM_WINE_HEADERS}/msvcrt -isystem ${LM_WINE_HEADERS}/windows
  -D_WIN64 -D_MSVCR_VER=100 -DWINE_UNICODE_NATIVE -D_LIBCPP_NO_AUTO_LINK
  -include ${lm_root}/runtime/include/gaps.h)
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG" CACHE STRING "Flags of a release build")
