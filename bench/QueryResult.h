#pragma once

#include <string>
#include <vector>

/// A query result that gives each name a value which differs from round to round.
inline std::string queryResult(const std::vector<std::string>& names, int round) {
  std::string text = "<queryResult><group>";
  for (const std::string& name : names) {
    text += "<" + name + "><value>value " + std::to_string(round) + " of " + name + "</value></" +
            name + ">";
  }
  return text + "</group></queryResult>";
}
