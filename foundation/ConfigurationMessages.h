#pragma once

#include "foundation/VRDCFGAPI_ErrorState.h"

// The messages that tell people of the states.

inline constexpr char configurationCatalogue[] = "vrdcfgapimsgs";

/// What `configurationMessage` gives for a state without a message.
inline constexpr unsigned long noConfigurationMessage = 0;

/// The number of the message of @p state, which may be outside the numbering.
unsigned long configurationMessage(VRDCFGAPI_ErrorState state);
