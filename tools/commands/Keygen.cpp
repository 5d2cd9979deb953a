#include <sys/random.h>

#include <cerrno>
#include <cstring>

#include "platform/core/VRDFmDir.h"
#include "provider/KeyFolder.h"
#include "tools/ExitStatus.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

/// A key is no longer than what the system gives in one piece.
void fillRandomly(SecretKey& key) {
  if (::getrandom(key.data(), SecretKey::size, 0) != static_cast<ssize_t>(SecretKey::size)) {
    throw KeyError(std::string("the system gives no random bytes: ") + std::strerror(errno));
  }
}

}  // namespace

// Needs no provider, so that the key can be there before it.
int runKeygen(const Options& options, Output& output) {
  I18NString path = KeyFolder::belowBin;
  const KeyFolder folder(bytesOf(VRDFmDir::resolveEffectivePath(path)));
  SecretKey key;
  fillRandomly(key);
  const KeyNumber number = folder.add(key);
  if (options.json) {
    JsonWriter writer;
    writer.beginObject().number("number", number).text("file", folder.fileOf(number));
    output.json(writer.endObject());
  } else {
    output.line("made key " + std::to_string(number) + ": " + onOneLine(folder.fileOf(number)));
    if (number > 1) output.line("older keys stay in place for the values that they protected");
  }
  return ExitStatus::done;
}
