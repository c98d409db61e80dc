// How much stack is left, so that deep nesting ends in an error of the script and not in a crash.
// Room: platform. Used by: interpreter (calls, parentheses, watches, "run").
// May touch: the bounds of the calling thread's stack.
// Must not touch: the limits themselves.
// Invariant: cheap enough for every procedure call; the bounds are asked for once a thread.
#pragma once

#include <cstddef>

namespace brindle {

// Bytes between the caller's frame and the end of the thread's stack. A main thread whose stack may grow without limit
// is taken to have 64 MiB. On a stack that the thread library does not know (a host's coroutine) a fixed
// UnknownStackRemaining is given: nothing can be measured there.
inline constexpr std::size_t UnknownStackRemaining = std::size_t{1} << 20;
[[nodiscard]] std::size_t RemainingStack() noexcept;

} // namespace brindle
