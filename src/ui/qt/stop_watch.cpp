#include "ui/qt/stop_watch.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <utility>

namespace brindle {

namespace {

thread_local StopWatch* innermost = nullptr;

} // namespace

StopWatch::StopWatch(std::function<void()> stop, On what)
    : m_stop(std::move(stop)), m_pOuter(std::exchange(innermost, this)) {
  WatchDescriptor();
  if (what == On::Stop)
    WatchClock();
}

StopWatch::~StopWatch() {
  m_pNotifier.reset();
  innermost = m_pOuter;
  if (m_pOuter != nullptr && m_pOuter->m_pNotifier != nullptr && !m_pOuter->m_hasStopped)
    m_pOuter->m_pNotifier->setEnabled(true);
  // So that the run learns now, and not some statements later, that its time is up.
  if (m_hasStopped)
    static_cast<void>(CStopRequest::IsMade());
}

void StopWatch::WatchDescriptor() {
  // Qt allows one notifier for a descriptor, and a dialog and the box on it have the same.
  if (m_pOuter != nullptr && m_pOuter->m_pNotifier != nullptr)
    m_pOuter->m_pNotifier->setEnabled(false);
  const int descriptor = CStopRequest::Descriptor();
  if (descriptor < 0)
    return;
  m_pNotifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
  QObject::connect(m_pNotifier.get(), &QSocketNotifier::activated, m_pNotifier.get(), [this] { Stop(); });
}

// Also finds a request that came before there was a descriptor.
void StopWatch::WatchClock() {
  const bool isMade = CStopRequest::IsMade();
  const auto deadline = CStopRequest::Deadline();
  if (!isMade && !deadline)
    return;
  m_deadline = isMade ? CStopRequest::Clock::now() : *deadline;
  m_timer.setSingleShot(true);
  m_timer.setTimerType(Qt::PreciseTimer);
  QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { AwaitDeadline(); });
  m_timer.start(0);
}

// A timer of Qt counts milliseconds in an int, and may come a little early. Inside its event loop another run may be
// the innermost one: the deadline is the one that was found at first.
void StopWatch::AwaitDeadline() {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_deadline - CStopRequest::Clock::now());
  if (left.count() > 0)
    m_timer.start(static_cast<int>(std::min<std::int64_t>(left.count(), 1'000'000)));
  else
    Stop();
}

void StopWatch::Stop() {
  if (std::exchange(m_hasStopped, true))
    return;
  if (m_pNotifier != nullptr)
    m_pNotifier->setEnabled(false); // the descriptor stays readable
  m_stop();
}

} // namespace brindle
