// The interactive prompt: what a person types is run entry by entry, in one interpreter.
// Room: tools. Used by: the runner, when it is given no script and standard input is a terminal.
// May touch: the standard streams; the file of the history, in the user's folder for states.
// Must not: write anything of its own to standard output.
// Invariant: an entry that fails leaves the prompt as able as before.
#pragma once

#include <brindle/brindle.h>

// Whether a person can type: standard input is a terminal.
[[nodiscard]] bool CanPrompt();

// Until the end of the input; `limits` are the interpreter's. The process's exit status.
[[nodiscard]] int RunPrompt(CBrindle& interpreter, const CExecutionLimits& limits, CConsoleUserInterface& console);
