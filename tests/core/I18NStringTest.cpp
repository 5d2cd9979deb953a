#include "platform/core/I18NString.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/core/I18NLibrary.h"

namespace {

// The model: characters in a plain u32string. Its codec is written in another way than the one it
// checks: it tries every length and accepts what encodes back to the same bytes.

std::string encoded(char32_t c) {
  const auto tail = [c](int shift) { return static_cast<char>(0x80 | (c >> shift & 0x3F)); };
  if (c >= 0xDC80 && c <= 0xDCFF) return {static_cast<char>(c & 0xFF)};
  if (c < 0x80) return {static_cast<char>(c)};
  if (c < 0x800) return {static_cast<char>(0xC0 | c >> 6), tail(0)};
  if (c < 0x10000) return {static_cast<char>(0xE0 | c >> 12), tail(6), tail(0)};
  return {static_cast<char>(0xF0 | c >> 18), tail(12), tail(6), tail(0)};
}

std::string encoded(const std::u32string& text) {
  std::string bytes;
  for (const char32_t c : text) bytes += encoded(c);
  return bytes;
}

std::u32string decoded(const std::string& bytes) {
  constexpr unsigned leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  std::u32string text;
  for (std::size_t at = 0; at < bytes.size(); at += encoded(text.back()).size()) {
    text += 0xDC00U | static_cast<unsigned char>(bytes[at]);
    for (std::size_t tried = 1; tried <= 4 && at + tried <= bytes.size(); ++tried) {
      char32_t c = static_cast<unsigned char>(bytes[at]) & leadBits[tried];
      for (std::size_t i = 1; i < tried; ++i) {
        c = c << 6 | (static_cast<unsigned char>(bytes[at + i]) & 0x3FU);
      }
      const bool isCharacter = c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
      if (isCharacter && encoded(c) == bytes.substr(at, tried)) text.back() = c;
    }
  }
  return text;
}

std::u32string charactersOf(const I18NString& text) {
  std::u32string result;
  I18NStringIterator at = text.begin();
  while (result.size() < static_cast<std::size_t>(text.length())) {
    result += static_cast<char32_t>(static_cast<wchar_t>(*at));
    at++;
  }
  return result;
}

std::size_t placeIn(const std::u32string& text, int pos) {
  return std::min(text.size(), static_cast<std::size_t>(std::max(pos, 0)));
}

// Kinds of text: each piece set is drawn from alone, so that every form of text gets its share.
using namespace std::string_literals;
const std::vector<std::string> pieceSets[] = {
    {"a", "b", " ", "ab", "0123456789"},
    {"a", "\u00E9", "\u20AC", "\u00E8 ", "\uFFFF", "\uE000", "\uD7FF"},
    {"a", "\U0001F600", "\u00E9", "\U0010FFFF", "\U00010000"},
    {"a", "\xC3", "\xA9", "\xF0", "\x9F", "\x98", "\x80", "\xE2", "\x82", "\xAC", "\xED\xA0\x80",
     "\xC0\x80", "\xF4\x90\x80\x80", "\xE0\x9F\xBF", "\0"s, "\u00E9", "\U0001F600", "\uE000"}};

class Dice {
 public:
  int below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned>(limit)); }
  template <typename Container>
  const auto& oneOf(const Container& items) {
    return items[m_engine() % std::size(items)];
  }
  std::string text(const std::vector<std::string>& pieces, int most) {
    std::string result;
    for (int left = below(most + 1); left > 0; --left) result += oneOf(pieces);
    return result;
  }

 private:
  std::mt19937 m_engine{7};
};

/// A string and its model, which take the same random changes.
struct RandomEdits {
  const std::vector<std::string>& pieces;
  Dice dice{};
  I18NString string{};
  std::u32string model{};

  void modelReplace(int pos, int count, const std::u32string& with) {
    model.replace(placeIn(model, pos), static_cast<std::size_t>(count), with);  // -1 is npos
    model = decoded(encoded(model));
  }
  void modelResize(int count, char32_t fill) {
    if (count >= 0) model = model.substr(0, static_cast<std::size_t>(count));
    while (static_cast<int>(model.size()) < count) model = decoded(encoded(model + fill));
  }
  void modelTrim(char32_t ch) {
    model.erase(0, model.find_first_not_of(ch));
    model.erase(model.find_last_not_of(ch) + 1);
  }

