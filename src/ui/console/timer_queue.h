// Timers of a user interface that waits in one place.
// Room: ui. Used by: the console.
// May touch: the monotonic clock.
// Must not: run a tick that was stopped, even by another tick of the same turn.
// Invariant: a timer that is late ticks once, not once for every period it missed.
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace brindle {

class TimerQueue {
public:
  using Clock = std::chrono::steady_clock;

  [[nodiscard]] unsigned Start(unsigned periodMilliseconds, std::function<void()> tick) {
    const auto period = std::chrono::milliseconds(std::max(periodMilliseconds, 1U));
    m_timers[++m_nLast] = {period, Clock::now() + period, std::move(tick)};
    return m_nLast;
  }
  void Stop(unsigned identifier) { m_timers.erase(identifier); }

  [[nodiscard]] std::optional<Clock::time_point> NextTick() const {
    std::optional<Clock::time_point> next;
    for (const auto& [identifier, timer] : m_timers)
      if (!next || timer.due < *next)
        next = timer.due;
    return next;
  }
  void RunDue() {
    std::vector<unsigned> due;
    const Clock::time_point now = Clock::now();
    for (const auto& [identifier, timer] : m_timers)
      if (timer.due <= now)
        due.push_back(identifier);
    for (const unsigned identifier : due) {
      const auto timer = m_timers.find(identifier);
      if (timer == m_timers.end())
        continue;
      timer->second.due = Clock::now() + timer->second.period;
      const std::function<void()> tick = timer->second.tick; // the tick may stop its own timer
      tick();
    }
  }

private:
  struct Timer {
    std::chrono::milliseconds period;
    Clock::time_point due;
    std::function<void()> tick;
  };
  std::map<unsigned, Timer> m_timers;
  unsigned m_nLast = 0;
};

} // namespace brindle
