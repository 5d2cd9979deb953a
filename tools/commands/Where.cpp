#include <array>

#include "platform/core/VRDFmDir.h"
#include "tools/ExitStatus.h"
#include "tools/Installation.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

constexpr std::array sources = {InstallationSource::ExecPath, InstallationSource::Root,
                                InstallationSource::CurrentDirectory, InstallationSource::RootLink,
                                InstallationSource::LibraryPath};

const InstallationCandidate* candidateOf(const Installation& installation,
                                         InstallationSource source) {
  for (const InstallationCandidate& candidate : installation.candidates()) {
    if (candidate.source == source) return &candidate;
  }
  return nullptr;
}

std::array<InstallationFile, 3> files() {
  return {startupDocument(), localeDocument(), componentList()};
}

/// One row for each way, also for those that named nothing.
void writeWays(const Installation& installation, Output& output) {
  Table table;
  bool over = false;
  for (const InstallationSource source : sources) {
    const InstallationCandidate* candidate = candidateOf(installation, source);
    if (candidate == nullptr) {
      table.add({"  ", nameOf(source), over ? "not looked at" : "names nothing"});
    } else if (candidate->refusal.empty()) {
      table.add({"=>", nameOf(source), "accepted", onOneLine(candidate->folder)});
      over = true;
    } else {
      table.add(
          {"  ", nameOf(source), "refused: " + candidate->refusal, onOneLine(candidate->folder)});
    }
  }
  table.writeTo(output);
}

void writeText(const Installation& installation, Output& output) {
  writeWays(installation, output);
  if (!installation.found()) return;
  output.line("");
  Table table;
  table.add({"bin", bytesOf(VRDFmDir::getEffectiveWorkingDir())});
  for (const InstallationFile& file : files()) {
    table.add({file.role, onOneLine(file.path), file.trouble.empty() ? "there" : file.trouble});
  }
  table.writeTo(output);
}

void writeCandidates(const Installation& installation, JsonWriter& writer) {
  writer.key("candidates").beginArray();
  for (const InstallationCandidate& candidate : installation.candidates()) {
    writer.beginObject().text("source", nameOf(candidate.source)).text("folder", candidate.folder);
    writer.truth("accepted", candidate.refusal.empty());
    if (!candidate.refusal.empty()) writer.text("refusal", candidate.refusal);
    writer.endObject();
  }
  writer.endArray();
}

void writeFiles(JsonWriter& writer) {
  writer.key("files").beginArray();
  for (const InstallationFile& file : files()) {
    writer.beginObject().text("role", file.role).text("path", file.path);
    writer.truth("there", file.trouble.empty());
    if (!file.trouble.empty()) writer.text("trouble", file.trouble);
    writer.endObject();
  }
  writer.endArray();
}

void writeJson(const Installation& installation, Output& output) {
  JsonWriter writer;
  writer.beginObject().truth("found", installation.found());
  if (installation.found()) {
    writer.text("source", nameOf(installation.candidates().back().source));
    writer.text("bin", bytesOf(VRDFmDir::getEffectiveWorkingDir()));
  }
  writeCandidates(installation, writer);
  if (installation.found()) writeFiles(writer);
  output.json(writer.endObject());
}

}  // namespace

// Walks by itself and then asks as every command does, so that the answer and the exit status agree
// with what the others do in the same place.
int runWhere(const Options& options, Output& output) {
  const Installation installation = Installation::find();
  options.json ? writeJson(installation, output) : writeText(installation, output);
  return requireInstallation(options, output) ? ExitStatus::done : ExitStatus::no;
}
