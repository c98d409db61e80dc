// What people bring along from other dialects, and what to write here instead.
// Room: check. Used by: the rules.
// May touch: nothing; tables.
// Invariant: every hint says what happens and what to write.
#pragma once

#include <string_view>

namespace brindle {

// For a statement that begins with this word, lower-cased; empty when nothing is known about it.
[[nodiscard]] std::string_view HintForStatement(std::u16string_view word) noexcept;
// For an operand or the rest of an expression.
[[nodiscard]] std::string_view HintForOperand(std::u16string_view word) noexcept;
// For a call of a function that does not exist.
[[nodiscard]] std::string_view HintForFunction(std::u16string_view word) noexcept;

} // namespace brindle
