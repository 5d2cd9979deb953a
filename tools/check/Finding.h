#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tools/LocatedDocument.h"

/// Something that the library passes over in silence, or does otherwise than its author will have
/// thought.
struct Finding {
  std::string kind;  ///< For machines; stays the same when the words change.
  std::string file;
  unsigned long line;    ///< From 1; 0 where the finding is about the file as a whole.
  unsigned long column;  ///< From 1, in characters; 0 like the line.
  std::string message;   ///< What is found and what the library makes of it.
  std::string advice;    ///< What to do.
};

/// Collects the findings about one file.
class FindingList {
 public:
  explicit FindingList(std::string file) : m_file(std::move(file)) {}

  const std::string& file() const { return m_file; }

  void add(const char* kind, unsigned long line, unsigned long column, std::string message,
           std::string advice) {
    m_findings.push_back({kind, m_file, line, column, std::move(message), std::move(advice)});
  }
  void add(const char* kind, const LocatedElement& element, std::string message,
           std::string advice) {
    add(kind, element.line, element.column, std::move(message), std::move(advice));
  }
  void add(const char* kind, std::string message, std::string advice) {
    add(kind, 0, 0, std::move(message), std::move(advice));
  }

  const std::vector<Finding>& all() const { return m_findings; }

 private:
  std::string m_file;
  std::vector<Finding> m_findings;
};
