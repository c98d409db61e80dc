#include "platform/stop_signal.h"

#include "platform/file.h"
#include "platform/memory_account.h"
#include "support/script_test.h"

#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brindle {
namespace {

using Clock = StopSignal::Clock;
constexpr auto kLong = std::chrono::seconds(30);
constexpr auto kShort = std::chrono::milliseconds(20);

// What `wait` does while another thread asks for a stop; how long it took.
template <class Wait> Clock::duration StoppedAfter(StopSignal& signal, Wait wait) {
  const auto start = Clock::now();
  std::thread other([&signal] {
    std::this_thread::sleep_for(kShort);
    signal.Request();
  });
  {
    const StopSignal::Scope scope(&signal);
    wait();
  }
  other.join();
  return Clock::now() - start;
}

TEST(StopSignal, a_sleep_ends_when_a_stop_is_asked_for) {
  StopSignal signal;
  for (int i = 0; i < 3; ++i) {
    EXPECT_LT(StoppedAfter(signal, [] { StopSignal::SleepUntil(Clock::now() + kLong); }), kLong);
    EXPECT_TRUE(signal.IsRequested());
    signal.Clear();
  }
}

TEST(StopSignal, a_sleep_ends_at_the_deadline_and_says_so) {
  StopSignal signal;
  signal.SetDeadline(Clock::now() + kShort);
  const StopSignal::Scope scope(&signal);
  StopSignal::SleepUntil(Clock::now() + kLong);
  EXPECT_TRUE(signal.ShouldStop());
  EXPECT_TRUE(signal.WasLate());
}

TEST(StopSignal, a_sleep_lasts_when_nobody_stops_it) {
  StopSignal signal;
  StoppedAfter(signal, [] { StopSignal::SleepUntil(Clock::now() + kLong); });
  signal.Clear();
  const StopSignal::Scope scope(&signal);
  const auto start = Clock::now();
  StopSignal::SleepUntil(start + kShort);
  EXPECT_GE(Clock::now() - start, kShort) << "an answered request does not end the next wait";
}

TEST(StopSignal, reading_a_pipe_that_nobody_writes_to_ends) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("pipe").string();
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  const int writer = open(path.c_str(), O_RDWR | O_CLOEXEC);
  CFile file;
  ASSERT_TRUE(file.Open(CString::FromUtf8(path).View(), CFile::modeRead));
  StopSignal signal;
  EXPECT_LT(StoppedAfter(signal,
                         [&file] {
                           char byte = 0;
                           EXPECT_THROW(file.Read(&byte, 1), CFileException);
                         }),
            kLong);
  close(writer);
}

TEST(StopSignal, what_runs_inside_has_its_own) {
  StopSignal outer;
  StopSignal inner;
  EXPECT_EQ(StopSignal::Current(), nullptr);
  const StopSignal::Scope outerScope(&outer);
  {
    const StopSignal::Scope innerScope(&inner);
    EXPECT_EQ(StopSignal::Current(), &inner);
  }
  EXPECT_EQ(StopSignal::Current(), &outer);
}

TEST(MemoryAccount, texts_and_arrays_are_counted_while_they_live) {
  const std::int64_t before = MemoryAccount::Balance();
  {
    const CString text(u'x', 1000);
    const CString shared = text;
    const std::int64_t one = MemoryAccount::Balance() - before;
    EXPECT_GE(one, 2000);
    EXPECT_LT(one, 2100) << "a shared text counts once";
    CBasicVariable array;
    array.SetArraySize(100);
    EXPECT_GE(MemoryAccount::Balance() - before - one, 1600);
  }
  EXPECT_EQ(MemoryAccount::Balance(), before);
}

TEST(MemoryAccount, a_large_piece_above_the_ceiling_is_refused_and_a_small_one_is_not) {
  const std::int64_t before = MemoryAccount::Balance();
  MemoryAccount::SetCeiling(before + 10'000);
  EXPECT_THROW(CString(u'x', 10'000), MemoryLimitReached);
  EXPECT_NO_THROW(CString(u'x', 4'000));
  EXPECT_EQ(MemoryAccount::Balance(), before);
  MemoryAccount::SetCeiling(before - 1);
  EXPECT_NO_THROW(CString(u'x', 100));
  MemoryAccount::SetCeiling(MemoryAccount::kNoCeiling);
}

} // namespace
} // namespace brindle
