// The words of the command line: what every command of the runner has in common.
// Room: tools. Used by: the commands of the runner.
// May touch: standard output (help), standard error (usage).
// Must not: know any command.
// Invariant: a wrong command line ends in status 2, a question for help in 0.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <optional>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

enum ExitStatus { kDone = 0, kFailed = 1, kUsage = 2 };

// Reads the words by the options that `app` knows, then calls `check`, which throws a CLI::ParseError for what cannot
// be. The exit status when nothing is left to do: help was asked for, or something was wrong.
[[nodiscard]] std::optional<int> ReadWords(CLI::App& app, const Words& words, const std::function<void()>& check = {});

// The same for a command of a few plain words: what is wrong is answered by the line "usage: ...".
[[nodiscard]] std::optional<int> ReadPlainWords(CLI::App& app, const Words& words,
                                                const std::function<bool()>& isComplete);
