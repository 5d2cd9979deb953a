# Fails when the README does not list exactly the public headers.
#   cmake -DREADME=file -DPUBLIC_HEADERS=file -P ReadmeHeaders.cmake

cmake_minimum_required(VERSION 3.25)

file(STRINGS "${PUBLIC_HEADERS}" publicHeaders REGEX "^[^#]")
file(STRINGS "${README}" listed REGEX "^\\| `[^`]+\\.h` \\|")
list(TRANSFORM listed REPLACE "^\\| `([^`]+)`.*" "\\1")

set(missing ${publicHeaders})
list(REMOVE_ITEM missing ${listed})
set(surplus ${listed})
list(REMOVE_ITEM surplus ${publicHeaders})
foreach(header IN LISTS missing)
  message("not in the README: ${header}")
endforeach()
foreach(header IN LISTS surplus)
  message("not public: ${header}")
endforeach()
if(missing OR surplus)
  message(FATAL_ERROR "${README} differs from ${PUBLIC_HEADERS}")
endif()
