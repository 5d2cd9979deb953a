#pragma once

#include <stdlib.h>

#include <filesystem>
#include <optional>
#include <string>

/// Sets or removes an environment variable for one block.
class EnvironmentGuard {
 public:
  /// @param value null removes the variable
  EnvironmentGuard(const char* name, const char* value) : m_name(name) {
    if (const char* before = ::getenv(name)) m_before = before;
    set(value);
  }
  ~EnvironmentGuard() { set(m_before ? m_before->c_str() : nullptr); }
  EnvironmentGuard(const EnvironmentGuard&) = delete;
  EnvironmentGuard& operator=(const EnvironmentGuard&) = delete;

 private:
  void set(const char* value) {
    value != nullptr ? ::setenv(m_name.c_str(), value, 1) : ::unsetenv(m_name.c_str());
  }

  std::string m_name;
  std::optional<std::string> m_before;
};

/// Stands in another current directory for one block.
class CurrentDirectoryGuard {
 public:
  explicit CurrentDirectoryGuard(const std::filesystem::path& directory)
      : m_before(std::filesystem::current_path()) {
    std::filesystem::current_path(directory);
  }
  ~CurrentDirectoryGuard() {
    std::error_code ignored;
    std::filesystem::current_path(m_before, ignored);
  }
  CurrentDirectoryGuard(const CurrentDirectoryGuard&) = delete;
  CurrentDirectoryGuard& operator=(const CurrentDirectoryGuard&) = delete;

 private:
  std::filesystem::path m_before;
};
