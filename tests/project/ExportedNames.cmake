# Fails when a shared library shows other names than its export list says.
#   cmake -DNM=program -DLIBRARY=file -DLIST=file -P ExportedNames.cmake
#
# The lists hold what one source defines, whatever the compiler and the build type: strong symbols,
# and the tables that identify our classes, which some compilers make weak. Inline functions and
# instances of templates differ from build to build and are every client's own; the version script
# keeps them in, together with what sanitizers and coverage counters define.

cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND "${NM}" --dynamic --defined-only --demangle "${LIBRARY}"
                OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[0-9a-f]+ [A-Za-z] [^\n]+" symbols "${table}")
list(TRANSFORM symbols REPLACE "^[0-9a-f]+ [A-Za-z] " "")
list(REMOVE_DUPLICATES symbols)

file(STRINGS "${LIST}" listed REGEX "^[^#]")

set(surplus ${symbols})
list(REMOVE_ITEM surplus ${listed})
set(missing ${listed})
list(REMOVE_ITEM missing ${symbols})
foreach(name IN LISTS surplus)
  message("+ ${name}")
endforeach()
foreach(name IN LISTS missing)
  message("- ${name}")
endforeach()
if(surplus OR missing)
  message(FATAL_ERROR "${LIBRARY} differs from ${LIST}: + is shown and not listed, "
                      "- is listed and not shown")
endif()
list(LENGTH listed count)
message("${count} names")
