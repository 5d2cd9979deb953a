# The Debian packages, one of each part that VrdInstall.cmake installs: cpack -G DEB.

set(CPACK_PACKAGE_VENDOR "the vrdcfgapi authors")
set(CPACK_PACKAGE_CONTACT "the vrdcfgapi authors <authors@vrdcfgapi.example>")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_STRIP_FILES ON)
set(CPACK_OUTPUT_FILE_PREFIX "${PROJECT_BINARY_DIR}/packages")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# vrd_add_package(COMPONENT NAME SECTION DESCRIPTION [DEPENDS package...])
macro(vrd_add_package component name section description)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  string(TOUPPER "${component}" key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME "${name}")
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION "${section}")
  set(CPACK_COMPONENT_${key}_DESCRIPTION "${description}")
  set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${ARG_DEPENDS}")
  # Only packages have it where Debian looks for it.
  install(FILES packaging/copyright DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}"
          COMPONENT ${component} EXCLUDE_FROM_ALL)
endmacro()

vrd_add_package(runtime libvrdcfgapi libs
  "The libraries that a server process loads to learn how its installation is
configured, a crypto provider, the message texts and the Java class.")
vrd_add_package(development libvrdcfgapi-dev libdevel
  "What programs that use the library are built with: headers, the packages for
CMake and pkg-config, the manual, examples."
  DEPENDS "libvrdcfgapi (= ${PROJECT_VERSION})")
vrd_add_package(tools vrdcfg admin
  "The vrdcfg command answers what the configuration library answers to the
processes of an installation, finds mistakes in its files and protects values."
  DEPENDS "libvrdcfgapi (= ${PROJECT_VERSION})")

# What the programs need of the system, they say themselves; of our own libraries, see above.
foreach(key IN ITEMS RUNTIME TOOLS)
  set(CPACK_DEBIAN_${key}_PACKAGE_SHLIBDEPS ON)
endforeach()
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")

include(CPack)
