#pragma once

#include <xercesc/dom/DOMNode.hpp>

#include "platform/idom/DocumentBody.h"

/// A copy of @p source that belongs to @p target and is not in its tree yet. Attributes come along,
/// and with @p deep everything below. As `DOMDocument::importNode`, but without recursion, and made
/// of the elements that the document has to spare. Throws what Xerces-C throws.
xercesc::DOMNode* copyInto(DocumentBody& target, const xercesc::DOMNode& source, bool deep);
