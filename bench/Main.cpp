// Measures the library beside peers and limits in one run and prints one table of ratios.
//
//   vrd_bench [--quick]
//   vrd_bench --curve     what a cold load costs at each size, as data for a plot

#include <unistd.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "bench/Children.h"
#include "bench/Documents.h"
#include "bench/Measure.h"
#include "bench/PeerRows.h"
#include "bench/Table.h"

namespace {

namespace fs = std::filesystem;

/// A folder of this run's own.
class WorkFolder {
 public:
  WorkFolder() : m_path(fs::temp_directory_path() / ("vrdbench" + std::to_string(::getpid()))) {
    fs::create_directories(m_path);
  }
  ~WorkFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  const fs::path& path() const { return m_path; }

 private:
  fs::path m_path;
};

class Bench {
 public:
  explicit Bench(bool quick) : m_rounds(quick ? 3 : 15) {}

  void run() {
    start();
    coldLoads();
    lookups();
    texts();
    refresh();
    liveLists();
    localisedLists();
    componentLists();
    protectedValues();
    flatMemory();
    addPeerRows(m_table, m_folder.path(), m_rounds);
  }

 private:
  static std::string bin(const Sample& sample) { return (sample.root / "bin").string(); }

  PairOfChildren load(const Sample& sample, int roundsFactor = 1) const {
    return runInTurn(m_rounds * roundsFactor, "bench_store", {"load", sample.names.back()},
                     "bench_bare_parse", {sample.document.string()}, bin(sample));
  }

  void start() {
    // Short enough for the scheduler to be most of what one run shows, so there are more of them.
    const PairOfChildren pair = load(makeSample(m_folder.path(), 60, Names::Rising), 7);
    m_table.add("process that asks for one value", "us", pair.ours.microseconds,
                "program that parses the file", pair.peers.microseconds, 1.3);
  }

  /// The time of one parameter, without what a load costs in any case.
  static double each(const ChildResult& ours, double emptyLoad, int count) {
    return (ours.values.at("load") - emptyLoad) / count;
  }

  void coldLoads() {
    const Sample one = makeSample(m_folder.path(), 1, Names::Rising);
    const double emptyLoad = load(one).ours.values.at("load");
    PairOfChildren pair;
    double eachAtThousand = 0;
    for (const int count : {1000, 10000, 100000}) {
      pair = load(makeSample(m_folder.path(), count, Names::Rising));
      m_table.add("cold load of " + std::to_string(count), "us", pair.ours.microseconds,
                  "bare Xerces-C parse, namespaces on", pair.peers.microseconds, 1.5);
      if (count == 1000) eachAtThousand = each(pair.ours, emptyLoad, count);
    }
    m_table.add("peak memory of the last", "KiB", pair.ours.values["peak"], "the same parse",
                pair.peers.values["peak"], 2.0);
    m_table.add("memory after it", "KiB", pair.ours.values["now"], "the same parse",
                pair.peers.values["now"], 1.2);
    addScaling("rising names", each(pair.ours, emptyLoad, 100000), eachAtThousand);
    addScaling("falling names", eachOf(Names::Falling, emptyLoad), eachAtThousand);
    addScaling("scattered names", eachOf(Names::Scattered, emptyLoad), eachAtThousand);
    addScaling("long prefix", eachOf(Names::LongPrefix, emptyLoad), eachAtThousand);
  }

  double eachOf(Names grouping, double emptyLoad) const {
    const Sample sample = makeSample(m_folder.path(), 100000, grouping);
    return each(runOften(m_rounds, "bench_store", {"load", sample.names.back()}, bin(sample)),
                emptyLoad, 100000);
  }

  void addScaling(const std::string& grouping, double ours, double atThousand) {
    m_table.add("one parameter of 100000, " + grouping, "us", ours, "one of 1000", atThousand, 1.2);
  }

  void inOneProcess(const char* work, const std::string& title, const std::string& unit,
                    const char* peer, double reach) {
    for (const int count : {1000, 100000}) {
      const Sample sample = makeSample(m_folder.path(), count, Names::Rising);
      ChildResult result = runChild("bench_store", {work, sample.nameFile.string()}, bin(sample));
      m_table.add(title + " of " + std::to_string(count), unit, result.values["ours"], peer,
                  result.values["peers"], reach);
    }
  }

