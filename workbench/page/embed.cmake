# Writes OUT, the C++ source that holds the page's SOURCES: the first is the frame, the second the style, the rest
# are the scripts in their order.

function(literal file result)
  file(READ ${file} text)
  string(FIND "${text}" ")PAGE\"" clash)
  if(NOT clash EQUAL -1)
    message(FATAL_ERROR "${file}: the text )PAGE\" cannot be embedded")
  endif()
  set(${result} "R\"PAGE(${text})PAGE\"" PARENT_SCOPE)
endfunction()

list(POP_FRONT SOURCES frame style)
literal(${frame} frame_text)
literal(${style} style_text)
set(scripts_text "")
foreach(script IN LISTS SOURCES)
  literal(${script} text)
  string(APPEND scripts_text "\n    ${text}")
endforeach()

file(WRITE ${OUT} "#include \"workbench/report/report_page.h\"

namespace workbench {

const char* const kPageFrame = ${frame_text};
const char* const kPageStyle = ${style_text};
const char* const kPageScript =${scripts_text};

}  // namespace workbench
")
