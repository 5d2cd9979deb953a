#pragma once

#include <string>

#include "foundation/VRDCFGAPI_ErrorState.h"

/// What a state means and what to do about it, with its number.
std::string explanationOf(int state);

/// The exit status that fits a read which failed with @p state: a value that cannot be decrypted is
/// an answer; without a provider, or after an internal error, there is none.
int exitStatusOf(VRDCFGAPI_ErrorState state);
