#include "ui/console/timer_queue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace brindle {
namespace {

void Sleep(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

TEST(TimerQueue, empty_one_has_no_next_tick) {
  TimerQueue queue;
  EXPECT_FALSE(queue.NextTick().has_value());
  queue.RunDue();
  queue.Stop(1);
}

TEST(TimerQueue, identifiers_are_not_0_and_differ) {
  TimerQueue queue;
  const unsigned first = queue.Start(1000, [] {});
  const unsigned second = queue.Start(1000, [] {});
  EXPECT_NE(first, 0U);
  EXPECT_NE(second, 0U);
  EXPECT_NE(first, second);
}

TEST(TimerQueue, next_tick_is_the_earliest) {
  TimerQueue queue;
  const auto start = TimerQueue::Clock::now();
  EXPECT_NE(queue.Start(60000, [] {}), 0U);
  const unsigned soon = queue.Start(1000, [] {});
  EXPECT_LE(*queue.NextTick(), TimerQueue::Clock::now() + std::chrono::seconds(1));
  EXPECT_GE(*queue.NextTick(), start + std::chrono::seconds(1));
  queue.Stop(soon);
  EXPECT_GE(*queue.NextTick(), start + std::chrono::seconds(60));
}

TEST(TimerQueue, nothing_ticks_before_its_time) {
  TimerQueue queue;
  int ticks = 0;
  EXPECT_NE(queue.Start(60000, [&] { ++ticks; }), 0U);
  queue.RunDue();
  EXPECT_EQ(ticks, 0);
}

TEST(TimerQueue, late_timer_ticks_once_and_goes_on) {
  TimerQueue queue;
  int ticks = 0;
  EXPECT_NE(queue.Start(5, [&] { ++ticks; }), 0U);
  Sleep(60);
  queue.RunDue();
  EXPECT_EQ(ticks, 1);
  EXPECT_GT(*queue.NextTick() + std::chrono::milliseconds(5), TimerQueue::Clock::now());
  Sleep(20);
  queue.RunDue();
  EXPECT_EQ(ticks, 2);
}

TEST(TimerQueue, period_of_0_counts_as_1) {
  TimerQueue queue;
  int ticks = 0;
  EXPECT_NE(queue.Start(0, [&] { ++ticks; }), 0U);
  Sleep(10);
  queue.RunDue();
  EXPECT_EQ(ticks, 1);
}

TEST(TimerQueue, tick_may_stop_its_own_timer) {
  TimerQueue queue;
  int ticks = 0;
  unsigned own = 0;
  own = queue.Start(1, [&] {
    ++ticks;
    queue.Stop(own);
    ++ticks; // the function is still there
  });
  Sleep(10);
  queue.RunDue();
  queue.RunDue();
  EXPECT_EQ(ticks, 2);
  EXPECT_FALSE(queue.NextTick().has_value());
}

TEST(TimerQueue, timer_stopped_by_another_tick_of_the_same_turn_does_not_tick) {
  TimerQueue queue;
  int ticks = 0;
  unsigned first = 0;
  unsigned second = 0;
  first = queue.Start(1, [&] {
    ++ticks;
    queue.Stop(second);
  });
  second = queue.Start(1, [&] {
    ++ticks;
    queue.Stop(first);
  });
  Sleep(10);
  queue.RunDue();
  EXPECT_EQ(ticks, 1);
}

TEST(TimerQueue, tick_may_start_timers) {
  TimerQueue queue;
  int ticks = 0;
  unsigned starter = 0;
  starter = queue.Start(1, [&] {
    queue.Stop(starter);
    for (int i = 0; i < 10; ++i)
      EXPECT_NE(queue.Start(1, [&] { ++ticks; }), 0U);
  });
  Sleep(10);
  queue.RunDue();
  EXPECT_EQ(ticks, 0);
  Sleep(10);
  queue.RunDue();
  EXPECT_EQ(ticks, 10);
}

TEST(TimerQueue, tick_that_waits_itself_does_not_run_into_itself_at_once) {
  TimerQueue queue;
  int depth = 0;
  int deepest = 0;
  EXPECT_NE(queue.Start(1000, [] {}), 0U);
  const unsigned nesting = queue.Start(5, [&] {
    ++depth;
    deepest = std::max(deepest, depth);
    queue.RunDue(); // its period starts anew before it runs
    --depth;
  });
  EXPECT_NE(nesting, 0U);
  Sleep(20);
  queue.RunDue();
  EXPECT_EQ(deepest, 1);
}

} // namespace
} // namespace brindle
