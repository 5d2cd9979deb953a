#include "platform/idom/VRDIDOM_Element.h"

#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <string>
#include <utility>
#include <vector>

#include "platform/idom/DomAccess.h"
#include "platform/idom/DomAttributes.h"
#include "platform/idom/DomBorder.h"
#include "platform/idom/DomNames.h"
#include "platform/idom/DomText.h"
#include "platform/idom/VRDIDOM_NodeList.h"

using xercesc::DOMAttr;
using xercesc::DOMElement;
using xercesc::DOMNode;

namespace {

void readInto(I18NString& out, const DOMAttr* attribute) {
  out = I18NString();
  if (attribute == nullptr) return;
  std::u16string joined;
  out.appendUtf16(valueOf(*attribute, joined));
}

template <class Matches>
void collectBelow(const DOMNode& root, Matches matches, std::vector<DOMNode*>& found) {
  // What follows the open elements. No recursion: a tree may be as deep as it likes.
  std::vector<DOMNode*> pending{root.getFirstChild()};
  while (!pending.empty()) {
    DOMNode* node = pending.back();
    if (node == nullptr) {
      pending.pop_back();
      continue;
    }
    pending.back() = node->getNextSibling();
    if (!isElement(*node)) continue;
    if (matches(*node)) found.push_back(node);
    pending.push_back(node->getFirstChild());
  }
}

template <class Matches>
VRDIDOM_NodeList descendants(const VRDIDOM_Node& handle, Matches matches) {
  std::vector<DOMNode*> found;
  if (const DOMElement* root = DomAccess::element(handle)) collectBelow(*root, matches, found);
  return DomAccess::snapshot(handle, std::move(found));
}

}  // namespace

// Conversions

VRDIDOM_Element::VRDIDOM_Element(const VRDIDOM_Node& source) noexcept : VRDIDOM_Node(source) {}

VRDIDOM_Element& VRDIDOM_Element::operator=(const VRDIDOM_Node& source) noexcept {
  VRDIDOM_Node::operator=(source);
  return *this;
}

VRDIDOM_Element& VRDIDOM_Element::operator=(const VRDIDOM_Node* source) noexcept {
  return *this = source == nullptr ? VRDIDOM_Node() : *source;
}

// Attributes

I18NString VRDIDOM_Element::getAttribute(const I18NString& name) {
  I18NString value;
  getAttribute(name, value);
  return value;
}

void VRDIDOM_Element::getAttribute(const I18NString& name, I18NString& out) {
  const DOMElement* element = DomAccess::element(*this);
  readInto(out, findAttribute(element, name));
}

VRDIDOM_Attr VRDIDOM_Element::getAttributeNode(const I18NString& name) {
  return DomAccess::make<VRDIDOM_Attr>(*this, findAttribute(DomAccess::element(*this), name));
}

void VRDIDOM_Element::setAttribute(const I18NString& name, const I18NString& value) {
  DOMElement& element = DomAccess::changeableElement(*this);
  atBorder([&] { setPlainAttribute(element, name, value); });
}

void VRDIDOM_Element::removeAttribute(const I18NString& name) {
  DOMElement& element = DomAccess::changeableElement(*this);
  DOMAttr* attribute = findAttribute(&element, name);
  // Taken out, not given back: a handle may designate it.
  if (attribute != nullptr) atBorder([&] { element.removeAttributeNode(attribute); });
}

void VRDIDOM_Element::removeAttributes() {
  DOMElement& element = DomAccess::changeableElement(*this);
  const xercesc::DOMNamedNodeMap& attributes = *element.getAttributes();
  atBorder([&] {
    while (attributes.getLength() > 0) {
      element.removeAttributeNode(static_cast<DOMAttr*>(attributes.item(0)));
    }
  });
}

I18NString VRDIDOM_Element::getAttributeNS(const I18NString& namespaceUri,
                                           const I18NString& localName) {
  I18NString value;
  readInto(value, findAttribute(DomAccess::element(*this), namespaceUri, localName));
  return value;
}

int VRDIDOM_Element::hasAttribute(const I18NString& name) {
  return findAttribute(DomAccess::element(*this), name) != nullptr;
}

int VRDIDOM_Element::hasAttributeNS(const I18NString& namespaceUri, const I18NString& localName) {
  return findAttribute(DomAccess::element(*this), namespaceUri, localName) != nullptr;
}

void VRDIDOM_Element::setAttributeNS(const I18NString& namespaceUri,
                                     const I18NString& qualifiedName, const I18NString& value) {
  DOMElement& element = DomAccess::changeableElement(*this);
  atBorder([&] { setNamespacedAttribute(element, namespaceUri, qualifiedName, value); });
}

// Descendants

VRDIDOM_NodeList VRDIDOM_Element::getElementsByTagName(const I18NString& qualifiedName) {
  return descendants(
      *this, [&qualifiedName](const DOMNode& node) { return ::isNamed(node, qualifiedName); });
}

VRDIDOM_NodeList VRDIDOM_Element::getElementsByTagNameNS(const I18NString& namespaceUri,
                                                         const I18NString& localName) {
  return descendants(*this,
                     [&](const DOMNode& node) { return ::isNamed(node, namespaceUri, localName); });
}
