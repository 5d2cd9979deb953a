#pragma once

#include <map>
#include <shared_mutex>

#include "provider/KeyFolder.h"

/// The keys that a session has read so far. Any thread may use it at any time; a key stays where it
/// is as long as the ring.
class KeyRing {
 public:
  /// Reads the newest key, which there has to be. Throws `KeyError`.
  explicit KeyRing(KeyFolder folder);

  /// The number of the key to protect with: the newest one when the ring was made.
  KeyNumber newest() const { return m_newest; }

  /// A key by its number. Read from its file the first time, so that keys added after the ring was
  /// made are found. Throws `KeyError`; the next call tries again.
  const SecretKey& key(KeyNumber number);

 private:
  const SecretKey* find(KeyNumber number) const;

  KeyFolder m_folder;
  KeyNumber m_newest;
  mutable std::shared_mutex m_lock;  // guards m_keys
  std::map<KeyNumber, SecretKey> m_keys;
};
