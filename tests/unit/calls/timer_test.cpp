// "timerstart" and "timerstop", and what a tick does.
#include "support/script_test.h"

#include "ui/console/timer_queue.h"

#include <stdexcept>
#include <thread>

namespace {

class TimerTest : public ScriptTest {
protected:
  // A turn of a window system: every timer that runs at its start ticks once.
  void Tick() {
    const auto timers = m_ui.timers;
    for (const auto& [identifier, tick] : timers)
      tick();
  }
  [[nodiscard]] std::vector<unsigned> Periods() const {
    std::vector<unsigned> periods;
    for (const auto& [identifier, period] : m_ui.timerPeriods)
      periods.push_back(period);
    return periods;
  }
  void AttachHandler() {
    Run("event create OnTimer tick\nend\nsub tick(v)\nprint \"tick [\"; v; \"] \"; ubound(\"v\")\nendsub\n",
        "handler.bas");
  }
};

using Periods = std::vector<unsigned>;

TEST_F(TimerTest, the_period_is_the_number_truncated) {
  struct Row {
    const char* period;
    unsigned expected;
  };
  const Row rows[] = {
      {"250", 250},
      {"2.9", 2},
      {"1", 1},
      {"100 * 2 + 1", 201},
      {"\"300ms\"", 300},
      {"2147483647", 2147483647U},
      {"1e300", 2147483647U},
      {"int(40)", 40},
      // A window system ticks after a millisecond at the soonest.
      {"0.9", 1},
      {"0", 1},
      {"-5", 1},
      {"\"none\"", 1},
      {"0 / 0", 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.period);
    Run("timerstart " + std::string(row.period) + "\n");
    EXPECT_EQ(Periods(), ::Periods{row.expected});
    EXPECT_TRUE(m_ui.errors.empty());
  }
}

TEST_F(TimerTest, a_second_timerstart_leaves_one_timer_with_its_period) {
  AttachHandler();
  Run("timerstart 100\ntimerstart 200\n");
  EXPECT_EQ(Periods(), ::Periods{200});
  Tick();
  EXPECT_EQ(m_ui.messages.size(), 1U);
  Run("timerstart 300\n");
  EXPECT_EQ(Periods(), ::Periods{300});
}

TEST_F(TimerTest, timerstop_ends_it_and_does_nothing_without_one) {
  Run("timerstop\ntimerstart 100\ntimerstop\ntimerstop\n");
  EXPECT_TRUE(m_ui.timers.empty());
  EXPECT_TRUE(m_ui.errors.empty());
  Run("timerstart 100\n");
  Run("timerstop\n");
  EXPECT_TRUE(m_ui.timers.empty());
}

TEST_F(TimerTest, a_tick_throws_on_timer_with_one_argument_that_is_not_set) {
  AttachHandler();
  Run("timerstart 100\n");
  Tick();
  Tick();
  EXPECT_EQ(m_ui.Output(), "tick [] 0\ntick [] 0\n");
}

std::vector<BASICVARTYPE> argumentTypes;

CBasicVariable NoteArguments(CBrindle*, CBasicVariableArray& arguments, int) {
  for (int i = 0; i < arguments.GetSize(); ++i)
    argumentTypes.push_back(arguments[i].GetType());
  return {};
}

TEST_F(TimerTest, a_host_function_gets_the_one_argument) {
  argumentTypes.clear();
  Interpreter().AddCustomFunction(u"notearguments", &NoteArguments, 0, nullptr);
  Run("event create \"ontimer\" notearguments\ntimerstart 100\n");
  Tick();
  EXPECT_EQ(argumentTypes, std::vector<BASICVARTYPE>{BVT_NONE});
}

TEST_F(TimerTest, a_tick_without_handlers_does_nothing) {
  Run("timerstart 100\n");
  Tick();
  EXPECT_TRUE(m_ui.messages.empty());
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(TimerTest, handlers_run_in_full_behind_the_end_of_the_program) {
  Run("n = 0\nglobal total\ntotal = 0\nevent create OnTimer add\ntimerstart 10\nend\nsub add()\nfor i = 1 to 3\n"
      "total = total + twice(i)\nnext\nendsub\nfunction twice(x)\ntwice = 2 * x\nendfunction\n");
  Tick();
  EXPECT_EQ(TextOf(u"total"), "12.000000");
  EXPECT_EQ(State().m_nScopeLevel, 1);
}

TEST_F(TimerTest, a_handler_may_stop_and_restart_its_timer) {
  Run("global rounds\nrounds = 0\nevent create OnTimer count\ntimerstart 10\nend\nsub count()\nrounds = rounds + 1\n"
      "timerstart 10 + rounds\nif rounds = 3 then\ntimerstop\nendif\nendsub\n");
  Tick();
  EXPECT_EQ(Periods(), ::Periods{11});
  Tick();
  EXPECT_EQ(Periods(), ::Periods{12});
  Tick();
  EXPECT_TRUE(m_ui.timers.empty());
  Tick();
  EXPECT_EQ(TextOf(u"rounds"), "3.000000");
}

TEST_F(TimerTest, an_abort_in_a_handler_ends_at_the_tick) {
  m_ui.CancelErrors();
  Run("event create OnTimer bad\nevent create OnTimer fine\ntimerstart 10\nend\nsub bad()\nnext\nprint \"no\"\nendsub\n"
      "sub fine()\nprint \"fine\"\nendsub\n");
  EXPECT_NO_THROW(Tick());
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{55});
  EXPECT_EQ(m_ui.Output(), "");
  EXPECT_EQ(State().m_nScopeLevel, 1);
  EXPECT_EQ(State().runDepth, 0);
  EXPECT_EQ(m_ui.timers.size(), 1U) << "the timer goes on";
  EXPECT_NO_THROW(Tick());
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{55, 55}));
}

