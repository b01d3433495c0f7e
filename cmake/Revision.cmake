# Writes Revision.h for the About window. A source tree without its history is told as such.
find_package(Git QUIET)
set(BRELO_REVISION "")
if(Git_FOUND)
  execute_process(COMMAND ${GIT_EXECUTABLE} rev-parse --short=9 HEAD
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} OUTPUT_VARIABLE BRELO_REVISION
    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
if(NOT BRELO_REVISION)
  set(BRELO_REVISION "${PROJECT_VERSION} release")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/Revision.h.in ${CMAKE_BINARY_DIR}/generated/Revision.h @ONLY)
