#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/core/VRDFmDir.h"
#include "tests/support/DomTesting.h"
#include "tests/support/Installation.h"
#include "tests/support/StandInDefaults.h"
#include "tests/support/Store.h"

namespace {

namespace fs = std::filesystem;

/// How often @p part stands in @p text.
int count(const std::string& text, const std::string& part) {
  int found = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
  return found;
}

// Each source sets every name that it may win, and the value is the source's own name. The name
// tells who has it: r(untime defaults), s(tartup defaults), d(ocument), c(lient).
TEST(LoadTest, TheOrderOfSources) {
  const char* const names[] = {"r", "s", "d", "c", "rs", "rd", "rc", "sc", "rsd", "rsdc"};
  StandInDefaults::List runtime, startup;
  std::string document;
  for (const std::string name : names) {
    if (name.find('r') != std::string::npos) runtime.emplace_back(name, "runtime");
    if (name.find('s') != std::string::npos) startup.emplace_back(name, "startup");
    if (name.find('d') != std::string::npos) document += parameter(name, "document");
  }
  StandInDefaults::setRuntime(runtime);
  StandInDefaults::setStartup(startup);
  // The latest wins, but a startup default no runtime default.
  const auto winner = [](const std::string& name, bool hasDocument) {
    const auto has = [&](char source) { return name.find(source) != std::string::npos; };
    if (has('c')) return "client";
    if (has('d') && hasDocument) return "document";
    if (has('r')) return "runtime";
    return has('s') && !hasDocument ? "startup" : "";
  };
  for (const bool hasDocument : {true, false}) {
    const CurrentInstallation installation(document);
    if (!hasDocument) fs::remove(installation.startupFile());
    startOver();
    for (const char* name : {"c", "rc", "sc", "rsdc"}) store().setValue(name, "client");
    for (const char* name : names) EXPECT_EQ(textOf(name), winner(name, hasDocument)) << name;
  }
}

TEST(LoadTest, TheTreeHasARootOfItsOwnAndNewParametersAtItsEnd) {
  StandInDefaults::setRuntime({{"a", "runtime"}, {"b", "runtime"}});
  const CurrentInstallation installation;
  installation.setDocument(
      "<p:parameters xmlns:p='http://zandor.com/schemas/vtconfig/1/' version='9' other='x'"
      " xmlns='urn:d'>text<p:parameter name='c'><p:value>3</p:value></p:parameter>"
      "<p:parameter name='a'><p:value>1<in/></p:value></p:parameter><!-- c -->"
      "<p:parameter name='c'><p:value>last</p:value></p:parameter></p:parameters>");
  EXPECT_EQ(textOf("a") + textOf("b") + textOf("c"), "1runtimelast");
  EXPECT_EQ(
      textOf(""),
      "<vtn:parameters version=\"1.0\""
      " xmlns:cfg=\"http://zandor.com/schemas/configparams/XMLSchema/1/\""
      " xmlns:vtn=\"http://zandor.com/schemas/vtconfig/1/\""
      " xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\""
      " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">"
      "<vtn:parameter name=\"b\"><vtn:value>runtime</vtn:value></vtn:parameter>"
      "<p:parameter name=\"a\" xmlns:p=\"http://zandor.com/schemas/vtconfig/1/\"><p:value>1"
      "<in xmlns=\"urn:d\"/></p:value></p:parameter>"
      "<p:parameter name=\"c\" xmlns:p=\"http://zandor.com/schemas/vtconfig/1/\"><p:value>last"
      "</p:value></p:parameter></vtn:parameters>");
}

TEST(LoadTest, WhatIsReadOfAParameter) {
  const CurrentInstallation installation(
      "<!-- note -->" + parameter("plain", "a &amp; b") +
      "<vtn:parameter name='no value'><other/></vtn:parameter>"
      "<vtn:parameter name='two values'><vtn:value>1</vtn:value><vtn:value>2</vtn:value>"
      "</vtn:parameter>"
      "<parameter name='no namespace'><value>v</value></parameter>" +
      parameter("off", "v", "disabled='True'") + parameter("off too", "v", "disabled='true'") +
      parameter("not off", "v", "disabled='no'") +
      parameter("value off", "v", "", "disabled='TRUE'") +
      parameter("opaque", "<x>1</x>", "opaque='TRUE'") +
      parameter("half opaque", "<x>1</x>t", "opaque='yes'") +
      parameter("outer",
                "<vtn:instances><vtn:instance>" + parameter("inner", "v") +
                    parameter("inner off", "v", "disabled='true'") +
                    "</vtn:instance><vtn:instance disabled='true'>gone</vtn:instance>"
                    "<value xmlns='urn:x' disabled='true'>kept</value></vtn:instances>",
                "opaque='true'"));
  const std::pair<const char*, const char*> rows[] = {
      {"plain", "a & b"},   {"no value", ""}, {"two values", "1"}, {"no namespace", ""},
      {"off", ""},          {"off too", ""},  {"not off", "v"},    {"value off", ""},
      {"half opaque", "t"}, {"inner", ""},
  };
  for (const auto& [name, value] : rows) EXPECT_EQ(textOf(name), value) << name;

  const std::string opaque = textOf("opaque");
  EXPECT_EQ(count(opaque, "xmlns:") + count(opaque, "<x>1</x></vtn:value>"), 4 + 1) << opaque;
  const std::string outer = textOf("outer");
  EXPECT_EQ(count(outer, "name=\"inner\"") + count(outer, "kept"), 2) << outer;
  EXPECT_EQ(count(outer, "inner off") + count(outer, "gone"), 0) << outer;
}

TEST(LoadTest, EveryStateOfTheDocument) {
  StandInDefaults::setRuntime({{"r", "runtime"}});
  StandInDefaults::setStartup({{"s", "startup default"}});
  const auto absent = [](const fs::path& file) { fs::remove(file); };
  const auto unreadable = [](const fs::path& file) { fs::permissions(file, fs::perms(0)); };
  const auto text = [](const std::string& document) {
    return [document](const fs::path& file) { std::ofstream(file) << document; };
  };
  const std::string uri = "'http://zandor.com/schemas/vtconfig/1/'";
  constexpr auto fine = VRDCFGAPI_NoError;
  constexpr auto missing = VRDCFGAPI_StartupFileMissing;
  constexpr auto malformed = VRDCFGAPI_StartupFileParseFailed;
  constexpr auto badRoot = VRDCFGAPI_BadRootElement;
  struct Row {
    std::function<void(const fs::path&)> put;
    VRDCFGAPI_ErrorState read;   // what getConfigDoc gives
    VRDCFGAPI_ErrorState first;  // what the first init gives
    const char* s;               // what "s" is then
  };
  const Row rows[] = {
      {absent, missing, fine, "startup default"},
      {unreadable, missing, fine, "startup default"},
      {text(""), malformed, fine, "startup default"},
      {text("<vtn:parameters>"), malformed, fine, "startup default"},
      {text("<!DOCTYPE x>" + startupDocument("")), malformed, fine, "startup default"},
      {text("<vtn:parameters xmlns:vtn='urn:x'/>"), fine, badRoot, ""},
      {text("<vtn:parameters xmlns:vtn=" + uri + "/>"), fine, fine, ""},
      {text(startupDocument(parameter("s", "document"))), fine, fine, "document"},
  };
  for (std::size_t row = 0; row < std::size(rows); ++row) {
    SCOPED_TRACE(row);
    const CurrentInstallation installation;
    rows[row].put(installation.startupFile());
    startOver();
    VRDIDOM_Document document = newDocument();
    EXPECT_EQ(VRDConfiguration::getConfigDoc(document), rows[row].read);
    EXPECT_EQ(document.getDocumentElement().isNull(), rows[row].read != fine);
    {
      VRDConfiguration alone;
      EXPECT_EQ(alone.init(), rows[row].first);
      EXPECT_EQ(alone.init(), fine) << "told once";
    }
    startOver();
    EXPECT_EQ(textOf("r"), "runtime");
    EXPECT_EQ(textOf("s"), rows[row].s);
  }
  VRDIDOM_Document none;
  EXPECT_EQ(VRDConfiguration::getConfigDoc(none), VRDCFGAPI_NullDocument);
}

TEST(LoadTest, ASecondInitAndABadStreamChangeNothing) {
  const CurrentInstallation installation(parameter("n", "v"));
  const std::string before = textOf("");
  installation.setParameters(parameter("n", "changed"));
  EXPECT_EQ(store().init(), VRDCFGAPI_NoError);
  for (const char* text : {"", "<queryResult>", "<q/><q/>", "<!DOCTYPE q><q/>", "<q>\xC3</q>"}) {
    EXPECT_EQ(initWith(text), VRDCFGAPI_StreamParseFailed) << text;
  }
  EXPECT_EQ(initWith("<other/>"), VRDCFGAPI_NoError);
  EXPECT_EQ(textOf(""), before);
}

// As after a first load that found no memory.
TEST(LoadTest, ALaterLoadKeepsWhatWasSetUnlessTheDocumentHasIt) {
  const CurrentInstallation installation(parameter("d", "document"));
  for (const char* name : {"c", "d"}) store().setValue(name, "client");
  m_bStartupInitialized = 0;
  EXPECT_EQ(store().init(), VRDCFGAPI_NoError);
  EXPECT_EQ(textOf("c") + " " + textOf("d"), "client document");
  EXPECT_EQ(count(textOf(""), "name="), 1) << "what was set is in no tree";
  for (const char* name : {"c", "d"}) store().setValue(name, "again");
  EXPECT_EQ(textOf("c") + " " + textOf("d"), "again again");
}

TEST(LoadTest, TempIsHandedOnOnce) {
  // The parameter, and the temporary path after the first use, "before" being set before it.
  const std::pair<std::string, const char*> rows[] = {
      {parameter("temp", "/var/tmp"), "/var/tmp"},
      {"", ""},
      {parameter("temp", "c2VjcmV0", "", "encrypted='true'"), "before"},
  };
  for (const auto& [temp, expected] : rows) {
    const CurrentInstallation installation(temp);
    startOver();
    VRDFmDir::setTempPath("before");
    store();
    EXPECT_STREQ(VRDFmDir::getTempPath().c_str(), expected);
    VRDFmDir::setTempPath("since");
    store().init();
    store();
    EXPECT_STREQ(VRDFmDir::getTempPath().c_str(), "since");
  }
}

TEST(LoadTest, ASecondStoreDoesNotReadTheDocumentAgain) {
  StandInDefaults::setRuntime({{"r", "runtime"}});
  const CurrentInstallation installation(parameter("n", "document") + parameter("r", "document"));
  EXPECT_EQ(textOf("n") + textOf("r"), "documentdocument");
  delete VRDConfiguration::getInstance();
  EXPECT_EQ(VRDConfiguration::g_singletonVRDConfiguration, nullptr);
  EXPECT_EQ(textOf("n") + textOf("r"), "runtime");
  EXPECT_EQ(VRDConfiguration::getInstance(), VRDConfiguration::g_singletonVRDConfiguration);
}

}  // namespace
