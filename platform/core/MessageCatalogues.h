#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "platform/core/MessageCatalogue.h"
#include "platform/core/VRDThreads.h"

/// The message catalogues in one folder: a file NAME_LANGUAGE.txt for each language of each
/// catalogue. A file is read once, when it is first asked for. Serves any thread.
class MessageCatalogues {
 public:
  explicit MessageCatalogues(std::string folder) : m_folder(std::move(folder)) {}

  /// Those that were installed with this library. Looked for at the first call, never destroyed: an
  /// exit handler may still report an error.
  static MessageCatalogues& installed();

  /// The text of a message, in the language that the process shows messages in or, where that has
  /// none, in English. Lives as long as this object; no lock is held on it.
  /// @return null if no catalogue has the message
  const std::string* find(std::string_view catalogue, unsigned long number);

  const std::string& folder() const { return m_folder; }

 private:
  const MessageCatalogue* open(const std::string& file);

  const std::string m_folder;
  VRDThreadCriticalSection m_lock{0};
  std::map<std::string, const MessageCatalogue> m_catalogues VRD_GUARDED_BY(m_lock);
};
