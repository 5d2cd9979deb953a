#pragma once

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <string>

#include "platform/core/I18NString.h"

// Attributes of an element. The DOM's own look-up makes a copy of the name and takes ten times as
// long as a scan of the few attributes that an element has.

/// Null if there is none of that qualified name, or no element.
xercesc::DOMAttr* findAttribute(const xercesc::DOMElement* element, const I18NString& name);
/// The same by namespace and local name.
xercesc::DOMAttr* findAttribute(const xercesc::DOMElement* element, const I18NString& namespaceUri,
                                const I18NString& localName);

/// Both throw `VRDIDOM_Exception` for a name that no attribute can have, and change nothing then.
void setPlainAttribute(xercesc::DOMElement& element, const I18NString& name,
                       const I18NString& value);
void setNamespacedAttribute(xercesc::DOMElement& element, const I18NString& namespaceUri,
                            const I18NString& qualifiedName, const I18NString& value);
