// RunProgram: one run of a program on one route, and everything of it that anybody can observe.
// Room: tests. Used by: the differential fuzzer.
// May touch: interpreters, and through BrindleTestAccess their state; the script's file.
// Must not: decide what is right: the executing parser's run is compared with the others.
// Invariant: a run is the same however often it is repeated in one process.
#pragma once

#include "brindle/environment.h"

#include <string>
#include <vector>

struct RouteChoice {
  CEnvironment::Route route = CEnvironment::Route::Parser;
  unsigned giveUpEvery = 0;

  [[nodiscard]] std::string Name() const;
};

// How the user behaves: answers so many error boxes with OK and the others with Cancel.
struct UserChoice {
  int patience = 0;
};

// What was shown, line by line, and what is left in the interpreter.
using Transcript = std::vector<std::string>;

// `second` runs in the same interpreter afterwards, unless it is empty.
[[nodiscard]] Transcript RunProgram(const std::string& file, const std::string& second, const std::string& text,
                                    const RouteChoice& route, const UserChoice& user);

// Whether a run met the limit of nesting, which may lie elsewhere on another route.
[[nodiscard]] bool IsTooDeep(const Transcript& transcript);
