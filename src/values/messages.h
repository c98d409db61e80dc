// The system's own texts: error messages and the texts of the booleans, by number.
// Room: values. Used by: values (True and False), interpreter (errors), ui.
// May touch: nothing.
// Invariant: numbers are fixed; a number without a text has none, and callers say so to the user.
#pragma once

#include "brindle/text.h"

#include <optional>

namespace brindle {

inline constexpr int kMessageOk = 48;
inline constexpr int kMessageTrue = 58;
inline constexpr int kMessageFalse = 59;

// The text of a number, nothing when the table has none.
[[nodiscard]] std::optional<CString> LoadMessage(int number);

} // namespace brindle
