# Fails when the README does not show each program that it names as the file has it.
#   cmake -DREADME=file -DROOT=folder -P ReadmePrograms.cmake
# A program is shown in the block behind a line that ends in its name: `samples/name`:

cmake_minimum_required(VERSION 3.25)

file(READ "${README}" text)
string(REGEX MATCHALL "`samples/[^`\n]+`:\n\n```" programs "${text}")
set(findings 0)
foreach(program IN LISTS programs)
  string(REGEX REPLACE "^`([^`]+)`.*" "\\1" name "${program}")
  cmake_path(GET name EXTENSION LAST_ONLY language)
  string(SUBSTRING "${language}" 1 -1 language)
  file(READ "${ROOT}/${name}" content)
  string(FIND "${text}" "${program}${language}\n${content}```\n" at)
  if(at EQUAL -1)
    message("shown otherwise: ${name}")
    math(EXPR findings "${findings} + 1")
  endif()
endforeach()
list(LENGTH programs count)
if(count EQUAL 0 OR findings GREATER 0)
  message(FATAL_ERROR "${findings} of ${count} programs in ${README} differ from their files")
endif()
