// StopWatch: ends a box or dialog when the run that shows it is to stop.
// Room: ui. Used by: everything of the Qt user interface that waits for the user.
// May touch: the stop request's descriptor and deadline, through a notifier and a timer of Qt.
// Must not: end anything but its own wait: what is around it is ended by the run, which ends then.
// Invariant: the action is called at most once, inside the event loop of what waits.
#pragma once

#include "brindle/stop_request.h"

#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>

namespace brindle {

class StopWatch {
public:
  // What ends the wait: the end of the run, or, for a notice that tells of that end already, only one more request.
  enum class On { Stop, FurtherRequest };

  // For the wait that comes behind and lasts as long as this does; `stop` ends it.
  explicit StopWatch(std::function<void()> stop, On what = On::Stop);
  StopWatch(const StopWatch&) = delete;
  StopWatch& operator=(const StopWatch&) = delete;
  ~StopWatch();

private:
  void WatchDescriptor();
  void WatchClock();
  void AwaitDeadline();
  void Stop();

  std::function<void()> m_stop;
  bool m_hasStopped = false;
  StopWatch* m_pOuter;
  std::unique_ptr<QSocketNotifier> m_pNotifier;
  QTimer m_timer;
  CStopRequest::Clock::time_point m_deadline;
};

} // namespace brindle
