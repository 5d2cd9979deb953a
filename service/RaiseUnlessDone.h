#pragma once

#include "foundation/VRDConfigurationException.h"

/// Turns a state into the exception that the service raises for it.
inline void raiseUnlessDone(VRDCFGAPI_ErrorState state) {
  if (state != VRDCFGAPI_NoError) throw VRDConfigurationException(VRDSeverity_Error, state);
}
