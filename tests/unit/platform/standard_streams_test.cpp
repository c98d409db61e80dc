#include "platform/standard_streams.h"

#include "support/redirected_streams.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace brindle {
namespace {

using Wait = StandardStreams::WaitResult;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Every line until the end of the input.
std::vector<std::string> LinesOf(std::string_view input) {
  std::vector<std::string> lines;
  RedirectedStreams redirected(input);
  StandardStreams streams;
  std::string line;
  while (streams.ReadLine(line, std::nullopt) == Wait::Line)
    lines.push_back(line);
  redirected.Stop();
  return lines;
}

using Lines = std::vector<std::string>;

TEST(StandardStreams, lines_come_without_their_ends) {
  EXPECT_EQ(LinesOf(""), Lines{});
  EXPECT_EQ(LinesOf("\n"), Lines{""});
  EXPECT_EQ(LinesOf("a\nb\n"), (Lines{"a", "b"}));
  EXPECT_EQ(LinesOf("a\r\nb\r\n\r\n"), (Lines{"a", "b", ""}));
  EXPECT_EQ(LinesOf("a\n\n\nb"), (Lines{"a", "", "", "b"}));
  EXPECT_EQ(LinesOf("last"), Lines{"last"});
  EXPECT_EQ(LinesOf(std::string_view("a\0b\n", 4)), Lines{std::string("a\0b", 3)});
  EXPECT_EQ(LinesOf("a\rb\n"), Lines{"a\rb"});
}

TEST(StandardStreams, long_lines_come_whole) {
  const std::string longLine(50000, 'x');
  EXPECT_EQ(LinesOf(longLine + "\nend\n"), (Lines{longLine, "end"}));
}

TEST(StandardStreams, end_of_input_stays) {
  RedirectedStreams redirected("one");
  StandardStreams streams;
  std::string line;
  const Wait first = streams.ReadLine(line, std::nullopt);
  const Wait second = streams.ReadLine(line, std::nullopt);
  const Wait third = streams.ReadLine(line, Clock::now() + std::chrono::hours(1));
  redirected.Stop();
  EXPECT_EQ(first, Wait::Line);
  EXPECT_EQ(second, Wait::EndOfInput);
  EXPECT_EQ(third, Wait::EndOfInput);
}

TEST(StandardStreams, closed_input_is_its_end) {
  RedirectedStreams redirected;
  ::close(0);
  StandardStreams streams;
  std::string line;
  const Wait result = streams.ReadLine(line, std::nullopt);
  redirected.Stop();
  EXPECT_EQ(result, Wait::EndOfInput);
}

TEST(StandardStreams, waiting_gives_up_at_the_deadline_and_keeps_half_a_line) {
  RedirectedStreams redirected;
  StandardStreams streams;
  std::string line = "untouched";
  redirected.Feed("half");
  const auto start = Clock::now();
  const Wait first = streams.ReadLine(line, start + milliseconds(40));
  const auto waited = Clock::now() - start;
  const Wait past = streams.ReadLine(line, start);
  redirected.Feed(" and half\n");
  const Wait second = streams.ReadLine(line, Clock::now() + std::chrono::seconds(10));
  redirected.Stop();
  EXPECT_EQ(first, Wait::TimedOut);
  EXPECT_EQ(past, Wait::TimedOut);
  EXPECT_GE(waited, milliseconds(40));
  EXPECT_LT(waited, std::chrono::seconds(5));
  EXPECT_EQ(second, Wait::Line);
  EXPECT_EQ(line, "half and half");
}

TEST(StandardStreams, line_that_comes_meanwhile_ends_the_wait) {
  RedirectedStreams redirected;
  StandardStreams streams;
  std::string line;
  std::thread writer([&] {
    std::this_thread::sleep_for(milliseconds(30));
    redirected.Feed("late\n");
  });
  const auto start = Clock::now();
  const Wait result = streams.ReadLine(line, start + std::chrono::seconds(30));
  const auto waited = Clock::now() - start;
  writer.join();
  redirected.Stop();
  EXPECT_EQ(result, Wait::Line);
  EXPECT_EQ(line, "late");
  EXPECT_LT(waited, std::chrono::seconds(20));
}

TEST(StandardStreams, output_is_kept_until_it_is_flushed) {
  RedirectedStreams redirected("");
  std::string before;
  std::string flushed;
  {
    StandardStreams streams;
    streams.Write("a");
    streams.Write("b\n");
    before = redirected.Output();
    streams.Flush();
    flushed = redirected.Output();
    streams.Write("end");
  }
  redirected.Stop();
  EXPECT_EQ(before, "");
  EXPECT_EQ(flushed, "ab\n");
  EXPECT_EQ(redirected.Output(), "ab\nend");
}

TEST(StandardStreams, output_is_written_before_an_error_text_and_before_a_wait) {
  RedirectedStreams redirected("line\n");
  StandardStreams streams;
  streams.Write("first");
  streams.WriteError("error");
  const std::string atError = redirected.Output();
  streams.Write(" second");
  std::string line;
  const Wait result = streams.ReadLine(line, std::nullopt);
  const std::string atWait = redirected.Output();
  redirected.Stop();
  EXPECT_EQ(result, Wait::Line);
  EXPECT_EQ(atError, "first");
  EXPECT_EQ(atWait, "first second");
  EXPECT_EQ(redirected.Error(), "error");
}

TEST(StandardStreams, every_byte_is_written_as_it_is) {
  std::string bytes;
  for (int i = 0; i < 300000; ++i)
    bytes.push_back(static_cast<char>(i * 7));
  RedirectedStreams redirected("");
  {
    StandardStreams streams;
    for (std::size_t at = 0; at < bytes.size(); at += 1000)
      streams.Write(std::string_view(bytes).substr(at, 1000));
  }
  redirected.Stop();
  EXPECT_TRUE(redirected.Output() == bytes);
}

// Puts a pipe in place of standard output; gives its reading end.
int OutputIntoPipe(bool nonBlocking) {
  int ends[2];
  EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
  if (nonBlocking)
    ::fcntl(ends[1], F_SETFL, O_NONBLOCK);
  ::dup2(ends[1], 1);
  ::close(ends[1]);
  return ::fcntl(ends[0], F_DUPFD_CLOEXEC, 10);
}

TEST(StandardStreams, slow_reader_of_a_pipe_that_does_not_block_gets_every_byte) {
  const std::string bytes(1000000, 'x');
  std::size_t received = 0;
  {
    RedirectedStreams redirected("");
    const int reading = OutputIntoPipe(true);
    std::thread reader([&] {
      std::this_thread::sleep_for(milliseconds(50));
      std::vector<char> buffer(4096);
      for (ssize_t count = 1; (count = ::read(reading, buffer.data(), buffer.size())) > 0;)
        received += static_cast<std::size_t>(count);
    });
    {
      StandardStreams streams;
      streams.Write(bytes);
    }
    redirected.Stop(); // the pipe's last writer
    reader.join();
    ::close(reading);
  }
  EXPECT_EQ(received, bytes.size());
}

TEST(StandardStreams, reader_that_went_away_is_ignored) {
  const auto previous = std::signal(SIGPIPE, SIG_IGN);
  {
    RedirectedStreams redirected("");
    const int reading = OutputIntoPipe(false);
    ::close(reading);
    StandardStreams streams;
    streams.Write("nobody reads this");
    streams.Flush();
    streams.WriteError("but this");
    redirected.Stop();
    EXPECT_EQ(redirected.Error(), "but this");
  }
  std::signal(SIGPIPE, previous);
}

TEST(StandardStreams, pipe_is_no_terminal) {
  RedirectedStreams redirected("");
  const bool terminal = StandardStreams().InputIsTerminal();
  redirected.Stop();
  EXPECT_FALSE(terminal);
}

} // namespace
} // namespace brindle
