#include "tools/ClearTextInput.h"

#include <string.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace {

/// Asks for a line at a terminal and does not show what is typed. Does nothing for any other input.
class HiddenPrompt {
 public:
  HiddenPrompt()
      : m_terminal(::isatty(STDIN_FILENO) == 1 && ::tcgetattr(STDIN_FILENO, &m_before) == 0) {
    if (!m_terminal) return;
    say("clear text: ");
    termios hidden = m_before;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
  }
  ~HiddenPrompt() {
    if (!m_terminal) return;
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before);
    say("\n");
  }
  HiddenPrompt(const HiddenPrompt&) = delete;
  HiddenPrompt& operator=(const HiddenPrompt&) = delete;

  bool isTerminal() const { return m_terminal; }

 private:
  static void say(std::string_view text) {
    // A prompt that cannot be shown is not missed.
    if (::write(STDERR_FILENO, text.data(), text.size()) < 0) return;
  }

  termios m_before{};
  bool m_terminal;
};

}  // namespace

ClearTextInput::ClearTextInput() {
  read();
  dropLineEnd();
  if (m_size == 0) throw ClearTextError("the clear text on the standard input is empty");
  if (m_size > longest) throw ClearTextError("the clear text is longer than 1 MiB");
  if (::memchr(m_buffer.data(), '\0', m_size) != nullptr) {
    throw ClearTextError("the clear text holds a NUL; readers would get what stands before it");
  }
}

// Straight from the descriptor into memory that is wiped: a stream would keep a copy of the clear
// text in a buffer of its own.
void ClearTextInput::read() {
  const HiddenPrompt prompt;
  while (m_size < m_buffer.size()) {
    const ssize_t got = ::read(STDIN_FILENO, m_buffer.data() + m_size, m_buffer.size() - m_size);
    if (got == 0) return;
    if (got > 0) {
      m_size += static_cast<std::size_t>(got);
      if (prompt.isTerminal() && m_buffer.data()[m_size - 1] == '\n') return;
    } else if (errno != EINTR) {
      throw ClearTextError(std::string("the standard input cannot be read: ") + strerror(errno));
    }
  }
}

// `echo secret | vrdcfg protect` is how people call it, and none of them means the line end. Only
// one goes, so that a text which really ends in one can be given with two.
void ClearTextInput::dropLineEnd() {
  if (m_size > 0 && m_buffer.data()[m_size - 1] == '\n') --m_size;
  if (m_size > 0 && m_buffer.data()[m_size - 1] == '\r') --m_size;
}
