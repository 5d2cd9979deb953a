# How code of the project becomes a library: compiled once, linked twice.
#
#   vrd_add_objects(NAME SOURCES file... [LINK external...])
#     Compiles one folder. LINK names external libraries whose headers and flags the sources need.
#
#   vrd_add_library(NAME EXPORTS list OBJECTS name... [LINK library...] [LINK_PRIVATE external...])
#     NAME is the shared library. Its dynamic symbol table holds the names in the export list, one
#     name a line as c++filt writes it, and nothing else.
#     NAME_static is an archive of the same objects: tests link it and so reach hidden code.
#     LINK names libraries of the project; the shared library links the shared ones, the archive
#     the archives. LINK_PRIVATE names external libraries that no public header shows.

function(vrd_add_objects name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name}_objects OBJECT ${ARG_SOURCES})
  target_include_directories(${name}_objects PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${name}_objects PRIVATE vrd_build_flags ${ARG_LINK})
endfunction()

function(vrd_add_library name)
  cmake_parse_arguments(ARG "" "EXPORTS" "OBJECTS;LINK;LINK_PRIVATE" ${ARGN})
  set(objects "")
  foreach(folder IN LISTS ARG_OBJECTS)
    list(APPEND objects "$<TARGET_OBJECTS:${folder}_objects>")
  endforeach()

  add_library(${name} SHARED ${objects})
  target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE ${ARG_LINK_PRIVATE})
  target_include_directories(${name} INTERFACE
    "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
    "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/vrdcfgapi>")
  target_compile_features(${name} INTERFACE cxx_std_17)
  vrd_enforce_exports(${name} "${CMAKE_CURRENT_SOURCE_DIR}/${ARG_EXPORTS}")

  add_library(${name}_static STATIC ${objects})
  list(TRANSFORM ARG_LINK APPEND "_static")
  target_link_libraries(${name}_static PUBLIC ${ARG_LINK} PRIVATE ${ARG_LINK_PRIVATE})
  target_include_directories(${name}_static INTERFACE "${PROJECT_SOURCE_DIR}")
endfunction()

# Turns the export list into a version script, so that what is not in the list is not exported.
function(vrd_enforce_exports name list)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${list}")
  file(STRINGS "${list}" lines REGEX "^[^#]")
  set(script "{\n  global:\n    extern \"C++\" {\n")
  foreach(line IN LISTS lines)
    string(APPEND script "      \"${line}\";\n")
  endforeach()
  string(APPEND script "    };\n  local: *;\n};\n")
  set(file "${CMAKE_CURRENT_BINARY_DIR}/${name}.version")
  file(CONFIGURE OUTPUT "${file}" CONTENT "${script}" @ONLY)

  # The checkers' own functions come from the program, so with them names stay open.
  set(noUndefined "LINKER:--no-undefined")
  if(VRD_SANITIZERS)
    set(noUndefined "")
  endif()
  # nodelete: handlers at exit may still come in after a client closed the library.
  target_link_options(${name} PRIVATE
    "LINKER:--version-script,${file}" "LINKER:-z,nodelete" ${noUndefined})
  set_target_properties(${name} PROPERTIES LINK_DEPENDS "${file}")
  set_property(GLOBAL APPEND PROPERTY VRD_EXPORT_LISTS "${name}|${list}")
endfunction()
