#include "platform/idom/VRDIDOM_Document.h"

#include <new>
#include <string>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMText.hpp>

#include "platform/idom/DomAccess.h"
#include "platform/idom/DomBorder.h"
#include "platform/idom/DomCopy.h"
#include "platform/idom/DomNames.h"
#include "platform/idom/DomText.h"

using xercesc::DOMDocument;
using xercesc::DOMNode;

namespace {

/// Whether a document can make other nodes of it.
bool canBeReused(const DOMNode& node) { return isElement(node) || isText(node); }

DOMDocument& changeableDocument(const VRDIDOM_Document& handle) {
  return static_cast<DOMDocument&>(DomAccess::changeable(handle));
}

}  // namespace

VRDIDOM_Element VRDIDOM_Document::getDocumentElement() {
  if (m_node == nullptr) return {};
  return DomAccess::make<VRDIDOM_Element>(*this, m_body->document().getDocumentElement());
}

VRDIDOM_Element VRDIDOM_Document::createElementNS(const I18NString& namespaceUri,
                                                  const I18NString& qualifiedName) {
  DOMDocument& document = changeableDocument(*this);
  return atBorder([&] {
    const DomUri uri(namespaceUri);
    const std::u16string name = toDomName(qualifiedName);
    checkElementName(uri, name);
    DOMNode* element = m_body->spareElements().take(document, uri.get(), name.c_str());
    return DomAccess::make<VRDIDOM_Element>(*this, element);
  });
}

VRDIDOM_Text VRDIDOM_Document::createTextNode(const I18NString& text) {
  DOMDocument& document = changeableDocument(*this);
  return atBorder([&] {
    DOMNode* node = document.createTextNode(toDomValue(text).c_str());
    return DomAccess::make<VRDIDOM_Text>(*this, node);
  });
}

VRDIDOM_Node VRDIDOM_Document::renameNode(VRDIDOM_Node node, const I18NString& namespaceUri,
                                          const I18NString& qualifiedName) {
  DOMDocument& document = changeableDocument(*this);
  DOMNode& named = DomAccess::changeableElement(node);
  if (DomAccess::body(node) != m_body) {
    refuse(xercesc::DOMException::WRONG_DOCUMENT_ERR, "the element is of another document");
  }
  return atBorder([&] {
    const DomUri uri(namespaceUri);
    const std::u16string name = toDomName(qualifiedName);
    // Xerces-C finds fault with a name when it has given it.
    checkElementName(uri, name);
    return DomAccess::make<VRDIDOM_Node>(*this,
                                         document.renameNode(&named, uri.get(), name.c_str()));
  });
}

VRDIDOM_Node VRDIDOM_Document::importNode(VRDIDOM_Node& source, int deep) {
  const DOMNode* original = DomAccess::node(source);
  if (original == nullptr) return {};
  changeableDocument(*this);
  return atBorder([&] {
    return DomAccess::make<VRDIDOM_Node>(*this, copyInto(*m_body, *original, deep != 0));
  });
}

void VRDIDOM_Document::recycle(VRDIDOM_Node& node) {
  changeableDocument(*this);
  DOMNode& given = DomAccess::changeable(node);
  if (DomAccess::body(node) != m_body || !canBeReused(given) || given.getParentNode() != nullptr) {
    refuse(xercesc::DOMException::HIERARCHY_REQUEST_ERR,
           "the node is in a tree, or no element or text");
  }
  try {
    atBorder([&] { m_body->spareElements().keep(given); });
  } catch (const std::bad_alloc&) {
    // Only a saving: what was not kept stays with the document and goes with it.
  }
  node = VRDIDOM_Node();
}

VRDIDOM_TreeWalker VRDIDOM_Document::createTreeWalker(VRDIDOM_Node root, unsigned long whatToShow,
                                                      VRDIDOM_NodeFilter* /*filter*/,
                                                      int /*expandEntityReferences*/) {
  return {root, whatToShow};
}
