#pragma once

#include "tools/Output.h"

/// Warns if the startup document is missing, does not parse or has another root: the library says
/// nothing and goes on with its defaults, and the answers would look like facts.
void warnAboutStartupDocument(const Output& output);
