#include "platform/core/VRDErrors.h"

#include <new>
#include <string>
#include <string_view>

// These errors are what is left to raise when memory runs out. Copying one, which every throw does,
// therefore copies numbers and pointers: the text is made once, and shared.

namespace {

/// Null where there is nothing to keep, or no memory to keep it in: an error is made in moments in
/// which memory may be short, and must not turn into another one then.
std::shared_ptr<const I18NString> shareText(const char* text) noexcept {
  if (text == nullptr || *text == '\0') return nullptr;
  try {
    return std::make_shared<const I18NString>(text);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

VRDError::VRDError(long code, const char* text, const char* kind) noexcept
    : m_code(code), m_kind(kind), m_text(shareText(text)) {}
VRDError::VRDError(const VRDError&) = default;
VRDError& VRDError::operator=(const VRDError&) = default;
VRDError::~VRDError() = default;

I18NString VRDError::getMessage() { return VRDThrowable::getMessage(); }

I18NString VRDError::getMessage() const { return m_text ? *m_text : I18NString(m_kind); }

void VRDError::toString(const char* linePrefix, const char* lineEnd, I18NString& out,
                        int withBackTrace) {
  const std::string state = "error " + std::to_string(m_code);
  appendLines(I18NString(std::string_view(state)), linePrefix, lineEnd, out, withBackTrace);
}

// --- a condition that does not hold

VRDAssertError::VRDAssertError(long code, const char* text)
    : VRDError(code, text, "an assertion failed") {}
VRDAssertError::~VRDAssertError() = default;

VRDAssertError* VRDAssertError::clone() const { return new VRDAssertError(*this); }

void VRDAssertError::hurl(const VRDFileLocation& where, const char* text, const char* macroWord) {
  addBackTrace(where, text, macroWord);
  throw *this;
}

const char* VRDAssertError::getThrowableName() const { return "VRDAssertError"; }

// --- no memory

VRDOutOfMemoryError::VRDOutOfMemoryError(long code, const char* text)
    : VRDError(code, text, "memory is exhausted") {}
VRDOutOfMemoryError::~VRDOutOfMemoryError() = default;

VRDOutOfMemoryError* VRDOutOfMemoryError::clone() const { return new VRDOutOfMemoryError(*this); }

void VRDOutOfMemoryError::hurl(const VRDFileLocation& where, const char* text,
                               const char* macroWord) {
  addBackTrace(where, text, macroWord);
  throw *this;
}

const char* VRDOutOfMemoryError::getThrowableName() const { return "VRDOutOfMemoryError"; }

// --- a standard exception

// `what()` lives no longer than its exception, which the handler is about to leave: hence a copy.
VRDStdExceptionError::VRDStdExceptionError(const std::exception& source)
    : VRDError(0, source.what(), "a standard exception without a text") {}
VRDStdExceptionError::~VRDStdExceptionError() = default;

VRDStdExceptionError* VRDStdExceptionError::clone() const {
  return new VRDStdExceptionError(*this);
}

void VRDStdExceptionError::hurl(const VRDFileLocation& where, const char* text,
                                const char* macroWord) {
  addBackTrace(where, text, macroWord);
  throw *this;
}

const char* VRDStdExceptionError::getThrowableName() const { return "VRDStdExceptionError"; }
