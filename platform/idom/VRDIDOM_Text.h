#pragma once

#include "platform/core/VRDExport.h"
#include "platform/idom/VRDIDOM_Node.h"

/// A handle on a text node; see `VRDIDOM_Node`.
class VRD_EXPORT VRDIDOM_Text : public VRDIDOM_Node {
 public:
  VRDIDOM_Text() noexcept = default;

 private:
  friend class DomAccess;
  using VRDIDOM_Node::VRDIDOM_Node;
};
