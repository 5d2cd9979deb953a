#pragma once

#include <string>

/// The table that the benchmark prints, a line as soon as it is known: for each piece of work, ours
/// beside a peer or a limit.
class Table {
 public:
  Table();
  /// @param unit of both figures
  /// @param reach the ratio to reach at most
  void add(const std::string& work, const std::string& unit, double ours, const std::string& peer,
           double peers, double reach);
  /// Beside a peer that is there to compare, with no ratio to reach.
  void add(const std::string& work, const std::string& unit, double ours, const std::string& peer,
           double peers);
  /// A figure that nothing stands beside.
  void add(const std::string& work, const std::string& unit, double ours);
};
