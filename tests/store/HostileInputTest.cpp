#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "tests/support/Installation.h"
#include "tests/support/StandInDefaults.h"
#include "tests/support/Store.h"

namespace {

std::string repeated(const std::string& part, int times) {
  std::string text;
  text.reserve(part.size() * static_cast<std::size_t>(times));
  for (int count = 0; count < times; ++count) text += part;
  return text;
}

std::string nested(int depth) {
  return parameter("n", repeated("<d>", depth) + repeated("</d>", depth), "opaque='true'");
}

std::string utf16(const std::string& ascii, bool bigEndian) {
  std::string bytes;
  for (const char ch : "\xFF" + ascii) {
    const char pair[] = {ch == '\xFF' ? '\xFF' : ch, ch == '\xFF' ? '\xFE' : '\0'};
    bytes += bigEndian ? std::string{pair[1], pair[0]} : std::string{pair[0], pair[1]};
  }
  return bytes;
}

/// Loads @p document and gives what "n" is then; "default" where the document was refused.
std::string loaded(const CurrentInstallation& installation, const std::string& document) {
  installation.setDocument(document);
  startOver();
  return textOf("n");
}

TEST(HostileInputTest, IsRefusedOrReadAndNeverMore) {
  StandInDefaults::setStartup({{"n", "default"}});
  const CurrentInstallation installation;
  // Whoever opened this would wait for ever.
  const std::string trap = "SYSTEM 'file://" + (installation / "trap").string() + "'";
  ASSERT_EQ(::mkfifo((installation / "trap").c_str(), 0600), 0);
  const std::string good = startupDocument(parameter("n", "v"));
  const auto with = [](const std::string& value) { return startupDocument(parameter("n", value)); };
  const std::string refused[] = {
      startupDocument(nested(254)),
      repeated("<a>", 1000000),
      "<!DOCTYPE x>" + good,
      "<!DOCTYPE x " + trap + ">" + good,
      "<!DOCTYPE x [<!ENTITY e " + trap + ">]>" + with("&e;"),
      "<!DOCTYPE x [<!ENTITY e 'v'>]>" + with("&e;"),
      with(std::string("a\0b", 3)),
      with("\xC3("),
  };
  for (const std::string& document : refused) {
    EXPECT_EQ(loaded(installation, document), "default") << document.substr(0, 80);
  }
  EXPECT_EQ(loaded(installation, utf16(good, false)), "v");
  EXPECT_EQ(loaded(installation, utf16(good, true)), "v");
  EXPECT_NE(loaded(installation, startupDocument(nested(253))), "default");
}

TEST(HostileInputTest, AHugeValueIsRead) {
  constexpr int megabytes = 32;
  const std::string value = repeated("0123456789abcdef", megabytes * 65536);
  const CurrentInstallation installation(parameter("n", value) + parameter("m", "small"));
  EXPECT_TRUE(textOf("n") == value);
  EXPECT_EQ(textOf("m"), "small");
}

}  // namespace
