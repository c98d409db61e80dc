// Whatever a script waits for, a stop from outside and the limit of time end the wait, and the run with it.
#include "brindle/console_user_interface.h"
#include "support/behind_a_wait.h"
#include "support/pseudo_terminal.h"
#include "support/redirected_streams.h"
#include "support/script_test.h"

#include <atomic>
#include <csignal>
#include <functional>
#include <thread>

#include <sys/stat.h>

namespace {

// Each waits for a person at the console, who says nothing.
constexpr const char* kPrompts[] = {
    "x = ask(\"Go on?\")\n",
    "x = popupmenu(\"one\", \"-\", \"two\")\n",
    "x = fileopendlg(\"\", \"\", \"\", \"\")\n",
    "x = filesaveasdlg(\"a.txt\", \"\", \"\", \"\")\n",
    "next\n", // the box of an error
    "dialog \"D\", 0, 0, 100, 50\ncontrol okbutton \"OK\", 1, 1, 1, 20, 10\nonexit closed\nenddialog\n",
    "propertysheet \"S\"\npage \"P\"\ncontrol edittext \"\", 10, 1, 1, 20, 10\nendpage\nenddialog\n",
    "dialog \"D\", 0, 0, 100, 50\noninit another\nenddialog\n",
    "event create ontimer question\ntimerstart 20\ndialog \"D\", 0, 0, 100, 50\nenddialog\n",
    "event create asked question\nthrow asked 1\n",
};

// A line that takes nothing is given up then, and others later or never.
constexpr auto kNaturalEnd = std::chrono::seconds(5);

std::atomic<CBrindle*> toStop = nullptr;

class Waits : public ScriptTest {
protected:
  Waits() { Begin(); }
  void Begin() {
    m_pInterpreter = std::make_unique<CBrindle>();
    m_pInterpreter->SetUserInterface(&m_ui);
    BehindAWait::AddTo(*m_pInterpreter);
  }
  void LimitTime(std::uint32_t milliseconds) {
    CExecutionLimits limits;
    limits.milliseconds = milliseconds;
    ASSERT_TRUE(Interpreter().SetLimits(limits));
  }
  // The run has to end by itself: nothing that it waits for ever comes.
  void RunAndEnd(const std::string& program, const std::string& text) {
    EXPECT_TRUE(Run(program + BehindAWait::kProgram));
    EXPECT_EQ(Interpreter().GetLastError().ToUtf8().substr(0, text.size() + 1), text + "\n");
    EXPECT_EQ(BehindAWait::TimesReached(), 0) << "nothing runs behind the wait";
  }
  // The same at the console, while another thread acts as soon as a prompt is there.
  void RunAtConsole(const std::string& program, const std::string& text, const std::function<void()>& act,
                    std::uint32_t milliseconds = 0) {
    SCOPED_TRACE(program);
    LimitTime(milliseconds);
    RedirectedStreams streams;
    CConsoleUserInterface console(CConsoleUserInterface::ErrorPolicy::Ask);
    Interpreter().SetUserInterface(&console);
    std::thread other([&] {
      while (streams.Error().empty())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      act();
    });
    RunAndEnd(program, text);
    other.join();
    streams.Stop();
    Begin(); // a timer may go on, and is the console's
  }
  void RunAndStop(const std::string& program) {
    SCOPED_TRACE(program);
    const auto start = std::chrono::steady_clock::now();
    std::thread other([this] {
      std::this_thread::sleep_for(std::chrono::milliseconds(30));
      Interpreter().RequestStop();
    });
    RunAndEnd(program, "Stopped by the host");
    other.join();
    EXPECT_LT(std::chrono::steady_clock::now() - start, kNaturalEnd);
  }
  void RunOutOfTime(const std::string& program) {
    SCOPED_TRACE(program);
    LimitTime(60);
    RunAndEnd(program, "Limit of time reached");
    LimitTime(0);
  }
};

TEST_F(Waits, another_thread_ends_every_prompt_of_the_console) {
  for (const char* program : kPrompts)
    RunAtConsole(program, "Stopped by the host", [this] { Interpreter().RequestStop(); });
}

TEST_F(Waits, a_signal_handler_ends_every_prompt_of_the_console) {
  struct sigaction action {};
  struct sigaction before {};
  action.sa_handler = [](int) { toStop.load()->RequestStop(); };
  sigaction(SIGUSR1, &action, &before);
  for (const char* program : kPrompts)
    RunAtConsole(program, "Stopped by the host", [this] {
      toStop = &Interpreter();
      kill(getpid(), SIGUSR1);
    });
  sigaction(SIGUSR1, &before, nullptr);
}

TEST_F(Waits, the_time_limit_ends_every_prompt_of_the_console) {
  for (const char* program : kPrompts)
    RunAtConsole(
        program, "Limit of time reached", [] {}, 60);
}

TEST_F(Waits, printing_to_a_pipe_that_nobody_reads_from_ends_and_loses_nothing) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  const int size = fcntl(ends[1], F_SETPIPE_SZ, 4096); // of one page, so that it is soon full
  ASSERT_GT(size, 0);
  const int saved = fcntl(1, F_DUPFD_CLOEXEC, 10);
  std::string read;
  for (const std::uint32_t milliseconds : {0, 200}) {
    std::fflush(stdout);
    dup2(ends[1], 1);
    {
      CConsoleUserInterface console;
      Interpreter().SetUserInterface(&console);
      LimitTime(milliseconds);
      std::thread other([&] {
        for (int held = 0; held < size && milliseconds == 0;) {
          std::this_thread::sleep_for(std::chrono::milliseconds(1));
          ioctl(ends[0], FIONREAD, &held);
        }
        if (milliseconds == 0)
          Interpreter().RequestStop();
      });
      Run("n = 0\ndo while 1 = 1\nn = n + 1\nprint int(n)\nloop\n");
      other.join();
      // The host reads it now.
      other = std::thread([&] {
        char buffer[4096];
        for (ssize_t got = 0; (got = ::read(ends[0], buffer, sizeof buffer)) > 0;) {
          read.append(buffer, static_cast<std::size_t>(got));
          if (read.ends_with("end\n"))
            break;
        }
      });
      console.Flush();
      console.ShowMessage(u"end\n");
      console.Flush();
      other.join();
      Begin();
    }
    dup2(saved, 1);
    std::string expected;
    for (int n = 1; expected.size() + 4 < read.size(); ++n)
      expected += std::to_string(n) + "\n";
    EXPECT_EQ(read, expected + "end\n");
    read.clear();
  }
  for (const int descriptor : {ends[0], ends[1], saved})
    close(descriptor);
}

