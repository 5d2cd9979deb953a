#include "bench/Children.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>
#include <stdexcept>

#include "bench/Measure.h"

namespace {

std::string besideThis(const std::string& program) {
  return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / program).string();
}

/// Starts @p program with its output in the returned end of a pipe.
pid_t start(std::string program, std::vector<std::string> arguments, int& output) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  // As writable texts, as the call takes them.
  std::vector<char*> words{program.data()};
  for (std::string& argument : arguments) words.push_back(argument.data());
  words.push_back(nullptr);
  pid_t process = 0;
  const int status =
      ::posix_spawn(&process, program.c_str(), &actions, nullptr, words.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  ::close(ends[1]);
  if (status != 0) throw std::runtime_error("cannot start " + program);
  output = ends[0];
  return process;
}

std::string readAll(int from) {
  std::string text;
  char buffer[4096];
  for (ssize_t count = ::read(from, buffer, sizeof buffer); count > 0;
       count = ::read(from, buffer, sizeof buffer)) {
    text.append(buffer, static_cast<std::size_t>(count));
  }
  ::close(from);
  return text;
}

double microsecondsOf(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
}

ChildResult medians(const std::vector<ChildResult>& results) {
  std::vector<double> times;
  std::map<std::string, std::vector<double>> values;
  for (const ChildResult& result : results) {
    times.push_back(result.microseconds);
    for (const auto& [name, value] : result.values) values[name].push_back(value);
  }
  ChildResult middle;
  middle.microseconds = median(times);
  for (const auto& [name, all] : values) middle.values[name] = median(all);
  return middle;
}

}  // namespace

bool isBuilt(const std::string& program) { return std::filesystem::exists(besideThis(program)); }

ChildResult runChild(const std::string& program, const std::vector<std::string>& arguments,
                     const std::string& binDir) {
  ::setenv("ZAN_EXEC_PATH", binDir.c_str(), 1);
  ChildResult result;
  int output = -1;
  const pid_t process = start(besideThis(program), arguments, output);
  const std::string text = readAll(output);
  int status = 0;
  rusage used{};
  ::wait4(process, &status, 0, &used);
  result.microseconds = microsecondsOf(used.ru_utime) + microsecondsOf(used.ru_stime);
  if (status != 0) throw std::runtime_error(program + " failed");
  std::istringstream lines(text);
  std::string name;
  for (double value = 0; lines >> name >> value;) result.values[name] = value;
  return result;
}

ChildResult runOften(int rounds, const std::string& program,
                     const std::vector<std::string>& arguments, const std::string& binDir) {
  std::vector<ChildResult> results;
  for (int round = 0; round < rounds; ++round) {
    results.push_back(runChild(program, arguments, binDir));
  }
  return medians(results);
}

PairOfChildren runInTurn(int rounds, const std::string& ours,
                         const std::vector<std::string>& ourArguments, const std::string& peers,
                         const std::vector<std::string>& peerArguments, const std::string& binDir) {
  std::vector<ChildResult> oursResults;
  std::vector<ChildResult> peersResults;
  for (int round = 0; round < rounds; ++round) {
    oursResults.push_back(runChild(ours, ourArguments, binDir));
    peersResults.push_back(runChild(peers, peerArguments, binDir));
  }
  return {medians(oursResults), medians(peersResults)};
}
