#include "tools/CommandLine.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "foundation/VRDConfigurationException.h"
#include "tools/BuildIdentity.h"
#include "tools/ExitStatus.h"
#include "tools/Installation.h"
#include "tools/NearNames.h"
#include "tools/Options.h"
#include "tools/QueryResults.h"
#include "tools/StartupWarning.h"
#include "tools/States.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

/// What a command works on; each includes those before it.
enum class Needs {
  Environment,    ///< Nothing but the options.
  Installation,   ///< The folder must have been found.
  Configuration,  ///< Query results are taken in; the user is warned of a bad startup document.
};

struct Command {
  const char* name;
  const char* description;
  Needs needs;
  int (*run)(const Options&, Output&);
  void (*configure)(CLI::App&, Options&);
};

void addDecrypt(CLI::App& app, Options& options) {
  app.add_flag("--decrypt", options.decrypt, "Show secrets in clear text");
}

void configureGet(CLI::App& app, Options& options) {
  app.add_option("NAME", options.names, "Names of parameters")->required();
  app.add_flag("--xml", options.xml, "Show the value element as XML");
  addDecrypt(app, options);
}

void configureList(CLI::App& app, Options& options) {
  app.add_option("PATTERN", options.pattern, "Shell pattern that the names must match");
  app.add_flag("--values", options.values, "Show values, cut to 60 columns, types and marks");
  addDecrypt(app, options);
}

void configureExplain(CLI::App& app, Options& options) {
  app.add_option("NAME", options.text, "Name of a parameter")->required();
  addDecrypt(app, options);
}

void configurePath(CLI::App& app, Options& options) {
  app.add_option("TEXT", options.text, "Path relative to the installation's bin folder")
      ->required();
}

void configureComponent(CLI::App& app, Options& options) {
  app.add_option("NAME", options.text, "Name of a component")->required();
}

void configureStartup(CLI::App& app, Options& options) {
  app.add_option("NAME", options.text, "Name of a parameter; without it, all");
}

void configureIn(CLI::App& app, Options& options) {
  app.add_option("--in", options.locale, "Language of the names; English without it")
      ->type_name("LOCALE");
}

void configureMapLocale(CLI::App& app, Options& options) {
  app.add_option("LOCALE", options.locale, "Locale to map")->required();
  app.add_flag("--content", options.content, "Map to a content locale, not to a product locale");
}

void configureNormalizeLocale(CLI::App& app, Options& options) {
  app.add_option("TEXT", options.text, "Locale in whatever form")->required();
}

void configureProtect(CLI::App& app, Options& options) {
  app.add_option("--parameter", options.text,
                 "Write the startup document with the value of this parameter protected")
      ->type_name("NAME");
}

void configureNothing(CLI::App&, Options&) {}

/// The order is that of the help: first what is asked every day, last what changes something.
constexpr Command commands[] = {
    {"get", "Show the values of parameters", Needs::Configuration, runGet, configureGet},
    {"list", "List the names of parameters", Needs::Configuration, runList, configureList},
    {"dump", "Show the whole parameter tree as XML", Needs::Configuration, runDump, addDecrypt},
    {"explain", "Show where the value of a parameter comes from", Needs::Configuration, runExplain,
     configureExplain},
    {"where", "Show how the installation was found, and its files", Needs::Environment, runWhere,
     configureNothing},
    {"path", "Resolve a path against the installation", Needs::Installation, runPath,
     configurePath},
    {"startup", "Compare what stands in the startup document with what is in force",
     Needs::Configuration, runStartup, configureStartup},
    {"check", "Find what the library passes over in silence in the installation's files",
     Needs::Installation, runCheck, configureNothing},
    {"fonts", "Show the supported fonts and the font mappings", Needs::Configuration, runFonts,
     configureNothing},
    {"component", "Show the version of a component", Needs::Installation, runComponent,
     configureComponent},
    {"locales", "Show the product locales with their names", Needs::Configuration, runLocales,
     configureIn},
    {"content-locales", "Show the content locales with their names", Needs::Configuration,
     runContentLocales, configureIn},
    {"time-zones", "Show all time zones with their names", Needs::Environment, runTimeZones,
     configureIn},
    {"currencies", "Show the currencies with their names", Needs::Configuration, runCurrencies,
     configureIn},
    {"map-locale", "Show the locale to use for a locale", Needs::Configuration, runMapLocale,
     configureMapLocale},
    {"normalize-locale", "Show the canonical form of a locale", Needs::Environment,
     runNormalizeLocale, configureNormalizeLocale},
    {"keygen", "Make a new key to protect values with", Needs::Installation, runKeygen,
     configureNothing},
    {"protect", "Protect the clear text on the standard input, without one line end behind it",
     Needs::Installation, runProtect, configureProtect},
};

