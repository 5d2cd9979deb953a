#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <set>

#include "platform/core/I18NLocale.h"
#include "platform/core/I18NTimeZone.h"
#include "platform/core/VRDErrors.h"
#include "platform/idom/VRDIDOM_Helper.h"
#include "startup/VRDStartupConfiguration.h"
#include "tests/faults/FailingMemory.h"
#include "tests/provider/ReferenceProvider.h"
#include "tests/service/Service.h"
#include "tests/support/StandInDefaults.h"

namespace {

using Which = FailingMemory::Which;

const std::string noMemory = "no memory";
bool isNoMemory(const std::string& outcome) { return outcome.find(noMemory) != outcome.npos; }
constexpr int allPassed = 2;  // an exit status

/// A way through the library.
struct Road {
  const char* what;
  std::function<void()> prepare;      // with all memory there is
  std::function<std::string()> walk;  // gives what it came to
  /// What was prepared need not serve again after a failure, only do no harm.
  bool once = false;
  /// Whether a walk that met a failure may have come to this.
  std::function<bool(const std::string&)> mayComeTo = isNoMemory;
  long stride = 1;  // from one allocation that fails to the next
};

/// What came of it; `noMemory` where the library says so.
std::string outcomeOf(const std::function<std::string()>& walk) {
  try {
    return walk();
  } catch (const VRDConfigurationException& error) {
    return error.getCode() == VRDCFGAPI_InternalError ? noMemory
                                                      : "state " + std::to_string(error.getCode());
  } catch (const VRDOutOfMemoryError&) {
    return noMemory;
  } catch (const std::bad_alloc&) {
    return noMemory;
  }
}

/// On another thread, which a lock that is still held would keep for ever.
std::string outcomeElsewhere(const std::function<std::string()>& walk) {
  return std::async(std::launch::async, [&] { return outcomeOf(walk); }).get();
}

std::string stated(VRDCFGAPI_ErrorState state, const I18NString& text) {
  if (state == VRDCFGAPI_InternalError) return noMemory;
  return std::to_string(state) + ": " + text.c_str();
}

std::string joined(const std::map<I18NString, I18NString>& map) {
  std::string text;
  for (const auto& [key, value] : map) text += std::string(key.c_str()) + "=" + value.c_str() + ";";
  return text;
}

std::string wholeTree() {
  I18NString text;
  return stated(store().getValue("", 0, text), text);
}

void loadStore() {
  startOver();
  store();
}

/// Walks @p road with each of its allocations failing in turn, until it needs no more of them.
void expectNothingBreaks(const Road& road, Which which) {
  road.prepare();
  const std::string good = outcomeOf(road.walk);
  ASSERT_NE(good, noMemory) << road.what;
  bool failed = true;
  for (long number = 1; failed; number += road.stride) {
    road.prepare();
    std::string outcome;
    {
      const FailingMemory failing(number, which);
      outcome = outcomeOf(road.walk);
    }
    failed = FailingMemory::hasFailed();
    ASSERT_TRUE(outcome == good || (failed && road.mayComeTo(outcome)))
        << road.what << ", allocation " << number << ": " << outcome << "\nnot: " << good;
    if (road.once) {
      outcomeElsewhere(road.walk);
      road.prepare();
    }
    ASSERT_EQ(outcomeElsewhere(road.walk), good) << road.what << ", behind allocation " << number;
  }
}

class OutOfMemoryTest : public testing::TestWithParam<Which> {
 protected:
  OutOfMemoryTest() {
    startOver();
    StandInDefaults::setRuntime({{"default", "of the runtime, longer than a short text"}});
    StandInDefaults::setStartup({{"default", "shown only"}, {"one", "1"}, {"one", "2"}});
    installation.addKey();
    encrypted = ProviderSession().protect(clear);
    installation.setParameters(
        parameter("plain", "a value that is longer than a short text") +
        parameter("default", "of the document") +
        parameter("path", "../%HOME%/x", "", "xsi:type='cfg:filePath'") +
        parameter("tree", "<a>b<c d='e'/></a>", "opaque='true'") +
        parameter("secret", encrypted, "", "encrypted='true'") +
        parameter("secrets", "<a encrypted='true'>" + encrypted + "</a>", "opaque='true'") +
        parameter("empty", "", "", "encrypted='true'") + parameter("off", "x", "disabled='true'") +
        parameter("temp", "../temp"));
    installation.write(
        "configuration/zanlocale.xml",
        "<localeConfiguration>" + std::string(allSections) + "</localeConfiguration>");
    installation.write("cmplst.txt",
                       "COMPONENT_version=1.2.3, a version longer than a short text\n");
  }

