#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <string>

#include "tests/service/Service.h"
#include "tests/support/DomTesting.h"

namespace {

VRDCFGAPI_ErrorState stateOfStartupDocument() {
  VRDIDOM_Document document = newDocument();
  return VRDConfiguration::getConfigDoc(document);
}

long stateOfLocaleDocument() {
  return stateOf([] { PrivateService()->getFonts(""); });
}

// Whoever opened the pipe, or read the device to its end, would wait for ever.
TEST(HostileInputTest, OnlyAFileIsReadAndOneThatFailsIsNoDocument) {
  const auto make = [](mode_t type) {
    return [=](const char* file) { return ::mknod(file, type | 0600, 0); };
  };
  const auto linkTo = [](const char* target) {
    return [=](const char* file) { return ::symlink(target, file); };
  };
  struct Row {
    std::function<int(const char*)> put;
    int startup = VRDCFGAPI_StartupFileMissing;
    int locales = VRDCFGAPI_LocaleFileMissing;
    int components = VRDCFGAPI_ComponentListMissing;
  };
  const Row rows[] = {
      {make(S_IFIFO)},
      {make(S_IFSOCK)},
      {linkTo("/")},
      {linkTo("/dev/zero")},
      // A file to all who look; its first read fails.
      {linkTo("/proc/self/mem"), VRDCFGAPI_StartupFileParseFailed, VRDCFGAPI_LocaleFileParseFailed,
       VRDCFGAPI_NoError},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(&row - rows);
    const ServiceInstallation installation;
    std::filesystem::remove(installation.startupFile());
    for (const char* name :
         {"configuration/zanstartup.xml", "configuration/zanlocale.xml", "cmplst.txt"}) {
      ASSERT_EQ(row.put((installation / name).c_str()), 0);
    }
    EXPECT_EQ(stateOfStartupDocument(), row.startup);
    EXPECT_EQ(stateOfLocaleDocument(), row.locales);
    EXPECT_EQ(stateOf([] { PrivateService()->getComponentVersion(""); }), row.components);
  }
}

std::string contentOf(const std::string& file) {
  std::ifstream stream(VRD_SOURCES + file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// Calls @p work with each number of bytes that @p text can be cut to, and whether the root is
/// still whole then.
void cutShort(const std::string& text, const std::function<void(std::size_t, bool)>& work) {
  for (std::size_t cut = 0; cut <= text.size(); cut += VRD_CUT_STEP) {
    work(text.size() - cut, text.size() - cut > text.rfind('>'));
  }
}

TEST(HostileInputTest, DocumentsCutShortAnywhereAreNone) {
  const std::string startup = contentOf("samples/installation/configuration/zanstartup.xml");
  const std::string locales = contentOf("samples/installation/configuration/zanlocale.xml");
  const std::string query = contentOf("fuzz/corpus/query/all-kinds.xml");
  const ServiceInstallation installation;
  installation.setDocument(startup);
  installation.setLocaleDocument(locales);
  const std::string before = textOf("");
  cutShort(startup, [&](std::size_t size, bool isWhole) {
    std::filesystem::resize_file(installation.startupFile(), size);
    EXPECT_EQ(stateOfStartupDocument(), isWhole ? 0 : VRDCFGAPI_StartupFileParseFailed) << size;
  });
  cutShort(locales, [&](std::size_t size, bool isWhole) {
    std::filesystem::resize_file(installation / "configuration/zanlocale.xml", size);
    EXPECT_EQ(stateOfLocaleDocument(), isWhole ? 0 : VRDCFGAPI_LocaleFileParseFailed) << size;
  });
  cutShort(query, [&](std::size_t size, bool isWhole) {
    if (isWhole) return;
    EXPECT_EQ(initWith(query.substr(0, size)), VRDCFGAPI_StreamParseFailed) << size;
    EXPECT_EQ(textOf(""), before) << size;
  });
}

}  // namespace
