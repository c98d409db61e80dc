#include "register_command.h"

#include <brindle/automation_classes.h>

#include <iostream>

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kUsage = 2 };

int Run(const char* word, bool (*act)(const std::string&, std::string&), const std::vector<std::string>& words) {
  if (words.size() != 1 || words[0].empty()) {
    std::cerr << "usage: brindle " << word << " FILE\n";
    return kUsage;
  }
  std::string reason;
  if (act(words[0], reason))
    return kDone;
  std::cerr << "brindle " << word << ": " << reason << '\n';
  return kFailed;
}

} // namespace

int RegisterCommand(const std::vector<std::string>& words) {
  return Run("register", &CAutomationClasses::RegisterLibrary, words);
}

int UnregisterCommand(const std::vector<std::string>& words) {
  return Run("unregister", &CAutomationClasses::UnregisterLibrary, words);
}