/// Global options may stand behind the command too, where people add them to a call that they
/// repeat.
void configureGlobal(CLI::App& app, Options& options) {
  app.add_option("--root", options.root, "Root folder of the installation")->type_name("DIR");
  app.add_option("--bin", options.bin, "The installation's bin folder itself")->type_name("DIR");
  app.add_option("--query", options.queries,
                 "Take in the query results in FILE first; - is "
                 "standard input; may be given several times")
      ->type_name("FILE")
      ->type_size(1)
      ->allow_extra_args(false);
  app.add_flag("--json", options.json, "Answer in JSON");
  app.set_version_flag("--version", [] { return "vrdcfg " VRDCFG_VERSION "\n" + buildIdentity(); });
  app.fallthrough();
  app.footer(
      "Exit status: 0 done, 1 the answer is \"no\" or there are findings, 2 cannot run.\n"
      "Secrets are masked unless --decrypt is given.");
}

/// Prepares what the command needs, in an order that matters: the environment before the library's
/// first call, which finds the installation for good; query results after the startup document.
int runCommand(const Command& command, Options& options, Output& output) {
  applyInstallationOptions(options);
  if (command.needs >= Needs::Installation && !requireInstallation(options, output)) {
    return ExitStatus::cannotRun;
  }
  if (command.needs >= Needs::Configuration) {
    warnAboutStartupDocument(output);
    if (!takeQueryResults(options, output)) return ExitStatus::cannotRun;
  }
  try {
    return command.run(options, output);
  } catch (const VRDConfigurationException& error) {
    output.error(explanationOf(static_cast<int>(error.getCode())));
    return ExitStatus::cannotRun;
  }
}

std::vector<std::string> commandNames() {
  std::vector<std::string> names;
  for (const Command& command : commands) names.emplace_back(command.name);
  return names;
}

/// A first word that is no command, which the parser would only call unexpected.
bool reportUnknownCommand(const CLI::App& app, const Output& output) {
  if (!app.get_subcommands().empty()) return false;
  for (const std::string& word : app.remaining()) {
    if (word.empty() || word[0] == '-') continue;
    output.error("there is no command " + inQuotes(word) + '.' + didYouMean(word, commandNames()) +
                 " `vrdcfg --help` shows all.");
    return true;
  }
  return false;
}

/// Help is an answer; anything else that the parser throws is bad usage.
int reportParse(CLI::App& app, const CLI::ParseError& error, Output& output) {
  std::ostringstream answer;
  std::ostringstream complaint;
  if (reportUnknownCommand(app, output)) return ExitStatus::cannotRun;
  const int code = app.exit(error, answer, complaint);
  output.write(answer.str());
  std::string text = complaint.str();
  while (!text.empty() && text.back() == '\n') text.pop_back();
  if (!text.empty()) output.error(text);
  return code == 0 ? ExitStatus::done : ExitStatus::cannotRun;
}

}  // namespace

int runCommandLine(int argc, const char* const* argv, Output& output) {
  CLI::App app(
      "Answers what the configuration library answers to the processes of an installation.",
      "vrdcfg");
  Options options;
  configureGlobal(app, options);
  const Command* chosen = nullptr;
  for (const Command& command : commands) {
    CLI::App* subcommand = app.add_subcommand(command.name, command.description);
    command.configure(*subcommand, options);
    subcommand->callback([&chosen, &command] { chosen = &command; });
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return reportParse(app, error, output);
  }
  if (chosen != nullptr) return runCommand(*chosen, options, output);
  output.error("which command? `vrdcfg --help` shows all.");
  return ExitStatus::cannotRun;
}
