#include "run_command.h"

#include "limit_options.h"
#include "prompt.h"
#include "version_report.h"

#include <brindle/brindle.h>

#include <functional>
#include <iostream>
#include <string_view>

namespace {

struct Options {
  std::vector<std::string> scripts;
  std::string userInterface = "auto";
  std::string onError;
  std::string codePage = "UTF-8";
  std::string route = "auto";
  LimitOptions limits;
  bool trace = false;
  bool mayPrompt = false; // where no script is named
};

CConsoleUserInterface::ErrorPolicy PolicyOf(const Options& options) {
  using Policy = CConsoleUserInterface::ErrorPolicy;
  return options.onError == "ask"        ? Policy::Ask
         : options.onError == "continue" ? Policy::Continue
         : options.onError == "abort"    ? Policy::Abort
                                         : Policy::Automatic;
}

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

bool ApplyLimits(const CExecutionLimits& limits, CBrindle& interpreter) {
  if (interpreter.SetLimits(limits))
    return true;
  std::cerr << "brindle: no such folder: " << CEnvironment::PathToNative(limits.root) << '\n';
  return false;
}

// Runs the script with everything shown by `userInterface`; false when it could not be loaded.
bool RunScript(const Options& options, CUserInterface& userInterface, const std::function<void()>& serve) {
  CUserInterface::SetDefault(&userInterface);
  bool loaded = false;
  {
    CBrindle interpreter;
    loaded = ApplyLimits(options.limits.Limits(), interpreter) &&
             interpreter.ExecuteProgram(CEnvironment::PathFromNative(options.scripts.front()));
    if (loaded && interpreter.IsResident())
      serve();
  }
  CUserInterface::SetDefault(nullptr);
  return loaded;
}

int RunOnConsole(const Options& options) {
  CConsoleUserInterface console(PolicyOf(options));
  if (options.trace)
    console.SetErrorDetail(CConsoleUserInterface::ErrorDetail::Place);
  const bool loaded = RunScript(options, console, [&console] { console.ServeUntilEndOfInput(); });
  if (!console.Flush()) {
    std::cerr << "brindle: the output could not be written\n";
    return kFailed;
  }
  return loaded && console.GetNumberOfErrors() == 0 ? kDone : kFailed;
}

int RunEntries(const Options& options) {
  // Nobody wants to be asked about each mistake of a line that can be typed again.
  CConsoleUserInterface console(options.onError.empty() ? CConsoleUserInterface::ErrorPolicy::Abort
                                                        : PolicyOf(options));
  console.SetErrorDetail(CConsoleUserInterface::ErrorDetail::Place);
  CUserInterface::SetDefault(&console);
  int status = kDone;
  {
    CBrindle interpreter;
    const CExecutionLimits limits = options.limits.Limits();
    status = ApplyLimits(limits, interpreter) ? RunPrompt(interpreter, limits, console) : kFailed;
  }
  CUserInterface::SetDefault(nullptr);
  return status;
}

int RunInWindows(const Options& options, CWindowUserInterface& windows) {
  windows.SetErrorPolicy(PolicyOf(options));
  const bool loaded = RunScript(options, windows, [&windows] { windows.ServeUntilClosed(); });
  return loaded && windows.GetNumberOfErrors() == 0 ? kDone : kFailed;
}

int Run(const Options& options) {
  if (options.scripts.empty())
    return RunEntries(options);
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

void AddOptions(CLI::App& app, Options& options) {
  app.add_option("--ui", options.userInterface, "Where message boxes and dialogs go")
      ->check(CLI::IsMember({"auto", "window", "console"}));
  app.add_option("--on-error", options.onError,
                 "How an error box is answered: ask is the default on a terminal, abort elsewhere")
      ->check(CLI::IsMember({"ask", "continue", "abort"}));
  app.add_option("--codepage", options.codePage, "The code page of scripts and text files, UTF-8 by default")
      ->type_name("NAME");
  app.add_flag("--trace", options.trace,
               "Shows below an error text where it was reported and the calls that led there; a terminal is shown it "
               "anyway");
  app.add_option("--route", options.route,
                 "For tests: auto, parser, eager or eager:N (give up at every N-th operation)")
      ->group("");
  options.limits.AddTo(app);
  app.add_option("SCRIPT", options.scripts, "The script file")->type_name("");
}

void ApplySettings(const Options& options) {
  options.limits.Check();
  if (!SetRoute(options.route))
    throw CLI::ValidationError("--route", "unknown route " + options.route);
  if (!CEnvironment::SetAnsiCodePage(options.codePage))
    throw CLI::ValidationError("--codepage", "unknown code page " + options.codePage);
}

int ReadAndRun(CLI::App& app, const Words& words, bool mayPrompt) {
  Options options;
  options.mayPrompt = mayPrompt;
  AddOptions(app, options);
  const auto over = ReadWords(app, words, [&options] {
    if (options.scripts.empty() && !(options.mayPrompt && CanPrompt()))
      throw CLI::RequiredError("SCRIPT");
    if (options.scripts.size() > 1)
      throw CLI::ValidationError("SCRIPT", "one script at a time");
    ApplySettings(options);
  });
  return over ? *over : Run(options);
}

} // namespace

int RunCommand(const Words& words) {
  CLI::App app("Runs a Brindle script.", "brindle run");
  return ReadAndRun(app, words, false);
}

int BareCommand(const Words& words) {
  CLI::App app("Runs a Brindle script; without one, on a terminal, what is typed.", "brindle");
  app.set_version_flag("--version", &VersionReport);
  app.footer("Commands, as the first word (each with a --help of its own):\n"
             "  brindle run SCRIPT         runs a script, also one that is called like a command\n"
             "  brindle check FILE...      says what is wrong with scripts, without running them\n"
             "  brindle encrypt IN OUT     writes the enciphered form of a script\n"
             "  brindle register FILE      lets scripts create objects of a server library\n"
             "  brindle unregister FILE    ends that");
  return ReadAndRun(app, words, true);
}
