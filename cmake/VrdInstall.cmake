# What is installed, and in which of three parts: what a process needs (runtime), what a client is
# built with (development), what people work with (tools).
#
# The libraries have no version in their names: processes load them by these names, discovery looks
# for one of them, and an installation puts its own default lists or provider in the place of ours.
# Everything finds everything else from where it lies, so the installed folder can be moved.

include(CMakePackageConfigHelpers)

set(shared "${CMAKE_INSTALL_DATADIR}/vrdcfgapi")
set(examples "${CMAKE_INSTALL_DOCDIR}/examples")
set(pkgconfig "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
set(package "${CMAKE_INSTALL_LIBDIR}/cmake/vrdcfgapi")

# Runtime
set_target_properties(VRDCFGAPI PROPERTIES EXPORT_NAME vrdcfgapi)
install(TARGETS VRDCFGAPI VRDIDOM VRDCore VRDCFGMCF EXPORT vrdcfgapi
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime)
install(TARGETS HLD_Crypto_Interface
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime)
install_jar(vrdcfgapi_jar DESTINATION "${CMAKE_INSTALL_DATADIR}/java" COMPONENT runtime)
install(DIRECTORY messages DESTINATION "${shared}" COMPONENT runtime)
install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT runtime)

# Development
file(STRINGS cmake/public-headers.txt headers REGEX "^[^#]")
foreach(header IN LISTS headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/vrdcfgapi/${folder}"
          COMPONENT development)
endforeach()

# Nothing has to be found before these targets, so their file is the package's file.
install(EXPORT vrdcfgapi NAMESPACE vrdcfgapi:: FILE vrdcfgapiConfig.cmake DESTINATION "${package}"
        COMPONENT development)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/vrdcfgapiConfigVersion.cmake"
                                 COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/vrdcfgapiConfigVersion.cmake" DESTINATION "${package}"
        COMPONENT development)

file(RELATIVE_PATH prefixFromPkgconfig "/prefix/${pkgconfig}" "/prefix")
configure_file(packaging/vrdcfgapi.pc.in "${PROJECT_BINARY_DIR}/vrdcfgapi.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/vrdcfgapi.pc" DESTINATION "${pkgconfig}" COMPONENT development)

install(DIRECTORY samples/client samples/installation DESTINATION "${examples}"
        COMPONENT development PATTERN .gitkeep EXCLUDE)
install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT development)
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}"
        COMPONENT development FILES_MATCHING PATTERN *.md PATTERN *.svg PATTERN man EXCLUDE)
install(FILES docs/man/vrdcfgapi.3 DESTINATION "${CMAKE_INSTALL_MANDIR}/man3"
        COMPONENT development)

# Tools
install(TARGETS vrdcfg RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tools)
install(FILES docs/man/vrdcfg.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tools)
install(FILES tools/completion/vrdcfg.bash RENAME vrdcfg
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT tools)
install(DIRECTORY schemas DESTINATION "${shared}" COMPONENT tools)
