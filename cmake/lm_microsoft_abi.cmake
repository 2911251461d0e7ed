# How libraries are linked in the build for Microsoft's ABI: mingw-w64's start-up, the host's C runtime, our own runtime.
set(mingw_gcc x86_64-w64-mingw32-gcc-posix)
set(linked_files "")
foreach(file IN ITEMS dllcrt2.o crtbegin.o crtend.o libmingw32.a libmingwex.a libmsvcr100.a libgcc.a)
  execute_process(COMMAND ${mingw_gcc} -print-file-name=${file} OUTPUT_VARIABLE ${file} OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
  get_filename_component(${file}_folder ${${file}} DIRECTORY)
  string(APPEND linked_files "${${file}}\n")
endforeach()
# Of whose code the files hold parts, for the notices of the package.
file(WRITE ${CMAKE_BINARY_DIR}/linked_files "${linked_files}")
# The C runtime stands where mingw-w64's own would: one of it in the process, the host's.
set(system_libraries "-Bstatic -lmingw32 -lmingwex -lmsvcr100 -lgcc -lkernel32 -luser32 -ladvapi32 -lmingw32 -lmingwex -lmsvcr100")
string(JOIN " " link_library
  "${LM_LINKER} -m i386pep --shared -e DllMainCRTStartup --no-insert-timestamp --gc-sections -s"
  "--dynamicbase --high-entropy-va --nxcompat <LINK_FLAGS> -o <TARGET>"
  "${dllcrt2.o} ${crtbegin.o} <OBJECTS> <LINK_LIBRARIES>"
  "-L${dllcrt2.o_folder} -L${crtbegin.o_folder} ${system_libraries} ${crtend.o}")
set(CMAKE_CXX_CREATE_SHARED_MODULE "${link_library}")
set(CMAKE_CXX_CREATE_SHARED_LIBRARY "${link_library}")
# The resource compiler is mingw-w64's, which does not take Microsoft's arguments.
set(CMAKE_RC_COMPILE_OBJECT "<CMAKE_RC_COMPILER> -O coff <DEFINES> -I${PROJECT_SOURCE_DIR} <SOURCE> <OBJECT>")
set(CMAKE_CXX_STANDARD_LIBRARIES "")
set(CMAKE_SHARED_MODULE_SUFFIX .dll)

add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -ffile-prefix-map=${CMAKE_BINARY_DIR}/=)

# lm_import_library(NAME DEFINITION): a library to link with, made of the list of exports.
function(lm_import_library name definition)
  set(file ${CMAKE_CURRENT_BINARY_DIR}/${name}.lib)
  add_custom_command(OUTPUT ${file} COMMAND ${LM_DLLTOOL} -m i386:x86-64 -d ${definition} -l ${file}
    DEPENDS ${definition} VERBATIM)
  add_custom_target(${name}_import_library DEPENDS ${file})
  add_library(${name} INTERFACE)
  add_dependencies(${name} ${name}_import_library)
  target_link_libraries(${name} INTERFACE ${file})
endfunction()
