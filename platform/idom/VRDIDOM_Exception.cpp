#include "platform/idom/VRDIDOM_Exception.h"

#include <utility>

VRDIDOM_Exception::VRDIDOM_Exception(short code, const I18NString& text)
    : VRDException(VRDSeverity_Error, code), m_text(text) {}
VRDIDOM_Exception::VRDIDOM_Exception(const VRDIDOM_Exception&) = default;
VRDIDOM_Exception& VRDIDOM_Exception::operator=(const VRDIDOM_Exception&) = default;
VRDIDOM_Exception::~VRDIDOM_Exception() = default;

VRDIDOM_Exception* VRDIDOM_Exception::clone() const { return new VRDIDOM_Exception(*this); }

void VRDIDOM_Exception::hurl(const VRDFileLocation& where, const char* text,
                             const char* macroWord) {
  addBackTrace(where, text, macroWord);
  throw *this;
}

I18NString VRDIDOM_Exception::getMessage() { return std::as_const(*this).getMessage(); }

const char* VRDIDOM_Exception::getThrowableName() const { return "VRDIDOM_Exception"; }

I18NString VRDIDOM_Exception::getMessage() const {
  return m_text.empty() ? VRDException::getMessage() : m_text;
}
