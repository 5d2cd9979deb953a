#pragma once

#include "foundation/VRDCFGAPI_ErrorState.h"
#include "platform/idom/VRDIDOM_Document.h"

/// `VRDConfiguration::getConfigDoc`, for readers who know what they need of the document.
/// @param parserFlag of `VRDIDOM_Parser`
VRDCFGAPI_ErrorState readStartupDocument(VRDIDOM_Document& document, int parserFlag);
