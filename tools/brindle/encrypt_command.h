// "brindle encrypt IN OUT": the enciphered form of a script.
// Room: tools. Used by: the runner's main.
// May touch: the two files named, standard error.
// Must not: harm the script it reads, or leave half a file behind.
// Invariant: what it writes runs as the script it read does.
#pragma once

#include "command_line.h"

// The words behind "encrypt"; the process's exit status.
[[nodiscard]] int EncryptCommand(const Words& words);
