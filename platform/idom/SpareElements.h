#pragma once

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNode.hpp>

#include <vector>

/// Elements of one document that nobody designates any more, kept for those that are made next. A
/// released element takes its attribute maps with it and they are lost to the document; kept whole,
/// it costs nothing.
class SpareElements {
 public:
  /// Takes the tree of @p root apart, which has no parent: elements are kept, bare, and all else is
  /// released.
  void keep(xercesc::DOMNode& root);

  /// An element without attributes and children; a new one if none is kept. The name has been
  /// checked.
  xercesc::DOMElement* take(xercesc::DOMDocument& document, const XMLCh* namespaceUri,
                            const XMLCh* qualifiedName);

 private:
  void makeRoom();
  void keepLeaf(xercesc::DOMNode& leaf);

  std::vector<xercesc::DOMElement*> m_elements;
};
