#include "platform/core/MessageCatalogue.h"

#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "platform/core/Utf.h"

namespace {

constexpr std::uintmax_t largestFile = 1 << 20;

/// Asked before the file is opened: a pipe would keep its reader waiting.
bool hasRightForm(const std::string& file) {
  std::error_code error;
  return std::filesystem::is_regular_file(file, error) &&
         std::filesystem::file_size(file, error) <= largestFile;
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<unsigned long> numberOf(std::string_view text) {
  if (text.substr(0, 2) != "0x") return std::nullopt;
  const char* const end = text.data() + text.size();
  unsigned long number = 0;
  const auto [last, error] = std::from_chars(text.data() + 2, end, number, 16);
  if (error != std::errc() || last != end) return std::nullopt;
  return number;
}

}  // namespace

std::optional<MessageCatalogue> MessageCatalogue::read(const std::string& file) {
  if (!hasRightForm(file)) return std::nullopt;
  std::ifstream source(file, std::ios::binary);
  if (!source) return std::nullopt;
  MessageCatalogue catalogue;
  for (std::string line; std::getline(source, line);) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) continue;
    const std::string_view entry = line;
    const auto number = numberOf(trimmed(entry.substr(0, equals)));
    const std::string_view text = trimmed(entry.substr(equals + 1));
    if (number && !text.empty() && utf::measure(text).oddBytes == 0) {
      catalogue.m_texts.emplace(*number, text);
    }
  }
  return catalogue;
}
