#pragma once

#include "tools/Options.h"
#include "tools/Output.h"

// The commands, one source for each or for a few of one kind. A command writes its answer into the
// output, says on the standard error what stood in its way, and returns the exit status.

int runGet(const Options& options, Output& output);
int runList(const Options& options, Output& output);
int runDump(const Options& options, Output& output);
int runExplain(const Options& options, Output& output);

int runWhere(const Options& options, Output& output);
int runPath(const Options& options, Output& output);

int runStartup(const Options& options, Output& output);
int runCheck(const Options& options, Output& output);

int runFonts(const Options& options, Output& output);
int runComponent(const Options& options, Output& output);

int runLocales(const Options& options, Output& output);
int runContentLocales(const Options& options, Output& output);
int runTimeZones(const Options& options, Output& output);
int runCurrencies(const Options& options, Output& output);
int runMapLocale(const Options& options, Output& output);
int runNormalizeLocale(const Options& options, Output& output);

int runKeygen(const Options& options, Output& output);
int runProtect(const Options& options, Output& output);
