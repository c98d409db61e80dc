#include "platform/process.h"

#include "platform/clock.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace brindle {
namespace {

std::atomic<int> childSignals{0};

void CountChildSignal(int) {
  ++childSignals;
}

class Process : public ::testing::Test {
protected:
  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "brindle_process_XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    m_folder = pattern;
    if (const char* const path = std::getenv("PATH")) {
      m_savedPath = path;
    }
  }
  void TearDown() override {
    setenv("PATH", m_savedPath.c_str(), 1);
    std::filesystem::remove_all(m_folder);
  }

  [[nodiscard]] std::u16string Path(const char* name) const { return (m_folder / name).u16string(); }

  // A shell script that is started directly by its first line.
  void MakeProgram(const char* name, const std::string& body) const {
    std::ofstream(m_folder / name) << "#!/bin/sh\ncd '" << m_folder.string() << "' || exit\n" << body << "\n";
    std::filesystem::permissions(m_folder / name, std::filesystem::perms::owner_all);
  }

  // Waits until the file that a program makes with its last action is there, and gives its contents.
  [[nodiscard]] std::string Await(const char* name) const {
    for (int tries = 0; tries < 500 && !std::filesystem::exists(m_folder / name); ++tries) {
      SleepMilliseconds(10);
    }
    std::ifstream stream(m_folder / name);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  std::filesystem::path m_folder;
  std::string m_savedPath;
};

const char* const WriteArguments = R"(printf '%s:' "$#" "$@" > part; mv part done)";

TEST_F(Process, an_executable_gets_the_parameters_as_one_argument) {
  struct Row {
    const char* name;
    std::u16string_view parameters;
    std::string_view arguments;
  };
  const Row rows[] = {
      {"none", u"", "0:"},
      {"one word", u"word", "1:word:"},
      {"blanks do not split", u"two words", "1:two words:"},
      {"no shell reads it", u"$HOME `ls` \"q\" 'q' ; > x *", "1:$HOME `ls` \"q\" 'q' ; > x *:"},
      {"utf-8", u"\u00E9\u20AC", "1:\xC3\xA9\xE2\x82\xAC:"},
  };
  MakeProgram("show", WriteArguments);
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    std::filesystem::remove(m_folder / "done");
    StartFile(Path("SHOW"), row.parameters);
    EXPECT_EQ(Await("done"), row.arguments);
  }
  EXPECT_FALSE(std::filesystem::exists(m_folder / "x"));
}

TEST_F(Process, any_other_file_goes_to_the_opener) {
  MakeProgram("xdg-open", WriteArguments);
  std::ofstream(m_folder / "Letter.doc") << "text";
  setenv("PATH", ("/nowhere::" + m_folder.string() + ":" + m_savedPath).c_str(), 1);
  const std::string expected[] = {
      "1:" + (m_folder / "Letter.doc").string() + ":",
      "1:" + m_folder.string() + ":",
      "1:https://example.org/A\\b?c=d:",
  };
  const std::u16string targets[] = {Path("letter.DOC"), m_folder.u16string(), u"https://example.org/A\\b?c=d"};
  for (std::size_t index = 0; index < std::size(targets); ++index) {
    std::filesystem::remove(m_folder / "done");
    StartFile(targets[index], u"not passed on");
    EXPECT_EQ(Await("done"), expected[index]);
  }
}

TEST_F(Process, a_name_like_an_option_reaches_the_opener_as_a_file) {
  MakeProgram("xdg-open", WriteArguments);
  std::ofstream(m_folder / "-help.txt") << "text";
  setenv("PATH", (m_folder.string() + ":" + m_savedPath).c_str(), 1);
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(m_folder);
  StartFile(u"-help.txt", u"");
  EXPECT_EQ(Await("done"), "1:./-help.txt:");
  std::filesystem::current_path(before);
}

