// "brindle SCRIPT" and "brindle run SCRIPT": runs one script file, in windows or on the console.
// Room: tools. Used by: the runner's main.
// May touch: the process-wide settings, the standard streams through the library.
// Must not: write anything of its own to the standard output.
// Invariant: the exit status says whether the script ran and reported no error.
#pragma once

#include "command_line.h"

// The words behind "run"; the process's exit status.
[[nodiscard]] int RunCommand(const Words& words);

// All words, when the first one names no command.
[[nodiscard]] int BareCommand(const Words& words);
