#include "platform/core/VRDException.h"

#include <string>
#include <string_view>

namespace {

/// The severity as the first word of a line on the state.
std::string nameOf(VRDSeverity severity) {
  switch (severity) {
    case VRDSeverity_Information:
      return "information";
    case VRDSeverity_Error:
      return "error";
  }
  // Clients may pass a severity of their own.
  return "severity " + std::to_string(severity) + ", code";
}

/// Severity and code, such as "error 14": the least that any exception can tell.
I18NString stateOf(const VRDException& exception) {
  const std::string text =
      nameOf(exception.getSeverity()) + " " + std::to_string(exception.getCode());
  return I18NString(std::string_view(text));
}

}  // namespace

VRDException::VRDException(VRDSeverity severity, long code) : m_severity(severity), m_code(code) {}
VRDException::VRDException(const VRDException&) = default;
VRDException& VRDException::operator=(const VRDException&) = default;
VRDException::~VRDException() = default;

VRDException* VRDException::clone() const { return new VRDException(*this); }

// Each class hurls for itself: a `throw` makes its copy by the static type of the object.
void VRDException::hurl(const VRDFileLocation& where, const char* text, const char* macroWord) {
  addBackTrace(where, text, macroWord);
  throw *this;
}

I18NString VRDException::getMessage() { return VRDThrowable::getMessage(); }

const char* VRDException::getThrowableName() const { return "VRDException"; }

I18NString VRDException::getMessage() const {
  // Not every code has a message, and a log line must not end up empty.
  if (getMessageCount() == 0) return stateOf(*this);
  I18NString text = getMessageAt(0).getText();
  for (std::size_t i = 1; i < getMessageCount(); ++i) {
    text += "\n";
    text += getMessageAt(i).getText();
  }
  return text;
}

void VRDException::toString(const char* linePrefix, const char* lineEnd, I18NString& out,
                            int withBackTrace) {
  appendLines(stateOf(*this), linePrefix, lineEnd, out, withBackTrace);
}

VRDException& VRDException::operator<<(const VRDMessageBase& message) {
  addMessage(message);
  return *this;
}
