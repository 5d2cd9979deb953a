#include "tools/EffectiveConfiguration.h"
#include "tools/ExitStatus.h"
#include "tools/States.h"
#include "tools/commands/Commands.h"

int runDump(const Options& options, Output& output) {
  const EffectiveParameter tree = EffectiveConfiguration(options.decrypt).readTree();
  if (tree.state != VRDCFGAPI_NoError) {
    output.error("the tree cannot be read: " + explanationOf(tree.state));
    return exitStatusOf(tree.state);
  }
  if (options.json) {
    JsonWriter writer;
    writer.beginObject().text("xml", tree.text).truth("masked", tree.masked);
    output.json(writer.truth("undecryptable", tree.undecrypted).endObject());
  } else {
    output.line(tree.text);
  }
  if (!tree.undecrypted) return ExitStatus::done;
  output.error(
      "values that are still marked as encrypted could not be decrypted; "
      "`vrdcfg list --values --decrypt` shows which");
  return ExitStatus::no;
}