  void change() {
    const I18NString fresh(std::string_view(dice.text(pieces, 4)));
    const I18NString& piece = dice.below(5) == 0 ? string : fresh;  // it may be given itself
    const std::u32string added = decoded(std::string(piece.utf8()));
    const std::u32string untilNul = added.substr(0, added.find(U'\0'));
    const int pos = dice.below(string.length() + 4) - 2;
    const int count = dice.below(8) - 2;
    const char32_t ch = decoded(dice.oneOf(pieces))[0];
    const auto wide = static_cast<wchar_t>(ch);
    switch (dice.below(9)) {
      case 0:
        return string += piece, modelReplace(INT_MAX, 0, added);
      case 1:
        return string += piece.c_str(), modelReplace(INT_MAX, 0, untilNul);
      case 2:
        return string = piece.c_str(), modelReplace(0, -1, untilNul);
      case 3:
        return string.replace(pos, count, piece), modelReplace(pos, count, added);
      case 4:
        return string.replace(pos, count, wide, 3), modelReplace(pos, count, std::u32string(3, ch));
      case 5:
        return string.erase(pos, count), modelReplace(pos, count, U"");
      case 6:
        return string.resize(pos, wide), modelResize(pos, ch);
      case 7:
        return string.trim(wide), modelTrim(ch);
      default:
        return string.appendUtf16(piece.toUtf16()), modelReplace(INT_MAX, 0, added);
    }
  }

  void compare() {
    ASSERT_EQ(string.utf8(), encoded(model));
    ASSERT_EQ(charactersOf(string), model);
    const int pos = dice.below(string.length() + 4) - 2;
    const int count = dice.below(6) - 1;
    const std::u32string part = model.substr(placeIn(model, pos), static_cast<std::size_t>(count));
    ASSERT_EQ(charactersOf(string.substr(pos, count)), part);
    const std::string what = dice.text(pieces, 2);
    const auto found = static_cast<int>(model.find(decoded(what), placeIn(model, pos)));
    ASSERT_EQ(string.find(I18NString(what), pos), pos < string.length() ? found : -1);
    ASSERT_EQ(string.find(static_cast<wchar_t>(part[0]), 0), static_cast<int>(model.find(part[0])));

    const I18NString other = string.substr(0, pos) + I18NString(what);
    const std::u32string otherModel = decoded(std::string(other.utf8()));
    ASSERT_EQ(string < other, model < otherModel);
    ASSERT_EQ(other < string, otherModel < model);
    ASSERT_EQ(string == other, model == otherModel);

    std::u16string units = string.toUtf16();
    ASSERT_EQ(I18NString::fromUtf16(units), string);
    ASSERT_TRUE(string.equalsUtf16(units));
    // Another character, which has the same low byte.
    if (!units.empty()) units[static_cast<std::size_t>(dice.below(60)) % units.size()] ^= 0x100;
    ASSERT_EQ(string.equalsUtf16(units), string == I18NString::fromUtf16(units));
    ASSERT_EQ(string.equalsUtf16(other.toUtf16()), string == other);
  }
};

TEST(I18NString, AgreesWithAModelOfPlainCharacters) {
  for (const auto& pieces : pieceSets) {
    RandomEdits edits{pieces};
    for (int round = 0; round < 4000; ++round) {
      edits.change();
      ASSERT_NO_FATAL_FAILURE(edits.compare()) << pieces[1] << ", round " << round;
      if (edits.string.length() > 60) edits.string = "", edits.model.clear();
    }
  }
}

