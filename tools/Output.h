#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tools/Json.h"

/// Where a command writes to. Answers are collected and written at the end, in one go, so that a
/// command which fails half-way leaves no half answer; remarks go to the standard error at once.
class Output {
 public:
  Output() = default;
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  /// What was collected may hold a secret in clear text.
  ~Output();

  /// Adds to the answer.
  void write(std::string_view text) { m_answer += text; }
  void line(std::string_view text);
  void json(const JsonWriter& writer) { line(writer.document()); }

  /// Says what went wrong and what to do about it.
  void error(std::string_view text) const { remark("", text); }
  /// Says what the answer does not show; the command goes on.
  void warning(std::string_view text) const { remark("warning: ", text); }

  /// Writes the answer.
  /// @return @p status; "cannot run" if the answer could not be written. A reader that went away
  ///         (`vrdcfg dump | head`) has seen what it wanted: that is no failure.
  int finish(int status);

 private:
  void remark(std::string_view kind, std::string_view text) const;

  std::string m_answer;
};

/// Rows of texts, written as columns that are aligned on a terminal. The last column is not padded.
class Table {
 public:
  using Row = std::vector<std::string>;

  void add(Row row) { m_rows.push_back(std::move(row)); }
  void writeTo(Output& output) const;

 private:
  std::vector<int> widths() const;

  std::vector<Row> m_rows;
};
