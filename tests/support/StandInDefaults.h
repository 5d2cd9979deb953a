#pragma once

#include <string>
#include <utility>
#include <vector>

/// The default lists that a test puts in place of the defaults library's. Set before the first use
/// of the store.
struct StandInDefaults {
  using List = std::vector<std::pair<std::string, std::string>>;
  static void setRuntime(const List& list);
  static void setStartup(const List& list);
};
