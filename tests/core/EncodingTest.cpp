#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <string_view>

#include "platform/core/I18NEncode.h"
#include "platform/core/I18NString.h"
#include "platform/core/VRDErrors.h"

namespace {

using namespace std::string_literals;

I18NString decodedFrom(const std::string& bytes, const char* encoding) {
  return I18NString(bytes.data(), encoding, static_cast<int>(bytes.size()));
}

std::string encodedAs(const I18NString& text, const char* encoding) {
  int length = -1;
  const char* bytes = text.c_str(encoding, &length);
  return {bytes, static_cast<std::size_t>(length)};
}

TEST(Encoding, TextGoesInAndComesOutTheSame) {
  const struct {
    const char* encoding;
    std::string bytes, utf8, back;  // back: where it is not what went in
  } rows[] = {{"UTF-8", "\xEF\xBB\xBFx", "\xEF\xBB\xBFx", ""},
              {"utf_8", "\xC3", "\xC3", ""},
              {"US-ASCII", "a\xE9", "a\xE9", ""},
              {"iso-8859-1", "caf\xE9\x80", "caf\u00E9\u0080", ""},
              {"EUC-JP", "a\x8F\xA2", "a\x8F\xA2", ""},  // cut in the middle of a character
              {"ISO-2022-JP", "\x1B$BF|\x1B(Ba", "\u65E5a", ""},
              {"UTF-16LE", "a\0\xAC\x20\x3D\xD8\x00\xDE"s, "a\u20AC\U0001F600", ""},
              {"utf-16be", "\xFE\xFF\0a\xD8\x3D\xDE\x00"s, "\uFEFFa\U0001F600", ""},
              {"UTF-16", "", "", ""},
              {"UTF-32LE", "\x00\xF6\x01\0\x61\0\0\0"s, "\U0001F600a", ""},
              {"UTF32", "\0\0\xFE\xFF\0\0\0a"s, "a", ""},
              // Another byte order; what means nothing is kept or replaced.
              {"UTF-16", "\xFF\xFE\x61\0"s, "a", "\xFE\xFF\0a"s},
              {"UTF-32", "\xFF\xFE\0\0\x61\0\0\0"s, "a", "\0\0\xFE\xFF\0\0\0a"s},
              {"UTF-16BE", "\xD8\x00\0a"s, "\uFFFDa", "\xFF\xFD\0a"s},
              {"UTF-16BE", "\0a\xE9"s, "a\xE9", "\0a\xDC\xE9"s},
              {"UTF-16BE", "\0ab"s, "a\uFFFD", "\0a\xFF\xFD"s},
              {"UTF-32BE", "\0\0\xD8\x00\xFF\xFE"s, "\uFFFD\xFF\xFE",
               "\0\0\xFF\xFD\0\0\xDC\xFF\0\0\xDC\xFE"s},
              {"ISO-8859-7", "\xAE", "\xAE", ""}};
  for (const auto& [encoding, bytes, utf8, back] : rows) {
    const I18NString text = decodedFrom(bytes, encoding);
    EXPECT_EQ(text.utf8(), utf8) << encoding;
    EXPECT_EQ(encodedAs(text, encoding), back.empty() ? bytes : back) << encoding;
  }
}

TEST(Encoding, WhatTheTargetCannotHold) {
  const struct {
    const char *encoding, *utf8, *substituted, *forXml;
  } rows[] = {{"US-ASCII", "<\u00E9\U0001F600>", "<\x1A\x1A>", "<&#xE9;&#x1F600;>"},
              {"ISO-8859-1", "\u00E9\u20AC", "\xE9\x1A", "\xE9&#x20AC;"},
              {"windows-1252", "\u20AC\u200D\xC3", "\x80\x1A\xC3", "\x80&#x200D;&#xFFFD;"},
              {"Shift_JIS", "\u65E5\U0001F600", "\x93\xFA\xFC\xFC", "\x93\xFA&#x1F600;"},
              {"ibm-37", "a\u20AC", "\x81\x3F", "\x81\x50\x7B\xA7\xF2\xF0\xC1\xC3\x5E"},
              {nullptr, "\u20AC\xC3", "\u20AC\xC3", "\u20AC\uFFFD"}};
  for (const auto& row : rows) {
    EXPECT_EQ(encodedAs(I18NString(row.utf8), row.encoding), row.substituted) << row.encoding;
    EXPECT_EQ(I18NEncodeForXml(row.utf8, row.encoding), row.forXml) << row.encoding;
  }
  EXPECT_EQ(I18NEncodeForXml("a\xC3", "UTF-16"), "\xFE\xFF\0a\xFF\xFD"s);
}

// Longer than any buffer that the conversion may use inside, and growing on the way.
TEST(Encoding, LongTextCrossesIcuWhole) {
  std::string utf8, japanese, forXml;
  for (int i = 0; i < 5000; ++i)
    utf8 += "\u65E5a", japanese += "\x93\xFA\x61", forXml += "&#x65E5;a";
  EXPECT_EQ(encodedAs(I18NString(utf8.c_str()), "Shift_JIS"), japanese);
  EXPECT_EQ(decodedFrom(japanese, "Shift_JIS").utf8(), utf8);
  EXPECT_EQ(I18NEncodeForXml(utf8, "windows-1252"), forXml);
}

TEST(Encoding, NulHasTheWidthOfTheEncoding) {
  const std::pair<const char*, std::string> rows[] = {{"UTF-16LE", "a\0b\0\0\0"s},
                                                      {"UTF-32BE", "\0\0\0a\0\0\0b\0\0\0\0"s},
                                                      {"UCS-2", "\xFF\xFE\x61\0\x62\0\0\0"s},
                                                      {"windows-1252", "ab\0"s}};
  for (const auto& [name, bytes] : rows) {
    const I18NString text(bytes.data(), name);
    EXPECT_EQ(text, "ab") << name;
    int size = 0;
    const std::unique_ptr<char[]> copy(text.toBytes(name, &size, nullptr, nullptr));
    EXPECT_EQ(std::string(copy.get(), static_cast<std::size_t>(size)), bytes) << name;
  }
}

TEST(Encoding, BytesComeFromTheAllocatorOfTheCaller) {
  const I18NString text("caf\u00E9");
  char buffer[8] = {};
  const I18NAllocator own = [](void* arg, char*, int wanted, int*) {
    return wanted <= 8 ? static_cast<char*>(arg) : nullptr;
  };
  EXPECT_EQ(text.toBytes(nullptr, nullptr, own, buffer), buffer);
  EXPECT_STREQ(buffer, "caf\u00E9");
  EXPECT_THROW(text.toBytes("UTF-16", nullptr, own, buffer), std::bad_alloc);
}

TEST(Encoding, EncodedFormFollowsChanges) {
  I18NString text("\u00E9");
  const char* first = text.c_str("latin1");
  EXPECT_STREQ(text.c_str("windows-1252"), "\xE9");
  EXPECT_EQ(text.c_str("latin1"), first);
  text = text.c_str("UTF-7");  // the new text lies in a buffer that goes with the old one
  EXPECT_EQ(text, "+AOk-");
  EXPECT_STREQ(text.c_str("latin1"), "+AOk-");
  text.erase(0, 1);
  EXPECT_STREQ(text.c_str("latin1"), "AOk-");
}

TEST(Encoding, UnknownNameThrowsAMemberOfTheFamilyThatNamesIt) {
  for (const std::string name : {"no-such-encoding", "", " ", "utf-88", "../../etc/passwd"}) {
    EXPECT_THROW(I18NString(nullptr, name.c_str()), VRDStdExceptionError);
    EXPECT_THROW(I18NEncodeForXml("x", name.c_str()), VRDStdExceptionError);
    try {
      I18NString("x").c_str(name.c_str());
      ADD_FAILURE() << name;
    } catch (VRDStdExceptionError& error) {
      EXPECT_THAT(error.getMessage().c_str(), testing::HasSubstr('"' + name + '"'));
    }
  }
}

TEST(Encoding, AnyBytesPassThroughTheDefaultEncodingAndThroughUtf16) {
  std::mt19937 engine(5);
  for (int round = 0; round < 20000; ++round) {
    std::string bytes(engine() % 12, '\0');
    for (char& byte : bytes) {
      // Mostly bytes from the borders of the byte classes, where a decoder goes wrong.
      const std::string_view borders(
          "\0\x7F\x80\x8F\x90\x9F\xA0\xBF\xC1\xC2\xDF\xE0\xED\xEF\xF0\xF4\xF5\xFF", 18);
      byte = engine() % 4 == 0 ? static_cast<char>(engine()) : borders[engine() % 18];
    }
    const I18NString text = decodedFrom(bytes, nullptr);
    ASSERT_EQ(encodedAs(text, "utf-8"), bytes);
    ASSERT_EQ(I18NString::fromUtf16(text.toUtf16()).utf8(), bytes);
    for (const char* wide : {"UTF-16", "UTF-16LE", "UTF-32BE"}) {
      ASSERT_EQ(decodedFrom(encodedAs(text, wide), wide), text) << wide;
    }
  }
}

}  // namespace
