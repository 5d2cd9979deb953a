# Writes the unit that holds the build identity, at every build: the build number changes with the
# commits, not with the configuration. An unchanged unit is left alone and not compiled again.
#   cmake -DTEMPLATE=file -DUNIT=file -DROOT=folder -DVRD_PRODUCT=... -DVRD_VERSION=...
#         -DVRD_FAMILY=... -DVRD_COMPONENT=... [-DVRD_BUILD_NUMBER=...] -P BuildIdentity.cmake
# The build number is what `git describe` says of ROOT, or, of sources without their history, the
# version.

cmake_minimum_required(VERSION 3.25)

# Sources that merely lie in somebody else's working copy have no .git of their own.
if(NOT VRD_BUILD_NUMBER AND EXISTS "${ROOT}/.git")
  execute_process(
    COMMAND git -C "${ROOT}" describe --always --tags --dirty
    OUTPUT_VARIABLE VRD_BUILD_NUMBER OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
if(NOT VRD_BUILD_NUMBER)
  set(VRD_BUILD_NUMBER "${VRD_VERSION}")
endif()
configure_file("${TEMPLATE}" "${UNIT}" @ONLY)
