// The command-line runner: runs one script file, in windows or on the console.
#include <brindle/brindle.h>

#include "encrypt_command.h"
#include "register_command.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <iostream>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

enum ExitStatus { kRan = 0, kFailed = 1, kUsage = 2 };

struct Options {
  std::vector<std::string> scripts;
  std::string userInterface = "auto";
  CConsoleUserInterface::ErrorPolicy errorPolicy = CConsoleUserInterface::ErrorPolicy::Automatic;
  std::string codePage = "UTF-8";
  std::string route = "auto";
  CExecutionLimits limits;
};

bool SetRoute(const std::string& name) {
  constexpr std::string_view kEager = "eager:";
  using Route = CEnvironment::Route;
  if (name == "auto" || name == "parser" || name == "eager") {
    CEnvironment::SetRoute(name == "auto" ? Route::Automatic : name == "parser" ? Route::Parser : Route::Eager);
    return true;
  }
  if (!name.starts_with(kEager) || name.size() == kEager.size() || name.size() > kEager.size() + 6 ||
      name.find_first_not_of("0123456789", kEager.size()) != std::string::npos)
    return false;
  CEnvironment::SetRoute(Route::Eager, static_cast<unsigned>(std::stoul(name.substr(kEager.size()))));
  return true;
}

// Runs the script with everything shown by `userInterface`; false when it could not be loaded.
bool RunScript(const Options& options, CUserInterface& userInterface, const std::function<void()>& serve) {
  CUserInterface::SetDefault(&userInterface);
  bool loaded = false;
  {
    CBrindle interpreter;
    if (!interpreter.SetLimits(options.limits)) {
      std::cerr << "brindle: no such folder: " << CEnvironment::PathToNative(options.limits.root) << '\n';
      CUserInterface::SetDefault(nullptr);
      return false;
    }
    loaded = interpreter.ExecuteProgram(CEnvironment::PathFromNative(options.scripts.front()));
    if (loaded && interpreter.IsResident())
      serve();
  }
  CUserInterface::SetDefault(nullptr);
  return loaded;
}

int RunOnConsole(const Options& options) {
  CConsoleUserInterface console(options.errorPolicy);
  const bool loaded = RunScript(options, console, [&console] { console.ServeUntilEndOfInput(); });
  if (!console.Flush()) {
    std::cerr << "brindle: the output could not be written\n";
    return kFailed;
  }
  return loaded && console.GetNumberOfErrors() == 0 ? kRan : kFailed;
}

int RunInWindows(const Options& options, CWindowUserInterface& windows) {
  windows.SetErrorPolicy(options.errorPolicy);
  const bool loaded = RunScript(options, windows, [&windows] { windows.ServeUntilClosed(); });
  return loaded && windows.GetNumberOfErrors() == 0 ? kRan : kFailed;
}

int Run(const Options& options) {
  const bool wantsWindow = options.userInterface == "window";
  if (!wantsWindow && (options.userInterface == "console" || !CWindowUserInterface::HasDisplay()))
    return RunOnConsole(options);
  std::string reason;
  if (const auto windows = CWindowUserInterface::Load("qt", reason))
    return RunInWindows(options, *windows);
  if (!wantsWindow)
    return RunOnConsole(options);
  std::cerr << "brindle: no window can be shown: " << reason << '\n';
  return kUsage;
}

} // namespace

int main(int argc, char** argv) {
  CEnvironment::ReportFileSizeLimits();
  if (argc > 1 && std::string_view(argv[1]) == "encrypt")
    return EncryptCommand({argv + 2, argv + argc});
  if (argc > 1 && std::string_view(argv[1]) == "register")
    return RegisterCommand({argv + 2, argv + argc});
  if (argc > 1 && std::string_view(argv[1]) == "unregister")
    return UnregisterCommand({argv + 2, argv + argc});

  using Policy = CConsoleUserInterface::ErrorPolicy;
  const std::map<std::string, Policy> policies = {
      {"ask", Policy::Ask}, {"continue", Policy::Continue}, {"abort", Policy::Abort}};

  Options options;
  double seconds = 0;
  std::uint64_t mebibytes = 0;
  std::string root;
  std::vector<std::string> forbidden;
  CLI::App app("Runs a Brindle script.", "brindle");
  app.set_version_flag("--version", std::string("brindle ") + BRINDLE_VERSION);
  app.footer(
      "brindle encrypt IN OUT writes the enciphered form of a script.\n"
      "brindle register FILE lets scripts create objects of a server library, brindle unregister FILE ends that.");
  app.add_option("--ui", options.userInterface, "Where message boxes and dialogs go: auto, window or console")
      ->check(CLI::IsMember({"auto", "window", "console"}));
  app.add_option("--on-error", options.errorPolicy,
                 "How an error box is answered: ask (the default on a terminal), continue, or abort (otherwise)")
      ->transform(CLI::CheckedTransformer(policies));
  app.add_option("--codepage", options.codePage, "The code page of scripts and text files, UTF-8 by default");
  app.add_option("--route", options.route,
                 "For tests: auto, parser, eager or eager:N (give up at every N-th operation)")
      ->group("");
  constexpr std::uint64_t kMostMebibytes = std::uint64_t{1} << 30;
  app.add_option("--max-statements", options.limits.statements, "End the run after so many statements")
      ->check(CLI::Range(std::uint64_t{1}, std::numeric_limits<std::uint64_t>::max()));
  app.add_option("--max-seconds", seconds, "End the run after so many seconds, 0.5 for half of one")
      ->check(CLI::Range(0.001, 4'000'000.0));
  app.add_option("--max-memory", mebibytes, "End the run when its data takes so many MiB")
      ->check(CLI::Range(std::uint64_t{1}, kMostMebibytes));
  app.add_option("--max-depth", options.limits.callDepth, "End the run when so many procedure calls nest")
      ->check(CLI::Range(1, std::numeric_limits<int>::max()));
  app.add_option("--root", root, "A folder that no path of the script leads out of");
  app.add_option("--forbid", forbidden, "What the script may not use: runexe, externals, automation, serial")
      ->delimiter(',')
      ->check(CLI::IsMember({"runexe", "externals", "automation", "serial"}));
  app.add_option("SCRIPT", options.scripts, "The script file")->required();

  try {
    app.parse(argc, argv);
    if (options.scripts.size() > 1)
      throw CLI::ValidationError("SCRIPT", "one script at a time");
    if (!SetRoute(options.route))
      throw CLI::ValidationError("--route", "unknown route " + options.route);
    if (app.count("--root") > 0 && root.empty())
      throw CLI::ValidationError("--root", "no folder named");
    if (!CEnvironment::SetAnsiCodePage(options.codePage))
      throw CLI::ValidationError("--codepage", "unknown code page " + options.codePage);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kRan : kUsage;
  }
  options.limits.milliseconds = static_cast<std::uint32_t>(std::ceil(seconds * 1000));
  options.limits.bytes = mebibytes << 20;
  options.limits.root = CEnvironment::PathFromNative(root);
  const auto forbids = [&forbidden](const char* what) {
    return std::find(forbidden.begin(), forbidden.end(), what) != forbidden.end();
  };
  options.limits.noPrograms = forbids("runexe");
  options.limits.noLibraries = forbids("externals");
  options.limits.noAutomation = forbids("automation");
  options.limits.noSerialPorts = forbids("serial");
  return Run(options);
}
