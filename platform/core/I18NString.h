#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/core/I18NStringIterator.h"
#include "platform/core/VRDExport.h"

/// Gives the memory that `I18NString::toBytes` writes to.
///
/// @param allocatorArg what the caller of `toBytes` passed along
/// @param buffer       null
/// @param size         bytes wanted, the terminating NUL included
/// @param granted      receives the bytes given; may be null
/// @return memory of at least @p size bytes
using I18NAllocator = char* (*)(void* allocatorArg, char* buffer, int size, int* granted);

/// The allocator whose memory the receiver releases with `delete[]`.
VRD_EXPORT char* VRDI18NStringAllocator(void* allocatorArg, char* buffer, int size, int* granted);

/// A text: a value type, independent of any 8-bit encoding.
///
/// **Characters.** Positions and lengths count code points, from 0. A byte that could not be
/// decoded is kept and counts as one character, U+DC80 to U+DCFF, so that a file name which is not
/// UTF-8 passes through unharmed; where a change brings such bytes together to a valid sequence,
/// they are the character of it from then on. A `wchar_t` that is no Unicode character (and not one
/// of these) is taken as U+FFFD.
///
/// **Encodings.** 8-bit text crosses in an encoding named by a NUL-terminated string. A null name
/// is UTF-8. UTF-8 under either name gives back exactly the bytes a string was built from. UTF-16
/// and UTF-32 (with LE or BE, or big-endian with an optional byte order mark), US-ASCII and
/// ISO-8859-1 are our own; any other name is looked up in ICU. What an encoding cannot hold comes
/// out as its substitution character. A name that nobody knows throws `VRDStdExceptionError`.
///
/// **Bounds.** A position beyond the end acts as the end; a negative position acts as 0; a negative
/// count, or one that reaches beyond the end, acts as "up to the end".
///
/// **Failures.** A text beyond INT_MAX bytes throws `std::length_error`, and want of memory
/// `std::bad_alloc`. An operation that throws leaves the string as it was.
///
/// **Order.** `operator<` orders by code point, in agreement with `operator==`.
///
/// **Threads.** Const operations on one string from several threads are safe, `c_str` included;
/// a change needs the string to itself.
///
/// **Life.** Needs no `I18NInitialize`: strings of static lifetime work before and after it.
class VRD_EXPORT I18NString {
 public:
  I18NString() noexcept = default;
  I18NString(const I18NString& source);
  I18NString(I18NString&& source) noexcept;

  /// Decodes @p text.
  /// @param text     null acts as empty
  /// @param encoding its encoding; null for UTF-8
  /// @param length   bytes of @p text; -1: it ends at its NUL, two or four bytes wide in UTF-16 and
  ///                 UTF-32
  /// @param allocator,allocatorArg taken for the sake of the signature; memory is the string's own
  I18NString(const char* text, const char* encoding = nullptr, int length = -1,
             I18NAllocator allocator = nullptr, void* allocatorArg = nullptr);

  /// An empty string with room for @p capacity bytes.
  I18NString(int capacity, I18NAllocator allocator, void* allocatorArg);

  /// The text of @p utf8, which may hold NULs. Bytes that are not UTF-8 are kept as told above.
  explicit I18NString(std::string_view utf8);

  ~I18NString();

  I18NString& operator=(const char* text);
  I18NString& operator=(const I18NString& source);
  I18NString& operator=(I18NString&& source) noexcept;
  I18NString& operator+=(const char* text);
  I18NString& operator+=(const I18NString& source);

  /// The number of characters.
  int length() const { return m_length; }
  /// The same as `length`.
  int size() const { return length(); }
  bool empty() const { return m_bytes.empty(); }

  /// The text as NUL-terminated bytes in @p encoding, the NUL two or four bytes wide in UTF-16 and
  /// UTF-32. Never null. The buffer belongs to the string and stays valid until the string is next
  /// changed or destroyed; until then the same call gives the same buffer.
  /// @param outLength if not null, receives the number of bytes, without the terminating NUL
  /// @param allocator,allocatorArg taken for the sake of the signature
  const char* c_str(const char* encoding = nullptr, int* outLength = nullptr,
                    I18NAllocator allocator = nullptr, void* allocatorArg = nullptr) const;