class SerialWaits : public Waits {
protected:
  SerialWaits() { m_devices.Link(1, m_line.Device()); }

  DeviceFolder m_devices;
  PseudoTerminal m_line;
};

constexpr const char* kOpen = "x = comportopen(1, 9600, 0, 0, 600000)\n";
// More than a line takes that nobody reads from.
constexpr const char* kFill = "do while comportwrite(1, repeat(\"x\", 500)) = True\nloop\n";

TEST_F(SerialWaits, reading_a_line_that_says_nothing_ends) {
  RunAndStop(kOpen + std::string("t = comportread(1)\n"));
  RunOutOfTime("t = comportread(1)\n");
}

TEST_F(SerialWaits, reading_a_line_that_was_pulled_ends) {
  Run(kOpen);
  m_line.HangUp();
  RunAndStop("t = comportread(1)\n");
  RunOutOfTime("t = comportread(1)\n");
}

TEST_F(SerialWaits, writing_to_a_line_that_takes_nothing_ends) {
  RunAndStop(kOpen + std::string(kFill));
  RunOutOfTime(kFill);
}

TEST_F(Waits, reading_a_pipe_that_nobody_writes_to_ends) {
  const std::string path = m_folder.Path("pipe").string();
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  const int writer = open(path.c_str(), O_RDWR | O_CLOEXEC);
  const std::string read = "open \"" + path + "\" for input as 1\nt = read(1, 1, 1)\n";
  RunAndStop(read);
  RunOutOfTime(read);
  close(writer);
}

} // namespace
