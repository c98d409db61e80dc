// Enciphered scripts: their form as a text file, both ways.
// Room: calls. Used by: Decrypt, the runner's "encrypt".
// May touch: CBlowFish.
// Must not: let a script out that would not come back as it went in.
// Invariant: one fixed key; the plain text ends at its first zero byte, so it must hold none.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brindle {

// What stands between the word "encrypt" and the first number: its line end, counted as three characters.
inline constexpr std::size_t kCipherTextOffset = 3;

// The script file that runs as `plain` does; nothing, and why, when there is none.
[[nodiscard]] std::optional<std::string> EncipherScript(std::string_view plain, std::string& reason);

// The plain bytes of a list of numbers; the list ends at the first text that is none.
[[nodiscard]] std::string DecipherNumbers(std::u16string_view numbers);

} // namespace brindle
