#include <gtest/gtest.h>

#include <memory>
#include <string>

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
              {"iso-8859-1", "caf\xE9\x80", "caf\u00E9\u0080", ""},
              {"EUC-JP", "a\x8F\xA2", "a\x8F\xA2", ""},  // cut in the middle of a character
              {"ISO-2022-JP", "\x1B$BF|\x1B(Ba", "\u65E5a", ""},
              {"UTF-16LE", "a\0\xAC\x20\x3D\xD8\x00\xDE"s, "a\u20AC\U0001F600", ""},
              {"utf-16be", "\xFE\xFF\0a\xD8\x3D\xDE\x00"s, "\uFEFFa\U0001F600", ""},
              {"UTF-32LE", "\x00\xF6\x01\0\x61\0\0\0"s, "\U0001F600a", ""},
              {"UTF32", "\0\0\xFE\xFF\0\0\0a"s, "a", ""},
              // Another byte order; what means nothing is kept or replaced.
              {"UTF-16", "\xFF\xFE\x61\0"s, "a", "\xFE\xFF\0a"s},
              {"UTF-32", "\xFF\xFE\0\0\x61\0\0\0"s, "a", "\0\0\xFE\xFF\0\0\0a"s},
              {"UTF-16BE", "\xD8\x00\0a"s, "\uFFFDa", "\xFF\xFD\0a"s},
              {"UTF-16BE", "\0ab"s, "a\uFFFD", "\0a\xFF\xFD"s},
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

TEST(Encoding, BytesComeFromTheAllocatorOfTheCallerWithANulOfTheirWidth) {
  const I18NAllocator own = [](void* arg, char*, int wanted, int*) {
    return wanted <= 12 ? static_cast<char*>(arg) : nullptr;
  };
  const std::pair<const char*, std::string> rows[] = {{"UTF-16LE", "a\0b\0\0\0"s},
                                                      {"UTF-32BE", "\0\0\0a\0\0\0b\0\0\0\0"s},
                                                      {"UCS-2", "\xFF\xFE\x61\0\x62\0\0\0"s},
                                                      {"windows-1252", "ab\0"s}};
  for (const auto& [name, bytes] : rows) {
    const I18NString text(bytes.data(), name);
    EXPECT_EQ(text, "ab") << name;
    char buffer[12];
    int size = 0;
    EXPECT_EQ(text.toBytes(name, &size, own, buffer), buffer);
    EXPECT_EQ(std::string(buffer, static_cast<std::size_t>(size)), bytes) << name;
  }
  EXPECT_THROW(I18NString("abcdefghijkl").toBytes(nullptr, nullptr, own, nullptr), std::bad_alloc);
  const std::unique_ptr<char[]> copy(I18NString("ab").toBytes(nullptr, nullptr, nullptr, nullptr));
  EXPECT_STREQ(copy.get(), "ab");
}

TEST(Encoding, EncodedFormFollowsChangesCopiesAndMoves) {
  I18NString text("\u00E9");
  const char* const latin = text.c_str("latin1");
  EXPECT_EQ(text.c_str("latin1"), latin);
  const I18NString copy = text;
  EXPECT_NE(copy.c_str("latin1"), latin);
  text = text.c_str("UTF-7");  // the new text lies in a buffer that goes with the old one
  EXPECT_STREQ(text.c_str("latin1"), "+AOk-");
  text.erase(0, 1);
  EXPECT_STREQ(text.c_str("latin1"), "AOk-");
  const I18NString moved = std::move(text);
  EXPECT_STREQ(text.c_str("latin1"), "");  // NOLINT(bugprone-use-after-move)
  EXPECT_STREQ(copy.c_str("windows-1252"), "\xE9");
}

TEST(Encoding, UnknownNameThrowsAMemberOfTheFamilyThatNamesIt) {
  for (const std::string name : {"no-such-encoding", "", " ", "utf-88", "../../etc/passwd"}) {
    EXPECT_THROW(I18NEncodeForXml("x", name.c_str()), VRDStdExceptionError);
    try {
      const I18NString text(nullptr, name.c_str());
      ADD_FAILURE() << name;
    } catch (VRDStdExceptionError& error) {
      EXPECT_NE(error.getMessage().find(I18NString('"' + name + '"'), 0), -1);
    }
  }
}

}  // namespace
