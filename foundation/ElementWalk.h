#pragma once

#include <vector>

#include "foundation/VRDIDOMUtils.h"
#include "platform/idom/VRDIDOM_Element.h"

/// Visits the elements below @p root in document order. Not by recursion: a tree may be as deep as
/// it likes.
/// @param visit takes an element, and says whether the walk goes on below it; it may change what
///              lies below, and may remove the element from the tree
template <class Visit>
void walkElements(VRDIDOM_Element& root, Visit visit) {
  // What follows on each level that is open.
  std::vector<VRDIDOM_Node> pending{root.getFirstChild()};
  while (!pending.empty()) {
    VRDIDOM_Node node = pending.back();
    if (node.isNull()) {
      pending.pop_back();
      continue;
    }
    pending.back() = node.getNextSibling();
    if (node.getNodeType() != VRDIDOMUtils::elementNode) continue;
    VRDIDOM_Element element = node;
    if (visit(element)) pending.push_back(element.getFirstChild());
  }
}
