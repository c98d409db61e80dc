// RedirectedStreams: descriptors 0, 1 and 2 as pipes and files of the test's own.
// Room: tests. Used by: unit tests of the standard streams and of the console.
// May touch: descriptors 0, 1 and 2 of the test program, put back at the end.
// Must not: be alive while a test reports: its output would be taken for the program's.
// Invariant: what was written is complete once Stop has returned.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

class RedirectedStreams {
public:
  // The whole input is there, followed by its end.
  explicit RedirectedStreams(std::string_view input) : RedirectedStreams() {
    Feed(input);
    EndInput();
  }
  // Input comes as the test feeds it.
  RedirectedStreams() {
    std::fflush(stdout);
    std::fflush(stderr);
    int pipeEnds[2];
    if (::pipe2(pipeEnds, O_CLOEXEC) != 0)
      std::abort();
    m_input = pipeEnds[1];
    for (int descriptor = 0; descriptor < 3; ++descriptor)
      m_saved[descriptor] = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 10);
    m_output = MakeFile();
    m_error = MakeFile();
    ::dup2(pipeEnds[0], 0);
    ::dup2(m_output, 1);
    ::dup2(m_error, 2);
    ::close(pipeEnds[0]);
  }
  RedirectedStreams(const RedirectedStreams&) = delete;
  RedirectedStreams& operator=(const RedirectedStreams&) = delete;
  ~RedirectedStreams() {
    Stop();
    ::close(m_output);
    ::close(m_error);
  }

  void Feed(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = ::write(m_input, bytes.data(), bytes.size());
      if (written <= 0)
        std::abort();
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  void EndInput() {
    if (m_input >= 0)
      ::close(m_input);
    m_input = -1;
  }
  // Puts the test program's own streams back.
  void Stop() {
    if (m_stopped)
      return;
    m_stopped = true;
    EndInput();
    for (int descriptor = 0; descriptor < 3; ++descriptor) {
      ::dup2(m_saved[descriptor], descriptor);
      ::close(m_saved[descriptor]);
    }
  }
  // What was written so far.
  [[nodiscard]] std::string Output() const { return Contents(m_output); }
  [[nodiscard]] std::string Error() const { return Contents(m_error); }

private:
  static int MakeFile() {
    std::string name = "/tmp/brindle-stream-XXXXXX";
    const int descriptor = ::mkostemp(name.data(), O_CLOEXEC | O_APPEND);
    if (descriptor < 0)
      std::abort();
    ::unlink(name.c_str());
    const int high = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 10);
    ::close(descriptor);
    return high;
  }
  static std::string Contents(int descriptor) {
    std::string contents(static_cast<std::size_t>(::lseek(descriptor, 0, SEEK_END)), '\0');
    if (::pread(descriptor, contents.data(), contents.size(), 0) != static_cast<ssize_t>(contents.size()))
      std::abort();
    return contents;
  }

  int m_saved[3] = {-1, -1, -1};
  int m_input = -1;
  int m_output = -1;
  int m_error = -1;
  bool m_stopped = false;
};
