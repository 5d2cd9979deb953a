#include "platform/core/VRDThrowable.h"

#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace {

const char* orElse(const char* text, const char* otherwise) {
  return text != nullptr ? text : otherwise;
}

/// One record as a person reads it. A site that gave no name must not bring the text down.
std::string lineOf(const VRDBackTraceRecord& record) {
  std::string line = "  at ";
  line.append(orElse(record.file, "?")).append(":").append(std::to_string(record.line));
  return line.append(" ").append(orElse(record.macroWord, "?"));
}

/// Collects lines with the caller's idea of what begins and what parts them.
class LineWriter {
 public:
  LineWriter(const char* linePrefix, const char* lineEnd)
      : m_linePrefix(orElse(linePrefix, "")), m_lineEnd(orElse(lineEnd, "\n")) {}

  /// A text of several lines comes out as several lines, so that each one begins with the prefix.
  void add(std::string_view text) {
    for (;;) {
      const std::size_t newline = text.find('\n');
      addLine(text.substr(0, newline));
      if (newline == std::string_view::npos) return;
      text.remove_prefix(newline + 1);
    }
  }

  const std::string& text() const { return m_text; }

 private:
  void addLine(std::string_view line) {
    if (m_begun) m_text += m_lineEnd;
    m_begun = true;
    m_text.append(m_linePrefix).append(line);
  }

  const char* m_linePrefix;
  const char* m_lineEnd;
  std::string m_text;
  bool m_begun = false;
};

}  // namespace

VRDThrowable::VRDThrowable() = default;
VRDThrowable::VRDThrowable(const VRDThrowable&) = default;
VRDThrowable& VRDThrowable::operator=(const VRDThrowable&) = default;
VRDThrowable::~VRDThrowable() = default;

// The form for a changeable object is of the interface; there is nothing that it could do
// differently.
I18NString VRDThrowable::getMessage() { return std::as_const(*this).getMessage(); }

I18NString VRDThrowable::toString() {
  I18NString out;
  toString(nullptr, nullptr, out, 1);
  return out;
}

void VRDThrowable::toString(const char* linePrefix, const char* lineEnd, I18NString& out,
                            int withBackTrace) {
  appendLines(I18NString(), linePrefix, lineEnd, out, withBackTrace);
}

void VRDThrowable::addBackTrace(const VRDFileLocation& where, const char* /*text*/,
                                const char* macroWord) noexcept {
  const VRDBackTraceRecord record{where.file, where.line, macroWord};
  if (m_firstCount < m_first.size()) {
    m_first[m_firstCount++] = record;
    return;
  }
  try {
    m_more.push_back(record);
  } catch (const std::bad_alloc&) {
    // Left out: passing the error on matters more than where it passed.
  }
}

void VRDThrowable::appendLines(const I18NString& state, const char* linePrefix, const char* lineEnd,
                               I18NString& out, int withBackTrace) const {
  const I18NString message = getMessage();
  LineWriter lines(linePrefix, lineEnd);
  lines.add(getThrowableName());
  // An exception without messages shows its state as its message; once is enough.
  if (!state.empty() && state != message) lines.add(state.utf8());
  lines.add(message.utf8());
  if (withBackTrace != 0) {
    for (std::size_t i = 0; i < getBackTraceCount(); ++i) lines.add(lineOf(getBackTraceAt(i)));
  }
  // At once and at the end: what fails on the way leaves the caller's text as it was.
  out += I18NString(std::string_view(lines.text()));
}
