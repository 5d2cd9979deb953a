#include "tools/Text.h"

#include <wchar.h>

#include <cstdio>

namespace {

constexpr char replacement[] = "\xEF\xBF\xBD";
constexpr char ellipsis[] = "\xE2\x80\xA6";

bool continues(std::string_view text, std::size_t at) {
  return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

/// The character of @p length bytes at @p at.
char32_t decode(std::string_view text, std::size_t at, std::size_t length) {
  const auto first = static_cast<unsigned char>(text[at]);
  if (length == 1) return first;
  char32_t character = first & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    character = (character << 6) | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
  }
  return character;
}

std::size_t announcedLength(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first < 0xE0) return 2;
  if (first >= 0xE0 && first < 0xF0) return 3;
  if (first >= 0xF0 && first < 0xF5) return 4;
  return 0;
}

/// Overlong forms, surrogates and what lies beyond Unicode are no characters.
bool isCharacter(char32_t character, std::size_t length) {
  if (length == 3) return character >= 0x800 && (character < 0xD800 || character > 0xDFFF);
  if (length == 4) return character >= 0x10000 && character <= 0x10FFFF;
  return true;
}

int widthOf(char32_t character) {
  const int width = wcwidth(static_cast<wchar_t>(character));
  return width < 0 ? 1 : width;
}

std::string escaped(unsigned char byte) {
  if (byte == '\n') return "\\n";
  if (byte == '\t') return "\\t";
  if (byte == '\r') return "\\r";
  char text[5];
  std::snprintf(text, sizeof text, "\\x%02X", static_cast<unsigned>(byte));
  return text;
}

/// C0 and C1 controls, and the delete character.
bool isControl(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

/// Line breaks with the indentation around them say nothing between the tags of a short XML text.
std::string withoutLineBreaks(const std::string& xml) {
  std::string text;
  bool skipping = false;
  for (const char character : xml) {
    if (character == '\n') {
      skipping = true;
      while (!text.empty() && text.back() == ' ') text.pop_back();
    } else if (!skipping || (character != ' ' && character != '\t')) {
      skipping = false;
      text += character;
    }
  }
  return text;
}

}  // namespace

std::string inQuotes(std::string_view text) { return '"' + onOneLine(text) + '"'; }

std::size_t characterLength(std::string_view text, std::size_t at) {
  const std::size_t length = announcedLength(static_cast<unsigned char>(text[at]));
  for (std::size_t i = 1; i < length; ++i) {
    if (!continues(text, at + i)) return 0;
  }
  return length != 0 && isCharacter(decode(text, at, length), length) ? length : 0;
}

// A byte that is no character takes one column, as terminals show a replacement for it.
int displayWidth(std::string_view text) {
  int width = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = characterLength(text, at);
    width += length == 0 ? 1 : widthOf(decode(text, at, length));
    at += length == 0 ? 1 : length;
  }
  return width;
}

// Byte by byte where there is no character, so that odd file names can be told apart.
std::string onOneLine(std::string_view text) {
  std::string line;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = characterLength(text, at);
    if (length == 0 || isControl(decode(text, at, length))) {
      for (std::size_t i = 0; i < (length == 0 ? 1 : length); ++i) {
        line += escaped(static_cast<unsigned char>(text[at + i]));
      }
    } else {
      line += text.substr(at, length);
    }
    at += length == 0 ? 1 : length;
  }
  return line;
}

std::string shortened(const std::string& text, int width) {
  if (displayWidth(text) <= width) return text;
  int taken = 0;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t length = characterLength(text, at);
    taken += length == 0 ? 1 : widthOf(decode(text, at, length));
    if (taken > width - 1) break;
    at += length == 0 ? 1 : length;
  }
  return text.substr(0, at) + ellipsis;
}

std::string validUtf8(std::string_view text) {
  std::string valid;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = characterLength(text, at);
    valid += length == 0 ? std::string_view(replacement) : text.substr(at, length);
    at += length == 0 ? 1 : length;
  }
  return valid;
}

std::string innerXml(const std::string& xml) {
  const std::size_t open = xml.find('>');
  const std::size_t close = xml.rfind("</");
  if (open == std::string::npos || close == std::string::npos || close <= open) return "";
  return withoutLineBreaks(xml.substr(open + 1, close - open - 1));
}
