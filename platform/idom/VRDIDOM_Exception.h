#pragma once

#include "platform/core/VRDException.h"
#include "platform/core/VRDExport.h"

/// The tree refused an operation. The code is the DOM's exception code: 3 hierarchy, 4 wrong
/// document, 5 invalid character, 8 not found, 14 namespace.
class VRD_EXPORT VRDIDOM_Exception : public VRDException {
 public:
  VRDIDOM_Exception(short code, const I18NString& text);
  VRDIDOM_Exception(const VRDIDOM_Exception&);
  VRDIDOM_Exception& operator=(const VRDIDOM_Exception&);
  ~VRDIDOM_Exception() override;

  VRDIDOM_Exception* clone() const override;
  [[noreturn]] void hurl(const VRDFileLocation& where, const char* text,
                         const char* macroWord) override;
  I18NString getMessage() override;
  const char* getThrowableName() const override;
  I18NString getMessage() const override;

 private:
  I18NString m_text;
};
