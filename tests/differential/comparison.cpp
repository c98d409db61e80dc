#include "comparison.h"

#include "program_generator.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Processor time of one program; the routes that are compared have more than the reference took.
constexpr int kReferenceMilliseconds = 400;
constexpr int kOtherMilliseconds = 8000;
constexpr int kExitHangs = 41;

volatile std::sig_atomic_t exitAtLimit = kExitEndless;

void OnLimit(int) {
  _exit(exitAtLimit);
}

void LimitTime(int milliseconds, int exitCode) {
  exitAtLimit = exitCode;
  std::signal(SIGPROF, &OnLimit);
  itimerval limit{};
  limit.it_value.tv_sec = milliseconds / 1000;
  limit.it_value.tv_usec = milliseconds % 1000 * 1000;
  setitimer(ITIMER_PROF, &limit, nullptr);
}

std::string Joined(const Transcript& transcript) {
  std::string text;
  for (const std::string& line : transcript)
    text += "  " + line + "\n";
  return text;
}

std::string Differences(const Transcript& reference, const Transcript& other) {
  std::string text;
  int shown = 0;
  for (std::size_t i = 0; i < std::max(reference.size(), other.size()) && shown < 6; ++i) {
    const std::string left = i < reference.size() ? reference[i] : "(nothing)";
    const std::string right = i < other.size() ? other[i] : "(nothing)";
    if (left == right)
      continue;
    text += "  < " + left + "\n  > " + right + "\n";
    ++shown;
  }
  return text;
}

std::string WriteScript(const std::string& folder, const char* name, const std::string& text) {
  if (text.empty())
    return std::string();
  const std::string path = folder + "/" + name;
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

} // namespace

Trial TrialOf(std::uint64_t seed, const std::vector<RouteChoice>& routes) {
  constexpr int kPatience[] = {0, 2, 6, 20, 40, 100};
  Random random(seed ^ 0x5EEDULL);
  Trial trial;
  trial.program = ProgramGenerator(seed).Generate();
  if (random.Percent(30))
    trial.program = BreakProgram(trial.program, seed);
  if (random.Percent(10))
    trial.second = random.Percent(30) ? trial.program : ProgramGenerator(seed + 1000000007).Generate();
  trial.user.patience = kPatience[random.Below(6)];
  trial.routes = routes;
  if (routes.empty())
    trial.routes = {{CEnvironment::Route::Automatic, 0},
                    {CEnvironment::Route::Eager, 0},
                    {CEnvironment::Route::Eager, 1 + static_cast<unsigned>(random.Below(40))}};
  return trial;
}

Verdict CompareRuns(const Trial& trial, const std::string& folder, std::string* report,
                    const std::function<void(const RouteChoice& route)>& onRun) {
  constexpr RouteChoice kReference{CEnvironment::Route::Parser, 0};
  const std::string file = WriteScript(folder, "program.bas", trial.program);
  const std::string second = WriteScript(folder, "second.bas", trial.second);
  const std::string text = trial.program + "\n" + trial.second;
  onRun(kReference);
  const Transcript reference = RunProgram(file, second, text, kReference, trial.user);
  Verdict verdict = Verdict::Equal;
  if (IsTooDeep(reference))
    verdict = Verdict::TooDeep;
  for (const RouteChoice& route : trial.routes) {
    if (verdict != Verdict::Equal)
      break;
    onRun(route);
    const Transcript other = RunProgram(file, second, text, route, trial.user);
    if (other == reference)
      continue;
    verdict = Verdict::Different;
    if (report != nullptr)
      *report = "route " + route.Name() + ", patience " + std::to_string(trial.user.patience) +
                ":\n---- differences (< parser, > " + route.Name() + ")\n" + Differences(reference, other) +
                "---- transcript of the parser\n" + Joined(reference) + "---- transcript of " + route.Name() + "\n" +
                Joined(other);
  }
  return verdict;
}

Verdict Compare(const Trial& trial, const std::string& folder, std::string* report) {
  const Verdict verdict = CompareRuns(trial, folder, report, [](const RouteChoice& route) {
    if (route.route == CEnvironment::Route::Parser)
      LimitTime(kReferenceMilliseconds, kExitEndless);
    else
      LimitTime(kOtherMilliseconds, kExitHangs);
  });
  LimitTime(0, 0);
  return verdict;
}

Verdict CompareApart(const Trial& trial, const std::string& folder, bool showReport) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    std::string report;
    const Verdict verdict = Compare(trial, folder, &report);
    if (showReport)
      std::fputs(report.c_str(), stdout);
    std::fflush(stdout);
    std::exit(static_cast<int>(verdict));
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child)
    return Verdict::Crashed;
  if (!WIFEXITED(status))
    return Verdict::Crashed;
  switch (WEXITSTATUS(status)) {
  case kExitEndless: return Verdict::Endless;
  case kExitHangs: return Verdict::Different;
  case static_cast<int>(Verdict::Equal): return Verdict::Equal;
  case static_cast<int>(Verdict::Different): return Verdict::Different;
  case static_cast<int>(Verdict::TooDeep): return Verdict::TooDeep;
  default: return Verdict::Crashed;
  }
}
