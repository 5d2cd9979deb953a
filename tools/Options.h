#pragma once

#include <string>
#include <vector>

#include "tools/Origins.h"

/// What the command line asks for. A command reads the members that are its own.
struct Options {
  // Every command.
  std::string root;                  ///< Installation root; empty: as the environment says.
  std::string bin;                   ///< The "bin" folder itself; empty: as the environment says.
  std::vector<std::string> queries;  ///< Files of query results to take in first; "-": stdin.
  bool json = false;
  std::vector<QueryFile> queryFiles;  ///< What --query brought, once it is taken in.

  // Some commands.
  std::vector<std::string> names;
  std::string pattern;
  std::string text;
  std::string locale;
  bool values = false;
  bool xml = false;
  bool decrypt = false;
  bool content = false;
};
