#pragma once

#include <cstddef>

#include "platform/core/VRDExport.h"

class I18NString;

/// The character under an `I18NStringIterator`: a plain value.
class VRD_EXPORT I18NStringIteratorValue {
 public:
  explicit I18NStringIteratorValue(wchar_t value) : m_value(value) {}
  ~I18NStringIteratorValue() = default;
  I18NStringIteratorValue(const I18NStringIteratorValue&) = default;
  I18NStringIteratorValue& operator=(const I18NStringIteratorValue&) = default;

  /// The code value; U+DC80 to U+DCFF for a byte that could not be decoded.
  operator wchar_t() const { return m_value; }
  bool operator==(wchar_t other) const { return m_value == other; }

 private:
  wchar_t m_value;
};

/// Walks the characters of one string from the front. Valid until the string changes or ends.
/// A plain value: copies move independently.
class VRD_EXPORT I18NStringIterator {
 public:
  explicit I18NStringIterator(const I18NString& text) : m_text(&text) {}
  ~I18NStringIterator() = default;
  I18NStringIterator(const I18NStringIterator&) = default;
  I18NStringIterator& operator=(const I18NStringIterator&) = default;

  /// The character at the iterator; code value 0 at the end. May be asked any number of times.
  I18NStringIteratorValue operator*() const;
  /// Moves to the next character; does nothing at the end. Gives the position before the move.
  I18NStringIterator operator++(int);

 private:
  const I18NString* m_text;
  std::size_t m_offset = 0;  // in bytes of the string's own form
};
