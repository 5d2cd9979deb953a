#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "service/ComponentList.h"
#include "tests/service/Service.h"

namespace {

/// Gives "A_version=1\n" in a buffer of its own, and then fails.
class FailingBuffer : public std::streambuf {
 protected:
  int_type underflow() override {
    if (m_done) throw std::runtime_error("the disk is gone");
    m_done = true;
    setg(m_text, m_text, m_text + sizeof m_text - 1);
    return traits_type::to_int_type(*gptr());
  }

 private:
  char m_text[13] = "A_version=1\n";
  bool m_done = false;
};

ComponentVersions versionsIn(std::istream&& list) {
  ComponentVersions versions;
  readComponentList(list, versions);
  return versions;
}

}  // namespace

TEST(ComponentList, WhatALineSays) {
  const std::string megabyte(1 << 20, 'n');
  struct {
    const char* what;
    std::string text;
    std::size_t entries;
    std::vector<std::pair<std::string, std::string>> expected;
  } const cases[] = {
      {"among other lines",
       "Title\n\nA_version=1\n# A=\nB_version=2\n",
       2,
       {{"A", "1"}, {"B", "2"}}},
      {"a last line without its newline", "A_version=1\nB_version=2", 1, {{"A", "1"}}},
      {"a second marker is of the version", "A_version=1_version=2\n", 1, {{"A", "1_version=2"}}},
      {"signs before the marker", "=_versio=A_version=1\n", 1, {{"=_versio=A", "1"}}},
      {"an empty name or version", "_version=1\nA_version=\n", 2, {{"", "1"}, {"A", ""}}},
      {"nothing is trimmed", " A _version= 1 \r\n", 1, {{" A ", " 1 \r"}}},
      {"the first of a name", "A_version=1\nB_version=3\nA_version=2\n", 3, {{"A", "1"}}},
      {"case counts", "A_VERSION=1\nA_version =2\nA_Version=3\n", 0, {}},
      {"bytes",
       std::string("\xFF_version=\0x\nA\0_version=2\n", 26),
       2,
       {{"\xFF", std::string("\0x", 2)}, {std::string("A\0", 2), "2"}}},
      {"a line of a megabyte", megabyte + "_version=" + megabyte + "\n", 1, {{megabyte, megabyte}}},
      {"nothing", "", 0, {}},
  };
  for (const auto& row : cases) {
    const ComponentVersions versions = versionsIn(std::istringstream(row.text));
    EXPECT_EQ(versions.size(), row.entries) << row.what;
    EXPECT_FALSE(versions.find("none")) << row.what;
    for (const auto& [name, version] : row.expected) EXPECT_EQ(versions.find(name), version);
  }
}

// Reading goes in blocks; no line may come to harm where one block ends and the next begins. And
// of thousands of names many share a slot.
TEST(ComponentList, LinesOfEveryLength) {
  const auto nameOf = [](unsigned number) {
    return std::to_string(number) + std::string(number % 301, 'n');
  };
  constexpr unsigned count = 20000;
  std::ostringstream text;
  for (unsigned number = 0; number < count; ++number) {
    text << nameOf(number) << "_version=" << number << "\n\n";
  }
  const ComponentVersions versions = versionsIn(std::istringstream(text.str()));
  for (unsigned number = 0; number < count; ++number) {
    ASSERT_EQ(versions.find(nameOf(number)), std::to_string(number));
    ASSERT_FALSE(versions.find(nameOf(number) + "x"));
  }
}

// A file can pass the test and still not be opened, and a folder can be opened and not be read.
TEST(ComponentList, EndsWhereAStreamFails) {
  const TemporaryFolder folder;
  for (const auto& path : {folder / "none", folder.path()}) {
    EXPECT_EQ(versionsIn(std::ifstream(path, std::ios::in | std::ios::binary)).size(), 0U);
  }
  FailingBuffer buffer;
  EXPECT_EQ(versionsIn(std::istream(&buffer)).find("A"), "1") << "read before the failure";
}

TEST(ServiceComponents, AnswersFromTheInstallation) {
  const ServiceInstallation installation;
  const PrivateService early;
  EXPECT_EQ(stateOf([&] { early->getComponentVersion("CORE"); }), VRDCFGAPI_ComponentListMissing);

  installation.setComponents(
      "CORE_version=7.2.1\nÜBER_version=1\xFF\nNUL_version=" + std::string("a\0b", 3) + "\n");
  EXPECT_EQ(early->getComponentVersion("CORE"), "") << "told once and not tried again";
  const PrivateService service;
  EXPECT_EQ(service->getComponentVersion("CORE"), "7.2.1");
  EXPECT_STREQ(service->getComponentVersion("ÜBER").c_str(), "1\xFF");
  EXPECT_EQ(service->getComponentVersion("NUL"), "a");
  EXPECT_EQ(service->getComponentVersion("core"), "");

  installation.setComponents("CORE_version=8\n");
  EXPECT_EQ(service->getComponentVersion("CORE"), "7.2.1") << "read once";
}
