// Unit I18NString: 8-bit text in named encodings, in and out.

#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "platform/core/EncodedText.h"
#include "platform/core/EncodingCodec.h"
#include "platform/core/I18NString.h"
#include "platform/core/TextSize.h"

// The text in one named encoding, as c_str gave it out. Immutable once it hangs in a string's list,
// and in its place until the whole list goes.
struct I18NString::EncodedForm {
  const std::string encoding;
  const EncodedText text;
  const EncodedForm* next;
};

namespace {

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

I18NString::I18NString(const char* text, const char* encoding, int length, I18NAllocator, void*)
    : m_bytes(decoded(text, encoding, length)) {
  requireTextSize(m_bytes.size());
  measure();
}

// UTF-8 is what is there already. Any other encoding is made on demand and kept, since the caller
// gets a pointer and is told that it lasts.

const char* I18NString::c_str(const char* encoding, int* outLength, I18NAllocator, void*) const {
  if (EncodingCodec::isUtf8(encoding)) {
    if (outLength != nullptr) *outLength = static_cast<int>(m_bytes.size());
    return m_bytes.c_str();
  }
  const EncodedText& text = encodedForm(encoding).text;
  if (outLength != nullptr) *outLength = textSize(text.size());
  return text.data();
}

char* I18NString::toBytes(const char* encoding, int* outLength, I18NAllocator allocator,
                          void* allocatorArg) const {
  if (allocator == nullptr) allocator = VRDI18NStringAllocator;
  // Nothing is kept here, so a whole document is not held twice for having been asked once.
  const auto give = [=](const char* bytes, std::size_t sizeWithNul) {
    const int size = textSize(sizeWithNul);
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

void I18NString::freeEncodedForms() noexcept {
  const EncodedForm* form = m_encodedForms.exchange(nullptr, std::memory_order_acquire);
  while (form != nullptr) delete std::exchange(form, form->next);
}
