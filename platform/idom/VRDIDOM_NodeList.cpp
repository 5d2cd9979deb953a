#include "platform/idom/VRDIDOM_NodeList.h"

#include <xercesc/dom/DOMNode.hpp>

#include <utility>

#include "platform/idom/DomAccess.h"

using xercesc::DOMNode;

namespace {

// Xerces-C takes this many steps forward in the time of one backward.
constexpr unsigned long backwardCost = 16;

}  // namespace

VRDIDOM_NodeList::VRDIDOM_NodeList(const VRDIDOM_Node& parent) : m_owner(parent) {
  DocumentBody* body = DomAccess::body(parent);
  if (body == nullptr) return;
  body->watch();
  m_cursor.seen = body->journal().count();
}

VRDIDOM_NodeList::VRDIDOM_NodeList(const VRDIDOM_Node& document, Snapshot snapshot)
    : m_owner(document), m_snapshot(std::move(snapshot)) {}

unsigned long VRDIDOM_NodeList::getLength() {
  if (m_snapshot) return m_snapshot->size();
  const DOMNode* parent = m_owner;
  if (parent == nullptr) return 0;
  catchUp();
  if (m_cursor.lengthKnown) return m_cursor.length;

  unsigned long length = m_cursor.index;
  const DOMNode* node = m_cursor.node;
  if (node == nullptr) {
    length = 0;
    node = parent->getFirstChild();
  }
  for (; node != nullptr; node = node->getNextSibling()) ++length;
  m_cursor.length = length;
  m_cursor.lengthKnown = true;
  return length;
}

VRDIDOM_Node VRDIDOM_NodeList::item(unsigned long index) {
  if (m_snapshot) {
    DOMNode* node = index < m_snapshot->size() ? (*m_snapshot)[index] : nullptr;
    return DomAccess::make<VRDIDOM_Node>(m_owner, node);
  }
  DOMNode* parent = m_owner;
  if (parent == nullptr) return {};
  catchUp();
  if (m_cursor.lengthKnown && index >= m_cursor.length) return {};
  return DomAccess::make<VRDIDOM_Node>(m_owner, moveTo(*parent, index));
}

/// Walks to @p index from the cursor or from the front, whichever is nearer.
DOMNode* VRDIDOM_NodeList::moveTo(DOMNode& parent, unsigned long index) {
  Cursor& cursor = m_cursor;
  const bool isBehind = cursor.node != nullptr && index < cursor.index;
  if (cursor.node == nullptr || (isBehind && (cursor.index - index) * backwardCost > index)) {
    cursor.node = parent.getFirstChild();
    cursor.index = 0;
  }
  for (; cursor.index > index; --cursor.index) cursor.node = cursor.node->getPreviousSibling();
  while (cursor.node != nullptr && cursor.index < index) {
    cursor.node = cursor.node->getNextSibling();
    ++cursor.index;
  }
  return cursor.node;
}

/// Brings the cursor to the present state of the children, or forgets it if too much has changed.
void VRDIDOM_NodeList::catchUp() {
  const DOMNode& parent = *DomAccess::node(m_owner);
  const ChangeJournal& journal = DomAccess::body(m_owner)->journal();
  const auto apply = [this](const ChangeJournal::Change& change) {
    switch (change.kind) {
      case ChangeJournal::Kind::Appended:
        ++m_cursor.length;
        break;
      case ChangeJournal::Kind::Inserted:
        ++m_cursor.length;
        m_cursor.node = nullptr;  // before it or behind it: nobody knows
        break;
      case ChangeJournal::Kind::Removed:
        --m_cursor.length;
        afterRemoval(change.node, change.next, change.previous);
        break;
      case ChangeJournal::Kind::Replaced:
        if (m_cursor.node == change.node) m_cursor.node = change.next;
        break;
    }
  };
  // The value of an attribute is changed without the journal, and never has many children.
  const bool isAttribute = parent.getNodeType() == DOMNode::ATTRIBUTE_NODE;
  if (isAttribute || !journal.replay(m_cursor.seen, parent, apply)) m_cursor = Cursor();
  m_cursor.seen = journal.count();
}

void VRDIDOM_NodeList::afterRemoval(DOMNode* removed, DOMNode* next, DOMNode* previous) {
  if (m_cursor.node == removed) {
    const bool wasLast = next == nullptr;
    m_cursor.node = wasLast ? previous : next;
    if (wasLast && m_cursor.index > 0) --m_cursor.index;
  } else if (m_cursor.node != nullptr && m_cursor.node == next) {
    --m_cursor.index;
  } else if (next != nullptr) {
    // Before the cursor or behind it: nobody knows.
    m_cursor.node = nullptr;
  }
}
