#include "platform/core/I18NString.h"

#include <utility>

#include "platform/core/TextSize.h"
#include "platform/core/Utf.h"
#include "platform/core/Utf16.h"

// A text is its bytes in UTF-8 with two counts beside them: characters, and bytes that could not be
// decoded. With no odd byte and as many characters as bytes it is ASCII, and a position is an
// offset. With no odd byte, bytes sort and match as characters do. Only the rest needs decoding.

namespace {

std::string_view viewOf(const char* text) {
  return text == nullptr ? std::string_view() : std::string_view(text);
}

}  // namespace

// Life. Encoded forms are not copied: most copies never need them. They are not moved either: a
// buffer from c_str belongs to one string, and a moved-from string has changed. All allocators that
// callers name are passed over; the string's memory is never theirs to release.

I18NString::I18NString(const I18NString& source)
    : m_bytes(source.m_bytes), m_length(source.m_length), m_oddBytes(source.m_oddBytes) {}

I18NString::I18NString(I18NString&& source) noexcept { *this = std::move(source); }

I18NString::I18NString(int capacity, I18NAllocator, void*) {
  if (capacity > 0) m_bytes.reserve(static_cast<std::size_t>(capacity));
}

I18NString::I18NString(std::string_view utf8) : m_bytes(utf8) {
  requireTextSize(m_bytes.size());
  measure();
}

I18NString::~I18NString() { dropEncodedForms(); }

I18NString& I18NString::operator=(const char* text) {
  assign(viewOf(text));
  return *this;
}

I18NString& I18NString::operator=(const I18NString& source) {
  if (this == &source) return *this;
  m_bytes = source.m_bytes;
  m_length = source.m_length;
  m_oddBytes = source.m_oddBytes;
  dropEncodedForms();
  return *this;
}

I18NString& I18NString::operator=(I18NString&& source) noexcept {
  if (this == &source) return *this;
  m_bytes = std::move(source.m_bytes);
  source.m_bytes.clear();
  m_length = std::exchange(source.m_length, 0);
  m_oddBytes = std::exchange(source.m_oddBytes, 0);
  dropEncodedForms();
  source.dropEncodedForms();
  return *this;
}

I18NString& I18NString::operator+=(const char* text) {
  const std::string_view bytes = viewOf(text);
  const utf::Extent extent = utf::measure(bytes);
  append(bytes, extent.characters, extent.oddBytes);
  return *this;
}

I18NString& I18NString::operator+=(const I18NString& source) {
  append(source.m_bytes, static_cast<std::size_t>(source.m_length),
         static_cast<std::size_t>(source.m_oddBytes));
  return *this;
}

I18NString operator+(const I18NString& left, const I18NString& right) {
  // Room for all of it at once.
  I18NString result(textSize(left.utf8().size() + right.utf8().size()), nullptr, nullptr);
  result += left;
  result += right;
  return result;
}

// What is known of the bytes. The bytes are changed first, since only that can fail; forms are
// dropped last, since the new text may lie in one of them.

void I18NString::setExtent(std::size_t characters, std::size_t oddBytes) {
  m_length = static_cast<int>(characters);
  m_oddBytes = static_cast<int>(oddBytes);
}

void I18NString::measure() {
  const utf::Extent extent = utf::measure(m_bytes);
  setExtent(extent.characters, extent.oddBytes);
}

void I18NString::assign(std::string_view bytes) {
  requireTextSize(bytes.size());
  // Measured before the assignment, since `bytes` may lie in the string and move along.
  const utf::Extent extent = utf::measure(bytes);
  m_bytes = bytes;
  setExtent(extent.characters, extent.oddBytes);
  dropEncodedForms();
}

void I18NString::append(std::string_view bytes, std::size_t characters, std::size_t oddBytes) {
  const std::size_t seam = m_bytes.size();
  requireTextSize(seam + bytes.size());
  m_bytes.append(bytes);
  afterAppend(seam, characters, oddBytes);
}

// Odd bytes on both sides of the seam that are one character together were counted one by one. Only
// the seam is looked at: a text built in many pieces is not measured as a whole for each of them.
void I18NString::afterAppend(std::size_t seam, std::size_t characters, std::size_t oddBytes) {
  const bool mayJoin = hasOdd() && oddBytes != 0;
  m_length += static_cast<int>(characters);
  m_oddBytes += static_cast<int>(oddBytes);
  const int joined = mayJoin ? static_cast<int>(utf::straddling(m_bytes, seam)) : 0;
  if (joined != 0) {
    m_length -= joined - 1;
    m_oddBytes -= joined;
  }
  dropEncodedForms();
}

// The border to UTF-16

I18NString I18NString::fromUtf16(std::u16string_view text) {
  I18NString result;
  result.appendUtf16(text);
  return result;
}

void I18NString::appendUtf16(std::u16string_view text) {
  const std::size_t seam = m_bytes.size();
  const utf::Extent extent = utf::appendUtf16(m_bytes, text);
  // Only now is the size known; a text that it does not suit goes again.
  const std::size_t size = m_bytes.size();
  if (size > greatestTextSize) m_bytes.resize(seam);
  requireTextSize(size);
  afterAppend(seam, extent.characters, extent.oddBytes);
}

std::u16string I18NString::toUtf16() const { return utf::toUtf16(m_bytes); }

bool I18NString::equalsUtf16(std::u16string_view text) const {
  return utf::equalsUtf16(m_bytes, text);
}

// Comparison. Equal bytes are equal characters and the other way round, odd bytes included. Bytes
// of valid UTF-8 have the order of its code points; an odd byte breaks that, as it stands for a
// character before U+E000 whatever the byte is.

bool operator==(const I18NString& left, const char* right) { return left.utf8() == viewOf(right); }

bool operator!=(const I18NString& left, const char* right) { return !(left == right); }

bool operator==(const I18NString& left, const I18NString& right) {
  return left.utf8() == right.utf8();
}

bool operator!=(const I18NString& left, const I18NString& right) { return !(left == right); }

bool operator<(const I18NString& left, const I18NString& right) {
  if (left.hasOdd() || right.hasOdd()) return utf::isLess(left.utf8(), right.utf8());
  return left.utf8() < right.utf8();
}
