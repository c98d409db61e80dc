// "brindle register FILE" and "brindle unregister FILE": server libraries for "createobject".
// Room: tools. Used by: the runner's main.
// May touch: standard error; registration files through the library.
// Must not: print anything when it succeeds.
// Invariant: what one writes the other removes.
#pragma once

#include "command_line.h"

// The words behind "register" / "unregister"; the process's exit status.
[[nodiscard]] int RegisterCommand(const Words& words);
[[nodiscard]] int UnregisterCommand(const Words& words);
