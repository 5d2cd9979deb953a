#include "platform/idom/DocumentBody.h"

#include <new>
#include <xercesc/dom/DOMException.hpp>

#include "platform/idom/DomBorder.h"

using xercesc::DOMNode;

namespace {

using Change = ChangeJournal::Change;
using Kind = ChangeJournal::Kind;

/// What a node leaves behind when it goes from where it stands.
class Departure {
 public:
  explicit Departure(DOMNode& child) : m_parent(child.getParentNode()) {
    if (m_parent == nullptr) return;
    DOMNode* next = child.getNextSibling();
    m_change = {Kind::Removed, &child, next,
                next == nullptr ? child.getPreviousSibling() : nullptr};
  }

  void recordIn(ChangeJournal& journal) const {
    if (m_parent != nullptr) journal.record(*m_parent, m_change);
  }

 private:
  DOMNode* m_parent;
  Change m_change{};
};

/// Xerces-C looks for a new child among the parent's ancestors, but not at the parent itself.
void refuseCircle(const DOMNode& parent, const DOMNode& child) {
  if (&parent == &child) {
    refuse(xercesc::DOMException::HIERARCHY_REQUEST_ERR, "a node cannot be its own child");
  }
}

}  // namespace

DocumentBody* DocumentBody::adopt(xercesc::DOMDocument* document) {
  auto* body = new (std::nothrow) DocumentBody(document);
  if (body != nullptr) return body;
  document->release();
  throw std::bad_alloc();
}

void DocumentBody::append(DOMNode& parent, DOMNode& child) {
  refuseCircle(parent, child);
  if (!isWatched()) {
    parent.appendChild(&child);
    return;
  }
  m_journal.prepare();
  const Departure departure(child);
  parent.appendChild(&child);
  departure.recordIn(m_journal);
  m_journal.record(parent, {Kind::Appended, &child, nullptr, nullptr});
}

void DocumentBody::insert(DOMNode& parent, DOMNode& child, DOMNode& before) {
  if (before.getParentNode() != &parent) {
    refuse(xercesc::DOMException::NOT_FOUND_ERR, "the node to insert before is not a child");
  }
  refuseCircle(parent, child);
  if (&child == &before) return;
  if (!isWatched()) {
    parent.insertBefore(&child, &before);
    return;
  }
  m_journal.prepare();
  const Departure departure(child);
  parent.insertBefore(&child, &before);
  departure.recordIn(m_journal);
  m_journal.record(parent, {Kind::Inserted, &child, nullptr, nullptr});
}

void DocumentBody::remove(DOMNode& parent, DOMNode& child) {
  if (!isWatched()) {
    parent.removeChild(&child);
    return;
  }
  m_journal.prepare();
  const Departure departure(child);
  parent.removeChild(&child);
  departure.recordIn(m_journal);
}

void DocumentBody::replace(DOMNode& parent, DOMNode& newChild, DOMNode& oldChild) {
  if (oldChild.getParentNode() != &parent) {
    refuse(xercesc::DOMException::NOT_FOUND_ERR, "the node to replace is not a child");
  }
  refuseCircle(parent, newChild);
  if (&newChild == &oldChild) return;
  if (!isWatched()) {
    parent.replaceChild(&newChild, &oldChild);
    return;
  }
  m_journal.prepare();
  const Departure departure(newChild);
  parent.replaceChild(&newChild, &oldChild);
  departure.recordIn(m_journal);
  m_journal.record(parent, {Kind::Replaced, &oldChild, &newChild, nullptr});
}
