# Includes run one way: platform <- core <- shell <- tasks, search, assistants <- program. Each
# folder of src/ may include only from the folders listed for it; the course compiler only from
# platform and core. Prints every include that runs the wrong way and fails when there is one.
#
#   cmake -DSOURCE_DIR=<repository> -P tests/layering.cmake

set(reaches_platform platform)
set(reaches_core platform core)
set(reaches_shell platform core shell)
set(reaches_tasks platform core shell tasks search assistants)
set(reaches_search ${reaches_tasks})
set(reaches_assistants ${reaches_tasks})
set(reaches_program platform core shell tasks search assistants program)
set(reaches_coursepack platform core)

set(folders platform core shell tasks search assistants program)
set(faults "")
foreach(layer ${folders} coursepack)
  if(layer STREQUAL "coursepack")
    set(root ${SOURCE_DIR}/tools/coursepack)
  else()
    set(root ${SOURCE_DIR}/src/${layer})
  endif()
  file(GLOB_RECURSE files ${root}/*.h ${root}/*.cpp)
  foreach(file ${files})
    file(STRINGS ${file} includes REGEX "^[ \t]*#[ \t]*include[ \t]*\"[^\"]+/")
    foreach(line ${includes})
      string(REGEX REPLACE "^[ \t]*#[ \t]*include[ \t]*\"([^/\"]+)/.*$" "\\1" target "${line}")
      list(FIND folders ${target} known)
      list(FIND reaches_${layer} ${target} allowed)
      if(known GREATER_EQUAL 0 AND allowed EQUAL -1)
        file(RELATIVE_PATH shown ${SOURCE_DIR} ${file})
        list(APPEND faults "${shown}: ${line}")
      endif()
    endforeach()
  endforeach()
endforeach()

if(faults)
  list(JOIN faults "\n  " text)
  message(FATAL_ERROR "includes that run against the layers:\n  ${text}")
endif()
message(STATUS "layering: every include runs one way")
