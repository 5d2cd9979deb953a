#include <gtest/gtest.h>

#include <algorithm>

#include "crypto/CryptoSession.h"
#include "crypto/ValueDecryption.h"
#include "tests/crypto/StandInLibraries.h"
#include "tests/support/DomTesting.h"

namespace {

/// An open session with the stand-in. Each test is a process of its own.
struct DecryptionTest : testing::Test {
  DecryptionTest() { openCryptoSession(handle); }

  StandInInstallation standIn;
  void* handle = nullptr;
};

TEST_F(DecryptionTest, EachTextByWhatTheProviderMakesOfIt) {
  const std::string refused = "refused";
  struct Row {
    const char* stored;
    std::string clearText;
    const char* text;
    bool asksProvider = true;
  };
  const Row rows[] = {
      // Refused, it is read as it was encoded.
      {"c2Vj\ncmV0\r\n", refused, "secret"},
      {"Z/xu", refused, "g\xFCn"},  // not UTF-8: the bytes are kept
      {"YQBi", refused, "a"},       // "a", NUL, "b"
      {"AGFi", refused, ""},        // starts with NUL
      // Not base64: nobody is asked.
      {"", "clear", "", false},
      {"c2VjcmV0!", "clear", "", false},  // outside the alphabet
      // Clear, it ends at its first NUL.
      {"QQ==", "", ""},
      {"QQ==", std::string("clear\0x", 7), "clear"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.stored) + " as " + row.clearText);
    *standIn = StandIn();
    standIn->clearText = row.clearText;
    if (row.clearText == refused) standIn->faults = {{StandIn::unprotect, StandIn::fails}};
    EXPECT_EQ(decryptString(row.stored, handle), row.text);
    EXPECT_EQ(!standIn->calls.empty(), row.asksProvider);
  }
}

/// The root declares the prefix "xsi". Its own mark is not looked at, or nothing would change.
std::string below(std::string elements) {
  std::replace(elements.begin(), elements.end(), '\'', '"');
  return "<r encrypted=\"no\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">" + elements +
         "</r>";
}

TEST_F(DecryptionTest, EachElementByItsMarks) {
  constexpr const char* unchanged = nullptr;
  struct Row {
    const char* element;
    const char* clearText;
    const char* result;
  };
  const Row rows[] = {
      // No mark: the walk goes on below. Another word: it stops there.
      {"<a><b><c encrypted='true'>QQ==</c>x</b></a>", "clear", "<a><b><c>clear</c>x</b></a>"},
      {"<a encrypted='false'><b encrypted='true'>QQ==</b></a>", "clear", unchanged},
      // System passwords, recognised by the text of the type alone.
      {"<a encrypted='true' xsi:type='cfg:systemPassword'>QQ==</a>", "clear", unchanged},
      {"<a encrypted='true' xsi:type='c:systemPassword'>QQ==</a>", "x",
       "<a xsi:type='c:systemPassword'>x</a>"},
      // Not only text, or nothing comes out.
      {"<a encrypted='true'>QQ==<b encrypted='true'>QQ==</b></a>", "clear", unchanged},
      {"<a encrypted='true'>QQ==</a>", "", unchanged},
      // A document.
      {"<a encrypted='true'>QQ==</a>", "<?xml version=\"1.0\"?>\n<b>\xC3\xA4</b>\n",
       "<a><b>\xC3\xA4</b></a>"},
      {"<a encrypted='true'>QQ==</a>", "<b encrypted='true'>QQ==</b>",
       "<a><b encrypted='true'>QQ==</b></a>"},
      // Anything else.
      {"<a encrypted='TrUe' k='v'>QQ==</a>", "1 < 2", "<a k='v'>1 &lt; 2</a>"},
      {"<a encrypted='true'>QQ==</a>", "<b/>x", "<a>&lt;b/&gt;x</a>"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.element) + " with " + row.clearText);
    standIn->clearText = row.clearText;
    const std::string xml = below(row.element);
    EXPECT_EQ(written(decryptXML(parsedRoot(xml), handle)),
              row.result != unchanged ? below(row.result) : xml);
  }
}

}  // namespace
