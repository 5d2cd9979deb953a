#pragma once

#include "tools/Output.h"

/// Reads the command line and runs the command that it names.
/// @return the exit status
int runCommandLine(int argc, const char* const* argv, Output& output);
