#include "bench/Documents.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <random>

namespace {

std::string nameOf(int number, Names grouping) {
  char name[96];
  const char* form = grouping == Names::LongPrefix
                         ? "installation.services.reporting.workers.settings.group.%06d"
                         : "service.group%06d";
  std::snprintf(name, sizeof name, form, number);
  return name;
}

std::vector<std::string> namesOf(int count, Names grouping) {
  std::vector<std::string> names;
  for (int number = 0; number < count; ++number) names.push_back(nameOf(number, grouping));
  if (grouping == Names::Falling) std::reverse(names.begin(), names.end());
  if (grouping == Names::Scattered) std::shuffle(names.begin(), names.end(), std::mt19937(7));
  return names;
}

}  // namespace

Sample makeSample(const std::filesystem::path& folder, int count, Names grouping) {
  Sample sample;
  sample.root = folder / (std::to_string(count) + "-" + std::to_string(static_cast<int>(grouping)));
  sample.document = sample.root / "configuration/zanstartup.xml";
  sample.nameFile = sample.root / "names";
  sample.names = namesOf(count, grouping);
  std::filesystem::create_directories(sample.root / "bin");
  std::filesystem::create_directories(sample.document.parent_path());

  std::ofstream names(sample.nameFile);
  std::ofstream out(sample.document);
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<vtn:parameters version=\"1.0\" xmlns:vtn=\"http://zandor.com/schemas/vtconfig/1/\""
         " xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\""
         " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n";
  for (const std::string& name : sample.names) {
    out << "  <vtn:parameter name=\"" << name << "\">\n    <vtn:value xsi:type=\"xsd:string\">"
        << sampleText << "</vtn:value>\n  </vtn:parameter>\n";
    names << name << '\n';
  }
  out << "</vtn:parameters>\n";
  return sample;
}
