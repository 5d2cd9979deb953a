// The component list, beside a plain reading of it.
#include <map>
#include <sstream>

#include "fuzz/Fuzzing.h"
#include "service/ComponentVersions.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = textOfInput(data, size);
  std::istringstream list(text), lines(text);
  ComponentVersions versions;
  versions.read(list);

  std::map<std::string, std::string> expected;
  const std::string marker = "_version=";
  for (std::string line; std::getline(lines, line) && !lines.eof();) {
    const std::size_t at = line.find(marker);
    if (at == std::string::npos) continue;
    expected.emplace(line.substr(0, at), line.substr(at + marker.size()));
  }
  for (const auto& [name, version] : expected) require(versions.find(name) == version, "a version");
  require(versions.size() == expected.size(), "the number of names");
  return 0;
}
