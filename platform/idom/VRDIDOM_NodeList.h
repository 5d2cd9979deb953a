#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/core/VRDExport.h"
#include "platform/idom/VRDIDOM_Node.h"

/// A handle on a list of nodes, numbered from 0 in document order.
///
/// The list of `getChildNodes` is live: it shows a change of the children at once. The lists of
/// descendants are as they were when they were asked for. A loop that takes the items in order
/// costs time in proportion to the length of the list, also when it removes items on the way.
class VRD_EXPORT VRDIDOM_NodeList {
 public:
  /// An empty list.
  VRDIDOM_NodeList() = default;

  /// The present number of items.
  unsigned long getLength();
  /// The item at @p index; null from `getLength()` on.
  VRDIDOM_Node item(unsigned long index);

 private:
  friend class DomAccess;
  using Snapshot = std::shared_ptr<const std::vector<xercesc_2_7::DOMNode*>>;

  /// The place that the last call came to, so that the next one need not start from the front.
  struct Cursor {
    std::uint64_t seen = 0;                // changes of the document that are accounted for
    xercesc_2_7::DOMNode* node = nullptr;  // null: not known
    unsigned long index = 0;
    unsigned long length = 0;
    bool lengthKnown = false;
  };

  explicit VRDIDOM_NodeList(const VRDIDOM_Node& parent);
  VRDIDOM_NodeList(const VRDIDOM_Node& document, Snapshot snapshot);
  void catchUp();
  void afterRemoval(xercesc_2_7::DOMNode* removed, xercesc_2_7::DOMNode* next,
                    xercesc_2_7::DOMNode* previous);
  xercesc_2_7::DOMNode* moveTo(xercesc_2_7::DOMNode& parent, unsigned long index);

  VRDIDOM_Node m_owner;  // live: the parent; snapshot: any node of the document
  Snapshot m_snapshot;   // null for a live list
  Cursor m_cursor;
};
