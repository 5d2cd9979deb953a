#include "platform/core/I18NString.h"

#include <climits>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include "platform/core/EncodingCodec.h"
#include "platform/core/Utf.h"

// A text is its bytes in UTF-8 with two counts beside them: characters, and bytes that could not be
// decoded. With no odd byte and as many characters as bytes it is ASCII, and a position is an
// offset. With no odd byte, bytes sort and match as characters do. Only the rest needs decoding.

// The text in one named encoding, as c_str gave it out. Immutable once it hangs in a string's list,
// and in its place until the whole list goes.
struct I18NString::EncodedForm {
  const std::string encoding;
  const EncodedText text;
  const EncodedForm* next;
};

namespace {

std::string_view viewOf(const char* text) {
  return text == nullptr ? std::string_view() : std::string_view(text);
}

// Positions are `int`, so a longer text could not be spoken of.
[[noreturn]] void throwTooLong() {
  throw std::length_error("I18NString: a text beyond INT_MAX bytes");
}

void requireSize(std::size_t bytes) {
  if (bytes > INT_MAX) throwTooLong();
}

int checkedInt(std::size_t bytes) {
  requireSize(bytes);
  return static_cast<int>(bytes);
}

// The size is asked before there is memory of that size.
std::string repeated(wchar_t ch, int repeat) {
  std::string character;
  utf::append(character, utf::holdable(static_cast<char32_t>(ch)));
  const std::size_t times = repeat < 0 ? 0 : static_cast<std::size_t>(repeat);
  if (character.size() == 1) return std::string(times, character[0]);

  requireSize(times * character.size());
  std::string result;
  result.reserve(times * character.size());
  for (std::size_t i = 0; i < times; ++i) result += character;
  return result;
}

// The bytes of `text`: `length` of them, or up to a NUL that is `unit` bytes wide. UTF-16 has zero
// bytes in all ASCII text, so there only a whole unit of them ends it. `text` need not be aligned.
std::string_view viewOf(const char* text, int length, std::size_t unit) {
  constexpr char widestNul[4] = {};
  if (text == nullptr) return {};
  if (length >= 0) return {text, static_cast<std::size_t>(length)};
  if (unit == 1) return text;
  const char* end = text;
  while (std::memcmp(end, widestNul, unit) != 0) end += unit;
  return {text, static_cast<std::size_t>(end - text)};
}

// The name is looked up even for a null text: a misspelt one should show at once.
std::string decoded(const char* text, const char* encoding, int length) {
  if (EncodingCodec::isUtf8(encoding)) return std::string(viewOf(text, length, 1));
  const auto codec = EncodingCodec::open(encoding);
  return codec->decode(viewOf(text, length, codec->unitWidth()));
}

}  // namespace

char* VRDI18NStringAllocator(void*, char*, int size, int* granted) {
  char* memory = new char[static_cast<std::size_t>(size)];
  if (granted != nullptr) *granted = size;
  return memory;
}

// Life. Encoded forms are not copied: most copies never need them. They are not moved either: a
// buffer from c_str belongs to one string, and a moved-from string has changed. All allocators that
// callers name are passed over; the string's memory is never theirs to release.

I18NString::I18NString(const I18NString& source)
    : m_bytes(source.m_bytes), m_length(source.m_length), m_oddBytes(source.m_oddBytes) {}

I18NString::I18NString(I18NString&& source) noexcept { *this = std::move(source); }

I18NString::I18NString(const char* text, const char* encoding, int length, I18NAllocator, void*)
    : m_bytes(decoded(text, encoding, length)) {
  requireSize(m_bytes.size());
  measure();
}

I18NString::I18NString(int capacity, I18NAllocator, void*) {
  if (capacity > 0) m_bytes.reserve(static_cast<std::size_t>(capacity));
}

I18NString::I18NString(std::string_view utf8) : m_bytes(utf8) {
  requireSize(m_bytes.size());
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
  requireSize(bytes.size());
  // Measured before the assignment, since `bytes` may lie in the string and move along.
  const utf::Extent extent = utf::measure(bytes);
  m_bytes = bytes;
  setExtent(extent.characters, extent.oddBytes);
  dropEncodedForms();
}

