// Angles: radians, and degrees with minutes and seconds packed into one number DDD.MMSSss.
// Room: data. Used by: "rad2dms", "dms2rad".
// May touch: nothing.
// Invariant: both directions work in 0..360 degrees; the sign is put back at the end.
#pragma once

namespace brindle {

[[nodiscard]] double RadiansToPacked(double radians) noexcept;
[[nodiscard]] double PackedToRadians(double packed) noexcept;

} // namespace brindle