TEST(I18NString, ReplacesCharactersThatNoTextCanHold) {
  const std::pair<wchar_t, const char*> rows[] = {
      {0xD800, "\uFFFD"}, {0xDC7F, "\uFFFD"},   {0xDC80, "\x80"}, {0xDCFF, "\xFF"},
      {0xDD00, "\uFFFD"}, {0x110000, "\uFFFD"}, {-1, "\uFFFD"},   {0x10FFFF, "\U0010FFFF"}};
  for (const auto& [ch, expected] : rows) {
    I18NString text;
    text.resize(1, ch);
    EXPECT_STREQ(text.c_str(), expected) << std::hex << ch;
    EXPECT_EQ(text.find(ch, 0), 0) << std::hex << ch;
  }
  const std::pair<std::u16string, const char*> unitRows[] = {{{0xDC00}, "\uFFFD"},
                                                             {{0xD83D}, "\uFFFD"},
                                                             {{0xD83D, u'a'}, "\uFFFDa"},
                                                             {{0xDCC3}, "\xC3"},
                                                             {{0xDCC3, 0xDCA9, u'a'}, "\u00E9a"}};
  for (const auto& [units, expected] : unitRows) {
    const I18NString text = I18NString::fromUtf16(units);
    EXPECT_STREQ(text.c_str(), expected);
    EXPECT_EQ(charactersOf(text), decoded(expected));
    EXPECT_TRUE(text.equalsUtf16(units));
  }
}

TEST(I18NString, BoundsActAsTheNearestPlaceAndNullAsEmpty) {
  const char* const none = nullptr;
  I18NString text(none);
  EXPECT_EQ(*text.begin(), L'\0');
  text += "ab";
  text += none;
  EXPECT_EQ(text.substring(-3, 1) + text.substring(1, 5) + text.substring(1, 0), "ab");
  EXPECT_EQ(text.find(L'a', INT_MAX), -1);
  EXPECT_EQ(text.find(L'a', INT_MIN), 0);
  text.replace(0, 0, L'x', -1);
  text.replace(9, INT_MAX, I18NString("c"));
  EXPECT_EQ(text, "abc");
  text = none;
  EXPECT_EQ(text, none);
}

TEST(I18NString, CopiesAreIndependentAndMovedFromStringsAreEmpty) {
  I18NString first("\u00E9t\u00E9");
  const char* const latin = first.c_str("latin1");
  const I18NString copy = first;
  EXPECT_NE(copy.c_str("latin1"), latin);
  first = *&first;
  first = std::move(*&first);
  const I18NString moved = std::move(first);
  EXPECT_STREQ(first.c_str("latin1"), "");  // NOLINT(bugprone-use-after-move)
  first += "new";
  EXPECT_EQ(first.length(), 3);
  EXPECT_EQ(copy, moved);
}

TEST(I18NString, TooLongATextIsRefusedAndChangesNothing) {
  I18NString text("as it was");
  EXPECT_THROW(text.resize(INT_MAX, 0x20AC), std::length_error);
  EXPECT_THROW(text.replace(2, 1, 0x20AC, INT_MAX), std::length_error);
  EXPECT_EQ(text, "as it was");
}

// Strings of static lifetime: made before main, used after it.
const char* envelope() { return "a name long enough to need memory of its own = "; }
I18NString earlyString(envelope());

void useEarlyString() {
  earlyString += "\u00E9";
  const std::string expected = envelope() + std::string("\u00E9");
  _exit(earlyString == expected.c_str() && *earlyString.c_str("latin1") == 'a' ? 0 : 1);
}

TEST(I18NLibrary, StringsWorkWithoutItBeforeMainAndAtExit) {
  I18NTerminate();
  I18NInitialize();
  I18NTerminate();
  const I18NString path("/opt/caf\xE9/\u00E9", I18NGetPlatformDefaultEncoding());
  EXPECT_STREQ(path.c_str(I18NGetPlatformDefaultEncoding()), "/opt/caf\xE9/\u00E9");
  EXPECT_EXIT(std::atexit(useEarlyString); std::exit(2), testing::ExitedWithCode(0), "");
}

TEST(I18NString, EncodedTextIsMadeOnceWhicheverThreadAsks) {
  for (int round = 0; round < 50; ++round) {
    const I18NString text("caf\u00E9 \u20AC");
    std::set<const void*> seen[8];
    std::vector<std::thread> threads;
    for (auto& pointers : seen) {
      threads.emplace_back([&text, &pointers] {
        for (const char* name : {"latin1", "UTF-16LE", "latin1"}) pointers.insert(text.c_str(name));
      });
    }
    for (std::thread& thread : threads) thread.join();
    for (const auto& pointers : seen) EXPECT_EQ(pointers, seen[0]);
    EXPECT_EQ(seen[0].size(), 2U);
  }
}

}  // namespace
