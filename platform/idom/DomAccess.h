#pragma once

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNode.hpp>

#include <memory>
#include <utility>
#include <vector>

#include "platform/idom/DocumentBody.h"
#include "platform/idom/VRDIDOM_Document.h"
#include "platform/idom/VRDIDOM_Node.h"
#include "platform/idom/VRDIDOM_NodeList.h"

/// The way from handles to what they designate, and back.
class DomAccess {
 public:
  /// Null for a null handle.
  static xercesc::DOMNode* node(const VRDIDOM_Node& handle) { return handle.m_node; }
  /// Null for a null handle.
  static DocumentBody* body(const VRDIDOM_Node& handle) { return handle.m_body; }

  /// The node of a handle that is about to be changed; throws `VRDIDOM_Exception` if it is null.
  static xercesc::DOMNode& changeable(const VRDIDOM_Node& handle);
  /// The same for an element; also throws if it is no element.
  static xercesc::DOMElement& changeableElement(const VRDIDOM_Node& handle);
  /// The element, or null if the handle is null or on another type of node.
  static const xercesc::DOMElement* element(const VRDIDOM_Node& handle);

  /// A handle on @p node, which belongs to the document of @p relative; null for a null node.
  template <class Handle>
  static Handle make(const VRDIDOM_Node& relative, xercesc::DOMNode* node) {
    return Handle(relative.m_body, node);
  }
  /// A handle on a new document, which it takes over.
  static VRDIDOM_Document adopt(xercesc::DOMDocument* document);

  static VRDIDOM_NodeList liveList(const VRDIDOM_Node& parent) { return VRDIDOM_NodeList(parent); }
  static VRDIDOM_NodeList snapshot(const VRDIDOM_Node& relative,
                                   std::vector<xercesc::DOMNode*> nodes);
};
