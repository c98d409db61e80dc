#include "command_line.h"

#include <iostream>

namespace {

void Parse(CLI::App& app, const Words& words) {
  // Deliberate: the parser takes its words from the end.
  app.parse(Words(words.rbegin(), words.rend()));
}

} // namespace

std::optional<int> ReadWords(CLI::App& app, const Words& words, const std::function<void()>& check) {
  try {
    Parse(app, words);
    if (check)
      check();
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kDone : kUsage;
  }
  return std::nullopt;
}

std::optional<int> ReadPlainWords(CLI::App& app, const Words& words, const std::function<bool()>& isComplete) {
  try {
    Parse(app, words);
    if (isComplete())
      return std::nullopt;
  } catch (const CLI::Success& help) {
    return app.exit(help) == 0 ? kDone : kUsage;
  } catch (const CLI::ParseError&) {
    // answered below
  }
  std::string usage = "usage: " + app.get_name();
  for (const CLI::Option* option : app.get_options())
    if (option->get_positional())
      usage += " " + option->get_name(true);
  std::cerr << usage << '\n';
  return kUsage;
}
