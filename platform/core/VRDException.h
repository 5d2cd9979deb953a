#pragma once

#include "platform/core/VRDExport.h"
#include "platform/core/VRDMessageSet.h"
#include "platform/core/VRDThrowable.h"

/// How grave an exception is. The library raises errors only.
enum VRDSeverity : int {
  VRDSeverity_Information = 0,
  VRDSeverity_Error = 1,
};

/// A throwable with a severity, an error code and messages. A copy has all of them, and the back
/// trace; it may throw `std::bad_alloc`.
class VRD_EXPORT VRDException : public VRDThrowable, public VRDMessageSet {
 public:
  /// Without messages.
  VRDException(VRDSeverity severity, long code);
  VRDException(const VRDException&);
  VRDException& operator=(const VRDException&);
  ~VRDException() override;

  VRDException* clone() const override;
  [[noreturn]] void hurl(const VRDFileLocation& where, const char* text,
                         const char* macroWord) override;
  /// The texts of the messages, one a line; severity and code where there is no message.
  I18NString getMessage() override;
  const char* getThrowableName() const override;
  using VRDThrowable::toString;
  I18NString getMessage() const override;
  void toString(const char* linePrefix, const char* lineEnd, I18NString& out,
                int withBackTrace) override;

  /// Adds a copy of @p message and returns the exception.
  VRDException& operator<<(const VRDMessageBase& message);

  long getCode() const { return m_code; }
  VRDSeverity getSeverity() const { return m_severity; }

 private:
  VRDSeverity m_severity;
  long m_code;
};
