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
  EXPECT_EQ(loaded(installation, good), "v");
  EXPECT_NE(loaded(installation, startupDocument(nested(253))), "default");
  std::string utf16 = "\xFF\xFE";
  for (const char ch : good) utf16 += {ch, '\0'};
  EXPECT_EQ(loaded(installation, utf16), "v");
  const std::string huge = repeated("0123456789abcdef", 2 << 20);
  EXPECT_TRUE(loaded(installation, with(huge)) == huge);
}

}  // namespace
