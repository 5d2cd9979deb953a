#include "platform/idom/DomCopy.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <string>
#include <vector>

#include "platform/idom/DomText.h"

using xercesc::DOMAttr;
using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMNamedNodeMap;
using xercesc::DOMNode;

namespace {

DOMAttr* makeAttribute(DOMDocument& document, const DOMNode& source) {
  if (source.getLocalName() == nullptr) return document.createAttribute(source.getNodeName());
  return document.createAttributeNS(source.getNamespaceURI(), source.getNodeName());
}

void copyAttribute(DOMDocument& document, DOMElement& target, const DOMNode& source) {
  std::u16string joined;
  // A view of one whole text node ends with a NUL, and so does a string.
  const std::u16string_view value = valueOf(source, joined);
  DOMAttr* copy = makeAttribute(document, source);
  copy->setNodeValue(value.empty() ? u"" : value.data());
  // By qualified name, as the map is sorted, while the search for a namespace goes through all of
  // it. The rare namesake in another namespace comes back beside it.
  if (DOMAttr* namesake = target.setAttributeNode(copy)) target.setAttributeNodeNS(namesake);
}

DOMElement* copyElement(DocumentBody& target, const DOMNode& source) {
  DOMDocument& document = target.document();
  DOMElement* copy =
      source.getLocalName() == nullptr
          ? document.createElement(source.getNodeName())
          : target.spareElements().take(document, source.getNamespaceURI(), source.getNodeName());
  const DOMNamedNodeMap& attributes = *source.getAttributes();
  const XMLSize_t count = attributes.getLength();
  for (XMLSize_t i = 0; i < count; ++i) copyAttribute(document, *copy, *attributes.item(i));
  return copy;
}

DOMNode* copyOne(DocumentBody& target, const DOMNode& source) {
  switch (source.getNodeType()) {
    case DOMNode::ELEMENT_NODE:
      return copyElement(target, source);
    case DOMNode::TEXT_NODE:
      return target.document().createTextNode(source.getNodeValue());
    default:
      return target.document().importNode(&source, false);
  }
}

/// An element whose children are being copied.
struct Level {
  const DOMNode* next;  // of the source's children
  DOMNode* parent;      // the copy that they go to
};

}  // namespace

DOMNode* copyInto(DocumentBody& target, const DOMNode& source, bool deep) {
  DOMNode* root = copyOne(target, source);
  if (!deep || !isElement(source)) return root;

  // Each copy is appended while it is still without children, which spares Xerces-C its search for
  // cycles up to the root. The way up is kept here, as asking for a parent costs much.
  std::vector<Level> open{{source.getFirstChild(), root}};
  while (!open.empty()) {
    const DOMNode* node = open.back().next;
    if (node == nullptr) {
      open.pop_back();
      continue;
    }
    open.back().next = node->getNextSibling();
    DOMNode* copy = copyOne(target, *node);
    open.back().parent->appendChild(copy);
    if (const DOMNode* child = node->getFirstChild()) open.push_back({child, copy});
  }
  return root;
}
