# The settings object, apart from the rest of this folder so that it can be tested and used alone.
add_library(lm_settings STATIC
  ${CMAKE_CURRENT_LIST_DIR}/settings.cpp ${CMAKE_CURRENT_LIST_DIR}/settings_list.cpp)
target_link_libraries(lm_settings PUBLIC lm_config lm_logging lm_util)
