#include "platform/core/Unencodable.h"

#include <cstdio>

std::string xmlReference(char32_t character) noexcept {
  // The mask shows the compiler that it fits; as a std::string it is short enough for no
  // allocation.
  char text[sizeof "&#x10FFFF;"];
  std::snprintf(text, sizeof text, "&#x%X;", static_cast<unsigned>(character & 0x1FFFFFU));
  return text;
}
