// Comparison of one program's runs, in processes of their own: a program may never end.
// Room: tests. Used by: the differential fuzzer and its shrinker.
// May touch: child processes, a folder for scripts.
// Must not: judge the executing parser's run: it is the reference.
// Invariant: what a program does to its process reaches no other program.
#pragma once

#include "program_run.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct Trial {
  std::string program;
  std::string second; // run in the same interpreter afterwards; empty: none
  std::vector<RouteChoice> routes;
  UserChoice user;
};

// The exit status of a process whose program has used up the reference's time.
constexpr int kExitEndless = 40;

enum class Verdict : int { Equal, Different, Endless, TooDeep, Crashed };

// The program of a seed with the routes that it is tried on; an empty list of routes is all of them.
[[nodiscard]] Trial TrialOf(std::uint64_t seed, const std::vector<RouteChoice>& routes);

// Within this process, however long it takes; the file of the program stands in the folder. `onRun` is called before
// each run; `report` gets what to show when the runs differ.
[[nodiscard]] Verdict CompareRuns(const Trial& trial, const std::string& folder, std::string* report,
                                  const std::function<void(const RouteChoice& route)>& onRun);
// The same, with an end of the process when a run takes too long.
[[nodiscard]] Verdict Compare(const Trial& trial, const std::string& folder, std::string* report);
// In a child process, with a limit of time.
[[nodiscard]] Verdict CompareApart(const Trial& trial, const std::string& folder, bool showReport);

// The smallest program found by leaving lines and words out that still differs.
[[nodiscard]] Trial Shrink(Trial trial, const std::string& folder);
