#include "platform/core/I18NStringIterator.h"

#include <string_view>

#include "platform/core/I18NString.h"
#include "platform/core/Utf.h"

// The iterator keeps an offset in bytes: a step costs the same wherever it is, while a position
// would have to be counted from the front each time.

I18NStringIteratorValue I18NStringIterator::operator*() const {
  const std::string_view bytes = m_text->utf8();
  if (m_offset >= bytes.size()) return I18NStringIteratorValue(0);
  return I18NStringIteratorValue(static_cast<wchar_t>(utf::decode(bytes, m_offset).character));
}

I18NStringIterator I18NStringIterator::operator++(int) {
  const I18NStringIterator before = *this;
  m_offset = utf::skip(m_text->utf8(), m_offset, 1);
  return before;
}
