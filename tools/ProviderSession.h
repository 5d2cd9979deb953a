#pragma once

#include <string>
#include <string_view>

/// A session of the command's own with the installation's crypto provider, ended with the object.
/// The library only reads protected values, and does not tell a refused one from a strange text.
class ProviderSession {
 public:
  /// Loads the provider, if there is one, and tries to open a session.
  ProviderSession();
  ~ProviderSession();
  ProviderSession(const ProviderSession&) = delete;
  ProviderSession& operator=(const ProviderSession&) = delete;

  /// Whether there is a provider that could be loaded.
  static bool hasProvider();
  bool isOpen() const { return m_open; }

  /// The stored text for a clear text; empty if the provider refuses.
  std::string protect(std::string_view clearText) const;
  /// Whether the provider gives a clear text for a stored text.
  bool opens(const std::string& storedText) const;
  /// Why the last call failed, as the provider tells it; empty if it does not.
  std::string reason() const;

 private:
  void* m_handle = nullptr;
  bool m_open = false;
};

/// Where the provider is looked for.
std::string providerPath();
