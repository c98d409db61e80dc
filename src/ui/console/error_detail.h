// What the console adds to an error text: the place, the line with a mark below the column, the calls.
// Room: ui. Used by: the console user interface.
// May touch: nothing.
// Must not: show anything that the place does not hold: the lines of an enciphered script are left out there.
// Invariant: every line ends in a line feed, and nothing in it moves a terminal's cursor.
#pragma once

#include "brindle/error_place.h"

#include <string>

namespace brindle {

// UTF-8; empty for a place without a file.
[[nodiscard]] std::string FormatErrorPlace(const CErrorPlace& place);

} // namespace brindle
