#pragma once

#include <time.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

// Shared by the programs of the benchmark. A program prints its results as lines "name value".

inline double median(std::vector<double> values) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

/// The processor time that @p work takes in this thread, in microseconds. What other programs on
/// the machine do in the meantime does not count.
template <class Work>
double microseconds(Work work) {
  const auto now = [] {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
  };
  const double start = now();
  work();
  return now() - start;
}

/// The median time of two pieces of work in microseconds, run in turn so that both meet the same
/// noise.
struct PairOfTimes {
  double ours;
  double peers;
};

template <class Ours, class Peers>
PairOfTimes inTurn(int rounds, Ours ours, Peers peers) {
  std::vector<double> oursTimes;
  std::vector<double> peersTimes;
  for (int round = 0; round < rounds; ++round) {
    oursTimes.push_back(microseconds(ours));
    peersTimes.push_back(microseconds(peers));
  }
  return {median(oursTimes), median(peersTimes)};
}

inline void report(const std::string& name, double value) {
  std::printf("%s %.6g\n", name.c_str(), value);
}

/// Two lines, "name.ours" and "name.peers".
inline void report(const std::string& name, const PairOfTimes& times) {
  report(name + ".ours", times.ours);
  report(name + ".peers", times.peers);
}

/// A figure of /proc/self/status in KiB, such as "VmHWM" (peak) or "VmRSS" (now).
inline double processMemory(const std::string& key) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.rfind(key + ":", 0) == 0) return std::stod(line.substr(key.size() + 1));
  }
  return 0;
}
