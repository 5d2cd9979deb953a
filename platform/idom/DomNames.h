#pragma once

#include <xercesc/dom/DOMNode.hpp>

#include <string>

#include "platform/core/I18NString.h"
#include "platform/idom/DomText.h"

// Names are compared far more often than they are read, and mostly differ. So the comparison copies
// nothing, measures nothing and ends at the first difference.

/// Whether @p text, which ends at its NUL, is @p expected. Null acts as empty.
bool equals(const XMLCh* text, const I18NString& expected);

/// Whether the qualified name of @p node is @p name.
inline bool isNamed(const xercesc::DOMNode& node, const I18NString& name) {
  return equals(node.getNodeName(), name);
}

/// Whether both parts of the name of @p node are these.
bool isNamed(const xercesc::DOMNode& node, const I18NString& namespaceUri,
             const I18NString& localName);

/// @name Names that are about to be given
/// Xerces-C looks at some of them, after part of a change, or takes names that no text can hold.
/// These throw `VRDIDOM_Exception`: 5 for what is no name, 14 for a colon or a namespace that it
/// cannot have.
/// @{
void checkQualifiedName(const std::u16string& name);
void checkElementName(const DomUri& namespaceUri, const std::u16string& qualifiedName);
void checkAttributeName(const DomUri& namespaceUri, const std::u16string& qualifiedName);
/// @}
