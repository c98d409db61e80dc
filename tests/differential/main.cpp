// brindle_differential: runs random programs by the executing parser and by compiled statements, and compares.
#include "comparison.h"
#include "program_generator.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr const char* kUsage =
    "brindle_differential [options]\n"
    "  --programs N     how many programs (default 1000)\n"
    "  --seed N         the first one's seed (default 1); they count up from there\n"
    "  --routes LIST    of auto, eager and eager:N, with commas between (default: auto, eager, eager:random)\n"
    "  --seconds N      stop after about so much time\n"
    "  --most N         stop after so many differences (default 10)\n"
    "  --print          print the program of the seed and do nothing else\n"
    "  --no-shrink      show differing programs as they are\n"
    "  --script FILE    compare the runs of this program instead (with --patience N, default 100)\n";

struct Options {
  std::uint64_t programs = 1000;
  std::uint64_t seed = 1;
  std::vector<RouteChoice> routes;
  int seconds = 0;
  int most = 10;
  bool print = false;
  bool shrink = true;
  std::string script;
  int patience = 100;
};

bool ReadRoutes(const std::string& list, std::vector<RouteChoice>& routes) {
  for (std::size_t at = 0; at <= list.size();) {
    const std::size_t end = std::min(list.find(',', at), list.size());
    const std::string name = list.substr(at, end - at);
    if (name == "auto")
      routes.push_back({CEnvironment::Route::Automatic, 0});
    else if (name == "eager")
      routes.push_back({CEnvironment::Route::Eager, 0});
    else if (name.starts_with("eager:") && std::atoi(name.c_str() + 6) > 0)
      routes.push_back({CEnvironment::Route::Eager, static_cast<unsigned>(std::atoi(name.c_str() + 6))});
    else
      return false;
    at = end + 1;
  }
  return true;
}

bool ReadOptions(int count, char** arguments, Options& options) {
  for (int i = 1; i < count; ++i) {
    const std::string name = arguments[i];
    if (name == "--print") {
      options.print = true;
    } else if (name == "--no-shrink") {
      options.shrink = false;
    } else if (i + 1 == count) {
      return false;
    } else {
      const char* const value = arguments[++i];
      if (name == "--programs")
        options.programs = std::strtoull(value, nullptr, 10);
      else if (name == "--seed")
        options.seed = std::strtoull(value, nullptr, 10);
      else if (name == "--seconds")
        options.seconds = std::atoi(value);
      else if (name == "--most")
        options.most = std::atoi(value);
      else if (name == "--script")
        options.script = value;
      else if (name == "--patience")
        options.patience = std::atoi(value);
      else if (name != "--routes" || !ReadRoutes(value, options.routes))
        return false;
    }
  }
  return true;
}

// What the child that runs the programs has reached, for its parent to see when it ends by itself.
struct Progress {
  std::uint64_t seed = 0;
  std::uint64_t passed = 0;
  std::uint64_t tooDeep = 0;
  bool different = false;
};

void Show(const Trial& trial, const std::string& folder) {
  std::printf("---- program\n%s", trial.program.c_str());
  if (!trial.second.empty())
    std::printf("---- second program\n%s", trial.second.c_str());
  if (CompareApart(trial, folder, true) == Verdict::Crashed)
    std::printf("---- ended by a signal\n");
  std::printf("----\n");
}

// Runs programs until one ends the process or differs.
void RunMany(Progress& progress, const Options& options, std::uint64_t last, std::time_t until,
             const std::string& folder) {
  for (; progress.seed < last && (until == 0 || std::time(nullptr) < until); ++progress.seed) {
    const Verdict verdict = Compare(TrialOf(progress.seed, options.routes), folder, nullptr);
    if (verdict == Verdict::Different) {
      progress.different = true;
      return;
    }
    ++(verdict == Verdict::TooDeep ? progress.tooDeep : progress.passed);
  }
}

int RunAll(const Options& options, const std::string& folder) {
  void* const shared = mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED)
    return 2;
  Progress& progress = *::new (shared) Progress;
  progress.seed = options.seed;
  const std::uint64_t last = options.seed + options.programs;
  const std::time_t until = options.seconds > 0 ? std::time(nullptr) + options.seconds : 0;
  std::uint64_t endless = 0;
  int differences = 0;
  while (progress.seed < last && differences < options.most && (until == 0 || std::time(nullptr) < until)) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
      RunMany(progress, options, last, until, folder);
      std::exit(0); // as a whole program ends, for tools that look then
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
      return 2;
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0 && !progress.different)
      break;
    // A program without an end is none that can be compared; whatever else ended the child is judged alone.
    Trial trial = TrialOf(progress.seed, options.routes);
    const bool isEndless = WIFEXITED(status) && WEXITSTATUS(status) == kExitEndless;
    const Verdict verdict = isEndless ? Verdict::Endless : CompareApart(trial, folder, false);
    if (verdict == Verdict::Endless) {
      ++endless;
    } else {
      ++differences;
      std::printf("==== seed %llu\n", static_cast<unsigned long long>(progress.seed));
      Show(options.shrink && verdict != Verdict::Equal ? Shrink(trial, folder) : trial, folder);
    }
    progress.different = false;
    ++progress.seed;
  }
  std::printf("%llu programs alike, %llu too deep, %llu endless, %d different\n",
              static_cast<unsigned long long>(progress.passed), static_cast<unsigned long long>(progress.tooDeep),
              static_cast<unsigned long long>(endless), differences);
  return differences == 0 && progress.passed > 0 ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
  Options options;
  if (!ReadOptions(count, arguments, options)) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  if (options.print) {
    const Trial trial = TrialOf(options.seed, options.routes);
    std::printf("%s", trial.program.c_str());
    if (!trial.second.empty())
      std::printf("---- second program\n%s", trial.second.c_str());
    return 0;
  }
  std::string folder = (std::filesystem::temp_directory_path() / "brindle-differential-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr)
    return 2;
  int status = 0;
  if (options.script.empty()) {
    status = RunAll(options, folder);
  } else {
    Trial trial = TrialOf(options.seed, options.routes);
    trial.second.clear();
    trial.user.patience = options.patience;
    std::FILE* const file = std::fopen(options.script.c_str(), "rb");
    trial.program.clear();
    for (int c = 0; file != nullptr && (c = std::fgetc(file)) != EOF;)
      trial.program += static_cast<char>(c);
    if (file != nullptr)
      std::fclose(file);
    status = CompareApart(trial, folder, true) == Verdict::Equal ? 0 : 1;
  }
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
  return status;
}
