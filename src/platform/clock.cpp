#include "platform/clock.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace brindle {

LocalTime Now() {
  const std::time_t seconds = std::time(nullptr);
  std::tm parts{};
  LocalTime now;
  if (localtime_r(&seconds, &parts) == nullptr) {
    return now;
  }
  now.year = parts.tm_year + 1900;
  now.month = parts.tm_mon + 1;
  now.day = parts.tm_mday;
  now.hour = parts.tm_hour;
  now.minute = parts.tm_min;
  now.second = parts.tm_sec;
  now.weekday = parts.tm_wday + 1;
  return now;
}

std::uint32_t TickCount() noexcept {
  const auto elapsed = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count());
}

void SleepMilliseconds(unsigned milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace brindle
