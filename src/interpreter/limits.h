// Limits that keep a script from taking the machine down, in one place.
// Room: interpreter. Used by: every room above.
// May touch: nothing; a table.
// Invariant: reaching one is a reported error, never a crash.
#pragma once

#include <cstddef>
#include <cstdint>

namespace brindle {

// The longest program text and the longest text that an operation makes, in units.
inline constexpr std::int64_t kLongestText = 64 * 1024 * 1024;
// Stack left for message boxes, handlers of the window system and the unwinding of an abort.
inline constexpr std::size_t kStackReserve = 320 * 1024;
// Scripts that run each other: every level holds a whole interpreter, so it is bounded by count as well.
inline constexpr int kDeepestRun = 200;
// "library" and "include" lines of one program, those inside included files counted each time.
inline constexpr int kMostCompositionLines = 4000;
// The largest size that "dim" takes.
inline constexpr int kLargestArray = 16000;

} // namespace brindle
