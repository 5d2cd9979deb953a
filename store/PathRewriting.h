#pragma once

#include "platform/idom/VRDIDOM_Element.h"

/// Whether there is anything to rewrite below @p root.
bool holdsPathValue(VRDIDOM_Element& root);

/// What `VRDConfiguration::replaceVariables` and then `VRDConfiguration::fixupPaths` do, value by
/// value in one walk: a tree may hold many thousands of values.
void rewritePathValues(VRDIDOM_Element& root);
