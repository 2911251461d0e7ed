# The module in Microsoft's ABI, and what stands for AutoCAD's libraries under Wine: a build of its own, since one build
# has one compiler. Its files land beside the others'; the target is LMTRAutoCAD2013, as in every build.
include(ExternalProject)
set(folder ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
set(files ${folder}/LMTRAutoCAD2013.arx ${folder}/standin_adapter.dll ${folder}/runtime_probe.dll ${folder}/throwing_module.dll
  ${folder}/accore.dll ${folder}/acdb19.dll ${folder}/acge19.dll ${folder}/ac1st19.dll)
ExternalProject_Add(module
  SOURCE_DIR ${PROJECT_SOURCE_DIR}
  BINARY_DIR ${CMAKE_BINARY_DIR}/module
  PREFIX ${CMAKE_BINARY_DIR}/module_steps
  CMAKE_ARGS -DCMAKE_TOOLCHAIN_FILE=${PROJECT_SOURCE_DIR}/cmake/microsoft_abi_toolchain.cmake
             -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE} -DLM_OUTPUT_FOLDER=${folder}
  BUILD_ALWAYS ON
  INSTALL_COMMAND ""
  BUILD_BYPRODUCTS ${files})
add_library(LMTRAutoCAD2013 MODULE IMPORTED GLOBAL)
set_target_properties(LMTRAutoCAD2013 PROPERTIES 
  IMPORTED_LOCATION ${folder}/LMTRAutoCAD2013.arx LM_LINKED_FILES ${CMAKE_BINARY_DIR}/module/linked_files)
add_dependencies(LMTRAutoCAD2013 module)
