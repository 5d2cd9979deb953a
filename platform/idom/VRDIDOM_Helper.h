#pragma once

#include <ostream>

#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"
#include "platform/idom/VRDIDOM_Element.h"
#include "platform/idom/VRDIDOM_Node.h"

/// Text output of a tree, and two conveniences.
class VRD_EXPORT VRDIDOM_Helper {
 public:
  VRDIDOM_Helper() = delete;

  /// Writes the node and everything below it as XML, with no declaration in front.
  ///
  /// The text is well-formed with namespaces and parses back to an equal tree: equal are namespaces
  /// and local names of elements and attributes, the values of attributes, and the text between
  /// tags. Adjacent texts come back as one and empty ones not at all. Attributes come out as they
  /// stand, none twice; a prefix in use that nothing above declares gets its declaration; one that
  /// was set without a namespace gains the one that it means there, "urn:prefix:" and the prefix
  /// where it means none; a character that XML cannot hold comes out as U+FFFD. A null node writes
  /// nothing.
  /// @param encoding null for UTF-8. In any other encoding what it cannot hold comes out as a
  ///        character reference. Before a byte is written, an encoding that nobody knows throws
  ///        `VRDStdExceptionError`, and the name of an element or attribute that it cannot hold
  ///        throws `VRDIDOM_Exception`. A failure of @p stream shows in its state.
  static void write(VRDIDOM_Node node, std::ostream& stream, const char* encoding);
  /// The same text, appended to @p out.
  static void write(VRDIDOM_Node node, I18NString& out);

  /// Appends a deep copy of @p child, which may belong to any document and stays as it is, to
  /// @p parent. Returns the copy. What @p parent refuses is not copied.
  static VRDIDOM_Node appendChild(VRDIDOM_Node parent, VRDIDOM_Node child);

  /// The first child element of @p parent of that qualified name; null if there is none.
  static VRDIDOM_Element getChildElement(VRDIDOM_Node& parent, const I18NString& name);
  /// The same by namespace and local name.
  static VRDIDOM_Element getChildElement(VRDIDOM_Node& parent, const I18NString& namespaceUri,
                                         const I18NString& localName);

  /// Puts the text of @p element into @p out: that of its text children, joined.
  static void getElementText(const VRDIDOM_Element& element, I18NString& out);
};
