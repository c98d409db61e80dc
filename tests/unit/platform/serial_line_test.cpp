// Serial lines: which device, how long a call waits, and what a lost device does.
#include "platform/serial_line.h"

#include "support/pseudo_terminal.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace brindle {
namespace {

using Clock = std::chrono::steady_clock;

// Milliseconds of running time, and of this thread's own work in them.
class Watch {
public:
  [[nodiscard]] int Elapsed() const {
    return static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - m_start).count());
  }
  [[nodiscard]] int Worked() const { return Cpu() - m_nCpu; }

private:
  static int Cpu() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<int>(time.tv_sec * 1000 + time.tv_nsec / 1000000);
  }
  Clock::time_point m_start = Clock::now();
  int m_nCpu = Cpu();
};

// A wait that is much longer than any delay of a busy machine, for "at once"; and what a wait may last beyond its time.
constexpr int kLongWait = 20000;
constexpr int kMargin = 10000;

class SerialLineTest : public testing::Test {
protected:
  SerialLineTest() { m_folder.Link(1, m_far.Device()); }

  void OpenRaw() {
    ASSERT_TRUE(m_line.Open(u"COM1:"));
    ASSERT_TRUE(m_line.Configure({}));
  }
  [[nodiscard]] std::string Read(int milliseconds, std::size_t capacity = 100) {
    std::string bytes(capacity, '\0');
    bytes.resize(m_line.Read(bytes.data(), capacity, milliseconds));
    return bytes;
  }

  DeviceFolder m_folder;
  PseudoTerminal m_far;
  SerialLine m_line;
};

// ---- which device

TEST(SerialDevices, are_looked_up_by_their_number) {
  DeviceFolder folder;
  const std::string inFolder = folder.Path().string() + "/com";
  struct Row {
    const char16_t* name;
    std::string withFolder;
    std::string without;
  };
  const Row rows[] = {
      {u"COM1:", inFolder + "1", "/dev/ttyS0"},
      {u"COM9:", inFolder + "9", "/dev/ttyS8"},
      {u"COM10:", inFolder + "10", "/dev/ttyS9"},
      {u"COM999999999:", inFolder + "999999999", "/dev/ttyS999999998"},
      {u"COM0:", inFolder + "0", ""}, // there is no device before the first
      {u"COM-1:", "", ""},
      {u"COM:", "", ""},
      {u"COM1", "", ""},
      {u"COM1:x", "", ""},
      {u"COM1/../2:", "", ""},
      {u"COM9999999999:", "", ""},
      {u"LPT1:", "", ""},
      {u"", "", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::PrintToString(std::u16string(row.name)));
    setenv("BRINDLE_DEVICES", folder.Path().c_str(), 1);
    EXPECT_EQ(FindSerialDevice(row.name), row.withFolder);
    unsetenv("BRINDLE_DEVICES");
    EXPECT_EQ(FindSerialDevice(row.name), row.without);
    setenv("BRINDLE_DEVICES", "", 1);
    EXPECT_EQ(FindSerialDevice(row.name), row.without) << "an empty folder name is none";
  }
}

TEST(SerialDevices, that_are_no_terminals_do_not_open) {
  DeviceFolder folder;
  std::ofstream(folder.Path() / "plain") << "text";
  mkfifo((folder.Path() / "pipe").c_str(), 0600);
  struct Row {
    const char* device;
    int error;
  };
  const Row rows[] = {
      {"plain", ENOTTY}, {"pipe", ENOTTY}, {"/dev/null", ENOTTY}, {".", EISDIR}, {"missing", ENOENT}, {"com1", ELOOP},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.device);
    folder.Link(1, row.device);
    SerialLine line;
    EXPECT_FALSE(line.Open(u"COM1:"));
    EXPECT_FALSE(line.IsOpen());
    EXPECT_EQ(line.LastError(), row.error);
  }
  SerialLine line;
  EXPECT_FALSE(line.Open(u"COM2:"));
  EXPECT_EQ(line.LastError(), ENOENT);
}

