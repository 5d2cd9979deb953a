#include "provider/KeyRing.h"

#include <mutex>
#include <utility>

// Keys are few and read once, values many: a reader of a key that is known never waits for another
// reader. Who meets a new key makes the others wait while its file is read.

KeyRing::KeyRing(KeyFolder folder) : m_folder(std::move(folder)), m_newest(m_folder.newest()) {
  if (m_newest == 0) throw KeyError(m_folder.fileOf(1) + ": there is no key yet");
  // Read now: a session that could not protect shall not begin.
  key(m_newest);
}

const SecretKey& KeyRing::key(KeyNumber number) {
  if (const SecretKey* known = find(number)) return *known;
  // Another thread may have been here between the two locks; then there is nothing left to read.
  const std::unique_lock<std::shared_mutex> guard(m_lock);
  const auto [entry, isNew] = m_keys.try_emplace(number);
  try {
    if (isNew) m_folder.read(number, entry->second);
  } catch (...) {
    // Nothing may stay that looks like a key. The file can be repaired while the process runs.
    m_keys.erase(entry);
    throw;
  }
  return entry->second;
}

const SecretKey* KeyRing::find(KeyNumber number) const {
  const std::shared_lock<std::shared_mutex> guard(m_lock);
  const auto entry = m_keys.find(number);
  return entry != m_keys.end() ? &entry->second : nullptr;
}
