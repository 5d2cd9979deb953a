#include "platform/core/MessageCatalogues.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/core/Ascii.h"

namespace {

/// The locale that the environment names for messages, without encoding and modifier: "de_AT". The
/// variables are those of the system, first to last; an empty one counts as not set.
std::string_view messageLocale() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value == '\0') continue;
    const std::string_view locale = value;
    return locale.substr(0, locale.find_first_of(".@"));
  }
  return {};
}

/// The languages to look in, best first: that of the region, the language itself, English.
std::vector<std::string> messageLanguages() {
  std::vector<std::string> languages;
  const std::string_view locale = messageLocale();
  const std::string_view language = locale.substr(0, locale.find('_'));
  const std::string_view region = locale.substr(std::min(language.size() + 1, locale.size()));
  // They become part of a file's name. This also leaves out "C" and "POSIX", which are no
  // languages.
  if (!language.empty() && std::all_of(language.begin(), language.end(), isAsciiLower)) {
    if (!region.empty() && std::all_of(region.begin(), region.end(), isAsciiAlphanumeric)) {
      languages.emplace_back(locale);
    }
    languages.emplace_back(language);
  }
  languages.emplace_back("en");
  return languages;
}

/// Whether nothing outside the folder would be read.
bool isFileName(std::string_view catalogue) {
  return catalogue.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

/// The folder of the file that this code was loaded from; empty if it cannot be told.
std::filesystem::path libraryFolder() {
  static const char inThisLibrary = 0;
  Dl_info library;
  if (::dladdr(&inThisLibrary, &library) == 0 || library.dli_fname == nullptr) return {};
  std::error_code error;
  return std::filesystem::canonical(library.dli_fname, error).parent_path();
}

/// The catalogues lie beside the folder of libraries, or beside the folder around it where each
/// kind of processor has one of its own.
std::string installedFolder() {
  const std::filesystem::path library = libraryFolder();
  for (const std::filesystem::path& prefix :
       {library.parent_path(), library.parent_path().parent_path()}) {
    std::error_code error;
    const std::filesystem::path folder = prefix / "share/vrdcfgapi/messages";
    if (std::filesystem::is_directory(folder, error)) return folder.native();
  }
  return {};
}

}  // namespace

MessageCatalogues& MessageCatalogues::installed() {
  static MessageCatalogues& catalogues = *new MessageCatalogues(installedFolder());
  return catalogues;
}

const std::string* MessageCatalogues::find(std::string_view catalogue, unsigned long number) {
  if (m_folder.empty() || !isFileName(catalogue)) return nullptr;
  for (const std::string& language : messageLanguages()) {
    std::string file = m_folder + '/';
    file.append(catalogue).append("_").append(language).append(".txt");
    const MessageCatalogue* texts = open(file);
    if (texts == nullptr) continue;
    const auto found = texts->texts().find(number);
    if (found != texts->texts().end()) return &found->second;
  }
  return nullptr;
}

// Only files that exist are remembered, so what is kept cannot outgrow the folder, whatever names
// messages bring along.
const MessageCatalogue* MessageCatalogues::open(const std::string& file) {
  const VRDThreadGuard guard(m_lock);
  const auto known = m_catalogues.find(file);
  if (known != m_catalogues.end()) return &known->second;
  std::optional<MessageCatalogue> catalogue = MessageCatalogue::read(file);
  if (!catalogue) return nullptr;
  return &m_catalogues.emplace(file, *std::move(catalogue)).first->second;
}
