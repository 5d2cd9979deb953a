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

// Room in the journal is made before the tree changes, so that a change is never left unwritten.
template <class Work>
void DocumentBody::change(DOMNode& parent, DOMNode& moved, Arrival arrival, Work work) {
  if (!isWatched()) {
    work();
    return;
  }
  m_journal.prepare();
  const Departure departure(moved);
  work();
  departure.recordIn(m_journal);
  if (arrival) m_journal.record(parent, *arrival);
}

void DocumentBody::append(DOMNode& parent, DOMNode& child) {
  refuseCircle(parent, child);
  change(parent, child, Change{Kind::Appended, &child, nullptr, nullptr},
         [&] { parent.appendChild(&child); });
}

void DocumentBody::insert(DOMNode& parent, DOMNode& child, DOMNode& before) {
  if (before.getParentNode() != &parent) {
    refuse(xercesc::DOMException::NOT_FOUND_ERR, "the node to insert before is not a child");
  }
  refuseCircle(parent, child);
  if (&child == &before) return;
  change(parent, child, Change{Kind::Inserted, &child, nullptr, nullptr},
         [&] { parent.insertBefore(&child, &before); });
}

void DocumentBody::remove(DOMNode& parent, DOMNode& child) {
  change(parent, child, std::nullopt, [&] { parent.removeChild(&child); });
}

void DocumentBody::replace(DOMNode& parent, DOMNode& newChild, DOMNode& oldChild) {
  if (oldChild.getParentNode() != &parent) {
    refuse(xercesc::DOMException::NOT_FOUND_ERR, "the node to replace is not a child");
  }
  refuseCircle(parent, newChild);
  if (&newChild == &oldChild) return;
  change(parent, newChild, Change{Kind::Replaced, &oldChild, &newChild, nullptr},
         [&] { parent.replaceChild(&newChild, &oldChild); });
}
