#include "tools/ClearTextInput.h"
#include "tools/ExitStatus.h"
#include "tools/FileReplacement.h"
#include "tools/Installation.h"
#include "tools/ProviderSession.h"
#include "tools/Text.h"
#include "tools/ValueEdit.h"
#include "tools/commands/Commands.h"

namespace {

std::string withReason(const std::string& message, const ProviderSession& session) {
  const std::string reason = session.reason();
  return reason.empty() ? message : message + ": " + onOneLine(reason);
}

bool requireSession(const ProviderSession& session, const Output& output) {
  if (session.isOpen()) return true;
  if (ProviderSession::hasProvider()) {
    output.error(withReason("the crypto provider opens no session", session) +
                 ". `vrdcfg keygen` makes a key.");
  } else {
    output.error("there is no crypto provider that can be loaded; put it, or a link to it, at " +
                 onOneLine(providerPath()));
  }
  return false;
}

int answer(const char* key, const std::string& value, const Options& options, Output& output) {
  if (options.json) {
    JsonWriter writer;
    output.json(writer.beginObject().text(key, value).endObject());
  } else {
    output.line(value);
  }
  return ExitStatus::done;
}

/// The lock holds from reading to replacing, so that a second call does not undo this one.
int protectParameter(const std::string& name, const std::string& storedText, const Options& options,
                     Output& output) {
  const std::string path = startupDocument().path;
  const FileReplacement file(path);
  file.replaceBy(withProtectedValue(file.read(), name, storedText));
  return answer("file", path, options, output);
}

}  // namespace

// The session comes first: nobody should type a secret only to read that there is no provider.
int runProtect(const Options& options, Output& output) {
  const ProviderSession session;
  if (!requireSession(session, output)) return ExitStatus::cannotRun;
  ClearTextInput clear;
  const std::string storedText = session.protect(clear.text());
  if (storedText.empty()) {
    output.error(withReason("the crypto provider refuses to protect", session));
    return ExitStatus::cannotRun;
  }
  if (options.text.empty()) return answer("value", storedText, options, output);
  return protectParameter(options.text, storedText, options, output);
}
