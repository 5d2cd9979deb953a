#include "platform/core/VRDMessage.h"

#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/core/MessageCatalogues.h"

namespace {

/// Reads the "{N}" that @p text begins with.
/// @return its length; 0 if there is none
std::size_t placeAt(std::string_view text, std::size_t& index) {
  const std::size_t close = text.find('}');
  if (close == std::string_view::npos) return 0;
  const auto [last, error] = std::from_chars(text.data() + 1, text.data() + close, index);
  return error == std::errc() && last == text.data() + close ? close + 1 : 0;
}

/// @p text with the parameters of @p message in their places. Without its parameter a place stays
/// as it is written, as does any other brace.
I18NString filled(std::string_view text, const VRDMessage& message) {
  std::string result;
  for (std::size_t open = text.find('{'); open != std::string_view::npos; open = text.find('{')) {
    result.append(text.substr(0, open));
    text.remove_prefix(open);
    std::size_t index = 0;
    std::size_t length = placeAt(text, index);
    if (length != 0 && index < message.getParmCount()) {
      result.append(message.getParmAt(index).getText().utf8());
    } else {
      length = 1;
      result += '{';
    }
    text.remove_prefix(length);
  }
  result.append(text);
  return I18NString(std::string_view(result));
}

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
I18NString VRDMessage::getText() const {
  const std::string* text = MessageCatalogues::installed().find(m_catalogue.utf8(), m_number);
  return text != nullptr ? filled(*text, *this) : textWithoutCatalogue(*this);
}
