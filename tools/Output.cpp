#include "tools/Output.h"

#include <string.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

#include "tools/ExitStatus.h"
#include "tools/Text.h"

namespace {

constexpr int gap = 2;

/// @return 0, or the number of the system's error
int writeAll(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

}  // namespace

Output::~Output() { explicit_bzero(m_answer.data(), m_answer.size()); }

void Output::line(std::string_view text) {
  m_answer += text;
  m_answer += '\n';
}

void Output::remark(std::string_view kind, std::string_view text) const {
  std::string line = "vrdcfg: ";
  line += kind;
  line += text;
  line += '\n';
  writeAll(STDERR_FILENO, line);
}

// Written by hand, since a stream forgets why it failed.
int Output::finish(int status) {
  const int failure = writeAll(STDOUT_FILENO, m_answer);
  if (failure == 0 || failure == EPIPE) return status;
  error(std::string("the answer could not be written: ") + strerror(failure));
  return ExitStatus::cannotRun;
}

std::vector<int> Table::widths() const {
  std::vector<int> widths;
  for (const Row& row : m_rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], displayWidth(row[i]));
    }
  }
  return widths;
}

// Blanks are owed and not written, so that no line ends in them, whatever columns are empty.
void Table::writeTo(Output& output) const {
  const std::vector<int> columns = widths();
  for (const Row& row : m_rows) {
    std::string line;
    int owed = 0;  // blanks that become due if anything follows
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (!row[i].empty()) {
        line.append(static_cast<std::size_t>(owed), ' ');
        line += row[i];
        owed = 0;
      }
      owed += columns[i] + gap - displayWidth(row[i]);
    }
    output.line(line);
  }
}
