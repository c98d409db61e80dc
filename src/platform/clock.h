// Date, time of day, a running millisecond count and waiting.
// Room: platform. Used by: interpreter (time functions), calls, io (time-outs), ui (timers).
// May touch: the system clocks and the time zone.
// Must not touch: the time zone's setting.
// Invariant: TickCount never runs backwards except for its wrap-around after about 49.7 days.
#pragma once

#include <cstdint>

namespace brindle {

struct LocalTime {
  int year = 1970; // in full
  int month = 1;   // 1 to 12
  int day = 1;     // 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;  // 60 in a leap second
  int weekday = 5; // 1 is Sunday, 7 is Saturday
};

[[nodiscard]] LocalTime Now();

// Milliseconds since some moment in the past; the difference of two counts, taken modulo 2^32, is a duration.
[[nodiscard]] std::uint32_t TickCount() noexcept;

void SleepMilliseconds(unsigned milliseconds);

} // namespace brindle
