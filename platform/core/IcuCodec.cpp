#include "platform/core/IcuCodec.h"

#include <unicode/ucnv_cb.h>
#include <unicode/ucnv_err.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <stdexcept>
#include <utility>

#include "platform/core/Utf.h"
#include "platform/core/Utf16.h"

namespace {

// What to do where ICU cannot go on. Its own callbacks lose text: characters such as the zero-width
// joiner are dropped without a trace, odd bytes become the substitution character, and bytes that
// mean nothing become U+FFFD. So these are ours. They run inside a C function and must not throw.

// Callbacks are also told that the converter is reset, cloned or closed; nothing is to be done
// then.
bool isFailedCharacter(UConverterCallbackReason reason) { return reason <= UCNV_IRREGULAR; }

// For the policy of the same name. An odd byte goes out as it came in: a text that was read with a
// damaged byte is written with the same damage, and not with more.
void substitute(const void*, UConverterFromUnicodeArgs* args, const UChar*, int32_t,
                UChar32 character, UConverterCallbackReason reason, UErrorCode* error) {
  if (!isFailedCharacter(reason)) return;
  *error = U_ZERO_ERROR;
  if (utf::isOdd(static_cast<char32_t>(character))) {
    const char byte = static_cast<char>(character);
    ucnv_cbFromUWriteBytes(args, &byte, 1, 0, error);
  } else {
    ucnv_cbFromUWriteSub(args, 0, error);
  }
}

// For the policy XmlReference. The reference goes through the converter as characters, since "&"
// has other bytes in EBCDIC, and an encoding with shift states may have to leave the one it is in.
void writeReference(const void*, UConverterFromUnicodeArgs* args, const UChar*, int32_t,
                    UChar32 character, UConverterCallbackReason reason, UErrorCode* error) {
  if (!isFailedCharacter(reason)) return;
  *error = U_ZERO_ERROR;
  const std::string reference = xmlReference(static_cast<char32_t>(character));
  UChar text[16];  // the longest, "&#x10FFFF;", has ten
  const UChar* source = text;
  ucnv_cbFromUWriteUChars(args, &source, std::copy(reference.begin(), reference.end(), text), 0,
                          error);
}

// ICU hands over the bytes of one failed sequence. Each becomes a character of its own, as in UTF-8
// that is not valid.
void keepUndecodable(const void*, UConverterToUnicodeArgs* args, const char* bytes, int32_t length,
                     UConverterCallbackReason reason, UErrorCode* error) {
  if (!isFailedCharacter(reason)) return;
  *error = U_ZERO_ERROR;
  for (int32_t i = 0; i < length; ++i) {
    const auto character = static_cast<UChar>(utf::undecodable(bytes[i]));
    ucnv_cbToUWriteUChars(args, &character, 1, 0, error);
  }
}

// With the callbacks above no text can make a conversion fail; what is left is want of memory and
// damage to ICU itself.
void requireSuccess(UErrorCode error) {
  if (error == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
  if (U_FAILURE(error)) throw std::runtime_error(u_errorName(error));
}

// Calls `convert(target, targetLimit, error)` until all is converted; what it writes goes to `out`.
// Piece by piece, because nobody knows the size of the result beforehand: a reference may need ten
// times the room of its character, and ICU's estimate is an `int` that a long text would overflow.
template <typename String, typename Convert>
void convertAll(String& out, Convert convert) {
  typename String::value_type chunk[1024];
  UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
  while (error == U_BUFFER_OVERFLOW_ERROR) {
    error = U_ZERO_ERROR;
    auto* target = chunk;
    convert(&target, std::end(chunk), &error);
    out.append(chunk, target);
  }
  requireSuccess(error);
}

}  // namespace

std::unique_ptr<EncodingCodec> IcuCodec::open(const char* name) {
  UErrorCode error = U_ZERO_ERROR;
  Converter converter(ucnv_open(name, &error));
  if (error == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
  // ICU takes an empty name for its own default.
  if (U_FAILURE(error) || *name == '\0') return nullptr;
  ucnv_setToUCallBack(converter.get(), keepUndecodable, nullptr, nullptr, nullptr, &error);
  requireSuccess(error);
  return std::unique_ptr<EncodingCodec>(new IcuCodec(std::move(converter)));
}

std::size_t IcuCodec::unitWidth() const {
  return static_cast<std::size_t>(ucnv_getMinCharSize(m_converter.get()));
}

std::string IcuCodec::decode(std::string_view bytes) {
  std::u16string text;
  const char* source = bytes.data();
  const char* const end = source + bytes.size();
  ucnv_resetToUnicode(m_converter.get());
  convertAll(text, [&](UChar** target, const UChar* limit, UErrorCode* error) {
    ucnv_toUnicode(m_converter.get(), target, limit, &source, end, nullptr, true, error);
  });
  std::string result;
  utf::appendUtf16(result, text);
  return result;
}

std::string IcuCodec::encode(std::string_view utf8, Unencodable policy) {
  UErrorCode callbackError = U_ZERO_ERROR;
  ucnv_setFromUCallBack(m_converter.get(),
                        policy == Unencodable::Substitute ? substitute : writeReference, nullptr,
                        nullptr, nullptr, &callbackError);
  requireSuccess(callbackError);

  const std::u16string text = utf::toUtf16(utf8);
  const UChar* source = text.data();
  const UChar* const end = source + text.size();
  std::string result;
  ucnv_resetFromUnicode(m_converter.get());
  convertAll(result, [&](char** target, const char* limit, UErrorCode* error) {
    ucnv_fromUnicode(m_converter.get(), target, limit, &source, end, nullptr, true, error);
  });
  return result;
}
