// The library at work in a fresh process.
//
//   bench_store load NAME         answers one parameter
//   bench_store lookup NAMEFILE   reads the parameters named there, beside a std::map
//   bench_store text NAMEFILE     gives the whole tree as text, beside Boost.PropertyTree
//   bench_store flat              changes values and rewrites the tree for long

#include <malloc.h>
#include <unistd.h>

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <cstring>
#include <fstream>
#include <map>
#include <mutex>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "bench/QueryResult.h"
#include "store/VRDConfiguration.h"

namespace {

constexpr int stored = 0;

VRDConfiguration& store() { return *VRDConfiguration::getInstance(); }

int load(const char* name) {
  I18NString text;
  report("load", microseconds([&] { store().getValue(name, stored, text); }));
  report("peak", processMemory("VmHWM"));
  report("now", processMemory("VmRSS"));
  return text.empty() ? 1 : 0;
}

std::vector<std::string> namesIn(const char* file) {
  std::vector<std::string> names;
  std::ifstream stream(file);
  for (std::string name; std::getline(stream, name);) names.push_back(name);
  return names;
}

std::map<std::string, std::string> valuesOf(const std::vector<std::string>& names) {
  std::map<std::string, std::string> values;
  for (const std::string& name : names) {
    I18NString text;
    store().getValue(name.c_str(), stored, text);
    values[name] = text.c_str();
  }
  return values;
}

int lookup(const char* nameFile) {
  std::vector<std::string> names = namesIn(nameFile);
  const std::map<std::string, std::string> peer = valuesOf(names);
  std::recursive_mutex lock;
  std::shuffle(names.begin(), names.end(), std::mt19937(1));
  if (names.size() > 10000) names.resize(10000);
  const std::vector<I18NString> ourNames(names.begin(), names.end());

  std::size_t read = 0;
  const PairOfTimes times = inTurn(
      41,
      [&] {
        for (const I18NString& name : ourNames) {
          I18NString text;
          store().getValue(name, stored, text);
          read += text.utf8().size();
        }
      },
      [&] {
        for (const std::string& name : names) {
          const std::lock_guard<std::recursive_mutex> guard(lock);
          const std::string text = peer.find(name)->second;
          read += text.size();
        }
      });
  const auto count = static_cast<double>(names.size());
  report("ours", 1000 * times.ours / count);
  report("peers", 1000 * times.peers / count);
  return read == 0 ? 1 : 0;
}

boost::property_tree::ptree peerTree(const std::vector<std::string>& names) {
  boost::property_tree::ptree root;
  for (const auto& [name, value] : valuesOf(names)) {
    boost::property_tree::ptree parameter;
    parameter.put("<xmlattr>.name", name);
    parameter.put("vtn:value", value);
    parameter.put("vtn:value.<xmlattr>.xsi:type", "xsd:string");
    root.add_child("vtn:parameters.vtn:parameter", parameter);
  }
  return root;
}

int text(const char* nameFile) {
  const boost::property_tree::ptree peer = peerTree(namesIn(nameFile));
  const boost::property_tree::xml_writer_settings<std::string> indented(' ', 2);
  std::size_t written = 0;
  const PairOfTimes times = inTurn(
      15,
      [&] {
        I18NString tree;
        store().getValue("", stored, tree);
        written += tree.utf8().size();
      },
      [&] {
        std::ostringstream stream;
        boost::property_tree::write_xml(stream, peer, indented);
        written += stream.str().size();
      });
  report("ours", times.ours);
  report("peers", times.peers);
  return written == 0 ? 1 : 0;
}

/// 1,000,000 values set on 100 names; 10,000 rewritings of the whole tree; 10,000 query results
/// with 100 changed parameters. Growth in KiB since the first hundredth of each.
int flat() {
  const auto setValues = [](int rounds) {
    for (int round = 0; round < rounds; ++round) {
      for (int number = 0; number < 100; ++number) {
        const std::string name = "set" + std::to_string(number);
        store().setValue(name.c_str(), std::to_string(round * 7919).c_str());
      }
    }
  };
  const auto rewrite = [](int rounds) {
    for (int round = 0; round < rounds; ++round) {
      std::istringstream nothing("<nothing/>");
      IBJBufferedInputStream stream(nothing);
      store().init(stream);
    }
  };
  setValues(100);
  rewrite(100);
  const double before = processMemory("VmRSS");
  setValues(9900);
  const double afterSetting = processMemory("VmRSS");
  rewrite(9900);
  report("set", afterSetting - before);
  const double afterRewriting = processMemory("VmRSS");
  report("rewrite", afterRewriting - afterSetting);

  std::vector<std::string> names;
  for (int number = 0; number < 100; ++number) names.push_back("query" + std::to_string(number));
  const auto refresh = [&names](int rounds) {
    for (int round = 0; round < rounds; ++round) {
      std::istringstream text(queryResult(names, round));
      IBJBufferedInputStream stream(text);
      store().init(stream);
    }
  };
  refresh(100);
  const double warm = processMemory("VmRSS");
  refresh(9900);
  report("refresh", processMemory("VmRSS") - warm);
  return 0;
}

int run(const std::string& work, const char* argument) {
  if (work == "load") return load(argument);
  if (work == "lookup") return lookup(argument);
  if (work == "text") return text(argument);
  if (work == "flat") return flat();
  return 2;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) return 2;
  const int status = run(arguments[1], arguments[2]);
  std::fflush(stdout);
  _exit(status);
}