RecordingUserInterface* ticked = nullptr;

CBasicVariable TickAgain(CBrindle*, CBasicVariableArray&, int) {
  const auto timers = ticked->timers;
  for (const auto& [identifier, tick] : timers)
    tick();
  return {};
}

CBasicVariable Throw(CBrindle*, CBasicVariableArray&, int) {
  throw std::runtime_error("of the host");
}

TEST_F(TimerTest, a_tick_within_its_own_handler_is_dropped) {
  ticked = &m_ui;
  Interpreter().AddCustomFunction(u"tickagain", &TickAgain, 0, nullptr);
  Run("event create OnTimer work\ntimerstart 10\nend\nsub work()\nprint \"in\"\ncall tickagain()\nprint \"out\"\n"
      "endsub\n");
  Tick();
  EXPECT_EQ(m_ui.Output(), "in\nout\n");
  Tick();
  EXPECT_EQ(m_ui.Output(), "in\nout\nin\nout\n") << "the next one is handled";
}

TEST_F(TimerTest, an_exception_of_the_host_comes_out_of_a_tick_that_no_box_waits_for) {
  Interpreter().AddCustomFunction(u"fails", &Throw, 0, nullptr);
  Run("event create OnTimer work\ntimerstart 10\nend\nsub work()\ncall fails()\nendsub\n");
  EXPECT_THROW(Tick(), std::runtime_error);
  EXPECT_EQ(State().m_nScopeLevel, 1);
  EXPECT_THROW(Tick(), std::runtime_error) << "the timer goes on";
}

