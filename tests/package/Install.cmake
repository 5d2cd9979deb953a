# Installs a build and moves what came out to PREFIX, so that nothing can lean on the place that it was
# installed to.
#   cmake -DBUILD=folder -DPREFIX=folder -P Install.cmake

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${PREFIX}" "${PREFIX}-before")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${PREFIX}-before" --strip
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME "${PREFIX}-before" "${PREFIX}")
