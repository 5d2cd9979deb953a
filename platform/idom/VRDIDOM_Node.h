#pragma once

#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"

// The tree beneath the handles is Xerces-C's. Clients name its node class through this alias and
// need none of its headers.
namespace xercesc_3_2 {
class DOMNode;
}
namespace xercesc_2_7 = xercesc_3_2;

class DocumentBody;
class VRDIDOM_Document;
class VRDIDOM_Element;
class VRDIDOM_NodeList;

/// A handle on any node of a tree, or on nothing.
///
/// What holds for every handle of the family:
///
/// - **Value.** A copy designates the same node; a change through one handle is seen through all.
///   Copying costs an atomic count. A default-constructed handle is null. Conversions between
///   handle types do not check the node's type: ask `getNodeType` first where it may be another.
/// - **Life.** A document lives as long as any handle on it or on one of its nodes; handles may end
///   in whatever order and at any time, after the last `VRDIDOM_DOMImplementation::terminate` too.
///   A node lives as long as its document, also when it was removed from the tree.
/// - **Null.** On a null handle a read gives an empty text, an empty list, a null handle or 0; a
///   change throws.
/// - **Text.** Names and values are `I18NString`, exact; a qualified name includes its prefix.
/// - **Failure.** What the tree refuses (a child that is none, a malformed name, a node of another
///   document) throws `VRDIDOM_Exception` and changes nothing. Exhausted memory throws
///   `std::bad_alloc`.
/// - **Threads.** Any number of threads may read one document, and create, copy and end handles on
///   it, at the same time. A change needs the document to itself. One handle object belongs to one
///   thread at a time.
class VRD_EXPORT VRDIDOM_Node {
 public:
  VRDIDOM_Node() noexcept = default;
  VRDIDOM_Node(const VRDIDOM_Node& source) noexcept;
  VRDIDOM_Node(VRDIDOM_Node&& source) noexcept;
  ~VRDIDOM_Node();
  VRDIDOM_Node& operator=(const VRDIDOM_Node& source) noexcept;
  VRDIDOM_Node& operator=(VRDIDOM_Node&& source) noexcept;

  /// Non-zero if the handle is null.
  int isNull();
  /// With a null pointer: non-zero if the handle is null. With a handle's address: non-zero if both
  /// designate the same node.
  int operator==(const VRDIDOM_Node* other) const;
  int operator!=(const VRDIDOM_Node* other) const;
  /// The node behind the handle, owned by its document; null for a null handle.
  operator xercesc_2_7::DOMNode*();

  /// The DOM's number of the node's type: 1 element, 2 attribute, 3 text, 9 document.
  short getNodeType();
  /// The qualified name, prefix included.
  I18NString getNodeName();
  /// The name without its prefix.
  I18NString getLocalName();
  /// The namespace, or an empty text.
  I18NString getNamespaceURI();
  /// The prefix without its colon, or an empty text.
  I18NString getPrefix();
  /// The character data of a text node or the value of an attribute; else an empty text.
  I18NString getNodeValue();
  /// Replaces the character data of a text node or the value of an attribute.
  void setNodeValue(const I18NString& value);

  /// Whether both parts of the name are equal to these; makes no copy. A node without a namespace
  /// has an empty one.
  int isNamed(const I18NString& namespaceUri, const I18NString& localName);
  /// Whether the qualified name is equal to @p name; makes no copy.
  int isNamed(const I18NString& name);

  /// Whether both trees are equal as the DOM tells: types, names, values, attributes in whatever
  /// order, and children in theirs.
  int isEqualNode(VRDIDOM_Node other);

  /// These three give null where there is no such node.
  VRDIDOM_Node getParentNode();
  VRDIDOM_Node getFirstChild();
  VRDIDOM_Node getNextSibling();
  /// The live list of the children.
  VRDIDOM_NodeList getChildNodes();
  /// The document that the node belongs to; null for a document.
  VRDIDOM_Document getOwnerDocument();

  /// Adds @p child, a node of the same document, as the last one; a child that stands elsewhere in
  /// the tree is moved. Returns it.
  VRDIDOM_Node appendChild(VRDIDOM_Node child);
  /// The same, in front of @p before, which must be a child.
  VRDIDOM_Node insertBefore(VRDIDOM_Node child, VRDIDOM_Node before);
  /// Takes @p child out of the tree. Its handles stay valid. Returns it.
  VRDIDOM_Node removeChild(VRDIDOM_Node child);
  /// Puts @p newChild in the place of @p oldChild, which leaves the tree. Returns @p oldChild.
  VRDIDOM_Node replaceChild(VRDIDOM_Node newChild, VRDIDOM_Node oldChild);

 protected:
  friend class DomAccess;
  VRDIDOM_Node(DocumentBody* body, xercesc_2_7::DOMNode* node) noexcept;

  DocumentBody* m_body = nullptr;
  xercesc_2_7::DOMNode* m_node = nullptr;
};
