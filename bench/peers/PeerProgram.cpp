// A peer at the work that bench_store does with the library.
//
//   bench_PEER load FILE NAME
//   bench_PEER lookup FILE NAMEFILE
//   bench_PEER text FILE
//   bench_PEER refresh FILE CHANGES NAMEFILE   takes the values in the file CHANGES into FILE

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <mutex>
#include <random>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "bench/peers/Peer.h"

namespace {

constexpr int rounds = 15;

std::vector<std::string> namesIn(const std::string& file) {
  std::vector<std::string> names;
  std::ifstream stream(file);
  for (std::string name; std::getline(stream, name);) names.push_back(name);
  return names;
}

template <class Work>
double medianOf(Work work) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) times.push_back(microseconds(work));
  return median(times);
}

/// Behind a lock, since none of the peers may be read while it is changed.
std::size_t readAll(const Peer& peer, const std::vector<std::string>& names) {
  static std::recursive_mutex lock;
  std::size_t read = 0;
  for (const std::string& name : names) {
    const std::lock_guard<std::recursive_mutex> guard(lock);
    read += peer.get(name).size();
  }
  return read;
}

/// In nanoseconds for one name. Where a peer searches one by one, fewer names do.
std::size_t lookup(const Peer& peer, std::vector<std::string> names) {
  constexpr double roundTime = 50000;
  constexpr std::size_t trial = 20;
  std::shuffle(names.begin(), names.end(), std::mt19937(1));
  const std::vector<std::string> first(names.begin(),
                                       names.begin() + static_cast<std::ptrdiff_t>(trial));
  const double each = microseconds([&] { readAll(peer, first); }) / trial;
  const auto affordable = static_cast<std::size_t>(roundTime / std::max(each, 0.01));
  names.resize(std::clamp(affordable, trial, std::min<std::size_t>(names.size(), 10000)));
  std::size_t read = 0;
  const double time = medianOf([&] { read += readAll(peer, names); });
  report("peers", 1000 * time / static_cast<double>(names.size()));
  return read;
}

std::size_t refresh(Peer& peer, const std::string& changes, const std::string& nameFile) {
  const std::vector<std::string> names = namesIn(nameFile);
  report("peers", medianOf([&] {
           const std::unique_ptr<Peer> changed = openPeer(changes);
           for (const std::string& name : names) peer.set(name, changed->get(name));
         }));
  return peer.get(names.front()).size();
}

std::size_t run(const std::vector<std::string>& arguments) {
  const std::string& work = arguments[1];
  const std::unique_ptr<Peer> peer = openPeer(arguments[2]);
  std::size_t done = 0;
  if (work == "load") done = peer->get(arguments[3]).size();
  if (work == "lookup") done = lookup(*peer, namesIn(arguments[3]));
  if (work == "text") report("peers", medianOf([&] { done += peer->text().size(); }));
  if (work == "refresh") done = refresh(*peer, arguments[3], arguments[4]);
  std::fflush(stdout);
  // As the library's own programs do: what a peer frees at its end is not measured.
  _exit(done == 0 ? 1 : 0);
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) return 2;
  run({arguments, arguments + count});
}
