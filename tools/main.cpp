#include <locale.h>
#include <signal.h>

#include <exception>

#include "platform/core/VRDThrowable.h"
#include "tools/CommandLine.h"
#include "tools/ExitStatus.h"
#include "tools/Output.h"
#include "tools/Text.h"

namespace {

/// Nothing is thrown out of here: whatever a command meets becomes a line and an exit status.
int run(int argc, char** argv, Output& output) {
  try {
    return runCommandLine(argc, argv, output);
  } catch (const VRDThrowable& error) {
    output.error(bytesOf(error.getMessage()));
  } catch (const std::exception& error) {
    output.error(error.what());
  } catch (...) {
    output.error("an unknown exception ended the command");
  }
  return ExitStatus::cannotRun;
}

}  // namespace

int main(int argc, char** argv) {
  // Writing to a reader that went away is to fail, not to kill.
  ::signal(SIGPIPE, SIG_IGN);
  // Texts are UTF-8 whatever the user's locale is; nothing else of the locale is touched.
  ::setlocale(LC_CTYPE, "C.UTF-8");
  Output output;
  return output.finish(run(argc, argv, output));
}
