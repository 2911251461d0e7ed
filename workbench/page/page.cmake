# The report page as a C++ source, ${report_page_cpp}: its HTML, style and scripts are embedded at build time.

set(report_page_scripts projection scene history colour view path desktop panels timeline main)
list(TRANSFORM report_page_scripts REPLACE "(.+)" "${CMAKE_CURRENT_LIST_DIR}/\\1.js")
set(report_page_sources
  ${CMAKE_CURRENT_LIST_DIR}/report.html
  ${CMAKE_CURRENT_LIST_DIR}/report.css
  ${report_page_scripts})
set(report_page_cpp ${CMAKE_CURRENT_BINARY_DIR}/report_page.cpp)

add_custom_command(
  OUTPUT ${report_page_cpp}
  COMMAND ${CMAKE_COMMAND} -DOUT=${report_page_cpp} "-DSOURCES=${report_page_sources}"
          -P ${CMAKE_CURRENT_LIST_DIR}/embed.cmake
  DEPENDS ${report_page_sources} ${CMAKE_CURRENT_LIST_DIR}/embed.cmake
  COMMENT "Embedding the report page"
  VERBATIM)
