#include <gtest/gtest.h>
#include <time.h>

#include <random>
#include <vector>

#include "tests/idom/DomTesting.h"

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

/// Two parents whose children are added, moved, removed and replaced at random, each beside the
/// vector that its list must equal.
class ListModel {
 public:
  explicit ListModel(unsigned seed) : m_random(seed), m_document(newDocument()) {
    VRDIDOM_Element top = m_document.createElementNS("", "top");
    for (Family& family : m_families) {
      family.parent = top.appendChild(freshChild());
      family.list = family.parent.getChildNodes();
    }
  }

  void step() {
    if (below(2) == 0) return look(anyFamily());
    if (below(3) == 0) return remove(anyFamily());
    const bool isBurst = below(100) == 0;  // more than any journal of reasonable size remembers
    for (int i = isBurst ? 100 : 1; i > 0; --i) add(anyFamily(), freshOrMovedChild());
    for (Family& family : m_families) {
      while (family.model.size() > 20) remove(family);
    }
  }

 private:
  struct Family {
    VRDIDOM_Node parent;
    VRDIDOM_NodeList list;
    std::vector<VRDIDOM_Node> model;
  };

  std::size_t below(std::size_t limit) { return m_random() % limit; }
  Family& anyFamily() { return m_families[below(2)]; }
  VRDIDOM_Node freshChild() { return m_document.createElementNS("", "c"); }
  VRDIDOM_Node freshOrMovedChild() {
    Family& from = anyFamily();
    return from.model.empty() || below(2) == 0 ? freshChild() : takeOut(from);
  }
  VRDIDOM_Node takeOut(Family& family) {
    const auto place =
        family.model.begin() + static_cast<std::ptrdiff_t>(below(family.model.size()));
    VRDIDOM_Node child = *place;
    family.model.erase(place);
    return child;
  }

  void remove(Family& family) {
    if (!family.model.empty()) family.parent.removeChild(takeOut(family));
  }
  void add(Family& family, const VRDIDOM_Node& child) {
    std::vector<VRDIDOM_Node>& model = family.model;
    const std::size_t at = below(3) == 0 ? model.size() : below(model.size() + 1);
    if (at == model.size()) {
      family.parent.appendChild(child);
      model.push_back(child);
    } else if (below(2) == 0) {
      family.parent.insertBefore(child, model[at]);
      family.parent.insertBefore(child, child);
      model.insert(model.begin() + static_cast<std::ptrdiff_t>(at), child);
    } else {
      ASSERT_TRUE(family.parent.replaceChild(child, model[at]) == &model[at]);
      family.parent.replaceChild(child, child);
      model[at] = child;
    }
  }
  void look(Family& family) {
    const std::size_t length = family.model.size();
    if (below(2) == 0) {
      ASSERT_EQ(family.list.getLength(), length);
    }
    VRDIDOM_Node none;
    const std::size_t start = below(length + 2);
    for (std::size_t i = start; i < start + 3; ++i) {
      ASSERT_TRUE(family.list.item(i) == (i < length ? &family.model[i] : &none)) << "at " << i;
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
