#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>

#include "platform/core/IBJInputStream.h"

namespace {

/// Breaks where more is asked for than its text.
struct BreakingBuffer : std::streambuf {
  explicit BreakingBuffer(std::string& text) {
    setg(text.data(), text.data(), text.data() + text.size());
  }
  int_type underflow() override { throw std::runtime_error("the disk is gone"); }
};

/// Reads @p count bytes a time until the end or a failure, and once more.
std::string readAll(std::istream& source, int count, int expectedLast) {
  IBJBufferedInputStream stream(source);
  std::string bytes, buffer(static_cast<std::size_t>(count), '?');
  int got = 0;
  while ((got = stream.read(buffer.data(), count)) > 0)
    bytes += buffer.substr(0, static_cast<std::size_t>(got));
  EXPECT_EQ(got, expectedLast);
  EXPECT_EQ(stream.read(buffer.data(), count), expectedLast) << "the end stays the end";
  return bytes;
}

TEST(BufferedInputStream, ReadsUpToTheEndOrTheFailureWhateverTheSourceThrows) {
  std::string text("one\0two\r\n\xFF three", 16);
  const auto everyState = std::ios::badbit | std::ios::failbit | std::ios::eofbit;
  for (const auto mask : {std::ios::goodbit, everyState}) {
    for (const int count : {3, 15, 16, 17}) {
      std::istringstream source(text);
      source.exceptions(mask);
      EXPECT_EQ(readAll(source, count, 0), text) << count;
    }
    BreakingBuffer buffer(text);
    std::istream broken(&buffer);
    broken.exceptions(mask);
    EXPECT_EQ(readAll(broken, 5, -1), text.substr(0, 15));
  }
  std::istringstream failed(text);
  failed.setstate(std::ios::failbit);
  EXPECT_EQ(readAll(failed, 8, -1), "");
}

}  // namespace