TEST_F(Process, failures_are_silent) {
  setenv("PATH", m_folder.c_str(), 1); // no opener there
  std::ofstream(m_folder / "plain.txt") << "text";
  std::ofstream(m_folder / "broken") << "no program";
  std::filesystem::permissions(m_folder / "broken", std::filesystem::perms::owner_all);
  StartFile(u"", u"");
  StartFile(Path("missing"), u"x");
  StartFile(Path("plain.txt"), u"x");
  StartFile(Path("broken"), u"x");
  StartFile(Path("plain.txt") + std::u16string(1, u'\0'), u"x");
  unsetenv("PATH");
  StartFile(Path("missing"), u"x");
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG | __WALL), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(Process, starting_does_not_wait_and_leaves_no_child_and_no_signal) {
  struct sigaction counting {};
  struct sigaction saved {};
  counting.sa_handler = CountChildSignal;
  ASSERT_EQ(sigaction(SIGCHLD, &counting, &saved), 0);
  childSignals = 0;

  MakeProgram("slow", "echo $$ > part; mv part started; exec sleep 20");
  const std::uint32_t before = TickCount();
  StartFile(Path("slow"), u"");
  EXPECT_LT(TickCount() - before, 5000U);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG | __WALL), -1);
  EXPECT_EQ(errno, ECHILD);
  EXPECT_EQ(childSignals, 0);

  const pid_t process = std::atoi(Await("started").c_str());
  ASSERT_GT(process, 1);
  EXPECT_EQ(getsid(process), process);
  EXPECT_EQ(kill(process, SIGKILL), 0);
  sigaction(SIGCHLD, &saved, nullptr);
}

TEST_F(Process, a_host_that_ignores_its_children_is_served_too) {
  struct sigaction ignoring {};
  struct sigaction saved {};
  ignoring.sa_handler = SIG_IGN;
  ASSERT_EQ(sigaction(SIGCHLD, &ignoring, &saved), 0);
  MakeProgram("show", WriteArguments);
  StartFile(Path("show"), u"x");
  EXPECT_EQ(Await("done"), "1:x:");
  sigaction(SIGCHLD, &saved, nullptr);
}

TEST_F(Process, the_program_gets_clean_streams_descriptors_and_signals) {
  if (!std::filesystem::exists("/proc/self/fd")) {
    GTEST_SKIP() << "no /proc";
  }
  // Collected before anything is redirected, for a redirection would change what is looked at.
  MakeProgram("inspect", "streams=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\n"
                         "inherited=$(ls /proc/$$/fd | grep -c '^9[0-9]$')\n"
                         "signals=$(grep -E '^Sig(Blk|Ign)' /proc/$$/status)\n"
                         "echo $streams, $inherited, $signals > part; mv part done");
  const int inherited = fcntl(STDERR_FILENO, F_DUPFD, 90);
  ASSERT_GE(inherited, 90);
  struct sigaction ignoring {};
  struct sigaction saved {};
  ignoring.sa_handler = SIG_IGN;
  ASSERT_EQ(sigaction(SIGUSR1, &ignoring, &saved), 0);
  sigset_t blocked;
  sigset_t savedMask;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGUSR2);
  ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &blocked, &savedMask), 0);

  StartFile(Path("inspect"), u"");
  const std::string seen = Await("done");

  sigset_t maskAfter;
  pthread_sigmask(SIG_SETMASK, nullptr, &maskAfter);
  EXPECT_EQ(sigismember(&maskAfter, SIGUSR2), 1);
  EXPECT_EQ(sigismember(&maskAfter, SIGTERM), 0);
  pthread_sigmask(SIG_SETMASK, &savedMask, nullptr);
  sigaction(SIGUSR1, &saved, nullptr);
  close(inherited);
  EXPECT_EQ(seen, "/dev/null /dev/null /dev/null, 0, SigBlk: 0000000000000000 SigIgn: 0000000000000000\n");
}

TEST(Clock, now_is_a_valid_local_time) {
  const LocalTime now = Now();
  EXPECT_GE(now.year, 2020);
  EXPECT_TRUE(now.month >= 1 && now.month <= 12);
  EXPECT_TRUE(now.day >= 1 && now.day <= 31);
  EXPECT_TRUE(now.hour >= 0 && now.hour <= 23);
  EXPECT_TRUE(now.minute >= 0 && now.minute <= 59);
  EXPECT_TRUE(now.second >= 0 && now.second <= 60);

  // The weekday follows from the date: 1 is Sunday.
  const int shifted = now.month < 3 ? now.month + 12 : now.month;
  const int year = now.month < 3 ? now.year - 1 : now.year;
  const int fromSaturday = (now.day + 13 * (shifted + 1) / 5 + year + year / 4 - year / 100 + year / 400) % 7;
  EXPECT_EQ(now.weekday, fromSaturday == 0 ? 7 : fromSaturday);
}

TEST(Clock, ticks_count_the_time_slept) {
  const std::uint32_t before = TickCount();
  SleepMilliseconds(30);
  const std::uint32_t elapsed = TickCount() - before;
  EXPECT_GE(elapsed, 29U);
  EXPECT_LT(elapsed, 10000U);
}

} // namespace
} // namespace brindle