TEST(SerialDevices, a_closed_line_does_nothing) {
  SerialLine line;
  char byte = 'x';
  EXPECT_EQ(line.Read(&byte, 1, kLongWait), 0U);
  EXPECT_EQ(line.Write(&byte, 1, kLongWait), 0U);
  EXPECT_EQ(line.BytesWaiting(), 0U);
  EXPECT_FALSE(line.PurgeInput());
  EXPECT_FALSE(line.SetBreak());
  EXPECT_FALSE(line.ClearBreak());
  EXPECT_FALSE(line.Configure({}));
  line.Close();
}

TEST(SystemMessages, are_those_of_the_system) {
  EXPECT_EQ(SystemMessage(ENOENT), "No such file or directory");
  EXPECT_EQ(SystemMessage(EBUSY), "Device or resource busy");
  EXPECT_EQ(SystemMessage(99999), "");
}

// ---- opening and closing

TEST_F(SerialLineTest, the_device_gets_the_modes_and_may_refuse_parity) {
  ASSERT_TRUE(m_line.Open(u"COM1:"));
  LineSettings settings;
  settings.parity = 2;
  settings.parityCheck = true;
  settings.dataBits = 7;
  settings.stopBits = 2;
  settings.ctsOutputFlow = true;
  settings.xonXoffOutput = settings.xonXoffInput = true;
  EXPECT_TRUE(m_line.Configure(settings));
  const termios2 modes = m_far.Modes();
  EXPECT_EQ(modes.c_cflag & (CSIZE | PARENB), static_cast<std::uint32_t>(CS8)) << "a pseudo-terminal has no parity";
  EXPECT_NE(modes.c_cflag & CSTOPB, 0U);
  EXPECT_NE(modes.c_cflag & static_cast<std::uint32_t>(CRTSCTS), 0U);
  EXPECT_EQ(modes.c_iflag & (IXON | IXOFF | INPCK), static_cast<std::uint32_t>(IXON | IXOFF | INPCK));
  EXPECT_EQ(modes.c_lflag & (ICANON | ECHO), 0U);
  EXPECT_EQ(modes.c_cc[VSTART], 0x11);
  EXPECT_EQ(modes.c_cc[VSTOP], 0x13);
}

TEST_F(SerialLineTest, opens_for_one_only) {
  OpenRaw();
  EXPECT_TRUE(m_far.IsExclusive());
  SerialLine second;
  EXPECT_FALSE(second.Open(u"COM1:"));
  EXPECT_EQ(second.LastError(), EBUSY);
  EXPECT_EQ(m_line.Write("x", 1, kLongWait), 1U) << "the first one is not disturbed";
  m_line.Close();
  EXPECT_FALSE(m_far.IsExclusive());
  EXPECT_TRUE(second.Open(u"COM1:"));
  EXPECT_TRUE(second.Open(u"COM1:")) << "opening again closes first";
}

