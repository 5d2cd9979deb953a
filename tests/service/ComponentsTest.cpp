#include <gtest/gtest.h>

#include <sstream>

#include "service/ComponentVersions.h"
#include "tests/service/Service.h"

using namespace std::string_view_literals;

namespace {

/// Fails behind its text, where another would end.
struct FailingBuffer : std::stringbuf {
  using basic_stringbuf::basic_stringbuf;
  int_type underflow() override { throw std::runtime_error("the disk is gone"); }
};

ComponentVersions versionsIn(std::istream&& list) {
  ComponentVersions versions;
  versions.read(list);
  return versions;
}

}  // namespace

TEST(ComponentVersions, WhatALineSays) {
  const std::string megabyte(1 << 20, 'n');
  struct {
    const char* what;
    std::string text;
    std::map<std::string, std::string> expected;
    const char* absent = "none";
  } const cases[] = {
      {"among others", "Title\n\nA_version=1\n# A=\nB_version=2\n", {{"A", "1"}, {"B", "2"}}},
      {"a last line without its newline", "A_version=1\nB_version=2", {{"A", "1"}}, "B"},
      {"two markers", "A_version=1_version=2\n", {{"A", "1_version=2"}}, "A_version=1"},
      {"signs before the marker", "=_versio=A_version=1\n", {{"=_versio=A", "1"}}},
      {"an empty name or version", "_version=1\nA_version=\n", {{"", "1"}, {"A", ""}}},
      {"nothing is trimmed", " A _version= 1 \r\n", {{" A ", " 1 \r"}}, "A"},
      {"the first of a name", "A_version=1\nB_version=3\nA_version=2\n", {{"A", "1"}, {"B", "3"}}},
      {"case counts", "A_VERSION=1\nA_version =2\nB_version=3\n", {{"B", "3"}}, "b"},
      {"bytes", {"\xFF_version=\0x\n", 13}, {{"\xFF", {"\0x", 2}}}},
      {"a long line", megabyte + "_version=" + megabyte + "\n", {{megabyte, megabyte}}, "n"},
      {"nothing", "", {}, ""},
  };
  for (const auto& row : cases) {
    const ComponentVersions versions = versionsIn(std::istringstream(row.text));
    EXPECT_EQ(versions.size(), row.expected.size()) << row.what;
    EXPECT_FALSE(versions.find(row.absent)) << row.what;
    for (const auto& [name, version] : row.expected) EXPECT_EQ(versions.find(name), version);
  }
}

// Reading goes in blocks; no line may come to harm where one ends and the next begins, and what was
// read before a failure counts. Of thousands of names many share a slot.
TEST(ComponentVersions, LinesOfEveryLength) {
  const auto nameOf = [](unsigned number) {
    return std::to_string(number) + std::string(number % 301, 'n');
  };
  constexpr unsigned count = 20000;
  std::string text;
  for (unsigned number = 0; number < count; ++number) {
    text += nameOf(number) + "_version=" + std::to_string(number) + "\n# other\n\n";
  }
  FailingBuffer failing(text);
  for (const auto& versions :
       {versionsIn(std::istringstream(text)), versionsIn(std::istream(&failing))}) {
    for (unsigned number = 0; number < count; ++number) {
      ASSERT_EQ(versions.find(nameOf(number)), std::to_string(number));
      ASSERT_FALSE(versions.find(nameOf(number) + "x"));
    }
  }
}

TEST(ServiceComponents, AnswersFromTheInstallation) {
  const ServiceInstallation installation;
  const PrivateService early, service;
  EXPECT_EQ(stateOf([&] { early->getComponentVersion("CORE"); }), VRDCFGAPI_ComponentListMissing);

  installation.setComponents("CORE_version=7.2.1\nÜBER_version=1\xFF\nNUL_version=a\0b\n"sv);
  EXPECT_EQ(early->getComponentVersion("CORE"), "") << "told once and not tried again";
  EXPECT_STREQ(service->getComponentVersion("ÜBER").c_str(), "1\xFF");
  EXPECT_EQ(service->getComponentVersion("NUL"), "a");
  EXPECT_EQ(service->getComponentVersion("core"), "");
  installation.setComponents("CORE_version=8\n");
  EXPECT_EQ(service->getComponentVersion("CORE"), "7.2.1") << "read once";
}
