#include "tools/Json.h"

#include <cstdio>

#include "tools/Text.h"

namespace {

std::string escaped(char character) {
  switch (character) {
    case '"':
      return "\\\"";
    case '\\':
      return "\\\\";
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      break;
  }
  const auto byte = static_cast<unsigned char>(character);
  if (byte >= 0x20 && byte != 0x7F) return std::string(1, character);
  char text[7];
  std::snprintf(text, sizeof text, "\\u%04x", static_cast<unsigned>(byte));
  return text;
}

}  // namespace

JsonWriter& JsonWriter::begin(char bracket) {
  separate();
  m_document += bracket;
  m_first = true;
  return *this;
}

JsonWriter& JsonWriter::end(char bracket) {
  m_document += bracket;
  m_first = false;
  return *this;
}

// A key ends the need for a comma: what follows belongs to it.
JsonWriter& JsonWriter::key(std::string_view name) {
  text(name);
  m_document += ':';
  m_first = true;
  return *this;
}

JsonWriter& JsonWriter::text(std::string_view value) {
  separate();
  appendQuoted(value);
  return *this;
}

JsonWriter& JsonWriter::number(unsigned long value) {
  separate();
  m_document += std::to_string(value);
  return *this;
}

JsonWriter& JsonWriter::truth(bool value) {
  separate();
  m_document += value ? "true" : "false";
  return *this;
}

JsonWriter& JsonWriter::texts(std::string_view name, const std::vector<std::string>& values) {
  key(name).beginArray();
  for (const std::string& value : values) text(value);
  return endArray();
}

void JsonWriter::separate() {
  if (!m_first) m_document += ',';
  m_first = false;
}

// Repaired first, so that escaping meets characters only; JSON holds no other text than Unicode.
void JsonWriter::appendQuoted(std::string_view value) {
  m_document += '"';
  for (const char character : validUtf8(value)) m_document += escaped(character);
  m_document += '"';
}
