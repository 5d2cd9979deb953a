#include "platform/core/VRDBase64.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <limits>
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
  for (std::size_t length = 0; length < 400; ++length) {
    std::string bytes(length, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    std::string text = encode(bytes);
    EXPECT_EQ(decode(text, length + 1, decoded), 0) << text;
    EXPECT_EQ(decoded, bytes) << text;

    for (std::size_t at = random() % 20; at <= text.size(); at += 2 + random() % 20) {
      text.insert(at, random() % 2 == 0 ? "\n" : "\r\n");
    }
    EXPECT_EQ(decode(text, text.size() + 1, decoded), 0) << text;
    EXPECT_EQ(decoded, bytes) << text;
    // The room counts the NUL: one place less than bytes and NUL need is too small.
    for (unsigned long room = 0; room <= length && length < 14; ++room) {
      EXPECT_EQ(decode(text, room, decoded), 2) << text << " into " << room;
    }
  }
}

TEST(Base64, RefusesEverythingElse) {
  // Cut off; padding missing, alone, too much, inside; text behind it; bits set that carry no data;
  // white space that is no line break; CR without LF.
  const std::string rows[] = {
      "A",         "AA",         "AAA",         "AAAAA",     "AAAA\nAA", "Zg=",  "Zm8",
      "=",         "====",       "A===",        "Zm9v=",     "Zm9v====", "Zg=A", "Z=g=",
      "=Zg=",      "Zg==Zg==",   "Zg==A",       "Zg==\n=",   "Zh==",     "Zm9=", "Zm9vZ/==",
      "Zm9v YmFy", "Zm9v\rYmFy", "Zm9v\r_YmFy", "Zm9v Zg==", "Zm9\tv"};
  std::string decoded;
  for (const std::string& text : rows)
    EXPECT_EQ(decode(text, 99, decoded), 1) << testing::PrintToString(text);
}

// Each byte value at each of the four places, in a group of the fast way and in the last one.
TEST(Base64, KnowsEveryByteAtEveryPlace) {
  const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (unsigned code = 4; code < 256 * 4; ++code) {
    std::string text = "AAAA", decoded;
    const char ch = text[code % 4] = static_cast<char>(code / 4);
    const bool accepted = alphabet.find(ch) != std::string::npos;
    const bool padding = ch == '=' && code % 4 == 3;
    EXPECT_EQ(decode(text, 9, decoded), accepted || padding ? 0 : 1) << code;
    EXPECT_EQ(decode(text + "AAAA", 9, decoded), accepted ? 0 : 1) << code;
  }
}

TEST(Base64, TakesRoomWithoutLimitAndRefusesNoRoom) {
  char out[8];
  const auto result = [](const char* text, char* to, unsigned long room) {
    return std::pair(VRDBase64Decode(text, to, &room), room);
  };
  EXPECT_EQ(result("Zm9v", out, std::numeric_limits<unsigned long>::max()), std::pair(0, 3ul));
  EXPECT_EQ(result(" \t\r\n  Zm9v\r\n\t ", out, 4), std::pair(0, 3ul));  // as it is indented
  EXPECT_EQ(result(" \r\t\n", out, 1), std::pair(0, 0ul));
  EXPECT_EQ(result(nullptr, out, 8), std::pair(1, 0ul));
  EXPECT_EQ(result("Zm9v", nullptr, 8), std::pair(2, 0ul));
  EXPECT_EQ(VRDBase64Decode("Zm9v", out, nullptr), 2);
}

}  // namespace
