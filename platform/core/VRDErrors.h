#pragma once

#include <exception>
#include <memory>

#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"
#include "platform/core/VRDThrowable.h"

/// What the three errors of the runtime have in common: a code and a text. Copies share the text,
/// so that raising such an error asks for no memory. Making one does not fail: a text that finds no
/// memory is left out.
class VRD_EXPORT VRDError : public VRDThrowable {
 public:
  ~VRDError() override;

  /// The text given, or one sentence on the kind of error.
  I18NString getMessage() override;
  using VRDThrowable::toString;
  I18NString getMessage() const override;
  void toString(const char* linePrefix, const char* lineEnd, I18NString& out,
                int withBackTrace) override;

  long getCode() const { return m_code; }

 protected:
  /// @param text   in UTF-8; null and empty stand for no text
  /// @param kind   the message where there is no text; static storage
  VRDError(long code, const char* text, const char* kind) noexcept;
  VRDError(const VRDError&);
  VRDError& operator=(const VRDError&);

 private:
  long m_code;
  const char* m_kind;
  std::shared_ptr<const I18NString> m_text;  // null: none
};

/// A condition that the program counts on does not hold.
class VRD_EXPORT VRDAssertError : public VRDError {
 public:
  /// @param text the text of the assertion, or null
  VRDAssertError(long code, const char* text);
  ~VRDAssertError() override;
  VRDAssertError* clone() const override;
  [[noreturn]] void hurl(const VRDFileLocation& where, const char* text,
                         const char* macroWord) override;
  const char* getThrowableName() const override;
};

/// Memory is exhausted.
class VRD_EXPORT VRDOutOfMemoryError : public VRDError {
 public:
  /// @param text a remark, or null
  VRDOutOfMemoryError(long code, const char* text);
  ~VRDOutOfMemoryError() override;
  VRDOutOfMemoryError* clone() const override;
  [[noreturn]] void hurl(const VRDFileLocation& where, const char* text,
                         const char* macroWord) override;
  const char* getThrowableName() const override;
};

/// A standard exception that reached code of ours; the text is its `what()`.
class VRD_EXPORT VRDStdExceptionError : public VRDError {
 public:
  explicit VRDStdExceptionError(const std::exception& source);
  ~VRDStdExceptionError() override;
  VRDStdExceptionError* clone() const override;
  [[noreturn]] void hurl(const VRDFileLocation& where, const char* text,
                         const char* macroWord) override;
  const char* getThrowableName() const override;
};
