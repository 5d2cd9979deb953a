// Unit I18NString: what is asked for and changed by position.

#include "platform/core/I18NString.h"
#include "platform/core/TextSize.h"
#include "platform/core/Utf.h"

namespace {

// The size is asked before there is memory of that size.
std::string repeated(wchar_t ch, int repeat) {
  std::string character;
  utf::append(character, utf::holdable(static_cast<char32_t>(ch)));
  const std::size_t times = repeat < 0 ? 0 : static_cast<std::size_t>(repeat);
  if (character.size() == 1) return std::string(times, character[0]);

  requireTextSize(times * character.size());
  std::string result;
  result.reserve(times * character.size());
  for (std::size_t i = 0; i < times; ++i) result += character;
  return result;
}

}  // namespace

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

// Changes. All of these end in replaceBytes or in an append, which change all or nothing.

// Where an odd byte is about, three parts may join anew, so the whole is measured; the bytes behind
// had to move anyway. Nothing of `with` is read after the change: it may be the string itself.
void I18NString::replaceBytes(std::size_t first, std::size_t last, const I18NString& with) {
  if (first == last && with.empty()) return;
  requireTextSize(m_bytes.size() - (last - first) + with.m_bytes.size());
  const bool mayJoin = hasOdd() || with.hasOdd();
  const int length = m_length - charactersIn(first, last) + with.m_length;
  m_bytes.replace(first, last - first, with.m_bytes);
  m_length = length;
  if (mayJoin) measure();
  dropEncodedForms();
}

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
