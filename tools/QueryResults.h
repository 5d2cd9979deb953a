#pragma once

#include "tools/Options.h"
#include "tools/Output.h"

/// Gives the shared service every file of query results that --query names, in order, and keeps
/// what they hold in @p options.
/// @return whether all were taken; says so if one was not, and takes none behind it
bool takeQueryResults(Options& options, const Output& output);
