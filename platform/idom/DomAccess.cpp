#include "platform/idom/DomAccess.h"

#include <xercesc/dom/DOMException.hpp>

#include "platform/idom/DomBorder.h"
#include "platform/idom/DomText.h"

using xercesc::DOMElement;
using xercesc::DOMException;
using xercesc::DOMNode;

DOMNode& DomAccess::changeable(const VRDIDOM_Node& handle) {
  if (handle.m_node == nullptr) refuse(DOMException::NOT_FOUND_ERR, "the handle is null");
  return *handle.m_node;
}

DOMElement& DomAccess::changeableElement(const VRDIDOM_Node& handle) {
  DOMNode& node = changeable(handle);
  if (!isElement(node)) refuse(DOMException::HIERARCHY_REQUEST_ERR, "the node is no element");
  return static_cast<DOMElement&>(node);
}

const DOMElement* DomAccess::element(const VRDIDOM_Node& handle) {
  const DOMNode* node = handle.m_node;
  return node != nullptr && isElement(*node) ? static_cast<const DOMElement*>(node) : nullptr;
}

VRDIDOM_Document DomAccess::adopt(xercesc::DOMDocument* document) {
  return VRDIDOM_Document(DocumentBody::adopt(document), document);
}

VRDIDOM_NodeList DomAccess::snapshot(const VRDIDOM_Node& relative, std::vector<DOMNode*> nodes) {
  return VRDIDOM_NodeList(relative,
                          std::make_shared<const std::vector<DOMNode*>>(std::move(nodes)));
}