TEST_F(SerialLineTest, does_not_become_the_controlling_terminal) {
  const pid_t child = fork();
  if (child == 0) {
    // The leader of a new session takes the first terminal that it opens without care.
    setsid();
    SerialLine line;
    const bool opened = line.Open(u"COM1:");
    _exit(!opened ? 2 : open("/dev/tty", O_RDWR) < 0 ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
}

TEST_F(SerialLineTest, a_program_started_meanwhile_does_not_inherit_it) {
  OpenRaw();
  int found = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    if (std::filesystem::read_symlink(entry.path(), gone) == m_far.Device()) {
      ++found;
      EXPECT_NE(fcntl(std::stoi(entry.path().filename()), F_GETFD) & FD_CLOEXEC, 0);
    }
  }
  EXPECT_EQ(found, 2) << "the line and the observer";
}

TEST_F(SerialLineTest, what_was_written_before_closing_arrives) {
  OpenRaw();
  const std::string text(3000, 'w');
  EXPECT_EQ(m_line.Write(text.data(), text.size(), kLongWait), text.size());
  m_line.Close();
  EXPECT_EQ(m_far.Receive(text.size()), text);
}

// ---- reading

TEST_F(SerialLineTest, a_read_gives_what_is_there_at_once) {
  OpenRaw();
  m_far.Send("hello");
  ASSERT_TRUE(m_far.AwaitBytes(5));
  const Watch watch;
  EXPECT_EQ(Read(kLongWait), "hello");
  EXPECT_LT(watch.Elapsed(), kMargin);
}

TEST_F(SerialLineTest, a_read_waits_for_the_first_byte) {
  OpenRaw();
  std::thread sender([this] {
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    m_far.Send("late");
  });
  const Watch watch;
  EXPECT_EQ(Read(kLongWait, 1), "l");
  EXPECT_GE(watch.Elapsed(), 100);
  EXPECT_LT(watch.Elapsed(), kMargin);
  sender.join();
}

TEST_F(SerialLineTest, a_silent_read_ends_after_its_time) {
  OpenRaw();
  for (const int milliseconds : {0, 10, 200}) {
    const Watch watch;
    EXPECT_EQ(Read(milliseconds), "");
    EXPECT_GE(watch.Elapsed(), milliseconds);
    EXPECT_LT(watch.Elapsed(), milliseconds + kMargin);
  }
  EXPECT_EQ(m_line.LastError(), 0) << "silence is no failure";
}

TEST_F(SerialLineTest, a_read_takes_no_more_than_asked_for) {
  OpenRaw();
  m_far.Send("abcdef");
  ASSERT_TRUE(m_far.AwaitBytes(6));
  EXPECT_EQ(Read(kLongWait, 2), "ab");
  EXPECT_EQ(Read(kLongWait, 0), "");
  EXPECT_EQ(Read(kLongWait), "cdef");
}

TEST_F(SerialLineTest, signals_neither_end_nor_lengthen_a_read) {
  OpenRaw();
  static volatile std::sig_atomic_t signals = 0;
  signals = 0;
  struct sigaction action {};
  struct sigaction before {};
  action.sa_handler = [](int) { signals = signals + 1; };
  sigaction(SIGALRM, &action, &before);
  itimerval period{{0, 5000}, {0, 5000}};
  setitimer(ITIMER_REAL, &period, nullptr);
  const Watch watch;
  EXPECT_EQ(Read(300), "");
  const int elapsed = watch.Elapsed();
  m_far.Send("still here");
  EXPECT_EQ(Read(kLongWait, 5), "still");
  EXPECT_EQ(m_line.Write("yes", 3, kLongWait), 3U);
  period = {};
  setitimer(ITIMER_REAL, &period, nullptr);
  sigaction(SIGALRM, &before, nullptr);
  EXPECT_GT(signals, 5);
  EXPECT_GE(elapsed, 300);
  EXPECT_LT(elapsed, 300 + kMargin);
}

TEST_F(SerialLineTest, bytes_pass_as_they_are_in_both_directions) {
  OpenRaw();
  std::string every;
  for (int byte = 0; byte < 256; ++byte)
    every += static_cast<char>(byte);
  m_far.Send(every);
  ASSERT_TRUE(m_far.AwaitBytes(256));
  EXPECT_EQ(Read(kLongWait, 300), every);
  EXPECT_EQ(m_line.Write(every.data(), every.size(), kLongWait), every.size());
  EXPECT_EQ(m_far.Receive(every.size()), every);
  EXPECT_TRUE(m_far.IsSilent()) << "nothing is echoed";
}

TEST_F(SerialLineTest, waiting_bytes_are_counted_and_purged) {
  OpenRaw();
  EXPECT_EQ(m_line.BytesWaiting(), 0U);
  m_far.Send("12345");
  ASSERT_TRUE(m_far.AwaitBytes(5));
  EXPECT_EQ(m_line.BytesWaiting(), 5U);
  EXPECT_TRUE(m_line.PurgeInput());
  EXPECT_EQ(m_line.BytesWaiting(), 0U);
  EXPECT_EQ(Read(50), "");
}

// ---- writing

TEST_F(SerialLineTest, a_long_write_goes_out_whole_while_somebody_reads) {
  OpenRaw();
  std::string sent;
  for (int i = 0; i < 100000; ++i)
    sent += static_cast<char>('a' + i % 26);
  std::string received;
  std::thread reader([&] { received = m_far.Receive(sent.size()); });
  EXPECT_EQ(m_line.Write(sent.data(), sent.size(), kLongWait), sent.size());
  reader.join();
  EXPECT_EQ(received, sent);
}

TEST_F(SerialLineTest, a_write_that_nobody_takes_gives_up) {
  OpenRaw();
  const std::string text(1000000, 'x');
  const Watch watch;
  const std::size_t written = m_line.Write(text.data(), text.size(), 200);
  EXPECT_LT(written, text.size());
  EXPECT_GE(watch.Elapsed(), 200);
  EXPECT_LT(watch.Elapsed(), 200 + kMargin);
  EXPECT_LT(watch.Worked(), 500);
  EXPECT_EQ(m_line.LastError(), ETIMEDOUT);
  EXPECT_EQ(m_far.Receive(text.size(), 300).size(), written) << "it says how much it did write";
}

TEST_F(SerialLineTest, an_output_that_is_held_back_waits_goes_on_and_never_hangs) {
  ASSERT_TRUE(m_line.Open(u"COM1:"));
  LineSettings settings;
  settings.xonXoffOutput = true;
  ASSERT_TRUE(m_line.Configure(settings));
  m_far.Send("\x13");
  EXPECT_EQ(Read(100), "") << "XOFF is no data";
  Watch watch;
  EXPECT_EQ(m_line.Write("held", 4, 200), 0U);
  EXPECT_GE(watch.Elapsed(), 200);
  EXPECT_LT(watch.Elapsed(), 200 + kMargin);
  EXPECT_EQ(m_line.LastError(), ETIMEDOUT);
  m_far.Send("\x11");
  EXPECT_EQ(m_line.Write("free", 4, kLongWait), 4U);
  EXPECT_EQ(m_far.Receive(4), "free");
  m_far.Send("\x13");
  EXPECT_EQ(Read(100), "");
  watch = {};
  m_line.Close();
  EXPECT_LT(watch.Elapsed(), kMargin);
}

TEST_F(SerialLineTest, break_goes_on_and_off) {
  OpenRaw();
  EXPECT_TRUE(m_line.SetBreak());
  EXPECT_TRUE(m_line.ClearBreak());
}

// ---- a device that disappears

TEST_F(SerialLineTest, a_lost_device_is_silent_and_takes_nothing) {
  OpenRaw();
  m_far.HangUp();
  for (int attempt = 0; attempt < 2; ++attempt) {
    const Watch watch;
    EXPECT_EQ(Read(300), "");
    EXPECT_GE(watch.Elapsed(), 300) << "a script that polls it must not spin";
    EXPECT_LT(watch.Elapsed(), 300 + kMargin);
    EXPECT_LT(watch.Worked(), 150);
    EXPECT_EQ(m_line.LastError(), EIO);
  }
  const Watch watch;
  EXPECT_EQ(m_line.Write("x", 1, kLongWait), 0U);
  EXPECT_EQ(m_line.BytesWaiting(), 0U);
  EXPECT_FALSE(m_line.PurgeInput());
  EXPECT_FALSE(m_line.SetBreak());
  EXPECT_FALSE(m_line.ClearBreak());
  EXPECT_FALSE(m_line.Configure({}));
  EXPECT_TRUE(m_line.IsOpen());
  m_line.Close();
  EXPECT_LT(watch.Elapsed(), kMargin);
}

TEST_F(SerialLineTest, a_device_lost_during_a_read_ends_it_in_time) {
  OpenRaw();
  std::thread breaker([this] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    m_far.HangUp();
  });
  const Watch watch;
  EXPECT_EQ(Read(500), "");
  EXPECT_GE(watch.Elapsed(), 500);
  EXPECT_LT(watch.Elapsed(), 500 + kMargin);
  EXPECT_LT(watch.Worked(), 250);
  breaker.join();
}

} // namespace
} // namespace brindle
