#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// How the names of a document are grouped.
enum class Names { Rising, Falling, Scattered, LongPrefix };

/// An installation with a startup document of a given size, made in a folder of its own.
struct Sample {
  std::filesystem::path root;
  std::filesystem::path document;
  std::filesystem::path nameFile;  // one name a line
  std::vector<std::string> names;
};

/// The text of each parameter.
inline constexpr char sampleText[] = "value 0123456789 of parameter 012";

/// A document of @p count parameters, laid out as a person would, each with `sampleText`.
Sample makeSample(const std::filesystem::path& folder, int count, Names grouping);
