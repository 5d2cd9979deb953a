#include "platform/idom/DomBorder.h"

#include "platform/core/VRDRaise.h"
#include "platform/idom/DomText.h"
#include "platform/idom/VRDIDOM_Exception.h"

#define VRD_SOURCE_UNIT "DomBorder"

void refuse(short code, const char* text) {
  VRDIDOM_Exception error(code, text);
  VRD_THROW(error);
}

void raiseAsOurs(const xercesc::DOMException& error) {
  VRDIDOM_Exception ours(error.code, I18NString::fromUtf16(viewOf(error.getMessage())));
  VRD_THROW(ours);
}

void raiseAsOurs(const xercesc::XMLException& error) {
  VRDIDOM_Exception ours(xercesc::DOMException::INVALID_STATE_ERR,
                         I18NString::fromUtf16(viewOf(error.getMessage())));
  VRD_THROW(ours);
}
