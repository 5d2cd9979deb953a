# Fails when a public header brings in a header of Xerces-C or ICU, or one of ours that is not public.
#   cmake -DROOT=folder -DPUBLIC_HEADERS=file -DSOURCE=file -DCOMPILER=program
#         -P HeaderDependencies.cmake
# SOURCE includes the public headers.

cmake_minimum_required(VERSION 3.25)

execute_process(
  COMMAND "${COMPILER}" -std=c++17 -M -I "${ROOT}" "${SOURCE}"
  OUTPUT_VARIABLE rule COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(dependencies UNIX_COMMAND "${rule}")
file(STRINGS "${PUBLIC_HEADERS}" publicHeaders REGEX "^[^#]")

set(own 0)
set(findings 0)
foreach(dependency IN LISTS dependencies)
  cmake_path(IS_PREFIX ROOT "${dependency}" NORMALIZE isOwn)
  if(dependency MATCHES "/(xercesc|unicode)/")
    message("A public header brings in ${dependency}")
    math(EXPR findings "${findings} + 1")
  elseif(isOwn AND NOT dependency STREQUAL SOURCE)
    math(EXPR own "${own} + 1")
    file(RELATIVE_PATH name "${ROOT}" "${dependency}")
    if(NOT name IN_LIST publicHeaders)
      message("A public header brings in ${name}, which is not public")
      math(EXPR findings "${findings} + 1")
    endif()
  endif()
endforeach()
if(own EQUAL 0 OR findings GREATER 0)
  message(FATAL_ERROR "${findings} wrong dependencies of ${own} public headers")
endif()
