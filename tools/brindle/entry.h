// An entry of the prompt: the lines that belong together, and the program text they are run as.
// Room: tools. Used by: the prompt.
// May touch: nothing.
// Must not: judge: what makes no sense is run as it stands, and the interpreter says so.
// Invariant: the lines of the program text are those of the entry, one for one.
#pragma once

#include <string>
#include <string_view>

// Whether every block and every text in quotes that the entry opens is closed. UTF-8.
[[nodiscard]] bool IsComplete(std::string_view entry);

// A procedure is defined behind the end of the main program, an expression is printed, anything else stays as it is.
[[nodiscard]] std::string ProgramOf(std::string_view entry);

// Whether nothing in it would be run.
[[nodiscard]] bool IsEmpty(std::string_view entry);
