#include "platform/core/VRDMessage.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace {

/// The names of the message and what it was given: a person can look it up, and nothing is lost.
/// Numbers of the installation's catalogues have eight hexadecimal digits.
I18NString textWithoutCatalogue(const VRDMessage& message) {
  char number[2 + 2 * sizeof(unsigned long) + 1];
  std::snprintf(number, sizeof number, "0x%08lX", message.getNumber());

  std::string text(message.getCatalogue().utf8());
  text.append(" ").append(number);
  for (std::size_t i = 0; i < message.getParmCount(); ++i) {
    text.append(i == 0 ? " (" : ", ").append(message.getParmAt(i).getText().utf8());
  }
  if (message.getParmCount() != 0) text += ')';
  return I18NString(std::string_view(text));
}

}  // namespace

// The destructors stand here so that each class has its type information in this library, once: a
// handler in another library compares types by it.
VRDMessageBase::~VRDMessageBase() = default;

VRDMessageParm::VRDMessageParm(const I18NString& text) : m_text(text) {}

VRDMessageComponents::~VRDMessageComponents() = default;

VRDMessageComponents& VRDMessageComponents::operator<<(const VRDMessageParm& parm) {
  m_parms.push_back(parm);
  return *this;
}

VRDMessage::VRDMessage(const I18NString& catalogue, unsigned long number)
    : m_catalogue(catalogue), m_number(number) {}
VRDMessage::~VRDMessage() = default;

std::unique_ptr<VRDMessageBase> VRDMessage::clone() const {
  return std::make_unique<VRDMessage>(*this);
}

// The one place where a number turns into text.
I18NString VRDMessage::getText() const { return textWithoutCatalogue(*this); }
