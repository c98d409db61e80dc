// The timers of a Qt user interface; they tick in every event loop of the thread.
// Room: ui. Used by: the Qt user interface.
// May touch: Qt's timers.
// Must not: let an exception of a tick pass through an event loop.
// Invariant: no tick comes after Stop.
#pragma once

#include <QTimer>

#include <exception>
#include <functional>
#include <map>
#include <memory>

namespace brindle {

class QtTimers {
public:
  // `failed` is called inside the handler of an exception that a tick has thrown.
  explicit QtTimers(std::function<void()> failed) : m_failed(std::move(failed)) {}

  [[nodiscard]] unsigned Start(unsigned periodMilliseconds, std::function<void()> tick);
  void Stop(unsigned identifier);
  [[nodiscard]] bool IsEmpty() const noexcept { return m_timers.empty(); }

private:
  // A timer may be stopped by its own tick: it is then deleted when the loop is back.
  struct DeleteLater {
    void operator()(QTimer* timer) const;
  };

  std::function<void()> m_failed;
  std::map<unsigned, std::unique_ptr<QTimer, DeleteLater>> m_timers;
  unsigned m_nLast = 0;
};

} // namespace brindle
