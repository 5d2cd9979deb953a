#include "tests/tools/CommandRunner.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "tests/support/TemporaryFolder.h"

namespace {

std::string quoted(const std::string& text) {
  std::string result = " '";
  for (const char byte : text) result += byte == '\'' ? std::string("'\\''") : std::string(1, byte);
  return result + "'";
}

std::string lineOf(const CommandCall& call) {
  std::string line = "cd" + quoted(call.folder.string()) +
                     " || exit 126; exec env -u ZAN_ROOT -u ZAN_EXEC_PATH -u LD_LIBRARY_PATH";
  for (const auto& [name, value] : call.environment) line += quoted(name + '=' + value);
  line += quoted(VRDCFG_PROGRAM);
  for (const std::string& argument : call.arguments) line += quoted(argument);
  return line;
}

}  // namespace

CommandResult runCommand(const CommandCall& call) {
  const TemporaryFolder files;
  files.write("in", call.input);
  const std::string sink = call.sink.empty() ? quoted((files / "out").string()) : call.sink;
  const std::string line = lineOf(call) + " <" + quoted((files / "in").string()) + " 2>" +
                           quoted((files / "err").string()) + " >" + sink;
  const int status = std::system(line.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
          contentOf(files / "out"), contentOf(files / "err")};
}

void expectAnswers(const CommandCall& base, const std::vector<Answer>& rows) {
  for (const Answer& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.arguments));
    CommandCall call = base;
    call.arguments.insert(call.arguments.end(), row.arguments.begin(), row.arguments.end());
    call.input = row.input;
    const CommandResult result = runCommand(call);
    EXPECT_EQ(result.status, row.status);
    EXPECT_THAT(result.out, row.out);
    EXPECT_THAT(result.err, row.err);
  }
}

std::string contentOf(const std::filesystem::path& file) {
  std::ostringstream content;
  content << std::ifstream(file, std::ios::binary).rdbuf();
  return content.str();
}
