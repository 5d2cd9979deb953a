#pragma once

#include "foundation/ConfigurationVocabulary.h"
#include "platform/idom/VRDIDOM_Element.h"

/// Gives the root of an effective tree its attributes.
inline void setRootAttributes(VRDIDOM_Element& root) {
  root.setAttribute("version", "1.0");
  declareConfigurationPrefixes(root);
}
