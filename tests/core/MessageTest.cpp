#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>

#include "platform/core/MessageCatalogues.h"
#include "platform/core/VRDMessage.h"
#include "tests/support/EnvironmentGuard.h"
#include "tests/support/TemporaryFolder.h"

namespace {

TEST(Message, ShowsItsNumberWithoutACatalogueAndItsTextWithOne) {
  VRDMessage message("../caf\xC3\xA9", 0x123456789A);
  EXPECT_EQ(message.getText(), "../caf\xC3\xA9 0x123456789A");
  message << VRDMessageParm("1") << VRDMessageParm("") << VRDMessageParm("x \xFF");
  EXPECT_EQ(message.getText(), "../caf\xC3\xA9 0x123456789A (1, , x \xFF)");

  const EnvironmentGuard french("LC_ALL", "fr_FR.UTF-8");
  VRDMessage translated("vrdcfgapimsgs", 0x610B54C9);
  const std::string before =
      "Il n’existe aucune correspondance pour les paramètres régionaux «\u00A0";
  EXPECT_EQ(translated.getText().utf8(), before + "{0}\u00A0».");
  translated << VRDMessageParm("{0}\xFF");
  EXPECT_EQ(translated.getText().utf8(), before + "{0}\xFF\u00A0».");
}

TEST(MessageCatalogues, SpeakTheMessageLanguageOfTheProcess) {
  const TemporaryFolder folder;
  for (const std::string language : {"en", "de", "de_AT", "C"}) {
    folder.write("m_" + language + ".txt", "0x1 = " + language);
  }
  folder.write("m_en.txt", "0x1 = en\n0x2 = only en");
  MessageCatalogues catalogues(folder.path().native());
  const struct {
    const char *all, *messages, *lang;
    const char* language;
  } rows[] = {{nullptr, nullptr, nullptr, "en"},
              {nullptr, nullptr, "de_DE.UTF-8", "de"},
              {"", "de_AT@euro", "xx", "de_AT"},
              {"de", "xx", "xx", "de"},
              {"C", "de", "de", "en"},
              {"tr_TR", nullptr, "de", "en"},
              {"de_../m_de", nullptr, nullptr, "de"},
              {"../m_de", nullptr, nullptr, "en"}};
  for (const auto& row : rows) {
    const EnvironmentGuard all("LC_ALL", row.all);
    const EnvironmentGuard messages("LC_MESSAGES", row.messages);
    const EnvironmentGuard lang("LANG", row.lang);
    EXPECT_EQ(*catalogues.find("m", 1), row.language);
    EXPECT_EQ(*catalogues.find("m", 2), "only en");
    EXPECT_EQ(catalogues.find("m", 3), nullptr);
  }
}

TEST(MessageCatalogue, PassesOverWhatIsNoEntry) {
  const TemporaryFolder folder;
  const auto file = folder.write("m",
                                 "\xEF\xBB\xBF# 0x1 = comment\n0x2 = two = 2 \r\n0x2 = again\n"
                                 "3 = no hex\n0x4z = no number\n0x5 =\n0x6\n0x7 = \xFF\n"
                                 "0x11112222333344445 = too large\n0x = none\n\n 0x8=eight");
  const std::map<unsigned long, std::string> entries = {{2, "two = 2"}, {8, "eight"}};
  EXPECT_EQ(MessageCatalogue::read(file)->texts(), entries);
  EXPECT_FALSE(MessageCatalogue::read(folder.path()));
  std::filesystem::resize_file(file, 1024 * 1024 + 1);
  EXPECT_FALSE(MessageCatalogue::read(file));
}

TEST(MessageCatalogue, HasTheSameMessagesInEveryLanguage) {
  // The number of places for parameters of each message.
  const auto contents = [](const std::string& file) {
    std::map<unsigned long, std::ptrdiff_t> places;
    const auto texts = MessageCatalogue::read(file)->texts();
    for (const auto& [number, text] : texts) {
      places[number] = std::count(text.begin(), text.end(), '{');
    }
    return places;
  };
  const std::string base = MessageCatalogues::installed().folder() + "/vrdcfgapimsgs_";
  for (const char* language : {"de", "fr", "es", "ja"}) {
    EXPECT_EQ(contents(base + language + ".txt"), contents(base + "en.txt")) << language;
  }
}

}  // namespace