  /// The text as NUL-terminated bytes in @p encoding, in a buffer from @p allocator that the caller
  /// owns. A null @p allocator acts as `VRDI18NStringAllocator`.
  /// @param outLength if not null, receives the number of bytes, the terminating NUL included
  char* toBytes(const char* encoding, int* outLength, I18NAllocator allocator,
                void* allocatorArg) const;

  /// The bytes that `c_str` with a null encoding gives, with their length. Valid as long as those.
  std::string_view utf8() const { return m_bytes; }

  /// The position of the first occurrence at or after @p from, or -1. An empty text is found at
  /// every position before the end.
  int find(const I18NString& what, int from) const;
  int find(wchar_t ch, int from) const;

  /// @p count characters from @p pos on.
  I18NString substr(int pos, int count) const;
  /// The characters from @p first up to, not including, @p last.
  I18NString substring(int first, int last) const;

  I18NStringIterator begin() const { return I18NStringIterator(*this); }

  /// Puts @p with, or @p repeat times @p ch, in the place of @p count characters from @p pos on.
  void replace(int pos, int count, const I18NString& with);
  /// A negative @p repeat acts as 0.
  void replace(int pos, int count, wchar_t ch, int repeat);
  void erase(int pos, int count);
  /// Cuts to @p count characters, or fills up to them with @p fill. A negative count changes
  /// nothing.
  void resize(int count, wchar_t fill);
  /// Removes @p ch from both ends.
  void trim(wchar_t ch);

  /// @name The border to libraries that hold text as UTF-16
  /// A byte that could not be decoded crosses as the lone surrogate U+DC80 to U+DCFF and becomes
  /// that byte again on the way back. Any other lone surrogate comes in as U+FFFD.
  /// @{
  static I18NString fromUtf16(std::u16string_view text);
  void appendUtf16(std::u16string_view text);
  std::u16string toUtf16() const;
  /// Whether `fromUtf16` of @p text is this text; makes no copy.
  bool equalsUtf16(std::u16string_view text) const;
  /// @}

 private:
  friend VRD_EXPORT bool operator<(const I18NString&, const I18NString&);

  struct EncodedForm;

  bool isAscii() const { return static_cast<std::size_t>(m_length) == m_bytes.size() && !hasOdd(); }
  bool hasOdd() const { return m_oddBytes != 0; }

  std::size_t offsetOf(int position) const;
  std::size_t offsetAfter(std::size_t offset, int count) const;
  int charactersIn(std::size_t first, std::size_t last) const;

  int findBytes(std::string_view what, int from) const;

  void assign(std::string_view bytes);
  void append(std::string_view bytes, std::size_t characters, std::size_t oddBytes);
  void replaceBytes(std::size_t first, std::size_t last, const I18NString& with);
  void afterAppend(std::size_t seam, std::size_t characters, std::size_t oddBytes);
  void setExtent(std::size_t characters, std::size_t oddBytes);
  void measure();

  const EncodedForm& encodedForm(const char* encoding) const;
  void freeEncodedForms() noexcept;
  // Looked at first, since freeing costs an exchange and nearly no string has forms.
  void dropEncodedForms() noexcept {
    if (m_encodedForms.load(std::memory_order_relaxed) != nullptr) freeEncodedForms();
  }

  std::string m_bytes;  // UTF-8, with odd bytes as they came; at most INT_MAX of them
  int m_length = 0;     // in characters; as many as there are bytes means ASCII, or odd bytes
  int m_oddBytes = 0;   // how many could not be decoded; 0 means that m_bytes is valid
  mutable std::atomic<EncodedForm*> m_encodedForms{nullptr};  // results of c_str, newest first
};

VRD_EXPORT I18NString operator+(const I18NString& left, const I18NString& right);

/// Exact comparison, by code points. The 8-bit text is in the default encoding.
VRD_EXPORT bool operator==(const I18NString& left, const char* right);
VRD_EXPORT bool operator!=(const I18NString& left, const char* right);
VRD_EXPORT bool operator==(const I18NString& left, const I18NString& right);
VRD_EXPORT bool operator!=(const I18NString& left, const I18NString& right);
VRD_EXPORT bool operator<(const I18NString& left, const I18NString& right);
