#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

/// An empty folder of the test's own, with everything in it gone at the end.
class TemporaryFolder {
 public:
  /// @param prefix of its name
  explicit TemporaryFolder(const std::string& prefix = "vrd") {
    std::string name = (std::filesystem::temp_directory_path() / (prefix + "XXXXXX")).string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    // Canonical, so that a test can compare it with paths that the library resolved.
    m_path = std::filesystem::canonical(name);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return m_path; }
  std::filesystem::path operator/(std::string_view name) const { return m_path / name; }

  /// Writes @p content to @p name, which may name folders that are not there yet.
  std::filesystem::path write(std::string_view name, std::string_view content) const {
    std::filesystem::path file = m_path / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
    return file;
  }

 private:
  std::filesystem::path m_path;
};
