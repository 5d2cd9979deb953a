// A component list of 1,000,000 lines beside a bare std::getline loop over the same file, for each
// kind of list that could be slow in a way of its own.
//
//   bench_component_list FILE     a file to be written and removed

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "bench/Measure.h"
#include "service/ComponentVersions.h"

namespace {

constexpr unsigned lineCount = 1000000;
constexpr int rounds = 5;

using Line = std::string (*)(unsigned number);

struct Kind {
  const char* name;
  Line line;
  std::size_t names;  ///< so many are to be found
};

std::string entry(unsigned number) {
  char text[64];
  std::snprintf(text, sizeof text, "COMPONENT-%07u_version=7.2.%u\n", number, number % 100);
  return text;
}

std::string comment(unsigned) { return "# a line that says nothing at all\n"; }

const Kind kinds[] = {
    {"comments", comment, 0},
    {"empty", [](unsigned) { return std::string("\n"); }, 0},
    {"underlines", [](unsigned) { return std::string(80, '_') + "\n"; }, 0},
    {"nearly", [](unsigned) { return std::string("_version_version_version:\n"); }, 0},
    {"long", [](unsigned) { return std::string(300, 'x') + "\n"; }, 0},
    {"tenth", [](unsigned line) { return line % 10 == 0 ? entry(line) : comment(line); },
     lineCount / 10},
    {"repeated", [](unsigned) { return entry(0); }, 1},
    {"sorted", entry, lineCount},
    // An odd factor modulo a prime: every number once, none near the one before.
    {"shuffled",
     [](unsigned line) {
       return entry(static_cast<unsigned>(line * std::uint64_t{7368787} % 1000003));
     },
     lineCount},
};

void writeList(const std::filesystem::path& file, Line line) {
  std::ofstream list(file, std::ios::binary);
  for (unsigned number = 0; number < lineCount; ++number) list << line(number);
}

std::size_t readLines(const std::filesystem::path& file) {
  std::ifstream list(file, std::ios::in | std::ios::binary);
  std::string line;
  std::size_t characters = 0;
  while (std::getline(list, line)) characters += line.size();
  return characters;
}

PairOfTimes measure(const std::filesystem::path& file, std::size_t names) {
  std::size_t characters = 0;
  bool right = true;
  const PairOfTimes times = inTurn(
      rounds,
      [&] {
        ComponentVersions versions;
        std::ifstream list(file, std::ios::in | std::ios::binary);
        versions.read(list);
        right = versions.size() == names && right;
      },
      [&] { characters += readLines(file); });
  const std::size_t inFile = std::filesystem::file_size(file) - lineCount;
  if (!right || characters != rounds * inFile) throw std::runtime_error("the list was not read");
  return times;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) return 2;
  const std::filesystem::path file = arguments[1];
  for (const Kind& kind : kinds) {
    writeList(file, kind.line);
    report(kind.name, measure(file, kind.names));
  }
  std::filesystem::remove(file);
}
