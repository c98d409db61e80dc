// The command-line runner: the first word chooses the command, any other first word belongs to a script to be run.
#include "check_command.h"
#include "encrypt_command.h"
#include "register_command.h"
#include "run_command.h"

#include <brindle/environment.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

struct Command {
  std::string_view word;
  int (*run)(const Words& words);
};

constexpr std::array kCommands = {
    Command{"run", &RunCommand},
    Command{"check", &CheckCommand},
    Command{"encrypt", &EncryptCommand},
    Command{"register", &RegisterCommand},
    Command{"unregister", &UnregisterCommand},
};

} // namespace

int main(int argc, char** argv) {
  CEnvironment::ReportFileSizeLimits();
  const Words words(argv + std::min(argc, 1), argv + argc);
  if (words.empty())
    return BareCommand(words);
  const auto command = std::find_if(kCommands.begin(), kCommands.end(),
                                    [&words](const Command& known) { return known.word == words.front(); });
  return command == kCommands.end() ? BareCommand(words) : command->run({words.begin() + 1, words.end()});
}
