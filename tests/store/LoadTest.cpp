#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <functional>
#include <sstream>
#include <string>

#include "platform/idom/VRDIDOM_DOMImplementation.h"
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

VRDCFGAPI_ErrorState initWith(const std::string& text) {
  std::istringstream source(text);
  IBJBufferedInputStream stream(source);
  return store().init(stream);
}

// Each source sets every name that it may win, and the value is the source's own name.
TEST(LoadTest, TheOrderOfSources) {
  StandInDefaults::setRuntime({{"0", "runtime"},
                               {"01", "runtime"},
                               {"02", "runtime"},
                               {"03", "runtime"},
                               {"012", "runtime"},
                               {"0123", "runtime"}});
  StandInDefaults::setStartup({{"1", "startup default"},
                               {"01", "startup default"},
                               {"012", "startup default"},
                               {"0123", "startup default"},
                               {"13", "startup default"}});
  const std::string document = parameter("2", "document") + parameter("02", "document") +
                               parameter("012", "document") + parameter("0123", "document");
  struct Row {
    const char* name;
    const char* withDocument;
    const char* withoutDocument;
  };
  const Row rows[] = {
      {"0", "runtime", "runtime"}, {"1", "", "startup default"}, {"2", "document", ""},
      {"3", "set", "set"},         {"01", "runtime", "runtime"}, {"02", "document", "runtime"},
      {"03", "set", "set"},        {"13", "set", "set"},         {"012", "document", "runtime"},
      {"0123", "set", "set"},
  };
  for (const bool withDocument : {true, false}) {
    SCOPED_TRACE(withDocument);
    const CurrentInstallation installation(document);
    if (!withDocument) fs::remove(installation.startupFile());
    startOver();
    for (const char* name : {"3", "03", "13", "0123"}) {
      EXPECT_EQ(store().setValue(name, "set"), VRDCFGAPI_NoError);
    }
    for (const Row& row : rows) {
      EXPECT_EQ(textOf(row.name), withDocument ? row.withDocument : row.withoutDocument)
          << row.name;
    }
  }
}

TEST(LoadTest, AStartupDefaultDoesNotDisplaceARuntimeDefaultButIsSeen) {
  StandInDefaults::setRuntime({{"both", "runtime"}});
  StandInDefaults::setStartup({{"both", "startup"}, {"both", "again"}});
  const Installation nowhere;
  const EnvironmentGuard execPath("ZAN_EXEC_PATH", nowhere.bin().c_str());
  EXPECT_EQ(textOf("both"), "runtime");
  EXPECT_EQ(count(textOf(""), "name=\"both\""), 3);
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
      "<vtn:parameter name='disabled value'><vtn:value disabled='TRUE'>v</vtn:value>"
      "</vtn:parameter>"
      "<vtn:parameter name='two values'><vtn:value>1</vtn:value><vtn:value>2</vtn:value>"
      "</vtn:parameter>"
      "<parameter name='no namespace'><value>v</value></parameter>" +
      parameter("off", "v", "disabled='True'") + parameter("off too", "v", "disabled='true'") +
      parameter("not off", "v", "disabled='no'") +
      parameter("opaque", "<x>1</x>", "opaque='TRUE'") +
      parameter("half opaque", "<x>1</x>t", "opaque='yes'") +
      parameter("outer",
                "<vtn:instances><vtn:instance>" + parameter("inner", "v") +
                    parameter("inner off", "v", "disabled='true'") +
                    "</vtn:instance><vtn:instance disabled='true'>gone</vtn:instance>"
                    "<value xmlns='urn:x' disabled='true'>kept</value></vtn:instances>",
                "opaque='true'"));
  struct Row {
    const char* name;
    const char* value;
  };
  const Row rows[] = {
      {"plain", "a & b"},   {"no value", ""}, {"disabled value", ""}, {"two values", "1"},
      {"no namespace", ""}, {"off", ""},      {"off too", ""},        {"not off", "v"},
      {"half opaque", "t"}, {"inner", ""},
  };
  for (const Row& row : rows) EXPECT_EQ(textOf(row.name), row.value) << row.name;

  const std::string opaque = textOf("opaque");
  EXPECT_EQ(opaque.rfind("<vtn:value ", 0), 0U) << opaque;
  EXPECT_EQ(count(opaque, "xmlns:"), 4) << opaque;
  EXPECT_EQ(count(opaque, "<x>1</x></vtn:value>"), 1) << opaque;

  const std::string outer = textOf("outer");
  EXPECT_EQ(count(outer, "name=\"inner\""), 1) << outer;
  EXPECT_EQ(count(outer, "inner off") + count(outer, "gone"), 0) << outer;
  EXPECT_EQ(count(outer, "kept"), 1) << outer;
}

void putSocket(const fs::path& file) {
  const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  // A relative name: the room for it is small.
  const CurrentDirectoryGuard there(file.parent_path());
  file.filename().string().copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ::close(socket);
}

