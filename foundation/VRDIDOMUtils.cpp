#include "foundation/VRDIDOMUtils.h"

#include "foundation/ElementWalk.h"
#include "platform/idom/VRDIDOM_Document.h"
#include "platform/idom/VRDIDOM_Helper.h"

namespace {

bool holdsOneTextNode(VRDIDOM_Node& firstChild) {
  return firstChild.getNodeType() == VRDIDOMUtils::textNode && firstChild.getNextSibling().isNull();
}

}  // namespace

I18NString VRDIDOMUtils::getText(VRDIDOM_Element& element) {
  I18NString text;
  VRDIDOM_Helper::getElementText(element, text);
  return text;
}

void VRDIDOMUtils::setText(VRDIDOM_Element& element, const I18NString& text) {
  VRDIDOM_Node child = element.getFirstChild();
  if (!child.isNull() && holdsOneTextNode(child)) {
    child.setNodeValue(text);
    return;
  }
  const VRDIDOM_Text content = element.getOwnerDocument().createTextNode(text);
  removeChildren(element);
  element.appendChild(content);
}

int VRDIDOMUtils::isTextOnly(VRDIDOM_Element& element) {
  if (element.isNull()) return 0;
  for (VRDIDOM_Node child = element.getFirstChild(); !child.isNull();
       child = child.getNextSibling()) {
    if (child.getNodeType() != textNode) return 0;
  }
  return 1;
}

int VRDIDOMUtils::isQNameEquals(VRDIDOM_Node& node, const I18NString& namespaceUri,
                                const I18NString& localName) {
  return node.isNamed(namespaceUri, localName);
}

VRDIDOM_Element VRDIDOMUtils::selectSingleNode(VRDIDOM_Node& parent, const I18NString& name) {
  return VRDIDOM_Helper::getChildElement(parent, name);
}

VRDIDOM_Element VRDIDOMUtils::selectSingleNodeNS(VRDIDOM_Node& parent,
                                                 const I18NString& namespaceUri,
                                                 const I18NString& localName) {
  return VRDIDOM_Helper::getChildElement(parent, namespaceUri, localName);
}