void I18NString::append(std::string_view bytes, std::size_t characters, std::size_t oddBytes) {
  const std::size_t seam = m_bytes.size();
  requireSize(seam + bytes.size());
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

// Where an odd byte is about, three parts may join anew, so the whole is measured; the bytes behind
// had to move anyway. Nothing of `with` is read after the change: it may be the string itself.
void I18NString::replaceBytes(std::size_t first, std::size_t last, const I18NString& with) {
  if (first == last && with.empty()) return;
  requireSize(m_bytes.size() - (last - first) + with.m_bytes.size());
  const bool mayJoin = hasOdd() || with.hasOdd();
  const int length = m_length - charactersIn(first, last) + with.m_length;
  m_bytes.replace(first, last - first, with.m_bytes);
  m_length = length;
  if (mayJoin) measure();
  dropEncodedForms();
}

// Positions

std::size_t I18NString::offsetOf(int position) const {
  return position < 0 ? 0 : offsetAfter(0, position);
}

// Gives the end for a negative count, as for one that reaches beyond it.
std::size_t I18NString::offsetAfter(std::size_t offset, int count) const {
  const auto wanted = static_cast<std::size_t>(count);
  if (count < 0 || wanted >= m_bytes.size() - offset) return m_bytes.size();
  return isAscii() ? offset + wanted : utf::skip(m_bytes, offset, wanted);
}

int I18NString::charactersIn(std::size_t first, std::size_t last) const {
  if (isAscii()) return static_cast<int>(last - first);
  return static_cast<int>(utf::measure(utf8().substr(first, last - first)).characters);
}

// Observers

// A match gives an offset, and the characters before it its position.
int I18NString::findBytes(std::string_view what, int from) const {
  if (from >= m_length) return -1;
  const std::size_t found = utf::find(m_bytes, what, offsetOf(from));
  return found == std::string::npos ? -1 : charactersIn(0, found);
}

int I18NString::find(const I18NString& what, int from) const {
  return findBytes(what.m_bytes, from);
}

int I18NString::find(wchar_t ch, int from) const { return findBytes(repeated(ch, 1), from); }

I18NString I18NString::substr(int pos, int count) const {
  const std::size_t first = offsetOf(pos);
  return I18NString(utf8().substr(first, offsetAfter(first, count) - first));
}

// Its second argument is a position and so never means "up to the end".
I18NString I18NString::substring(int first, int last) const {
  const int start = first < 0 ? 0 : first;
  return last <= start ? I18NString() : substr(start, last - start);
}

// Changes in place

// All of these end in replaceBytes or in an append, which change all or nothing.

void I18NString::replace(int pos, int count, const I18NString& with) {
  const std::size_t first = offsetOf(pos);
  replaceBytes(first, offsetAfter(first, count), with);
}

void I18NString::replace(int pos, int count, wchar_t ch, int repeat) {
  replace(pos, count, I18NString(repeated(ch, repeat)));
}

void I18NString::erase(int pos, int count) { replace(pos, count, I18NString()); }

void I18NString::resize(int count, wchar_t fill) {
  if (count <= m_length) return erase(count < 0 ? m_length : count, -1);
  I18NString filled = *this;  // more than one step, so on a copy
  // More than once only where the fill is an odd byte that completes a sequence at the end.
  while (filled.m_length < count) filled += I18NString(repeated(fill, count - filled.m_length));
  *this = std::move(filled);
}

// Looks first and cuts afterwards. Cuts free memory and take none, so the second cannot fail after
// the first was made.
void I18NString::trim(wchar_t ch) {
  const std::string edge = repeated(ch, 1);
  std::size_t first = 0;
  std::size_t last = m_bytes.size();
  const auto isEdge = [&](std::size_t begin, std::size_t end) {
    return utf8().substr(begin, end - begin) == edge;
  };
  while (first < last && isEdge(first, utf::skip(m_bytes, first, 1))) first += edge.size();
  while (first < last && isEdge(utf::previous(m_bytes, last), last)) last -= edge.size();
  replaceBytes(last, m_bytes.size(), I18NString());
  replaceBytes(0, first, I18NString());
}

// Encoded forms

// UTF-8 is what is there already. Any other encoding is made on demand and kept, since the caller
// gets a pointer and is told that it lasts.

const char* I18NString::c_str(const char* encoding, int* outLength, I18NAllocator, void*) const {
  if (EncodingCodec::isUtf8(encoding)) {
    if (outLength != nullptr) *outLength = static_cast<int>(m_bytes.size());
    return m_bytes.c_str();
  }
  const EncodedText& text = encodedForm(encoding).text;
  if (outLength != nullptr) *outLength = checkedInt(text.size());
  return text.data();
}

char* I18NString::toBytes(const char* encoding, int* outLength, I18NAllocator allocator,
                          void* allocatorArg) const {
  if (allocator == nullptr) allocator = VRDI18NStringAllocator;
  // Nothing is kept here, so a whole document is not held twice for having been asked once.
  const auto give = [=](const char* bytes, std::size_t sizeWithNul) {
    const int size = checkedInt(sizeWithNul);
    char* buffer = allocator(allocatorArg, nullptr, size, nullptr);
    if (buffer == nullptr) throw std::bad_alloc();
    std::memcpy(buffer, bytes, sizeWithNul);
    if (outLength != nullptr) *outLength = size;
    return buffer;
  };
  if (EncodingCodec::isUtf8(encoding)) return give(m_bytes.c_str(), m_bytes.size() + 1);
  const EncodedText text(encoding, m_bytes);
  return give(text.data(), text.sizeWithNul());
}

// Without a lock, so that a const string needs no more than the pointer and nobody waits. Threads
// that ask at the same time may each build the form. The first to hang it into the list wins;
// another finds it there and gives its own up, so that all get one buffer.
const I18NString::EncodedForm& I18NString::encodedForm(const char* encoding) const {
  const auto search = [encoding](const EncodedForm* form) {
    while (form != nullptr && form->encoding != encoding) form = form->next;
    return form;
  };
  EncodedForm* head = m_encodedForms.load(std::memory_order_acquire);
  if (const EncodedForm* known = search(head)) return *known;

  auto made =
      std::make_unique<EncodedForm>(EncodedForm{encoding, EncodedText(encoding, m_bytes), head});
  while (!m_encodedForms.compare_exchange_weak(head, made.get(), std::memory_order_acq_rel,
                                               std::memory_order_acquire)) {
    if (const EncodedForm* theirs = search(head)) return *theirs;
    made->next = head;
  }
  return *made.release();
}

void I18NString::dropEncodedForms() noexcept {
  // Looked at first, since an exchange costs and nearly no string has forms.
  if (m_encodedForms.load(std::memory_order_relaxed) == nullptr) return;
  const EncodedForm* form = m_encodedForms.exchange(nullptr, std::memory_order_acquire);
  while (form != nullptr) delete std::exchange(form, form->next);
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
  if (m_bytes.size() > INT_MAX) {
    m_bytes.resize(seam);
    throwTooLong();
  }
  afterAppend(seam, extent.characters, extent.oddBytes);
}

std::u16string I18NString::toUtf16() const { return utf::toUtf16(m_bytes); }

bool I18NString::equalsUtf16(std::u16string_view text) const {
  return utf::equalsUtf16(m_bytes, text);
}

// Comparison. Equal bytes are equal characters and the other way round, odd bytes included. Bytes
// of valid UTF-8 have the order of its code points; an odd byte breaks that, as it stands for a
// character before U+E000 whatever the byte is.

I18NString operator+(const I18NString& left, const I18NString& right) {
  I18NString result(checkedInt(left.utf8().size() + right.utf8().size()), nullptr, nullptr);
  result += left;
  result += right;
  return result;
}

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
