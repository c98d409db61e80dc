// Whether a person sits at the other end of a descriptor.
// Room: platform. Used by: ui (console), the runner (default answer to errors).
// May touch: the descriptor, for asking only.
// Must not touch: terminal settings.
// Invariant: errno is left as it was.
#pragma once

namespace brindle {

[[nodiscard]] bool IsTerminal(int descriptor) noexcept;

} // namespace brindle
