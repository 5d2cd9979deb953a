#pragma once

#include <memory>
#include <string>

#include "provider/KeyRing.h"

/// What a handle of this provider stands for.
class Session {
 public:
  /// With the keys of the installation that this library was loaded from. Throws `KeyError` if
  /// there is none to protect with.
  static std::unique_ptr<Session> open();

  KeyRing& keys() { return m_keys; }

 private:
  explicit Session(KeyFolder folder) : m_keys(std::move(folder)) {}

  KeyRing m_keys;
};
