# Writes a header that names the commit of the source tree, and leaves it alone when it says so already: what includes
# it is compiled again only for another commit. Run at every build: cmake -D SOURCE=... -D HEADER=... -P write_commit.cmake
cmake_minimum_required(VERSION 3.25)
set(commit unknown)
find_package(Git QUIET)
if(Git_FOUND)
  # A tree without a history of its own may lie in somebody else's.
  execute_process(COMMAND ${GIT_EXECUTABLE} rev-parse --show-prefix WORKING_DIRECTORY ${SOURCE}
    RESULT_VARIABLE failed OUTPUT_VARIABLE prefix OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(NOT failed AND prefix STREQUAL "")
    execute_process(COMMAND ${GIT_EXECUTABLE} describe --always --abbrev=12 --exclude=* --dirty=-modified
      WORKING_DIRECTORY ${SOURCE} RESULT_VARIABLE failed OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(NOT failed)
      set(commit ${found})
    endif()
  endif()
endif()
file(CONFIGURE OUTPUT ${HEADER} CONTENT "#pragma once\n#define BRINDLE_COMMIT \"${commit}\"\n" @ONLY)
