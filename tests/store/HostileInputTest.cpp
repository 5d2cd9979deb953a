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
  const std::string trap = (installation / "trap").string();
  ASSERT_EQ(::mkfifo(trap.c_str(), 0600), 0);
  const std::string good = startupDocument(parameter("n", "v"));
  const auto with = [](const std::string& value) { return startupDocument(parameter("n", value)); };
  const auto doctype = [&](const std::string& subset) {
    return "<!DOCTYPE x " + subset + ">" + with("&e;");
  };
  struct Row {
    const char* what;
    std::string document;
    const char* value;
  };
  const Row rows[] = {
      {"fine", good, "v"},
      {"too deep", startupDocument(nested(254)), "default"},
      {"depth bomb", repeated("<a>", 1000000), "default"},
      {"doctype", "<!DOCTYPE x>" + good, "default"},
      {"internal entity", doctype("[<!ENTITY e 'v'>]"), "default"},
      {"external entity", doctype("[<!ENTITY e SYSTEM 'file://" + trap + "'>]"), "default"},
      {"external subset", doctype("SYSTEM 'file://" + trap + "'"), "default"},
      {"remote subset", doctype("SYSTEM 'http://127.0.0.1:1/x'"), "default"},
      {"entity bomb",
       doctype("[<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>"
               "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY e '&c;&c;&c;&c;&c;&c;'>]"),
       "default"},
      {"NUL in the text", with(std::string("a\0b", 3)), "default"},
      {"invalid UTF-8", with("\xC3("), "default"},
      {"UTF-16 little endian", utf16(good, false), "v"},
      {"UTF-16 big endian", utf16(good, true), "v"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(loaded(installation, row.document), row.value);
  }
  EXPECT_NE(loaded(installation, startupDocument(nested(253))), "default")
      << "as deep as it may be";
}

TEST(HostileInputTest, AHugeValueIsRead) {
  constexpr int megabytes = 100;
  const std::string value = repeated("0123456789abcdef", megabytes * 65536);
  const CurrentInstallation installation(parameter("n", value) + parameter("m", "small"));
  EXPECT_TRUE(textOf("n") == value);
  EXPECT_EQ(textOf("m"), "small");
}

}  // namespace
