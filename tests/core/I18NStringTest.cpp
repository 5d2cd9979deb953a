#include "platform/core/I18NString.h"

#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/support/Together.h"

namespace {

using namespace std::string_literals;

std::u32string charactersOf(const I18NString& text) {
  std::u32string result;
  I18NStringIterator at = text.begin();
  while (result.size() < static_cast<std::size_t>(text.length())) {
    result += static_cast<char32_t>(static_cast<wchar_t>(*at));
    at++;
  }
  return result;
}

/// Every way to a place in @p text, forwards and backwards, gives the character that is there.
void expectCharacters(const I18NString& text, const std::u32string& expected) {
  SCOPED_TRACE(text.c_str());
  EXPECT_EQ(charactersOf(text), expected);
  for (std::size_t i = expected.size(); i-- > 0;) {
    const int at = static_cast<int>(i);
    EXPECT_EQ(charactersOf(text.substr(at, 2)), expected.substr(i, 2));
    EXPECT_EQ(text.find(static_cast<wchar_t>(expected[i]), at), at);
    EXPECT_EQ(text.find(text.substr(at, 2), 0),
              static_cast<int>(expected.find(expected.substr(i, 2))));
  }
  std::u16string units = text.toUtf16();
  EXPECT_EQ(I18NString::fromUtf16(units), text);
  EXPECT_TRUE(text.equalsUtf16(units));
  EXPECT_FALSE(text.equalsUtf16(units + u'x'));
  for (char16_t& unit : units) {
    for (const char16_t change : {u'\x1', u'\x100'}) {
      const char16_t before = std::exchange(unit, static_cast<char16_t>(unit ^ change));
      EXPECT_FALSE(text.equalsUtf16(units));
      unit = before;
    }
  }
}

/// A byte that belongs to no character.
constexpr char32_t odd(unsigned char byte) { return 0xDC00U | byte; }

TEST(I18NString, CountsCharactersAndBytesThatBelongToNone) {
  const std::pair<std::string, std::u32string> rows[] = {
      {"", U""},
      {"0123456789ABCDEF0123456789ABCDEF\u00E9", U"0123456789ABCDEF0123456789ABCDEF\u00E9"},
      {"a\0b"s, U"a\0b"s},
      {"t\u00E9\u20AC\uD7FF\uE000\uFFFF", U"t\u00E9\u20AC\uD7FF\uE000\uFFFF"},
      {"\U00010000a\U0010FFFF", U"\U00010000a\U0010FFFF"},
      {"\xC3", {odd(0xC3)}},
      {"\xA9\u00E9\xC3", {odd(0xA9), 0xE9, odd(0xC3)}},
      {"\xE2\x82z", {odd(0xE2), odd(0x82), 'z'}},
      {"\xF0\x9F\x98", {odd(0xF0), odd(0x9F), odd(0x98)}},
      {"\xED\xA0\x80", {odd(0xED), odd(0xA0), odd(0x80)}},  // a surrogate
      {"\xC0\x80", {odd(0xC0), odd(0x80)}},                 // longer than need be
      {"\xE0\x9F\xBF", {odd(0xE0), odd(0x9F), odd(0xBF)}},
      {"\xF0\x8F\xBF\xBF", {odd(0xF0), odd(0x8F), odd(0xBF), odd(0xBF)}},
      {"\xE0\u00E9\xF0\u00E9\xF4z", {odd(0xE0), 0xE9, odd(0xF0), 0xE9, odd(0xF4), 'z'}},
      {"\xF4\x90\x80\x80", {odd(0xF4), odd(0x90), odd(0x80), odd(0x80)}},  // beyond the last
      {"\xFF\U0001F600\x80", {odd(0xFF), 0x1F600, odd(0x80)}}};
  for (const auto& [bytes, characters] : rows) {
    expectCharacters(I18NString(std::string_view(bytes)), characters);
  }
}

TEST(I18NString, IsChangedByCharacters) {
  const struct {
    const char* start;
    void (*change)(I18NString&);
    const char* expected;
  } rows[] = {{"\u20ACb\xC3z", [](I18NString& s) { s.replace(1, 2, I18NString("\u00E9")); },
               "\u20AC\u00E9z"},
              {"\u20ACb", [](I18NString& s) { s.replace(0, 1, L'x', 3); }, "xxxb"},
              {"\u20ACb", [](I18NString& s) { s.replace(0, 0, L'x', -1); }, "\u20ACb"},
              {"ab", [](I18NString& s) { s.replace(9, INT_MAX, I18NString("c")); }, "abc"},
              {"y\u20ACz", [](I18NString& s) { s.replace(1, 1, s); }, "yy\u20ACzz"},
              {"a\U0001F600b", [](I18NString& s) { s.erase(1, -1); }, "a"},
              {"a\U0001F600b", [](I18NString& s) { s.erase(-1, 1); }, "\U0001F600b"},
              {"\u00E9", [](I18NString& s) { s.resize(3, 0x20AC); }, "\u00E9\u20AC\u20AC"},
              {"ab", [](I18NString& s) { s.resize(-1, L'x'); }, "ab"},
              {"a\u20ACbc", [](I18NString& s) { s = s.substring(1, 3); }, "\u20ACb"},
              {"ab", [](I18NString& s) { s = s.substring(-1, 5) + s.substring(1, 1); }, "ab"},
              {"\u00E9\u00E9x\u00E9y\u00E9", [](I18NString& s) { s.trim(0xE9); }, "x\u00E9y"},
              {"\u00E9x", [](I18NString& s) { s += s; }, "\u00E9x\u00E9x"},
              {"\u00E9x", [](I18NString& s) { s = s.c_str() + 2; }, "x"},
              {"x", [](I18NString& s) { s += static_cast<const char*>(nullptr); }, "x"},
              {"x", [](I18NString& s) { s.appendUtf16(u"\u20AC\U0001F600"); }, "x\u20AC\U0001F600"},
              // What no text can hold is replaced.
              {"", [](I18NString& s) { s.resize(1, 0xD800); }, "\uFFFD"},
              {"", [](I18NString& s) { s.resize(1, 0xDC7F); }, "\uFFFD"},
              {"", [](I18NString& s) { s.resize(1, 0xDC80); }, "\x80"},
              {"", [](I18NString& s) { s.resize(1, 0x110000); }, "\uFFFD"},
              {"", [](I18NString& s) { s.appendUtf16(u"\xDC00\xD83Dz"); }, "\uFFFD\uFFFDz"},
              // Two halves become a character.
              {"\xC3", [](I18NString& s) { s += "\xA9"; }, "\u00E9"},
              {"xyz", [](I18NString& s) { s.replace(1, 1, I18NString("\xA9")); }, "x\xA9z"},
              {"\xC3x\xA9", [](I18NString& s) { s.erase(1, 1); }, "\u00E9"}};
  for (const auto& [start, change, expected] : rows) {
    I18NString text(start);
    change(text);
    EXPECT_STREQ(text.c_str(), expected) << start;
    expectCharacters(text, charactersOf(I18NString(expected)));
  }
}

TEST(I18NString, IsOrderedByTheNumbersOfTheCharacters) {
  const I18NString inOrder[] = {"",       "A",    "a",    "aa",     "b",      "\u00E9",
                                "\uD7FF", "\x80", "\xFF", "\uE000", "\uFFFF", "\U00010000"};
  for (const I18NString& left : inOrder) {
    for (const I18NString& right : inOrder) {
      EXPECT_EQ(left < right, &left < &right) << left.c_str() << " " << right.c_str();
      EXPECT_EQ(left == right, &left == &right) << left.c_str() << " " << right.c_str();
    }
  }
}

TEST(I18NString, TooLongATextIsRefusedAndChangesNothing) {
  I18NString text("as it was");
  EXPECT_THROW(text.resize(INT_MAX, 0x20AC), std::length_error);
  EXPECT_THROW(text.replace(2, 1, 0x20AC, INT_MAX), std::length_error);
  EXPECT_EQ(text, "as it was");
}

TEST(I18NString, EncodedTextIsMadeOnceWhicheverThreadAsks) {
  for (int round = 0; round < 50; ++round) {
    const I18NString text("caf\u00E9 \u20AC");
    std::set<const void*> seen[4];
    together(4, [&](std::size_t number) {
      for (const char* name : {"latin1", "UTF-16LE", "latin1"}) {
        seen[number].insert(text.c_str(name));
      }
    });
    for (const auto& pointers : seen) EXPECT_EQ(pointers, seen[0]);
    EXPECT_EQ(seen[0].size(), 2U);
  }
}

}  // namespace
