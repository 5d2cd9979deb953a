#pragma once

#include <string>
#include <vector>

/// A file of query results, as it was taken in.
struct QueryFile {
  std::string name;
  std::string content;
};

/// A place that gives a parameter a value, or would.
struct Origin {
  const char* source;      ///< "runtime default", "startup document" and so on; static storage.
  std::string file;        ///< Empty for a default.
  unsigned long line = 0;  ///< From 1; 0 without a file.
  unsigned long column = 0;
  std::string text;        ///< As it stands there, on one line; masked if anything in it is secret.
  std::string whyIgnored;  ///< Empty if the value was taken.

  /// The source with its place, as compilers write places.
  std::string place() const;
};

/// Every origin of parameter @p name, in the order in which the library meets them. It is computed
/// from the default lists and the documents, by the library's rules: the last one that was taken is
/// in force, those before it were displaced.
std::vector<Origin> originsOf(const std::string& name, const std::vector<QueryFile>& queries);
