# Fails when an installation of the library does not serve its clients: the installed examples are
# built, with pkg-config and with find_package, and run, as are the command and the Java class.
#   cmake -DPREFIX=folder -DDOC=folder -DWORK=folder -P Use.cmake
# Where the installation is not a system's own, the environment says where to look for it, as it does
# for any client.

cmake_minimum_required(VERSION 3.25)

set(examples "${PREFIX}/${DOC}/examples")
file(REMOVE_RECURSE "${WORK}")
file(COPY "${examples}/client" "${examples}/installation" DESTINATION "${WORK}")

# Runs a command in the clients' folder; its output has to match the pattern.
function(expect pattern)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY "${WORK}/client"
                  OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  if(NOT output MATCHES "${pattern}")
    message(FATAL_ERROR "${ARGN}\ngave, without ${pattern}:\n${output}")
  endif()
endfunction()

set(ENV{ZAN_ROOT} "${WORK}/installation")
unset(ENV{ZAN_EXEC_PATH})
set(address "https://www\\.example\\.net:9343/dispatch\n")

expect("" make --silent)
expect("^${address}$" ./client)

expect("" "${CMAKE_COMMAND}" -B build)
expect("" "${CMAKE_COMMAND}" --build build)
expect("^${address}$" build/client)

# The class loads the library from where the system, or the caller's LD_LIBRARY_PATH, has it.
expect("^/srv/server\n$" java -cp "${PREFIX}/share/java/vrdcfgapi.jar" Client.java /srv/server)

# The command finds its libraries by itself.
unset(ENV{LD_LIBRARY_PATH})
expect("${address}" "${PREFIX}/bin/vrdcfg" get externalDispatcher)
expect("\n-+\nvrdcfgapi\n.*, build .*Copyright.*\n-+\n$" "${PREFIX}/bin/vrdcfg" --version)
