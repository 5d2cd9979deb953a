#pragma once

#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"
#include "platform/idom/VRDIDOM_Node.h"

/// A handle on an attribute; see `VRDIDOM_Node`.
class VRD_EXPORT VRDIDOM_Attr : public VRDIDOM_Node {
 public:
  VRDIDOM_Attr() noexcept = default;
  I18NString getValue();

 private:
  friend class DomAccess;
  using VRDIDOM_Node::VRDIDOM_Node;
};