TEST_F(TimerTest, the_interpreter_stops_its_timer_when_it_ends) {
  AttachHandler();
  Run("timerstart 100\n");
  const auto timers = m_ui.timers;
  ASSERT_EQ(timers.size(), 1U);
  m_pInterpreter.reset();
  EXPECT_TRUE(m_ui.timers.empty());
  // A window system may have one more tick on its way.
  for (const auto& [identifier, tick] : timers)
    tick();
  EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(TimerTest, every_interpreter_has_a_timer_of_its_own) {
  CBrindle second;
  second.SetUserInterface(&m_ui);
  AttachHandler();
  const CString path = m_folder.Write("second.bas", "event create OnTimer other\ntimerstart 20\nend\nsub other()\n"
                                                    "print \"other\"\nendsub\n");
  Run("timerstart 10\n");
  second.ExecuteProgram(path);
  EXPECT_EQ(Periods(), (::Periods{10, 20}));
  Tick();
  EXPECT_EQ(m_ui.Output(), "tick [] 0\nother\n");
  m_pInterpreter.reset();
  EXPECT_EQ(Periods(), ::Periods{20});
  m_ui.Forget();
  Tick();
  EXPECT_EQ(m_ui.Output(), "other\n");
}

TEST_F(TimerTest, a_timer_is_stopped_where_it_was_started) {
  RecordingUserInterface other;
  Run("timerstart 10\n");
  Interpreter().SetUserInterface(&other);
  Run("timerstart 20\n");
  EXPECT_TRUE(m_ui.timers.empty());
  EXPECT_EQ(other.timers.size(), 1U);
  Interpreter().SetUserInterface(&m_ui);
  Run("timerstop\n");
  EXPECT_TRUE(other.timers.empty());
}

TEST_F(TimerTest, an_interface_without_timers_is_no_error) {
  CUserInterface nothing;
  Interpreter().SetUserInterface(&nothing);
  EXPECT_TRUE(Run("timerstart 10\ntimerstop\n"));
  EXPECT_TRUE(Interpreter().GetLastError().IsEmpty());
}

// ---- the console's timers

using namespace std::chrono_literals;

TEST(TimerQueueTest, a_timer_ticks_when_it_is_due_and_not_before) {
  brindle::TimerQueue queue;
  int ticks = 0;
  EXPECT_FALSE(queue.NextTick());
  const auto start = brindle::TimerQueue::Clock::now();
  const unsigned identifier = queue.Start(20, [&ticks] { ++ticks; });
  EXPECT_NE(identifier, 0U);
  ASSERT_TRUE(queue.NextTick());
  EXPECT_GE(*queue.NextTick(), start + 20ms);
  EXPECT_LE(*queue.NextTick(), brindle::TimerQueue::Clock::now() + 20ms);
  std::this_thread::sleep_until(*queue.NextTick());
  queue.RunDue();
  EXPECT_EQ(ticks, 1);
  queue.Stop(identifier);
  EXPECT_FALSE(queue.NextTick());
}

TEST(TimerQueueTest, a_late_timer_ticks_once) {
  brindle::TimerQueue queue;
  int ticks = 0;
  const unsigned identifier = queue.Start(1, [&ticks] { ++ticks; });
  std::this_thread::sleep_for(20ms);
  queue.RunDue();
  EXPECT_EQ(ticks, 1);
  queue.Stop(identifier);
}

TEST(TimerQueueTest, a_tick_may_stop_every_timer) {
  brindle::TimerQueue queue;
  int ticks = 0;
  unsigned first = 0;
  unsigned second = 0;
  const auto stopBoth = [&] {
    ++ticks;
    queue.Stop(first);
    queue.Stop(second);
  };
  first = queue.Start(1, stopBoth);
  second = queue.Start(1, stopBoth);
  std::this_thread::sleep_for(5ms);
  queue.RunDue();
  EXPECT_EQ(ticks, 1) << "no tick comes after a timer was stopped";
  EXPECT_FALSE(queue.NextTick());
}

TEST(TimerQueueTest, a_tick_may_start_a_timer) {
  brindle::TimerQueue queue;
  int ticks = 0;
  unsigned second = 0;
  const unsigned first = queue.Start(1, [&] {
    if (++ticks == 1)
      second = queue.Start(100'000, [] {});
  });
  std::this_thread::sleep_for(5ms);
  queue.RunDue();
  EXPECT_EQ(ticks, 1);
  EXPECT_NE(second, first);
  queue.Stop(first);
  EXPECT_TRUE(queue.NextTick());
}

TEST(TimerQueueTest, stopping_an_unknown_timer_does_nothing) {
  brindle::TimerQueue queue;
  queue.Stop(0);
  queue.Stop(5);
  const unsigned identifier = queue.Start(1000, [] {});
  queue.Stop(identifier + 1);
  EXPECT_TRUE(queue.NextTick());
}

} // namespace
