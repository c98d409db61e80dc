// Dates as text, "YYYY-MM-DD HH:MM:SS".
// Room: platform. Used by: control access, the console's dialogs.
// May touch: nothing.
// Invariant: only dates of the calendar pass.
#pragma once

#include <string_view>

namespace brindle {

// Whether the text is exactly such a date, with a day that its month has.
[[nodiscard]] bool IsDateText(std::u16string_view text) noexcept;

} // namespace brindle
