#include "bench/PeerRows.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "bench/Children.h"
#include "bench/Documents.h"
#include "bench/PeerDocuments.h"

namespace {

namespace fs = std::filesystem;

struct PeerProgram {
  const char* name;
  const char* program;
  PeerForm form;
};

constexpr PeerProgram allPeers[] = {
    {"Boost.PropertyTree", "bench_property_tree", PeerForm::NestedXml},
    {"Poco XMLConfiguration", "bench_poco", PeerForm::NestedXml},
    {"libconfig", "bench_libconfig", PeerForm::Groups},
    {"GLib key file", "bench_glib", PeerForm::KeyFile},
    {"KConfig", "bench_kconfig", PeerForm::KeyFile}};

/// Some grow with the square of the size: who takes longer than this is not tried with ten times as
/// much. In microseconds.
constexpr double longest = 1e6;

std::vector<PeerProgram> builtPeers() {
  std::vector<PeerProgram> built;
  std::copy_if(std::begin(allPeers), std::end(allPeers), std::back_inserter(built),
               [](const PeerProgram& peer) { return isBuilt(peer.program); });
  return built;
}

std::string binOf(const Sample& sample) { return (sample.root / "bin").string(); }

std::string peerDocument(const Sample& sample, const PeerProgram& peer) {
  const fs::path file = sample.root / "peer";
  writePeerDocument(file, peer.form, sample.names, "");
  return file.string();
}

/// A load of seconds is far above the noise.
int roundsFor(std::size_t count, int rounds) {
  return count < 100000 ? rounds : std::max(1, rounds / 10);
}

/// @return what the peer took
double addLoad(Table& table, const Sample& sample, const PeerProgram& peer, int rounds) {
  const std::string& last = sample.names.back();
  const PairOfChildren pair =
      runInTurn(roundsFor(sample.names.size(), rounds), "bench_store", {"load", last}, peer.program,
                {"load", peerDocument(sample, peer), last}, binOf(sample));
  table.add("cold load of " + std::to_string(sample.names.size()), "us", pair.ours.microseconds,
            peer.name, pair.peers.microseconds);
  return pair.peers.microseconds;
}

void addLookup(Table& table, const Sample& sample, const PeerProgram& peer, double ours) {
  const ChildResult theirs =
      runChild(peer.program, {"lookup", peerDocument(sample, peer), sample.nameFile.string()},
               binOf(sample));
  table.add("getValue of one of " + std::to_string(sample.names.size()), "ns", ours, peer.name,
            theirs.values.at("peers"), 1.0);
}

void addText(Table& table, const Sample& sample, const PeerProgram& peer, double ours) {
  const ChildResult theirs =
      runChild(peer.program, {"text", peerDocument(sample, peer)}, binOf(sample));
  table.add("whole-tree text of " + std::to_string(sample.names.size()), "us", ours, peer.name,
            theirs.values.at("peers"));
}

void addRefresh(Table& table, const Sample& sample, const Sample& changed, const PeerProgram& peer,
                double ours) {
  const fs::path changes = sample.root / "changes";
  writePeerDocument(changes, peer.form, changed.names, " changed");
  const ChildResult theirs =
      runChild(peer.program,
               {"refresh", peerDocument(sample, peer), changes.string(), changed.nameFile.string()},
               binOf(sample));
  table.add("100 changed of " + std::to_string(sample.names.size()), "us", ours, peer.name,
            theirs.values.at("peers"));
}

double ourFigure(const Sample& sample, const char* program, std::vector<std::string> arguments) {
  arguments.push_back(sample.nameFile.string());
  return runChild(program, arguments, binOf(sample)).values.at("ours");
}

void addRefreshes(Table& table, const fs::path& folder, const Sample& sample,
                  const std::vector<PeerProgram>& peers) {
  const Sample changed = makeSample(folder, 100, Names::Rising);
  const double ours = ourFigure(sample, "bench_refresh", {});
  for (const PeerProgram& peer : peers) addRefresh(table, sample, changed, peer, ours);
}

/// What a load costs, or nothing where it took too long before.
double curvePoint(const std::string& program, const std::vector<std::string>& arguments,
                  const Sample& sample, double before) {
  if (before < 0 || before > longest) return -1;
  return runOften(roundsFor(sample.names.size(), 5), program, arguments, binOf(sample))
      .microseconds;
}

void printPoint(double microseconds) {
  if (microseconds < 0) {
    std::printf(" ?");
  } else {
    std::printf(" %.0f", microseconds);
  }
  std::fflush(stdout);
}

}  // namespace

void addPeerRows(Table& table, const fs::path& folder, int rounds) {
  std::vector<PeerProgram> peers = builtPeers();
  if (peers.empty()) return;
  for (const int count : {1000, 10000, 100000}) {
    const Sample sample = makeSample(folder, count, Names::Rising);
    const double lookup = ourFigure(sample, "bench_store", {"lookup"});
    const double text = ourFigure(sample, "bench_store", {"text"});
    std::vector<PeerProgram> quick;
    for (const PeerProgram& peer : peers) {
      if (addLoad(table, sample, peer, rounds) <= longest) quick.push_back(peer);
    }
    for (const PeerProgram& peer : peers) addLookup(table, sample, peer, lookup);
    for (const PeerProgram& peer : peers) addText(table, sample, peer, text);
    if (count == 10000) addRefreshes(table, folder, sample, peers);
    peers = quick;
  }
}

void printCurve(const fs::path& folder) {
  const std::vector<PeerProgram> peers = builtPeers();
  std::printf("parameters \"vrdcfgapi\" \"bare Xerces-C parse\"");
  for (const PeerProgram& peer : peers) std::printf(" \"%s\"", peer.name);
  std::printf("\n");
  std::vector<double> before(peers.size(), 0);
  for (const int count : {100, 1000, 10000, 100000, 1000000}) {
    const Sample sample = makeSample(folder, count, Names::Rising);
    const std::string& last = sample.names.back();
    std::printf("%d", count);
    printPoint(curvePoint("bench_store", {"load", last}, sample, 0));
    printPoint(curvePoint("bench_bare_parse", {sample.document.string()}, sample, 0));
    for (std::size_t i = 0; i < peers.size(); ++i) {
      before[i] = curvePoint(peers[i].program, {"load", peerDocument(sample, peers[i]), last},
                             sample, before[i]);
      printPoint(before[i]);
    }
    std::printf("\n");
  }
}
