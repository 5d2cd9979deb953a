#include <gtest/gtest.h>

#include <string>

#include "foundation/VRDIDOMUtils.h"
#include "tests/support/DomTesting.h"
#include "tests/support/Installation.h"
#include "tests/support/Store.h"

namespace {

struct NodeRead {
  VRDCFGAPI_ErrorState state;
  std::string xml;  // "untouched" where the result was left alone
};

NodeRead readNode(const char* name, int decrypt = 0) {
  VRDIDOM_Node node;
  const VRDCFGAPI_ErrorState state = store().getValue(name, decrypt, node);
  return {state, node.isNull() ? "untouched" : written(node)};
}

const std::string parameters = parameter("plain", "v") + parameter("empty", "") +
                               parameter("spaced", " a\n b ") +
                               parameter("secret", "c2VjcmV0", "", "encrypted='TRUE'") +
                               parameter("not secret", "x", "", "encrypted='no'") +
                               parameter("empty secret", "", "", "encrypted='true'") +
                               parameter("opaque", "<x>1</x>", "opaque='true'") +
                               parameter("\xCE\xB1\xCE\xB2 \xF0\x9F\x98\x80", "\xE4\xB8\xAD");

// There is no provider here: what must decrypt says so, and all else is answered.
TEST(ValuesTest, WithoutACryptoProvider) {
  const CurrentInstallation installation(parameters);
  constexpr auto ok = VRDCFGAPI_NoError;
  constexpr auto noCrypto = VRDCFGAPI_CryptoUnavailable;
  struct Row {
    const char *name, *text;
    VRDCFGAPI_ErrorState decrypted, decryptedNode;  // states with the decrypt flag
  };
  const Row rows[] = {
      {"unknown", "", ok, ok},
      {"plain", "v", ok, noCrypto},
      {"spaced", " a\n b ", ok, noCrypto},
      {"secret", "c2VjcmV0", noCrypto, noCrypto},
      {"not secret", "x", ok, noCrypto},
      {"empty secret", "", noCrypto, noCrypto},
      {"\xCE\xB1\xCE\xB2 \xF0\x9F\x98\x80", "\xE4\xB8\xAD", ok, noCrypto},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(textOf(row.name), row.text);
    EXPECT_EQ(readText(row.name, -1).state, row.decrypted);
    EXPECT_EQ(readText(row.name, -1).text, row.decrypted == ok ? row.text : "");
    EXPECT_EQ(readNode(row.name, 1).state, row.decryptedNode);
    EXPECT_EQ(readNode(row.name, 1).xml, "untouched");
  }
  for (const char* name : {"", "opaque"}) {
    EXPECT_EQ(readText(name, 1).state, noCrypto);
    EXPECT_EQ(readText(name, 1).text, "");
    EXPECT_EQ(readNode(name, 1).state, noCrypto);
  }
}

TEST(ValuesTest, NodesAreCopies) {
  const CurrentInstallation installation(parameters);
  EXPECT_EQ(readNode("unknown").xml, "untouched");
  const std::string tree = textOf("");
  VRDIDOM_Node node;
  const int stored = 0;
  for (const char* name : {"plain", "empty", "opaque", ""}) {
    SCOPED_TRACE(name);
    ASSERT_EQ(store().getValue(name, stored, node), VRDCFGAPI_NoError);
    VRDIDOM_Element element = node;
    element.setAttribute("changed", "yes");
    VRDIDOMUtils::setText(element, "changed");
    EXPECT_EQ(textOf(""), tree);
  }
  // The document of a copy has no other handle, and the store may be gone.
  ASSERT_EQ(store().getValue("opaque", stored, node), VRDCFGAPI_NoError);
  startOver();
  EXPECT_STREQ(node.getFirstChild().getFirstChild().getNodeValue().c_str(), "1");
}

TEST(ValuesTest, ASetValueIsFoundByNameAlone) {
  const CurrentInstallation installation(parameters);
  const std::string untouched = textOf("");
  EXPECT_EQ(store().setValue("", "v"), VRDCFGAPI_NoError);
  EXPECT_EQ(store().setValue("plain", ""), VRDCFGAPI_NoError);
  EXPECT_EQ(store().setValue("unknown", ""), VRDCFGAPI_NoError);
  EXPECT_EQ(textOf(""), untouched);
  EXPECT_EQ(textOf("plain"), "v");

  for (const char* name : {"plain", "opaque", "secret", "new"}) {
    for (const char* value : {"first", "second <&>", "\xC3\xA9"}) {
      SCOPED_TRACE(std::string(name) + " = " + value);
      EXPECT_EQ(store().setValue(name, value), VRDCFGAPI_NoError);
      EXPECT_EQ(textOf(name), value);
      EXPECT_EQ(readText(name, 1).text, value) << "plain, whatever it was before";
      EXPECT_EQ(textOf("").find(value), std::string::npos);
      EXPECT_EQ(textOf("").find("name=\"" + std::string(name) + "\""), std::string::npos);
    }
  }
}

}  // namespace
