#pragma once

#include <vector>

#include "foundation/VRDIDOMUtils.h"
#include "platform/idom/VRDIDOM_Element.h"

/// Visits the child elements of @p parent in document order; a null handle has none.
/// @param visit takes an element, which it may remove from the tree
template <class Visit>
void forEachChildElement(VRDIDOM_Node& parent, Visit visit) {
  VRDIDOM_Node next = parent.getFirstChild();
  while (!next.isNull()) {
    VRDIDOM_Node node = next;
    next = node.getNextSibling();
    if (node.getNodeType() != VRDIDOMUtils::elementNode) continue;
    VRDIDOM_Element element = node;
    visit(element);
  }
}

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

/// Takes away everything that stands in @p element.
inline void removeChildren(VRDIDOM_Element& element) {
  for (VRDIDOM_Node child = element.getFirstChild(); !child.isNull();
       child = element.getFirstChild()) {
    element.removeChild(child);
  }
}
