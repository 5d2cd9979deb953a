#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Writes one JSON document in order, without line breaks. Text that is not UTF-8 comes out with
/// U+FFFD. The caller closes what it opened.
class JsonWriter {
 public:
  JsonWriter& beginObject() { return begin('{'); }
  JsonWriter& endObject() { return end('}'); }
  JsonWriter& beginArray() { return begin('['); }
  JsonWriter& endArray() { return end(']'); }
  JsonWriter& key(std::string_view name);

  JsonWriter& text(std::string_view value);
  JsonWriter& number(unsigned long value);
  JsonWriter& truth(bool value);

  /// A key with its value, for the many members that are just that.
  JsonWriter& text(std::string_view name, std::string_view value) { return key(name).text(value); }
  JsonWriter& number(std::string_view name, unsigned long value) { return key(name).number(value); }
  JsonWriter& truth(std::string_view name, bool value) { return key(name).truth(value); }
  JsonWriter& texts(std::string_view name, const std::vector<std::string>& values);

  const std::string& document() const { return m_document; }

 private:
  JsonWriter& begin(char bracket);
  JsonWriter& end(char bracket);
  void separate();
  void appendQuoted(std::string_view value);

  std::string m_document;
  bool m_first = true;  // nothing stands yet since the last opening bracket or key
};
