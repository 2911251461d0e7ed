# The report page as a library. Its HTML, style and scripts are embedded at build time.

set(report_page_scripts projection scene colour view path desktop panels timeline main)
list(TRANSFORM report_page_scripts REPLACE "(.+)" "${CMAKE_CURRENT_LIST_DIR}/page/\\1.js")
set(report_page_sources
  ${CMAKE_CURRENT_LIST_DIR}/page/report.html
  ${CMAKE_CURRENT_LIST_DIR}/page/report.css
  ${report_page_scripts})
set(report_page_cpp ${CMAKE_CURRENT_BINARY_DIR}/report_page.cpp)

add_custom_command(
  OUTPUT ${report_page_cpp}
  COMMAND ${CMAKE_COMMAND} -DOUT=${report_page_cpp} "-DSOURCES=${report_page_sources}"
          -P ${CMAKE_CURRENT_LIST_DIR}/report_embed.cmake
  DEPENDS ${report_page_sources} ${CMAKE_CURRENT_LIST_DIR}/report_embed.cmake
  COMMENT "Embedding the report page"
  VERBATIM)

add_library(workbench_report STATIC
  ${CMAKE_CURRENT_LIST_DIR}/report.cpp
  ${CMAKE_CURRENT_LIST_DIR}/report_json.cpp
  ${CMAKE_CURRENT_LIST_DIR}/report_scene.cpp
  ${report_page_cpp})
target_link_libraries(workbench_report PUBLIC lm_options standin_objectarx)
