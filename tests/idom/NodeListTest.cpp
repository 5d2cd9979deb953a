#include <gtest/gtest.h>
#include <time.h>

#include <algorithm>
#include <random>
#include <vector>

#include "tests/idom/DomTesting.h"

namespace {

VRDIDOM_Element wideElement(VRDIDOM_Document& document, int children) {
  VRDIDOM_Element root = document.createElementNS("", "r");
  for (int i = 0; i < children; ++i) root.appendChild(document.createElementNS("", "c"));
  return root;
}

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
  EXPECT_EQ(root.getElementsByTagNameNS("", "a").getLength(), 1U);
  EXPECT_EQ(root.getElementsByTagName("r").getLength(), 0U);
  EXPECT_TRUE(snapshot.item(2).isNull());
}

/// Two parents whose children are added, moved, removed and replaced at random, each beside the
/// vector that its list must equal.
class ListModel {
 public:
  explicit ListModel(unsigned seed) : m_random(seed), m_document(newDocument()) {
    VRDIDOM_Element top = m_document.createElementNS("", "top");
    for (Family& family : m_families) {
      family.parent = top.appendChild(m_document.createElementNS("", "parent"));
      family.list = family.parent.getChildNodes();
    }
  }

  void step() {
    Family& family = any();
    switch (below(10)) {
      case 0:
      case 1:
        return append(family, m_document.createElementNS("", "c"));
      case 2:
        return move(any(), family);
      case 3:
        return remove(family);
      case 4:
        return replace(family);
      case 5:
        return burst(family);
      case 6:
        return insert(family);
      default:
        return look(family);
    }
  }

 private:
  struct Family {
    VRDIDOM_Node parent;
    VRDIDOM_NodeList list;
    std::vector<VRDIDOM_Node> model;
  };

  std::size_t below(std::size_t limit) { return m_random() % limit; }
  Family& any() { return m_families[below(2)]; }

  void append(Family& family, const VRDIDOM_Node& child) {
    family.parent.appendChild(child);
    family.model.push_back(child);
  }
  VRDIDOM_Node takeOut(Family& family) {
    const auto at = family.model.begin() + static_cast<std::ptrdiff_t>(below(family.model.size()));
    VRDIDOM_Node child = *at;
    family.model.erase(at);
    return child;
  }
  void move(Family& from, Family& to) {
    if (!from.model.empty()) append(to, takeOut(from));
  }
  void remove(Family& family) {
    if (!family.model.empty()) family.parent.removeChild(takeOut(family));
  }
  void insert(Family& family) {
    if (family.model.empty()) return append(family, m_document.createElementNS("", "c"));
    const std::size_t at = below(family.model.size());
    VRDIDOM_Node child = m_document.createElementNS("", "c");
    family.parent.insertBefore(child, family.model[at]);
    family.model.insert(family.model.begin() + static_cast<std::ptrdiff_t>(at), child);
  }
  void replace(Family& family) {
    Family& source = any();
    if (family.model.size() < 2 || source.model.size() < 2) return;
    VRDIDOM_Node fresh = takeOut(source);
    VRDIDOM_Node& place = family.model[below(family.model.size())];
    family.parent.replaceChild(fresh, place);
    place = fresh;
  }
  // More than any journal of reasonable size remembers.
  void burst(Family& family) {
    if (below(20) != 0) return;
    for (int i = 0; i < 100; ++i) append(any(), m_document.createElementNS("", "c"));
    while (family.model.size() > 5) remove(family);
  }
  void look(Family& family) {
    if (below(2) == 0) {
      ASSERT_EQ(family.list.getLength(), family.model.size());
    }
    const std::size_t start = below(family.model.size() + 2);
    for (std::size_t i = start; i < std::min(start + 3, family.model.size() + 2); ++i) {
      VRDIDOM_Node item = family.list.item(i);
      if (i < family.model.size()) {
        ASSERT_TRUE(item == &family.model[i]) << "at " << i;
      } else {
        ASSERT_TRUE(item.isNull()) << "at " << i;
      }
    }
  }

  std::mt19937 m_random;
  VRDIDOM_Document m_document;
  Family m_families[2];
};

TEST(LiveList, AgreesWithAPlainModelUnderRandomChanges) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    ListModel model(seed);
    for (int step = 0; step < 1500 && !testing::Test::HasFatalFailure(); ++step) model.step();
  }
}

/// Walks, changes, empties and fills lists of that many children.
void loopOver(int children) {
  VRDIDOM_Document document = newDocument();
  VRDIDOM_Element root = wideElement(document, children);
  VRDIDOM_NodeList list = root.getChildNodes();
  unsigned long seen = 0;
  for (unsigned long i = 0; i < list.getLength(); ++i, ++seen) {
    VRDIDOM_Node child = list.item(i);
    const int grandchildren = seen % 10 == 0 ? 20 : 1;
    for (int n = 0; n < grandchildren; ++n)
      child.appendChild(document.createTextNode("grandchild"));
    while (!child.getFirstChild().isNull()) child.removeChild(child.getFirstChild());
    if (seen % 3 != 0) {
      root.removeChild(child);
      --i;
    }
  }
  EXPECT_EQ(seen, static_cast<unsigned long>(children));
  EXPECT_EQ(list.getLength(), (static_cast<unsigned long>(children) + 2) / 3U);

  while (list.getLength() != 0) root.removeChild(list.item(list.getLength() - 1));
  VRDIDOM_Element other = wideElement(document, children);
  VRDIDOM_NodeList others = other.getChildNodes();
  while (others.getLength() != 0) root.appendChild(others.item(0));
  for (unsigned long i = list.getLength(); i > 0; --i) ASSERT_FALSE(list.item(i - 1).isNull());
  for (unsigned long i = 0; !list.item(i).isNull(); ++i) {
    root.replaceChild(document.createTextNode("x"), list.item(i));
  }
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
