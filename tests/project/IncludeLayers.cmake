# Fails when a source includes what its layer may not see, or includes it by a path that is not
# written from the root.
#   cmake -DROOT=folder -DPUBLIC_HEADERS=file -P IncludeLayers.cmake

cmake_minimum_required(VERSION 3.25)

# What each folder may include besides itself: folders, single headers, and PUBLIC for the public
# headers.
set(platform platform/core platform/idom platform/mcf)
set(SEES_platform/core "")
set(SEES_platform/mcf "")
set(SEES_platform/idom platform/core)
set(SEES_foundation ${platform})
set(SEES_crypto foundation ${platform})
set(SEES_store crypto foundation ${platform})
set(SEES_service store foundation ${platform})
set(SEES_startup store foundation ${platform})
set(SEES_java platform/core)
# The table of a provider's entry points is the interface between both sides.
set(SEES_provider crypto/ProviderEntryPoints.h)
# The command does more than the library shows: it tells how the installation was found, checks its
# files, protects values and makes keys. It compiles the sources for that itself. These are their
# headers, and those that hold the words and tables by which files are checked.
set(SEES_tools PUBLIC foundation/ConfigurationVocabulary.h foundation/ElementWalk.h
               foundation/VRDIDOMUtils.h store/InstallationDiscovery.h store/InstallationFiles.h
               crypto/CryptoSession.h crypto/ProviderMemory.h crypto/VRDCrypto.h
               service/ComponentMarker.h service/LocaleTableSources.h crypto/ValueProtection.h
               crypto/WipedMemory.h platform/core/Ascii.h provider/KeyFolder.h)
set(SEES_samples PUBLIC)
# Tests, benchmarks and fuzzers link the archives and reach hidden code too.
set(SEES_bench crypto foundation provider service startup store ${platform})
set(SEES_tests bench crypto foundation java provider service startup store tools ${platform})
set(SEES_fuzz ${SEES_tests} tests)
set(layers ${platform} foundation crypto store service startup java provider tools samples bench
           tests fuzz)

file(STRINGS "${PUBLIC_HEADERS}" publicHeaders REGEX "^[^#]")

# Sets the variable called result to the layer that a path from the root belongs to, or to "".
function(layer_of path result)
  foreach(layer IN LISTS layers)
    if(path MATCHES "^${layer}/")
      set(${result} "${layer}" PARENT_SCOPE)
      return()
    endif()
  endforeach()
  set(${result} "" PARENT_SCOPE)
endfunction()

# Sets finding to what is wrong with an include in a file of a layer, or to "".
function(check_include layer included)
  set(finding "" PARENT_SCOPE)
  layer_of("${included}" target)
  if(NOT target OR NOT EXISTS "${ROOT}/${included}")
    set(finding "is not written from the root" PARENT_SCOPE)
  elseif(target STREQUAL layer OR target IN_LIST SEES_${layer}
         OR included IN_LIST SEES_${layer})
    return()
  elseif("PUBLIC" IN_LIST SEES_${layer})
    if(NOT included IN_LIST publicHeaders)
      set(finding "is not a public header" PARENT_SCOPE)
    endif()
  else()
    set(finding "is not below ${layer}" PARENT_SCOPE)
  endif()
endfunction()

set(sources 0)
set(findings 0)
foreach(layer IN LISTS layers)
  file(GLOB_RECURSE files RELATIVE "${ROOT}" "${ROOT}/${layer}/*.h" "${ROOT}/${layer}/*.cpp")
  foreach(file IN LISTS files)
    math(EXPR sources "${sources} + 1")
    file(STRINGS "${ROOT}/${file}" includes REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
    foreach(line IN LISTS includes)
      string(REGEX REPLACE "^[^\"]*\"([^\"]*)\".*" "\\1" included "${line}")
      check_include("${layer}" "${included}")
      if(finding)
        message("${file}: \"${included}\" ${finding}")
        math(EXPR findings "${findings} + 1")
      endif()
    endforeach()
  endforeach()
endforeach()

if(sources EQUAL 0 OR findings GREATER 0)
  message(FATAL_ERROR "${findings} wrong includes in ${sources} sources")
endif()
message("${sources} sources include downward only")
