// The component list, beside a plain reading of it.
#include <sstream>

#include "fuzz/Fuzzing.h"
#include "service/ComponentList.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = textOfInput(data, size);
  std::istringstream list(text), lines(text);
  ComponentVersions versions;
  readComponentList(list, versions);

  ComponentVersions expected;
  const std::string marker = "_version=";
  for (std::string line; std::getline(lines, line) && !lines.eof();) {
    const std::size_t at = line.find(marker);
    if (at == std::string::npos) continue;
    const std::string name = line.substr(0, at);
    expected.add(name, line.substr(at + marker.size()));
    expected.complete();
    require(versions.find(name) == expected.find(name), "a version");
  }
  require(versions.size() == expected.size(), "the number of entries");
  return 0;
}
