#include "register_command.h"

#include <brindle/automation_classes.h>

#include <iostream>

namespace {

int Run(CLI::App&& app, bool (*act)(const std::string&, std::string&), const Words& words) {
  std::string file;
  app.add_option("FILE", file, "The server library")->type_name("");
  if (const auto over = ReadPlainWords(app, words, [&file] { return !file.empty(); }))
    return *over;
  std::string reason;
  if (act(file, reason))
    return kDone;
  std::cerr << app.get_name() << ": " << reason << '\n';
  return kFailed;
}

} // namespace

int RegisterCommand(const Words& words) {
  return Run(CLI::App("Lets scripts create objects of the classes in a server library.", "brindle register"),
             &CAutomationClasses::RegisterLibrary, words);
}

int UnregisterCommand(const Words& words) {
  return Run(CLI::App("Ends what \"brindle register\" did, also when the library is gone.", "brindle unregister"),
             &CAutomationClasses::UnregisterLibrary, words);
}
