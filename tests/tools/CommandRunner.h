#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// How `vrdcfg` is started. Of this process's environment everything comes along but what names an
/// installation.
struct CommandCall {
  std::vector<std::string> arguments = {};
  std::map<std::string, std::string> environment = {};
  std::filesystem::path folder = "/";
  std::string input = {};
  std::string sink = {};  ///< Where the answer goes instead of into the result, as a shell has it.
};

/// What it did.
struct CommandResult {
  int status = -1;  ///< The exit status; 128 and more: the signal that ended it.
  std::string out;
  std::string err;
};

/// Runs the built command as a user would.
CommandResult runCommand(const CommandCall& call);

/// What is expected of a call; a text alone stands for the whole answer.
struct Answer {
  std::vector<std::string> arguments;
  int status;
  testing::Matcher<std::string> out;
  testing::Matcher<std::string> err = "";
  std::string input = {};
};

/// Runs @p base with the arguments of each row behind its own.
void expectAnswers(const CommandCall& base, const std::vector<Answer>& rows);

std::string contentOf(const std::filesystem::path& file);
