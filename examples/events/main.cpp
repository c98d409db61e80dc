// A host with an event loop: keeps a resident script alive, runs its timer and throws events at it.
#include <brindle/brindle.h>

#include <chrono>
#include <functional>
#include <iostream>
#include <map>
#include <thread>
#include <utility>

namespace {

// The window system of a device without windows: messages go to the log, timers run in Turn().
class LoggerInterface : public CUserInterface {
public:
  void ShowMessage(const CString& text) override { std::cout << text.ToUtf8(); }
  [[nodiscard]] ErrorAnswer ShowError(const CString& text) override {
    std::cerr << text.ToUtf8() << '\n';
    return ErrorAnswer::Cancel;
  }
  [[nodiscard]] unsigned StartTimer(unsigned period, std::function<void()> tick) override {
    m_timers[++m_lastTimer] = {std::chrono::milliseconds(period), std::move(tick)};
    return m_lastTimer;
  }
  void StopTimer(unsigned identifier) override { m_timers.erase(identifier); }

  [[nodiscard]] bool HasTimer() const { return !m_timers.empty(); }

  // Waits for the first timer and ticks once. There is one script here, so there is at most one timer.
  void Turn() {
    if (m_timers.empty())
      return;
    const Timer timer = m_timers.begin()->second; // a copy: the tick may stop its own timer
    std::this_thread::sleep_for(timer.period);
    timer.tick();
  }

private:
  struct Timer {
    std::chrono::milliseconds period;
    std::function<void()> tick;
  };
  std::map<unsigned, Timer> m_timers;
  unsigned m_lastTimer = 0;
};

// What the logger does when an alarm is thrown: "sounder" in the script's list of handlers.
CBasicVariable Sounder(CBrindle*, CBasicVariableArray& arguments, int) {
  const CString sensor = arguments.IsEmpty() ? CString() : arguments[0].GetStringValue();
  std::cout << "*** beep: " << sensor.ToUtf8() << " ***\n";
  return {};
}

void ThrowReading(double volts) {
  CBasicVariable value(volts);
  CBrindle::SendEvent(u"Reading", &value);
}

} // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: brindle_example_events SCRIPT\n";
    return 2;
  }
  LoggerInterface logger;
  CBrindle watchdog;
  watchdog.SetUserInterface(&logger);
  watchdog.AddCustomFunction(u"sounder", Sounder, 0, nullptr);
  if (!watchdog.ExecuteProgram(CString::FromUtf8(argv[1])) || !watchdog.IsResident())
    return 1;

  // Three good rounds, then the instrument falls silent and the script ends its watch.
  const double rounds[][2] = {{12.1, 12.4}, {12.3, 12.2}, {12.6, 12.5}};
  for (const auto& readings : rounds) {
    for (const double volts : readings)
      ThrowReading(volts);
    logger.Turn();
  }
  while (logger.HasTimer())
    logger.Turn();
  return watchdog.GetLastError().IsEmpty() ? 0 : 1;
}
