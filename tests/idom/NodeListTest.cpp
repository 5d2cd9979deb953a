#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "tests/support/DomTesting.h"

namespace {

TEST(LiveList, TheListsOfAnAttributeAndOfDescendantsAreWhatTheyAre) {
  VRDIDOM_Element root = parsedRoot("<r v=''><a/><b><a/></b></r>");
  VRDIDOM_Attr attribute = root.getAttributeNode("v");
  VRDIDOM_NodeList ofAttribute = attribute.getChildNodes();
  ofAttribute.getLength();
  attribute.setNodeValue("x");
  EXPECT_EQ(ofAttribute.getLength(), 1U);

  VRDIDOM_NodeList snapshot = root.getElementsByTagName("a");
  root.removeChild(root.getFirstChild());
  EXPECT_EQ(snapshot.getLength(), 2U);
  EXPECT_TRUE(snapshot.item(2).isNull());
  EXPECT_EQ(root.getElementsByTagNameNS("", "a").getLength(), 1U);
  EXPECT_EQ(root.getElementsByTagName("r").getLength(), 0U);
}

/// One random change of @p parent and of the vector that its list must equal.
void changeBoth(VRDIDOM_Node& parent, std::vector<VRDIDOM_Node>& model, std::mt19937& random) {
  const std::size_t at = random() % (model.size() + 1);
  const auto place = model.begin() + static_cast<std::ptrdiff_t>(at);
  VRDIDOM_Node child = parent.getOwnerDocument().createElementNS("", "c");
  if (at == model.size()) {
    parent.appendChild(child);
    model.push_back(child);
  } else if (random() % 3 == 0) {
    ASSERT_TRUE(parent.replaceChild(child, *place) == &*place);
    *place = child;
  } else if (random() % 2 == 0 && model.size() < 20) {
    parent.insertBefore(child, *place);
    model.insert(place, child);
  } else if (random() % 3 == 0) {
    parent.appendChild(*place);  // moves it
    std::rotate(place, place + 1, model.end());
  } else {
    parent.removeChild(*place);
    model.erase(place);
  }
}

TEST(LiveList, AgreesWithAPlainVectorUnderRandomChanges) {
  std::mt19937 random(1);
  VRDIDOM_Node parents[] = {parsedRoot("<a/>"), parsedRoot("<b/>")};
  VRDIDOM_NodeList lists[] = {parents[0].getChildNodes(), parents[1].getChildNodes()};
  std::vector<VRDIDOM_Node> models[2];
  VRDIDOM_Node none;
  for (int step = 0; step < 40000; ++step) {
    const std::size_t which = random() % 2;
    const std::vector<VRDIDOM_Node>& model = models[which];
    // Now and then more than any journal of reasonable size remembers.
    for (int i = random() % 100 == 0 ? 100 : 1; i > 0; --i) {
      ASSERT_NO_FATAL_FAILURE(changeBoth(parents[which], models[which], random)) << step;
    }
    for (std::size_t i = random() % (model.size() + 2), last = i + random() % 4; i < last; ++i) {
      ASSERT_TRUE(lists[which].item(i) == (i < model.size() ? &model[i] : &none)) << step;
    }
    if (random() % 3 == 0) {
      ASSERT_EQ(lists[which].getLength(), model.size()) << step;
    }
  }
}

}  // namespace
