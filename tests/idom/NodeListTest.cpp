#include <gtest/gtest.h>
#include <time.h>

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

/// Walks, changes, empties and fills lists of that many children.
void loopOver(int children) {
  VRDIDOM_Document document = newDocument();
  VRDIDOM_Element root = document.createElementNS("", "r");
  VRDIDOM_NodeList list = root.getChildNodes();
  for (int i = 0; i < children; ++i) root.appendChild(document.createElementNS("", "c"));
  unsigned long seen = 0;
  for (unsigned long i = 0; i < list.getLength(); ++seen) {
    VRDIDOM_Node child = list.item(i);
    for (int n = seen % 10 == 0 ? 20 : 1; n > 0; --n)
      child.appendChild(document.createTextNode("x"));
    while (!child.getFirstChild().isNull()) child.removeChild(child.getFirstChild());
    if (seen % 3 == 0) {
      ++i;
    } else {
      root.removeChild(child);
    }
  }
  EXPECT_EQ(seen, static_cast<unsigned long>(children));

  VRDIDOM_Element other = document.createElementNS("", "other");
  while (list.getLength() != 0) other.appendChild(list.item(0));
  VRDIDOM_NodeList others = other.getChildNodes();
  for (unsigned long i = others.getLength(); i > 0; --i) ASSERT_FALSE(others.item(i - 1).isNull());
  for (unsigned long i = 0; !others.item(i).isNull(); ++i) {
    other.replaceChild(document.createTextNode("x"), others.item(i));
  }
  while (others.getLength() != 0) other.removeChild(others.item(others.getLength() - 1));
}

/// Processor time of this thread, which no neighbour on the machine adds to.
double processorSeconds() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// Eight times the children cost eight times as much; some forty times, if a single one of the loops
// walked from the front at each step.
TEST(LiveList, LoopsCostTimeInProportionToTheLength) {
  const double start = processorSeconds();
  loopOver(10000);
  const double small = processorSeconds() - start;
  loopOver(80000);
  EXPECT_LT(processorSeconds() - start - small, 20 * small);
}

}  // namespace
