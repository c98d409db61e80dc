#include "platform/standard_streams.h"

#include "platform/faults.h"
#include "platform/stop_signal.h"
#include "platform/terminal.h"
#include "platform/termination.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brindle {

namespace {

constexpr std::size_t kFlushSize = 32 * 1024;

ssize_t SystemWrite(int descriptor, std::string_view bytes) noexcept {
  const std::size_t writable = Writable(bytes.size());
  const bool isRefused = Refused(FaultKind::File, ENOSPC) || (writable == 0 && !bytes.empty());
  return isRefused ? -1 : ::write(descriptor, bytes.data(), writable);
}
ssize_t SystemRead(int descriptor, char* buffer, std::size_t size) noexcept {
  return Refused(FaultKind::File, EIO) ? -1 : ::read(descriptor, buffer, size);
}
int SystemPoll(pollfd* descriptors, nfds_t count, int milliseconds) noexcept {
  return Refused(FaultKind::File, ENOMEM) ? -1 : ::poll(descriptors, count, milliseconds);
}

// Milliseconds left, rounded up; -1 to wait without limit.
int WaitTime(std::optional<std::chrono::steady_clock::time_point> deadline) {
  if (!deadline)
    return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - std::chrono::steady_clock::now());
  return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 1'000'000));
}

// A write to what has room takes so much without waiting.
constexpr std::size_t kUnblocked = PIPE_BUF;

// Waits until something can be written, or why not can be learned by trying; false when what runs is to stop and
// nobody takes anything.
bool AwaitRoom(int descriptor) noexcept {
  for (;;) {
    std::array<pollfd, 2> waits = {pollfd{descriptor, POLLOUT, 0}, pollfd{StopSignal::CurrentDescriptor(), POLLIN, 0}};
    const bool isStopping = StopSignal::CurrentShouldStop();
    const int ready =
        SystemPoll(waits.data(), waits.size(), isStopping ? 0 : WaitTime(StopSignal::Earlier(std::nullopt)));
    if (waits[0].revents != 0 || (ready < 0 && errno != EINTR))
      return true;
    if (isStopping && ready >= 0)
      return false;
  }
}

bool IsRegularFile(int descriptor) noexcept {
  struct stat status {};
  return !Refused(FaultKind::File, EIO) && ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

enum class WriteResult { Done, Failed, Stopped };

// Takes what was written off the bytes. Outside a run a write waits until it is done.
WriteResult WriteAll(int descriptor, std::string_view& bytes) noexcept {
  const bool mayStop = StopSignal::Current() != nullptr && !bytes.empty() && !IsRegularFile(descriptor);
  while (!bytes.empty()) {
    if (mayStop && !AwaitRoom(descriptor))
      return WriteResult::Stopped;
    const ssize_t written = SystemWrite(descriptor, mayStop ? bytes.substr(0, kUnblocked) : bytes);
    if (written > 0)
      bytes.remove_prefix(static_cast<std::size_t>(written));
    else if (written < 0 && (errno == EAGAIN || errno == EWOULDBLOCK) && !AwaitRoom(descriptor))
      return WriteResult::Stopped;
    else if (written < 0 && errno != EINTR && errno != EAGAIN && errno != EWOULDBLOCK)
      return WriteResult::Failed;
  }
  return WriteResult::Done;
}

} // namespace

void StandardStreams::Write(std::string_view bytes) {
  m_output += bytes;
  if (m_output.size() >= kFlushSize || IsTerminal(STDOUT_FILENO))
    Flush();
}

void StandardStreams::WriteError(std::string_view bytes) {
  Flush();
  static_cast<void>(WriteAll(STDERR_FILENO, bytes));
}

void StandardStreams::Flush() noexcept {
  std::string_view left = m_output;
  const WriteResult result = WriteAll(STDOUT_FILENO, left);
  m_bOutputLost = m_bOutputLost || result == WriteResult::Failed;
  // What nobody took when a run was stopped is written behind it.
  m_output.erase(0, result == WriteResult::Stopped ? m_output.size() - left.size() : std::string::npos);
}

bool StandardStreams::InputIsTerminal() const noexcept {
  return IsTerminal(STDIN_FILENO);
}

bool StandardStreams::ErrorIsTerminal() const noexcept {
  return IsTerminal(STDERR_FILENO);
}

void StandardStreams::EndInputOnTermination() {
  m_nTerminationPipe = TerminationDescriptor();
}

bool StandardStreams::TakeLine(std::string& line) {
  const std::size_t end = m_input.find('\n', m_nSearched);
  m_nSearched = end == std::string::npos ? m_input.size() : 0;
  if (end == std::string::npos && !(m_bEndOfInput && !m_input.empty()))
    return false;
  line = m_input.substr(0, end);
  m_input.erase(0, end == std::string::npos ? end : end + 1);
  m_nSearched = 0;
  if (!line.empty() && line.back() == '\r')
    line.pop_back();
  return true;
}

StandardStreams::WaitResult StandardStreams::ReadLine(std::string& line,
                                                      std::optional<std::chrono::steady_clock::time_point> deadline) {
  Flush();
  while (!TakeLine(line)) {
    if (m_bEndOfInput)
      return WaitResult::EndOfInput;
    // A descriptor of -1 is not looked at.
    std::array<pollfd, 3> waits = {pollfd{STDIN_FILENO, POLLIN, 0}, pollfd{m_nTerminationPipe, POLLIN, 0},
                                   pollfd{StopSignal::CurrentDescriptor(), POLLIN, 0}};
    // What waits is to stop: its prompts are answered as at the end of the input, which is still there for others.
    if (StopSignal::CurrentShouldStop())
      return WaitResult::EndOfInput;
    const int ready = SystemPoll(waits.data(), waits.size(), WaitTime(StopSignal::Earlier(deadline)));
    if (ready == 0 && !StopSignal::CurrentShouldStop())
      return WaitResult::TimedOut;
    if (ready >= 0 && waits[0].revents == 0 && waits[1].revents == 0)
      continue;
    if (ready < 0 && errno == EINTR)
      continue;
    if (ready < 0 || waits[1].revents != 0) {
      m_input.clear();
      m_nSearched = 0;
      m_bEndOfInput = true;
      continue;
    }
    std::array<char, 4096> buffer;
    const ssize_t count = SystemRead(STDIN_FILENO, buffer.data(), buffer.size());
    if (count > 0)
      m_input.append(buffer.data(), static_cast<std::size_t>(count));
    else if (count == 0 || (errno != EINTR && errno != EAGAIN && errno != EWOULDBLOCK))
      m_bEndOfInput = true;
  }
  return WaitResult::Line;
}

} // namespace brindle
