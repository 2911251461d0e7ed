# Writes OUT, the C++ source that holds the page NAME as HEADER declares it: its FRAME, STYLE and SCRIPT.

function(literal file result)
  file(READ ${file} text)
  string(FIND "${text}" ")PAGE\"" clash)
  if(NOT clash EQUAL -1)
    message(FATAL_ERROR "${file}: the text )PAGE\" cannot be embedded")
  endif()
  set(${result} "R\"PAGE(${text})PAGE\"" PARENT_SCOPE)
endfunction()

literal(${FRAME} frame)
literal(${STYLE} style)
literal(${SCRIPT} script)
string(SUBSTRING ${NAME} 0 1 initial)
string(TOUPPER ${initial} initial)
string(SUBSTRING ${NAME} 1 -1 rest)
set(constant k${initial}${rest})

file(WRITE ${OUT} "#include \"${HEADER}\"

namespace workbench {

const char* const ${constant}Frame = ${frame};
const char* const ${constant}Style = ${style};
const char* const ${constant}Script = ${script};

}  // namespace workbench
")
