#include "provider/ErrorDocument.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "provider/GivenMemory.h"

// Kept for each thread and not for each handle: a failure to open has no handle yet, and threads
// that share a handle would tell each other's failures.

namespace {

/// Plain memory, so that nothing has to be torn down when a thread ends. A reason that is longer,
/// for the sake of a very long path, is cut.
struct LastFailure {
  char operation[64];
  char reason[512];
};
thread_local LastFailure last{};

/// As character data. The bytes of a path come as they are, so the document has the encoding of the
/// platform; a control character, which no document can hold, is seen as "?".
void append(std::string& document, const char* text) {
  for (; *text != '\0'; ++text) {
    switch (*text) {
      case '<':
        document += "&lt;";
        break;
      case '>':
        document += "&gt;";
        break;
      case '&':
        document += "&amp;";
        break;
      default:
        document += static_cast<unsigned char>(*text) < ' ' ? '?' : *text;
    }
  }
}

std::string documentText() {
  std::string document = "<errorDocument><operation>";
  append(document, last.operation);
  document += "</operation><reason>";
  append(document, last.reason);
  return document += "</reason></errorDocument>";
}

}  // namespace

void reportFailure(const char* operation, const char* reason, char** error) noexcept {
  // First into the thread's own memory, which is always there.
  std::snprintf(last.operation, sizeof last.operation, "%s", operation);
  std::snprintf(last.reason, sizeof last.reason, "%s", reason);
  if (error == nullptr) return;
  *error = nullptr;
  try {
    *error = lastFailure();
  } catch (...) {
    // The status tells that something went wrong; the details may have to wait.
  }
}

char* lastFailure() {
  if (last.operation[0] == '\0') return nullptr;
  const std::string text = documentText();
  unsigned char* document = allocateGiven(text.size() + 1);
  std::memcpy(document, text.c_str(), text.size() + 1);
  return reinterpret_cast<char*>(document);
}
