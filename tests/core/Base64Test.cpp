#include "platform/core/VRDBase64.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <random>
#include <string>

namespace {

/// Decodes with exactly @p room bytes at hand and checks that nothing behind them was written.
int decode(const std::string& text, unsigned long room, std::string& bytes) {
  bytes.assign(room + 16, '\x5A');
  unsigned long size = room;
  const int result = VRDBase64Decode(text.c_str(), bytes.data(), &size);
  EXPECT_EQ(bytes.substr(room), std::string(16, '\x5A')) << "written beyond the room";
  EXPECT_EQ(result == 0 ? bytes.at(size) : size, 0u) << "no NUL, or a size after a failure";
  bytes.resize(size);
  return result;
}

std::string encode(const std::string& bytes) {
  unsigned char text[600];
  const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
  const int length = EVP_EncodeBlock(text, data, static_cast<int>(bytes.size()));
  return {text, text + length};
}

TEST(Base64, GivesBackWhatWasEncodedWhereverLinesBreak) {
  std::mt19937 random(20240611);
  std::string decoded;
  for (std::size_t length = 0; length < 200; ++length) {
    std::string bytes(length, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    std::string text = encode(bytes);
    for (const char* lineBreak : {"", "\n", "\r\n"}) {
      text.insert(random() % (text.size() + 1), lineBreak);
      EXPECT_EQ(decode(text, length + 1, decoded), 0) << text;
      EXPECT_EQ(decoded, bytes) << text;
      EXPECT_EQ(decode(text, length, decoded), 2) << text << ": no room for the NUL";
    }
  }
}

TEST(Base64, RefusesEverythingElse) {
  // Cut off; padding missing, alone, too much, inside; text behind it; bits set that carry no data;
  // white space that is no line break; CR without LF; neighbours of the alphabet.
  const std::string rows[] = {"A",         "AA",         "AAA",       "AAAAA",    "AAAA\nAA",
                              "Zg=",       "Zm8",        "=",         "====",     "A===",
                              "Zm9v=",     "Zg=A",       "Z=g=",      "Zg==Zg==", "Zg==A",
                              "Zg==\n=",   "Zh==",       "Zm9=",      "Zm9vZ/==", "AA*A",
                              "Zm9v YmFy", "Zm9v\rYmFy", "Zm9v\r_Ym", "Zm9\tv",   "-AAA",
                              "A_AAAAAA",  "AA,A",       "AAA:",      "AAA@AAAA", "[AAA",
                              "A`AA",      "AA{AAAAA",   "AAA\x80",   "\xFFZm9"};
  std::string decoded;
  for (const std::string& text : rows)
    EXPECT_EQ(decode(text, 99, decoded), 1) << testing::PrintToString(text);
}

TEST(Base64, TakesBlanksAroundTheTextAndNoNull) {
  std::string decoded;
  EXPECT_EQ(decode(" \t\r\n  Zm9v\r\n\t ", 4, decoded), 0);
  EXPECT_EQ(decoded, "foo");
  unsigned long room = 8;
  EXPECT_EQ(VRDBase64Decode(nullptr, decoded.data(), &room), 1);
  EXPECT_EQ(VRDBase64Decode("Zm9v", nullptr, &(room = 8)), 2);
  EXPECT_EQ(VRDBase64Decode("Zm9v", decoded.data(), nullptr), 2);
}

}  // namespace
