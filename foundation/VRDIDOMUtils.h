#pragma once

#include "platform/core/I18NString.h"
#include "platform/idom/VRDIDOM_Element.h"
#include "platform/idom/VRDIDOM_Node.h"

/// What the rest of the library asks of a tree beyond the handles themselves.
///
/// Text means the direct children of node type 3; deeper descendants are never looked at. Finding
/// nothing is no failure and gives a null handle; what the tree throws passes through. The
/// functions take no lock: `setText` needs the tree to itself, the others may share it with
/// readers.
class VRDIDOMUtils {
 public:
  VRDIDOMUtils() = delete;

  /// The element's own text, joined and unchanged; empty for a null element.
  static I18NString getText(VRDIDOM_Element& element);
  /// Makes @p text the one text child of the element, and its only child, also when it is empty.
  /// An element that holds just one text node keeps that node: its text changes in place, so a tree
  /// does not grow by being rewritten.
  static void setText(VRDIDOM_Element& element, const I18NString& text);
  /// 1 if no child is other than text, as with an element without children; 0 for a null element.
  static int isTextOnly(VRDIDOM_Element& element);
  /// 1 if both parts of the name are equal to these; a node without a namespace has an empty one.
  static int isQNameEquals(VRDIDOM_Node& node, const I18NString& namespaceUri,
                           const I18NString& localName);
  /// The first child element of that qualified name, prefix included, or a null handle.
  static VRDIDOM_Element selectSingleNode(VRDIDOM_Node& parent, const I18NString& name);
  /// The first child element of that namespace and local name, whatever its prefix, or a null
  /// handle.
  static VRDIDOM_Element selectSingleNodeNS(VRDIDOM_Node& parent, const I18NString& namespaceUri,
                                            const I18NString& localName);

  static constexpr short elementNode = 1;
  static constexpr short textNode = 3;
};
