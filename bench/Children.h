#pragma once

#include <map>
#include <string>
#include <vector>

/// What a program printed, by name, and the processor time that it took from its
/// start to its end, in user and system mode.
struct ChildResult {
  double microseconds = 0;
  std::map<std::string, double> values;
};

/// Whether @p program stands beside this one.
bool isBuilt(const std::string& program);

/// Runs a program of this benchmark, found beside this one, with the installation whose "bin"
/// directory is @p binDir. Throws `std::runtime_error` if it does not end with 0.
ChildResult runChild(const std::string& program, const std::vector<std::string>& arguments,
                     const std::string& binDir);

/// The median of every figure of a program over @p rounds runs.
ChildResult runOften(int rounds, const std::string& program,
                     const std::vector<std::string>& arguments, const std::string& binDir);

/// The median of every figure of two programs over @p rounds runs, in turn.
struct PairOfChildren {
  ChildResult ours;
  ChildResult peers;
};
PairOfChildren runInTurn(int rounds, const std::string& ours,
                         const std::vector<std::string>& ourArguments, const std::string& peers,
                         const std::vector<std::string>& peerArguments, const std::string& binDir);
