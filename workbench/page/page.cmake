# The pages as C++ sources. All build folders share what is bundled: npm is asked once, also by the next build.

set(LM_PAGE_FOLDER ${PROJECT_SOURCE_DIR}/build/page CACHE PATH "Where the pages are bundled")
set(page_folder ${CMAKE_CURRENT_LIST_DIR})

# embed_page(NAME HEADER): the page in the folder NAME as the source ${NAME_page_cpp}, which defines what HEADER declares.
# Its frame is NAME.html, its script and style are bundled from main.js.
function(embed_page name header)
  file(GLOB sources CONFIGURE_DEPENDS ${page_folder}/*.js ${page_folder}/*.css ${page_folder}/${name}/*.js
    ${page_folder}/${name}/*.css)
  set(bundle ${LM_PAGE_FOLDER}/${name}.js ${LM_PAGE_FOLDER}/${name}.css)
  add_custom_command(
    OUTPUT ${bundle}
    COMMAND ${page_folder}/build.sh ${LM_PAGE_FOLDER} ${name}
    DEPENDS ${sources} ${page_folder}/build.sh ${page_folder}/build.mjs ${page_folder}/package-lock.json
    COMMENT "Bundling the page ${name}"
    VERBATIM)

  set(cpp ${CMAKE_CURRENT_BINARY_DIR}/${name}_page.cpp)
  set(frame ${page_folder}/${name}/${name}.html)
  add_custom_command(
    OUTPUT ${cpp}
    COMMAND ${CMAKE_COMMAND} -DOUT=${cpp} -DNAME=${name} -DHEADER=${header} -DFRAME=${frame}
            -DSCRIPT=${LM_PAGE_FOLDER}/${name}.js -DSTYLE=${LM_PAGE_FOLDER}/${name}.css -P ${page_folder}/embed.cmake
    DEPENDS ${frame} ${bundle} ${page_folder}/embed.cmake
    COMMENT "Embedding the page ${name}"
    VERBATIM)
  set(${name}_page_cpp ${cpp} PARENT_SCOPE)
endfunction()
