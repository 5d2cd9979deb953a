#pragma once

#include "fuzz/Fuzzing.h"
#include "tests/service/Service.h"

/// Reads everything that the store of the process holds, in every way.
inline void readStore(IVRDConfiguration& service) {
  I18NString text;
  VRDIDOM_Node node;
  for (const I18NString& name : service.getParameterNames()) {
    for (const int decrypt : {0, 1}) {
      const VRDCFGAPI_ErrorState state = store().getValue(name, decrypt, text);
      require(state == VRDCFGAPI_NoError || (decrypt == 1 && text.empty()), "a text read");
      store().getValue(name, decrypt, node);
    }
    require(store().getValue(name, 0, node) == VRDCFGAPI_NoError && !node.isNull(), "a node read");
  }
  require(store().getValue("", 0, text) == VRDCFGAPI_NoError && !text.empty(), "the whole tree");
  require(store().getValue("", 0, node) == VRDCFGAPI_NoError, "the whole tree's copy");
}
