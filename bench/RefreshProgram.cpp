// A running process takes in query results: 100 changed parameters, beside a bare parse of the same
// stream plus one walk of the tree.
//
//   bench_refresh NAMEFILE

#include <unistd.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "bench/Measure.h"
#include "bench/QueryResult.h"
#include "store/VRDConfiguration.h"

namespace {

constexpr int stored = 0;

std::vector<std::string> hundredNames(const char* nameFile) {
  std::vector<std::string> all;
  std::ifstream file(nameFile);
  for (std::string name; std::getline(file, name);) all.push_back(name);
  std::vector<std::string> chosen;
  for (std::size_t i = 0; i < 100; ++i) chosen.push_back(all[i * all.size() / 100]);
  return chosen;
}

void bareParse(const std::string& text) {
  xercesc::XercesDOMParser parser;
  parser.setDoNamespaces(true);
  const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()),
                                          text.size(), "stream");
  parser.parse(source);
}

std::size_t nodesBelow(const xercesc::DOMNode* node) {
  std::size_t count = 0;
  for (const auto* child = node->getFirstChild(); child != nullptr;
       child = child->getNextSibling()) {
    count += 1 + nodesBelow(child);
  }
  return count;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) return 2;
  const std::vector<std::string> names = hundredNames(arguments[1]);
  VRDConfiguration& store = *VRDConfiguration::getInstance();
  VRDIDOM_Node tree;
  store.getValue("", stored, tree);
  const xercesc::DOMNode* root = tree;

  int round = 0;
  std::string text;
  std::size_t met = 0;
  const PairOfTimes times = inTurn(
      101,
      [&] {
        text = queryResult(names, ++round);
        std::istringstream bytes(text);
        IBJBufferedInputStream stream(bytes);
        store.init(stream);
      },
      [&] {
        bareParse(text);
        met += nodesBelow(root);
      });
  report("ours", times.ours);
  report("peers", times.peers);
  std::fflush(stdout);
  _exit(met == 0 ? 1 : 0);
}
