// WindowDriver: a user who waits for windows and acts on each in turn.
// Room: tests. Used by: the tests of the Qt window system.
// May touch: the active modal window or menu, by the events of real devices.
// Must not: act before a window is there, or twice on one that is about to go.
// Invariant: steps run in order, each inside the event loop of the window that it acts on.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <deque>
#include <functional>
#include <string>

// The window that a step expects; another one ends the test program, since nothing could close it.
template <class Window> [[nodiscard]] Window& As(QWidget& window) {
  auto* const expected = qobject_cast<Window*>(&window);
  if (expected == nullptr)
    qFatal("the window is a %s", window.metaObject()->className());
  return *expected;
}

class WindowDriver : public QObject {
public:
  using Step = std::function<void(QWidget& window)>;

  WindowDriver() {
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] { Act(); });
    m_timer.start(kPause);
  }

  // What is done to the next window (or menu) that is active.
  WindowDriver& Then(Step step) {
    m_steps.push_back({std::move(step), kPause});
    return *this;
  }
  // Where the window system takes its time: a button that is pressed by its mnemonic springs back first.
  WindowDriver& ThenSlowly(Step step) {
    m_steps.push_back({std::move(step), kLongPause});
    return *this;
  }
  // Called for every window while no step is left; otherwise such a window is closed and counted as unexpected.
  void Otherwise(Step step) { m_otherwise = std::move(step); }
  [[nodiscard]] std::size_t StepsLeft() const { return m_steps.size(); }
  [[nodiscard]] int Unexpected() const { return m_nUnexpected; }

  static void Press(QMessageBox& box, QMessageBox::StandardButton button) {
    QTest::mouseClick(box.button(button), Qt::LeftButton);
  }

private:
  static constexpr int kPause = 3; // milliseconds: what a step has ended is gone by then
  static constexpr int kLongPause = 200;
  struct Planned {
    Step act;
    int pause;
  };

  void Act() {
    QWidget* window = QApplication::activePopupWidget();
    if (window == nullptr)
      window = QApplication::activeModalWidget();
    const bool ready = window != nullptr && window->isVisible();
    // Without a window manager the active window may lag behind, and shortcuts go to that one alone.
    if (ready && !window->isActiveWindow() && qobject_cast<QMenu*>(window) == nullptr)
      QApplication::setActiveWindow(window);
    const int pause = ready && !m_steps.empty() ? m_steps.front().pause : kPause;
    m_timer.start(pause); // before the step: it may run a loop of its own
    if (!ready)
      return;
    if (!m_steps.empty()) {
      const Planned step = std::move(m_steps.front());
      m_steps.pop_front();
      step.act(*window);
    } else if (m_otherwise) {
      m_otherwise(*window);
    } else if (++m_nUnexpected > 200) {
      qFatal("a window that nobody expects does not close");
    } else {
      window->close();
    }
    m_timer.start(pause); // whatever has become due meanwhile comes first
  }

  QTimer m_timer;
  std::deque<Planned> m_steps;
  Step m_otherwise;
  int m_nUnexpected = 0;
};