  void expectNothingBreaksOn(const std::vector<Road>& roads) {
    for (const Road& road : roads) {
      SCOPED_TRACE(road.what);
      expectNothingBreaks(road, GetParam());
    }
  }

  const ProtectedInstallation installation;
  const std::string clear = "a secret that is longer than a short text";
  std::string encrypted;
};

TEST_P(OutOfMemoryTest, TheStoreStandsOrComesAgain) {
  const auto init = [] {
    const VRDCFGAPI_ErrorState state = store().init();
    return state == VRDCFGAPI_NoError ? wholeTree() : stated(state, "");
  };
  const auto readTextOf = [](const char* name) {
    return [=] {
      I18NString text;
      return stated(store().getValue(name, 0, text), text);
    };
  };
  const auto readNodeOf = [](const char* name) {
    return [=] {
      VRDIDOM_Node node;
      const VRDCFGAPI_ErrorState state = store().getValue(name, 0, node);
      return stated(state, node.isNull() ? "" : "a node");
    };
  };
  const auto set = [&](const char* name) {
    return [=] {
      const VRDCFGAPI_ErrorState state =
          store().setValue(name, "the value that is set, a long one");
      return state == VRDCFGAPI_NoError ? readTextOf(name)() : stated(state, "");
    };
  };
  const auto scan = [] {
    const VRDCFGAPI_ErrorState state = initWith(
        "<queryResult><group>" + queried("plain", "other") + queried("tree", "<a>other</a>") +
        queried("added", "<f/>") + "<bare><value>text</value></bare></group></queryResult>");
    return state == VRDCFGAPI_NoError ? wholeTree() : stated(state, "");
  };
  const auto settings = [&] {
    const VRDCFGAPI_ErrorState state = initWith(
        "<queryResult><group><advancedSettings><value>&lt;s&gt;&lt;x name='plain'&gt;a setting that"
        " is a long text&lt;/x&gt;&lt;x name='new'&gt;v&lt;/x&gt;&lt;/s&gt;</value>"
        "</advancedSettings></group></queryResult>");
    if (state != VRDCFGAPI_NoError) return stated(state, "");
    return readTextOf("plain")() + readTextOf("new")() + wholeTree();
  };
  expectNothingBreaksOn({{"load", startOver, init},
                         {"plain text", loadStore, readTextOf("plain")},
                         {"opaque text", loadStore, readTextOf("tree")},
                         {"whole tree", loadStore, readTextOf("")},
                         {"node", loadStore, readNodeOf("tree")},
                         {"whole tree's node", loadStore, readNodeOf("")},
                         {"new value", loadStore, set("new")},
                         {"replaced value", loadStore, set("tree")},
                         {"query results", loadStore, scan},
                         // A setting that finds no memory is passed over.
                         {"settings", loadStore, settings, true, [](auto&) { return true; }}});
  std::filesystem::remove(installation.startupFile());
  expectNothingBreaksOn({{"load of the startup defaults", startOver, init}});
}

// Without a session there is no clear text. Where decryption itself finds no memory it gives the
// stored text or, if the provider had to refuse, none.
TEST_P(OutOfMemoryTest, DecryptionGivesTheClearTextOrNone) {
  const auto readTextOf = [](const char* name) {
    return [=] {
      const TextRead read = readText(name, 1);
      return stated(read.state, read.text.c_str());
    };
  };
  const auto readNode = [] {
    VRDIDOM_Node node;
    const VRDCFGAPI_ErrorState state = store().getValue("secrets", 1, node);
    I18NString text;
    if (!node.isNull()) VRDIDOM_Helper::write(node, text);
    return stated(state, text);
  };
  const auto givesNone = [&](const std::string& outcome) {
    return isNoMemory(outcome) || outcome == "7: " || outcome == "8: " ||
           outcome.find(encrypted) != std::string::npos;
  };
  loadStore();
  ASSERT_EQ(readTextOf("secret")(), "0: " + clear);
  expectNothingBreaksOn(
      {{"binding", [] {},
        [] { return std::to_string(VRDCrypto("HLD_Crypto_Interface").isOpen()); }},
       {"text", loadStore, readTextOf("secret"), false, givesNone},
       {"opaque text", loadStore, readTextOf("secrets"), false, givesNone},
       {"whole tree", loadStore, readTextOf(""), false, givesNone},
       {"node", loadStore, readNode, false, givesNone}});
}

TEST_P(OutOfMemoryTest, TheStartupObjectReadsAgain) {
  std::optional<VRDStartupConfiguration> object;
  const auto names = [&] {
    std::list<I18NString> found;
    const VRDCFGAPI_ErrorState state = object->getParameterNames(found);
    std::string text;
    for (const I18NString& name : found) text += std::string(name.c_str()) + ";";
    return stated(state, text.c_str());
  };
  const auto value = [&] {
    I18NString text;
    return stated(object->getValue("tree", 0, text), text);
  };
  const auto document = [&] {
    I18NString text;
    return stated(object->getStartupConfigurationDocument(text), text);
  };
  const auto prepare = [&] { (startOver(), object.emplace()); };
  expectNothingBreaksOn({{"object", [] {}, [] { return (VRDStartupConfiguration(), "made"); }},
                         {"names", prepare, names},
                         {"value", prepare, value},
                         {"document", prepare, document}});
}

TEST_P(OutOfMemoryTest, AServiceObjectTellsItOnce) {
  std::optional<PrivateService> object;
  const auto prepare = [&] { object.emplace(); };
  const auto service = [&]() -> IVRDConfiguration& { return **object; };
  const auto mapping = [&](I18NString font) {
    return std::string(service().mapFont(font).c_str());
  };
  const auto mapped = [&](const char* locale) {
    return std::string(service().mapProductLocale(locale, 1).c_str());
  };
  const auto fonts = [&] { return std::to_string(service().getFonts("").size()); };
  expectNothingBreaksOn({
      {"object", [] {}, [] { return (PrivateService(), "made"); }},
      {"product locales", prepare, [&] { return joined(service().getProductLocaleList("de")); },
       true},
      {"content locales", prepare, [&] { return joined(service().getContentLocaleList("de")); },
       true},
      {"currencies", prepare, [&] { return joined(service().getCurrencies("de")); }, true},
      {"a mapped locale", prepare, [&] { return mapped("de_AT"); }, true},
      {"fonts", prepare, fonts, true},
      {"font", prepare, [&] { return mapping("Old"); }, true},
      {"time zones", prepare, [&] { return joined(service().getTimeZones("de")); }, true,
       isNoMemory, 101},
      {"tables from query results", [&] { (loadStore(), prepare()); },
       [&] {
         initWith(service(), queried("supportedFonts", items("one two")) +
                                 queried("supportedCurrencies", items("EUR")) +
                                 queried("productLocaleMap", pairs("en-*=en")));
         return joined(service().getCurrencies("de")) + mapped("en-us") + fonts();
       }},
      {"version", prepare,
       [&] { return std::string(service().getComponentVersion("COMPONENT").c_str()); }, true},
      {"names", prepare, [&] { return std::to_string(service().getParameterNames().size()); }},
      {"a refused value", prepare,
       [&] { return std::string(service().getValue("empty", 1).c_str()); }},
  });
}

/// Everything that is made at first use, in a process where nothing has been used yet. Ends that
/// process: with "done" if no allocation was left to fail.
[[noreturn]] void liveAndDie(long number, Which which) {
  const auto road = [] {
    const PrivateService service;
    const VRDCFGAPI_ErrorState state = store().init();
    const std::string tree = state == VRDCFGAPI_NoError ? wholeTree() : stated(state, "");
    if (tree == noMemory) return tree;
    int count = 0;
    I18NTimeZone::getAvailableTimeZones(count);
    I18NLocale unknown("no locale");
    I18NString name;
    I18NLocale("de").getDisplayName(name, unknown);
    return tree + name.c_str() + joined(service->getProductLocaleList("de")) +
           std::to_string(count > 600);
  };
  std::string first;
  {
    const FailingMemory failing(number, which);
    first = outcomeOf(road);
  }
  const bool failed = FailingMemory::hasFailed();
  const std::string second = outcomeElsewhere(road), third = outcomeElsewhere(road);
  // Where Xerces-C could not start, it is never touched again.
  const bool good = third == noMemory ? first == noMemory && second == noMemory
                                      : second == third && (first == third || first == noMemory);
  if (!good) std::cerr << number << ": " << first << "\nthen: " << second << "\nthen: " << third;
  ::_exit(!good ? 1 : failed ? 0 : allPassed);
}

TEST_P(OutOfMemoryTest, ANewProcessLives) {
  const auto ends = [](int status) { return WIFEXITED(status) && WEXITSTATUS(status) != 1; };
  // A process for each of the thousands, most of them inside the start of Xerces-C, would take
  // minutes; a prime meets every part of the road.
  constexpr long stride = 23;
  int status = 0;
  for (long number = 1; status != W_EXITCODE(allPassed, 0); number += stride) {
    const pid_t child = ::fork();
    if (child == 0) liveAndDie(number, GetParam());
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(ends(status)) << "allocation " << number << ": " << status;
  }
}

INSTANTIATE_TEST_SUITE_P(, OutOfMemoryTest, testing::Values(Which::One, Which::AllFrom));

}  // namespace
