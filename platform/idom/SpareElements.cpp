#include "platform/idom/SpareElements.h"

#include <algorithm>
#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include "platform/idom/DomText.h"

using xercesc::DOMAttr;
using xercesc::DOMElement;
using xercesc::DOMNode;

namespace {

void releaseAttributes(DOMElement& element) {
  const xercesc::DOMNamedNodeMap& attributes = *element.getAttributes();
  while (attributes.getLength() > 0) {
    element.removeAttributeNode(static_cast<DOMAttr*>(attributes.item(0)))->release();
  }
}

DOMNode* firstLeafOf(DOMNode* node) {
  while (DOMNode* child = node->getFirstChild()) node = child;
  return node;
}

/// One that was made with regard to namespaces can take any name.
bool canBeRenamed(const DOMNode& node) { return isElement(node) && node.getLocalName() != nullptr; }

}  // namespace

void SpareElements::keep(DOMNode& root) {
  // Leaf by leaf, so that a lack of memory leaves a smaller tree and loses nothing.
  DOMNode* node = firstLeafOf(&root);
  while (node != &root) {
    DOMNode* parent = node->getParentNode();
    makeRoom();
    keepLeaf(*parent->removeChild(node));
    node = firstLeafOf(parent);
  }
  makeRoom();
  keepLeaf(root);
}

void SpareElements::makeRoom() {
  const std::size_t room = m_elements.capacity();
  if (m_elements.size() == room) m_elements.reserve(std::max<std::size_t>(8, 2 * room));
}

void SpareElements::keepLeaf(DOMNode& leaf) {
  if (!canBeRenamed(leaf)) return leaf.release();
  auto& element = static_cast<DOMElement&>(leaf);
  releaseAttributes(element);
  m_elements.push_back(&element);
}

DOMElement* SpareElements::take(xercesc::DOMDocument& document, const XMLCh* namespaceUri,
                                const XMLCh* qualifiedName) {
  if (m_elements.empty()) return document.createElementNS(namespaceUri, qualifiedName);
  // Renaming may find no memory; then the element is still kept.
  document.renameNode(m_elements.back(), namespaceUri, qualifiedName);
  DOMElement* element = m_elements.back();
  m_elements.pop_back();
  return element;
}
