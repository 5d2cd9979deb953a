#include "platform/idom/VRDIDOM_TreeWalker.h"

#include <xercesc/dom/DOMNode.hpp>

#include "platform/idom/DomAccess.h"

using xercesc::DOMNode;

namespace {

bool isShown(const DOMNode& node, unsigned long whatToShow) {
  return (whatToShow >> (static_cast<unsigned>(node.getNodeType()) - 1) & 1U) != 0;
}

/// The first shown node among @p node and what comes after it without leaving @p limit or a parent
/// that is shown itself. Nodes that are not shown are looked through, as if their children stood in
/// their place.
DOMNode* firstShown(DOMNode* node, const DOMNode* limit, unsigned long whatToShow) {
  while (node != nullptr && !isShown(*node, whatToShow)) {
    DOMNode* next = node->getFirstChild();
    while (next == nullptr) {
      next = node->getNextSibling();
      if (next != nullptr) break;
      node = node->getParentNode();
      if (node == nullptr || node == limit || isShown(*node, whatToShow)) return nullptr;
    }
    node = next;
  }
  return node;
}

DOMNode* siblingOrAbove(DOMNode* node, const DOMNode* limit, unsigned long whatToShow) {
  while (node->getNextSibling() == nullptr) {
    node = node->getParentNode();
    if (node == nullptr || node == limit || isShown(*node, whatToShow)) return nullptr;
  }
  return node->getNextSibling();
}

}  // namespace

VRDIDOM_TreeWalker::VRDIDOM_TreeWalker(const VRDIDOM_Node& root, unsigned long whatToShow)
    : m_root(root), m_current(root), m_whatToShow(whatToShow) {}

VRDIDOM_Node VRDIDOM_TreeWalker::firstChild() {
  DOMNode* current = m_current;
  if (current == nullptr) return {};
  DOMNode* child = firstShown(current->getFirstChild(), current, m_whatToShow);
  return moveTo(DomAccess::make<VRDIDOM_Node>(m_root, child));
}

VRDIDOM_Node VRDIDOM_TreeWalker::nextSibling() {
  DOMNode* current = m_current;
  const DOMNode* root = m_root;
  if (current == root) return {};
  DOMNode* start = siblingOrAbove(current, root, m_whatToShow);
  DOMNode* sibling = firstShown(start, root, m_whatToShow);
  return moveTo(DomAccess::make<VRDIDOM_Node>(m_root, sibling));
}

VRDIDOM_Node VRDIDOM_TreeWalker::moveTo(VRDIDOM_Node candidate) {
  if (!candidate.isNull()) m_current = candidate;
  return candidate;
}
