#pragma once

#include <map>
#include <optional>
#include <string>

/// The texts of one message catalogue in one language. Does not change once it is read.
///
/// The file is UTF-8, one entry a line: `NUMBER = TEXT`, the number in hexadecimal with "0x", the
/// text without the blanks around it. "{0}", "{1}" and so on stand for the parameters. A line that
/// begins with "#" is a comment. What is no entry is passed over, so that one damaged line costs
/// one text; of two entries with one number the first counts.
class MessageCatalogue {
 public:
  /// Nothing unless @p file is a regular file of at most 1 MiB that can be opened.
  static std::optional<MessageCatalogue> read(const std::string& file);

  const std::map<unsigned long, std::string>& texts() const { return m_texts; }

 private:
  std::map<unsigned long, std::string> m_texts;
};
