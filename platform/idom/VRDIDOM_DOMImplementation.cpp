#include "platform/idom/VRDIDOM_DOMImplementation.h"

#include "platform/idom/DomAccess.h"
#include "platform/idom/DomBorder.h"
#include "platform/idom/XercesRuntime.h"

void VRDIDOM_DOMImplementation::initialize() {
  atBorder([] { XercesRuntime::instance(); });
}

// Xerces-C is never ended, so there is nothing to count: its documents may be in use.
void VRDIDOM_DOMImplementation::terminate() {}

VRDIDOM_DOMImplementation VRDIDOM_DOMImplementation::getInstance() { return {}; }

VRDIDOM_Document VRDIDOM_DOMImplementation::createDocument() {
  return atBorder([] { return DomAccess::adopt(XercesRuntime::instance().createDocument()); });
}
