// "brindle check FILE...": says what is wrong with scripts, without running them.
// Room: tools. Used by: the runner's main.
// May touch: the scripts named and what they include, standard output and error.
// Must not: run anything.
// Invariant: what is found goes to the standard output, what prevents the check to the standard error.
#pragma once

#include "command_line.h"

// The words behind "check"; the process's exit status.
[[nodiscard]] int CheckCommand(const Words& words);
