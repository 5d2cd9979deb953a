#pragma once

#include "platform/core/VRDExport.h"
#include "platform/idom/VRDIDOM_Node.h"

/// Decides what a tree walker stops at. Only the null pointer is taken.
class VRDIDOM_NodeFilter;

/// A position in a tree that moves over the nodes of certain types; see
/// `VRDIDOM_Document::createTreeWalker`. A null result leaves the position where it was.
class VRD_EXPORT VRDIDOM_TreeWalker {
 public:
  VRDIDOM_TreeWalker() = default;
  /// Moves to the first child of the current node.
  VRDIDOM_Node firstChild();
  /// Moves to the next sibling of the current node; null for the root of the walk.
  VRDIDOM_Node nextSibling();

 private:
  friend class VRDIDOM_Document;
  VRDIDOM_TreeWalker(const VRDIDOM_Node& root, unsigned long whatToShow);
  VRDIDOM_Node moveTo(VRDIDOM_Node candidate);

  VRDIDOM_Node m_root;
  VRDIDOM_Node m_current;
  unsigned long m_whatToShow = 0;
};