TEST(LoadTest, EveryStateOfTheDocument) {
  StandInDefaults::setRuntime({{"r", "runtime"}});
  StandInDefaults::setStartup({{"s", "startup default"}});
  struct Row {
    const char* state;
    std::function<void(const Installation&)> put;
    VRDCFGAPI_ErrorState read;   // what getConfigDoc gives
    VRDCFGAPI_ErrorState first;  // what the first init gives
    const char* s;               // what "s" is then
  };
  const auto text = [](const std::string& document) {
    return [document](const Installation& installation) { installation.setDocument(document); };
  };
  const Row rows[] = {
      {"absent", [](const Installation& i) { fs::remove(i.startupFile()); },
       VRDCFGAPI_StartupFileMissing, VRDCFGAPI_NoError, "startup default"},
      {"unreadable", [](const Installation& i) { fs::permissions(i.startupFile(), fs::perms(0)); },
       VRDCFGAPI_StartupFileMissing, VRDCFGAPI_NoError, "startup default"},
      {"directory",
       [](const Installation& i) {
         fs::remove(i.startupFile());
         fs::create_directory(i.startupFile());
       },
       VRDCFGAPI_StartupFileMissing, VRDCFGAPI_NoError, "startup default"},
      {"socket",
       [](const Installation& i) {
         fs::remove(i.startupFile());
         putSocket(i.startupFile());
       },
       VRDCFGAPI_StartupFileMissing, VRDCFGAPI_NoError, "startup default"},
      {"empty", text(""), VRDCFGAPI_StartupFileParseFailed, VRDCFGAPI_NoError, "startup default"},
      {"malformed", text("<vtn:parameters>"), VRDCFGAPI_StartupFileParseFailed, VRDCFGAPI_NoError,
       "startup default"},
      {"wrong namespace", text("<vtn:parameters xmlns:vtn='urn:x'/>"), VRDCFGAPI_NoError,
       VRDCFGAPI_BadRootElement, ""},
      {"wrong root", text("<vtn:value xmlns:vtn='http://zandor.com/schemas/vtconfig/1/'/>"),
       VRDCFGAPI_NoError, VRDCFGAPI_BadRootElement, ""},
      {"empty root", text(startupDocument("")), VRDCFGAPI_NoError, VRDCFGAPI_NoError, ""},
      {"fine", [](const Installation& i) { i.setParameters(parameter("s", "document")); },
       VRDCFGAPI_NoError, VRDCFGAPI_NoError, "document"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.state);
    const CurrentInstallation installation;
    row.put(installation);
    startOver();
    VRDIDOM_Document document = VRDIDOM_DOMImplementation::getInstance().createDocument();
    EXPECT_EQ(VRDConfiguration::getConfigDoc(document), row.read);
    EXPECT_EQ(document.getDocumentElement().isNull(), row.read != VRDCFGAPI_NoError);

    {
      VRDConfiguration alone;
      EXPECT_EQ(alone.init(), row.first);
      EXPECT_EQ(alone.init(), VRDCFGAPI_NoError) << "told once";
    }
    startOver();
    EXPECT_EQ(textOf("r"), "runtime");
    EXPECT_EQ(textOf("s"), row.s);
  }
  VRDIDOM_Document none;
  EXPECT_EQ(VRDConfiguration::getConfigDoc(none), VRDCFGAPI_NullDocument);
}

TEST(LoadTest, ASecondInitChangesNothing) {
  const CurrentInstallation installation(parameter("n", "v"));
  const std::string before = textOf("");
  installation.setParameters(parameter("n", "changed"));
  EXPECT_EQ(store().init(), VRDCFGAPI_NoError);
  EXPECT_EQ(textOf(""), before);
}

TEST(LoadTest, ABadStreamChangesNothing) {
  const CurrentInstallation installation(parameter("n", "v"));
  const std::string before = textOf("");
  std::string deep;
  for (int level = 0; level < 300; ++level) deep += "<q>";
  const std::string streams[] = {"",          " ",  "<queryResult>",    "<q/><q/>",
                                 "\xFF\xFE<", deep, "<!DOCTYPE q><q/>", "<q>\xC3</q>"};
  for (const std::string& text : streams) {
    SCOPED_TRACE(text);
    EXPECT_EQ(initWith(text), VRDCFGAPI_StreamParseFailed);
    EXPECT_EQ(textOf(""), before);
  }
  EXPECT_EQ(initWith("<other/>"), VRDCFGAPI_NoError);
  EXPECT_EQ(textOf(""), before);
}

// A store that could not load at first merges the document on top of what stands by then.
TEST(LoadTest, WhatStoodBeforeALateDocumentIsKept) {
  StandInDefaults::setRuntime({{"r", "runtime"}, {"d", "runtime"}});
  const CurrentInstallation installation(parameter("d", "document") + parameter("e", "document") +
                                         parameter("f", "document"));
  m_bStartupInitialized = 1;
  store().setValue("r", "set");
  store().setValue("e", "set");
  store().setValue("g", "set");
  m_bStartupInitialized = 0;
  EXPECT_EQ(store().init(), VRDCFGAPI_NoError);
  struct Row {
    const char* name;
    const char* value;
  };
  for (const Row& row : {Row{"r", "set"}, Row{"d", "document"}, Row{"e", "document"},
                         Row{"f", "document"}, Row{"g", "set"}}) {
    EXPECT_EQ(textOf(row.name), row.value) << row.name;
  }
  EXPECT_EQ(count(textOf(""), "<vtn:parameter "), 3);
}

}  // namespace
