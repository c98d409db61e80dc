// Texts around Automation: what a result code says, and the text of a value of any kind.
// Room: platform. Used by: calls (objects).
// May touch: nothing.
// Must not: change a value.
// Invariant: every code and every kind has a text, if only a general one.
#pragma once

#include "brindle/automation.h"
#include "brindle/text.h"

namespace brindle {

// The standard message of a code; one that has none is named by its number.
[[nodiscard]] CString ResultText(HRESULT code);

// The text of a value that is no array: numbers in decimal, a date as "YYYY-MM-DD HH:MM:SS", an error as its message,
// the empty text for what has none (nothing, null, an object).
[[nodiscard]] CString VariantText(const VARIANT& value);

// "YYYY-MM-DD HH:MM:SS" of a date: days since 1899-12-30, the time of day as the fraction. Empty out of the years
// 100 to 9999.
[[nodiscard]] CString DateText(DATE date);

} // namespace brindle
