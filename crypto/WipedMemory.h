#pragma once

#include <string.h>

#include <cstddef>
#include <memory>
#include <utility>

#include "platform/core/I18NString.h"

// Memory that held clear text or protected bytes is overwritten before it goes back to the heap,
// where a core file or the next owner would find it.

/// Overwrites @p memory; the compiler does not leave it out.
inline void wipe(void* memory, std::size_t size) noexcept { ::explicit_bzero(memory, size); }

/// Overwrites the UTF-8 form of @p text, which only its destructor may meet from then on.
inline void wipe(I18NString& text) noexcept {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): a text gives no other way in
  wipe(const_cast<char*>(text.utf8().data()), text.utf8().size());
}

/// A buffer that is wiped when its block ends. A small one, as most values need, lies in the
/// object.
class WipedBuffer {
 public:
  // The small room is left as it is: it is written before it is read.
  explicit WipedBuffer(std::size_t size)  // NOLINT(cppcoreguidelines-pro-type-member-init)
      : m_size(size),
        m_large(size > sizeof m_small ? new char[size] : nullptr),
        m_bytes(m_large ? m_large.get() : m_small) {}
  ~WipedBuffer() { wipe(m_bytes, m_size); }
  WipedBuffer(const WipedBuffer&) = delete;
  WipedBuffer& operator=(const WipedBuffer&) = delete;

  char* data() { return m_bytes; }
  std::size_t size() const { return m_size; }

 private:
  std::size_t m_size;
  std::unique_ptr<char[]> m_large;
  char* m_bytes;
  char m_small[512];
};

/// A text that is wiped when its block ends. Only its UTF-8 form is: ask for no other.
class WipedText {
 public:
  explicit WipedText(I18NString text) : m_text(std::move(text)) {}
  ~WipedText() { wipe(m_text); }
  WipedText(const WipedText&) = delete;
  WipedText& operator=(const WipedText&) = delete;

  const I18NString& text() const { return m_text; }

 private:
  I18NString m_text;
};
