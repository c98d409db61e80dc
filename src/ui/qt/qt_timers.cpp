#include "ui/qt/qt_timers.h"

#include <algorithm>
#include <limits>

namespace brindle {

void QtTimers::DeleteLater::operator()(QTimer* timer) const {
  timer->stop();
  timer->disconnect();
  timer->deleteLater();
}

unsigned QtTimers::Start(unsigned periodMilliseconds, std::function<void()> tick) {
  constexpr unsigned kLongest = std::numeric_limits<int>::max();
  std::unique_ptr<QTimer, DeleteLater> timer(new QTimer);
  timer->setInterval(static_cast<int>(std::clamp(periodMilliseconds, 1U, kLongest)));
  QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [this, tick = std::move(tick)] {
    const std::function<void()> running = tick; // the tick may stop its own timer
    try {
      running();
    } catch (...) {
      m_failed();
    }
  });
  timer->start();
  m_timers.emplace(++m_nLast, std::move(timer));
  return m_nLast;
}

void QtTimers::Stop(unsigned identifier) {
  m_timers.erase(identifier);
}

} // namespace brindle