  void lookups() {
    inOneProcess("lookup", "getValue of one", "ns", "std::map, recursive mutex, copy", 1.5);
  }

  void texts() {
    inOneProcess("text", "whole-tree text", "us", "Boost.PropertyTree write_xml", 1.0);
  }

  void refresh() {
    double ten = 0;
    for (const int count : {10000, 100000}) {
      const Sample sample = makeSample(m_folder.path(), count, Names::Rising);
      ChildResult result = runChild("bench_refresh", {sample.nameFile.string()}, bin(sample));
      m_table.add("init with 100 changed of " + std::to_string(count), "us", result.values["ours"],
                  "bare parse, one walk of the tree", result.values["peers"], 3.0);
      if (count == 10000) ten = 10 * result.values["ours"];
      if (count == 100000) {
        m_table.add("the same", "us", result.values["ours"], "ten times that of 10000", ten, 1.2);
      }
    }
  }

  /// A row of two figures that a program printed under one name.
  void addPair(const ChildResult& result, const std::string& name, const std::string& title,
               const char* peer, double reach) {
    m_table.add(title, "us", result.values.at(name + ".ours"), peer,
                result.values.at(name + ".peers"), reach);
  }

  void liveLists() {
    const Sample sample = makeSample(m_folder.path(), 1, Names::Rising);
    addPair(runChild("bench_live_list", {}, bin(sample)), "loops", "loops over 80,000 children",
            "eight times 10,000", 2.0);
  }

  void localisedLists() {
    const Sample sample = makeSample(m_folder.path(), 1, Names::Rising);
    ChildResult result = runChild("bench_localised_lists", {}, bin(sample));
    addPair(result, "thirty", "repeated list of 30 locales", "std::map copy", 1.5);
    addPair(result, "zones", "repeated list of all time zones", "std::map copy", 1.5);
    addPair(result, "first", "first list of all time zones", "TimeZone::getDisplayName of each",
            0.5);
    m_table.add("growth by the names of 200 locales", "KiB", result.values["growth"]);
  }

  void componentLists() {
    const Sample sample = makeSample(m_folder.path(), 1, Names::Rising);
    const ChildResult result =
        runChild("bench_component_list", {(m_folder.path() / "list").string()}, bin(sample));
    const std::pair<const char*, const char*> kinds[] = {{"comments", "no entry"},
                                                         {"empty", "empty"},
                                                         {"underlines", "underlines"},
                                                         {"nearly", "nearly entries"},
                                                         {"long", "long"},
                                                         {"tenth", "1 entry in 10"},
                                                         {"repeated", "entries, 1 name"},
                                                         {"sorted", "entries, sorted"},
                                                         {"shuffled", "entries, shuffled"}};
    for (const auto& [name, title] : kinds) {
      addPair(result, name, "1,000,000 component lines, " + std::string(title), "std::getline",
              2.0);
    }
  }

  void protectedValues() {
    const fs::path bin = m_folder.path() / "protected/bin";
    fs::create_directories(bin);
    fs::create_directories(bin / "../configuration");
    ChildResult result = runChild("bench_crypto", {bin.string()}, bin.string());
    addPair(result, "read", "decrypting read of 64 bytes", "base64, provider's unprotect", 1.5);
    addPair(result, "base64", "base64 of 1 MiB decoded", "EVP_DecodeBlock", 1.0);
    m_table.add("growth by 100,000 decrypting reads", "KiB", result.values["growth"], "limit", 1024,
                1.0);
  }

  void flatMemory() {
    const Sample sample = makeSample(m_folder.path(), 100, Names::Rising);
    ChildResult result = runChild("bench_store", {"flat", "-"}, bin(sample));
    m_table.add("growth by 1,000,000 values set", "KiB", result.values["set"], "limit", 4096, 1.0);
    m_table.add("growth by 10,000 query results", "KiB", result.values["refresh"], "limit", 4096,
                1.0);
    m_table.add("growth by 10,000 rewritings", "KiB", result.values["rewrite"], "limit", 4096, 1.0);
  }

  int m_rounds;
  WorkFolder m_folder;
  Table m_table;
};

void run(const std::string& option) {
  if (option == "--curve") return printCurve(WorkFolder().path());
  Bench(option == "--quick").run();
}

}  // namespace

int main(int count, char** arguments) {
  try {
    run(count > 1 ? arguments[1] : "");
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "vrd_bench: %s\n", error.what());
    return 1;
  }
}
