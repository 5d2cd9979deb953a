// Loops over a live list of children that change it as they go: 80,000 children beside eight times
// 10,000. A single loop that walked from the front at each step would show.

#include <unistd.h>

#include "bench/Measure.h"
#include "platform/idom/VRDIDOM_DOMImplementation.h"
#include "platform/idom/VRDIDOM_NodeList.h"
#include "platform/idom/VRDIDOM_Text.h"

namespace {

constexpr int few = 10000;
constexpr int times = 8;

/// Gives each child nodes and takes them away again, and removes two of three.
void thinOut(VRDIDOM_Document& document, VRDIDOM_Element& root) {
  VRDIDOM_NodeList list = root.getChildNodes();
  for (unsigned long index = 0, seen = 0; index < list.getLength(); ++seen) {
    VRDIDOM_Node child = list.item(index);
    for (int n = seen % 10 == 0 ? 20 : 1; n > 0; --n) {
      child.appendChild(document.createTextNode("x"));
    }
    while (!child.getFirstChild().isNull()) child.removeChild(child.getFirstChild());
    if (seen % 3 == 0) {
      ++index;
    } else {
      root.removeChild(child);
    }
  }
}

void replaceAll(VRDIDOM_Document& document, VRDIDOM_Element& root) {
  VRDIDOM_NodeList list = root.getChildNodes();
  for (unsigned long index = 0; !list.item(index).isNull(); ++index) {
    root.replaceChild(document.createTextNode("x"), list.item(index));
  }
}

void emptyFromBehind(VRDIDOM_Element& root) {
  VRDIDOM_NodeList list = root.getChildNodes();
  while (list.getLength() != 0) root.removeChild(list.item(list.getLength() - 1));
}

void loopOver(int children) {
  VRDIDOM_Document document = VRDIDOM_DOMImplementation::getInstance().createDocument();
  VRDIDOM_Element root = document.createElementNS("", "r");
  for (int i = 0; i < children; ++i) root.appendChild(document.createElementNS("", "c"));
  thinOut(document, root);

  VRDIDOM_Element other = document.createElementNS("", "other");
  VRDIDOM_NodeList list = root.getChildNodes();
  while (list.getLength() != 0) other.appendChild(list.item(0));
  replaceAll(document, other);
  emptyFromBehind(other);
}

}  // namespace

int main() {
  report("loops", inTurn(
                      5, [] { loopOver(times * few); },
                      [] {
                        for (int round = 0; round < times; ++round) loopOver(few);
                      }));
  std::fflush(stdout);
  _exit(0);
}
