#include "platform/idom/VRDIDOM_Node.h"

#include <string>
#include <utility>

#include "platform/idom/DomAccess.h"
#include "platform/idom/DomBorder.h"
#include "platform/idom/DomCompare.h"
#include "platform/idom/DomNames.h"
#include "platform/idom/DomText.h"
#include "platform/idom/VRDIDOM_Document.h"
#include "platform/idom/VRDIDOM_NodeList.h"

using xercesc::DOMNode;

// Life. A handle that is not null has both, node and body.

VRDIDOM_Node::VRDIDOM_Node(DocumentBody* body, DOMNode* node) noexcept {
  if (node == nullptr) return;
  m_body = body;
  m_node = node;
  m_body->retain();
}

VRDIDOM_Node::VRDIDOM_Node(const VRDIDOM_Node& source) noexcept
    : VRDIDOM_Node(source.m_body, source.m_node) {}

VRDIDOM_Node::VRDIDOM_Node(VRDIDOM_Node&& source) noexcept
    : m_body(std::exchange(source.m_body, nullptr)),
      m_node(std::exchange(source.m_node, nullptr)) {}

VRDIDOM_Node::~VRDIDOM_Node() {
  if (m_body != nullptr) m_body->release();
}

VRDIDOM_Node& VRDIDOM_Node::operator=(const VRDIDOM_Node& source) noexcept {
  return *this = VRDIDOM_Node(source);
}

VRDIDOM_Node& VRDIDOM_Node::operator=(VRDIDOM_Node&& source) noexcept {
  VRDIDOM_Node taken(std::move(source));
  std::swap(m_body, taken.m_body);
  std::swap(m_node, taken.m_node);
  return *this;
}

// Identity

int VRDIDOM_Node::isNull() { return m_node == nullptr; }

int VRDIDOM_Node::operator==(const VRDIDOM_Node* other) const {
  return m_node == (other == nullptr ? nullptr : other->m_node);
}

int VRDIDOM_Node::operator!=(const VRDIDOM_Node* other) const { return !(*this == other); }

VRDIDOM_Node::operator DOMNode*() { return m_node; }

// Names and values

short VRDIDOM_Node::getNodeType() {
  return m_node == nullptr ? short{0} : static_cast<short>(m_node->getNodeType());
}

I18NString VRDIDOM_Node::getNodeName() {
  if (m_node == nullptr) return {};
  return I18NString::fromUtf16(viewOf(m_node->getNodeName()));
}

I18NString VRDIDOM_Node::getLocalName() {
  return m_node == nullptr ? I18NString() : I18NString::fromUtf16(localNameOf(*m_node));
}

I18NString VRDIDOM_Node::getNamespaceURI() {
  if (m_node == nullptr) return {};
  return I18NString::fromUtf16(viewOf(m_node->getNamespaceURI()));
}

I18NString VRDIDOM_Node::getPrefix() {
  if (m_node == nullptr) return {};
  return I18NString::fromUtf16(prefixPartOf(viewOf(m_node->getNodeName())));
}

I18NString VRDIDOM_Node::getNodeValue() {
  if (m_node == nullptr) return {};
  std::u16string joined;
  return I18NString::fromUtf16(characterDataOf(*m_node, joined));
}

void VRDIDOM_Node::setNodeValue(const I18NString& value) {
  DOMNode& node = DomAccess::changeable(*this);
  atBorder([&] { setCharacterData(node, toDomValue(value)); });
}

int VRDIDOM_Node::isNamed(const I18NString& namespaceUri, const I18NString& localName) {
  return m_node != nullptr && ::isNamed(*m_node, namespaceUri, localName);
}

int VRDIDOM_Node::isNamed(const I18NString& name) {
  return m_node != nullptr && ::isNamed(*m_node, name);
}

int VRDIDOM_Node::isEqualNode(VRDIDOM_Node other) {
  if (m_node == nullptr || other.m_node == nullptr) return m_node == other.m_node;
  return areEqual(*m_node, *other.m_node);
}

// The tree around the node

VRDIDOM_Node VRDIDOM_Node::getParentNode() {
  return {m_body, m_node == nullptr ? nullptr : m_node->getParentNode()};
}

VRDIDOM_Node VRDIDOM_Node::getFirstChild() {
  return {m_body, m_node == nullptr ? nullptr : m_node->getFirstChild()};
}

VRDIDOM_Node VRDIDOM_Node::getNextSibling() {
  return {m_body, m_node == nullptr ? nullptr : m_node->getNextSibling()};
}

VRDIDOM_NodeList VRDIDOM_Node::getChildNodes() { return DomAccess::liveList(*this); }

VRDIDOM_Document VRDIDOM_Node::getOwnerDocument() {
  if (m_node == nullptr) return {};
  xercesc::DOMDocument& document = m_body->document();
  return DomAccess::make<VRDIDOM_Document>(*this, m_node == &document ? nullptr : &document);
}

// Changes

VRDIDOM_Node VRDIDOM_Node::appendChild(VRDIDOM_Node child) {
  DOMNode& parent = DomAccess::changeable(*this);
  DOMNode& added = DomAccess::changeable(child);
  atBorder([&] { m_body->append(parent, added); });
  return child;
}

VRDIDOM_Node VRDIDOM_Node::insertBefore(VRDIDOM_Node child, VRDIDOM_Node before) {
  DOMNode& parent = DomAccess::changeable(*this);
  DOMNode& added = DomAccess::changeable(child);
  DOMNode& next = DomAccess::changeable(before);
  atBorder([&] { m_body->insert(parent, added, next); });
  return child;
}

VRDIDOM_Node VRDIDOM_Node::removeChild(VRDIDOM_Node child) {
  DOMNode& parent = DomAccess::changeable(*this);
  DOMNode& removed = DomAccess::changeable(child);
  atBorder([&] { m_body->remove(parent, removed); });
  return child;
}

VRDIDOM_Node VRDIDOM_Node::replaceChild(VRDIDOM_Node newChild, VRDIDOM_Node oldChild) {
  DOMNode& parent = DomAccess::changeable(*this);
  DOMNode& added = DomAccess::changeable(newChild);
  DOMNode& replaced = DomAccess::changeable(oldChild);
  atBorder([&] { m_body->replace(parent, added, replaced); });
  return oldChild;
}
