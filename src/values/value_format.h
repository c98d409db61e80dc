// ValueFormat: the printf-style text that "format" puts one value into, taken apart.
// Room: values. Used by: the "format" function, the compiler of statements.
// May touch: nothing.
// Must not: trust the text; it comes from the script.
// Invariant: there is one value: what would convert a second one, and what takes its width or precision from an
// argument, prints nothing and is not kept.
#pragma once

#include "brindle/text.h"
#include "platform/number_text.h"

namespace brindle {

struct ValueFormat {
  CString before; // the text in front of the value; all of it when there is no place for one
  bool hasValue = false;
  FormatDirective directive;
  CString behind;
  bool isPlain = false; // nothing but one of "%d" and "%.Nf"
};

[[nodiscard]] ValueFormat ReadFormat(std::u16string_view text);

// Whether the directive prints a number, whatever kind of value it gets.
[[nodiscard]] bool PrintsNumber(const FormatDirective& directive) noexcept;
// The text of a number, by such a directive.
[[nodiscard]] CString FormatNumber(const ValueFormat& format, double value);

} // namespace brindle
