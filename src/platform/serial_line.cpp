#include "platform/serial_line.h"

#include "platform/faults.h"
#include "platform/stop_signal.h"

#include <asm/termbits.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <utility>

namespace brindle {

namespace {

// Every system call of this file. Each returns what the call returns.
int SystemOpen(const char* path) noexcept {
  if (Refused(FaultKind::Serial, EMFILE))
    return -1;
  // O_NOCTTY: the device must not become the terminal of the process; O_NONBLOCK: no carrier is waited for.
  return open(path, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
}
int SystemClose(int descriptor) noexcept {
  return close(descriptor);
}
int SystemLock(int descriptor) noexcept {
  if (Refused(FaultKind::Serial, ENOLCK))
    return -1;
  return flock(descriptor, LOCK_EX | LOCK_NB);
}
int SystemGetModes(int descriptor, termios2& modes) noexcept {
  if (Refused(FaultKind::Serial, EIO))
    return -1;
  return ioctl(descriptor, TCGETS2, &modes);
}
int SystemSetModes(int descriptor, const termios2& modes) noexcept {
  if (Refused(FaultKind::Serial, EIO))
    return -1;
  return ioctl(descriptor, TCSETS2, &modes);
}
int SystemControl(int descriptor, unsigned long request) noexcept {
  if (Refused(FaultKind::Serial, EIO))
    return -1;
  return ioctl(descriptor, request);
}
int SystemCount(int descriptor, unsigned long request, int& count) noexcept {
  if (Refused(FaultKind::Serial, EIO))
    return -1;
  return ioctl(descriptor, request, &count);
}
int SystemSignals(int descriptor, unsigned long request, int signals) noexcept {
  if (Refused(FaultKind::Serial, EIO))
    return -1;
  return ioctl(descriptor, request, &signals);
}
int SystemFlush(int descriptor, int queue) noexcept {
  if (Refused(FaultKind::Serial, EIO))
    return -1;
  return ioctl(descriptor, TCFLSH, queue);
}
int SystemPoll(std::array<pollfd, 2>& descriptors, int milliseconds) noexcept {
  if (Refused(FaultKind::Serial, ENOMEM))
    return -1;
  return poll(descriptors.data(), descriptors.size(), milliseconds);
}
ssize_t SystemRead(int descriptor, void* buffer, std::size_t count) noexcept {
  if (Refused(FaultKind::Serial, EIO))
    return -1;
  return read(descriptor, buffer, count);
}
ssize_t SystemWrite(int descriptor, const void* bytes, std::size_t count) noexcept {
  if (Refused(FaultKind::Serial, EIO))
    return -1;
  return write(descriptor, bytes, count);
}

// Repeats a call that a signal has interrupted.
template <typename Call> auto Uninterrupted(Call call) noexcept {
  auto result = call();
  while (result < 0 && errno == EINTR)
    result = call();
  return result;
}

constexpr auto kRetryPause = std::chrono::milliseconds(1);

bool IsTryAgain(int osError) noexcept {
  return osError == EAGAIN || osError == EWOULDBLOCK;
}

class Deadline {
public:
  // No later than what runs on this thread has to be done.
  explicit Deadline(int milliseconds)
      : m_end(*StopSignal::Earlier(Clock::now() + std::chrono::milliseconds(std::max(milliseconds, 0)))) {}

  // Rounded up: a wait must not end before its time. Where it is the run's time that is up, the run knows from then on.
  [[nodiscard]] int Left() const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_end - Clock::now()).count();
    if (left <= 0)
      static_cast<void>(StopSignal::CurrentShouldStop());
    return static_cast<int>(std::clamp<decltype(left)>(left, 0, INT_MAX));
  }
  void Sleep() const { StopSignal::SleepUntil(m_end); }

private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point m_end;
};

enum class Readiness { Ready, Gone, TimeOut };

// The signals that interrupt the wait do not lengthen it.
Readiness Await(int descriptor, short event, const Deadline& deadline) noexcept {
  for (;;) {
    std::array<pollfd, 2> entries = {pollfd{descriptor, event, 0}, pollfd{StopSignal::CurrentDescriptor(), POLLIN, 0}};
    const int left = StopSignal::CurrentShouldStop() ? 0 : deadline.Left();
    const int count = SystemPoll(entries, left);
    if (count < 0 && errno == EINTR)
      continue;
    if (count < 0)
      return Readiness::Gone;
    // What arrived before a hang-up is read first: reading tells where it ends.
    if ((entries[0].revents & event) != 0)
      return Readiness::Ready;
    if (entries[0].revents != 0)
      return Readiness::Gone;
    if (left == 0)
      return Readiness::TimeOut;
  }
}

LineModes FromKernel(const termios2& modes) noexcept {
  return {.input = modes.c_iflag,
          .output = modes.c_oflag,
          .control = modes.c_cflag,
          .local = modes.c_lflag,
          .inputSpeed = modes.c_ispeed,
          .outputSpeed = modes.c_ospeed,
          .start = modes.c_cc[VSTART],
          .stop = modes.c_cc[VSTOP],
          .leastBytes = modes.c_cc[VMIN],
          .readTime = modes.c_cc[VTIME]};
}

void ToKernel(const LineModes& modes, termios2& kernel) noexcept {
  kernel.c_iflag = modes.input;
  kernel.c_oflag = modes.output;
  kernel.c_cflag = modes.control;
  kernel.c_lflag = modes.local;
  kernel.c_ispeed = modes.inputSpeed;
  kernel.c_ospeed = modes.outputSpeed;
  kernel.c_cc[VSTART] = modes.start;
  kernel.c_cc[VSTOP] = modes.stop;
  kernel.c_cc[VMIN] = modes.leastBytes;
  kernel.c_cc[VTIME] = modes.readTime;
}

} // namespace

std::string FindSerialDevice(std::u16string_view name) {
  constexpr std::u16string_view prefix = u"COM";
  if (!name.starts_with(prefix) || !name.ends_with(u':'))
    return {};
  name.remove_prefix(prefix.size());
  name.remove_suffix(1);
  constexpr std::size_t mostDigits = 9; // below 2^31
  if (name.empty() || name.size() > mostDigits)
    return {};
  int number = 0;
  for (const char16_t digit : name) {
    if (digit < u'0' || digit > u'9')
      return {};
    number = number * 10 + (digit - u'0');
  }

  const char* const folder = std::getenv("BRINDLE_DEVICES");
  if (folder != nullptr && *folder != '\0')
    return std::string(folder) + "/com" + std::to_string(number);
  return number == 0 ? std::string() : "/dev/ttyS" + std::to_string(number - 1);
}

std::string SystemMessage(int osError) {
  const char* const message = strerrordesc_np(osError);
  return message != nullptr ? message : "";
}

SerialLine::~SerialLine() {
  Close();
}

bool SerialLine::Fail(int osError) noexcept {
  m_nLastError = osError;
  return false;
}

bool SerialLine::Open(std::u16string_view name) {
  Close();
  m_nLastError = 0;
  const std::string path = FindSerialDevice(name);
  if (path.empty())
    return Fail(ENOENT);
  const int descriptor = Uninterrupted([&] { return SystemOpen(path.c_str()); });
  if (descriptor < 0)
    return Fail(errno);

  int refusal = 0;
  termios2 modes{};
  if (SystemGetModes(descriptor, modes) != 0)
    refusal = errno;
  // The lock also keeps out a second opening by the superuser, whom the exclusive mode lets pass.
  else if (Uninterrupted([&] { return SystemLock(descriptor); }) != 0 && IsTryAgain(errno))
    refusal = EBUSY;
  else if (SystemControl(descriptor, TIOCEXCL) != 0)
    refusal = errno;
  if (refusal != 0) {
    SystemClose(descriptor);
    return Fail(refusal);
  }
  m_nDescriptor = descriptor;
  return true;
}

void SerialLine::Close() noexcept {
  if (!IsOpen())
    return;
  AwaitOutput();
  // The exclusive mode belongs to the device and would outlive this opening where somebody else had it open before.
  SystemControl(m_nDescriptor, TIOCNXCL);
  SystemClose(std::exchange(m_nDescriptor, -1));
}

// The system's own wait for the rest of the output lasts half a minute when a handshake holds it back. This one ends
// when nothing has left for a second, or when what runs is to stop, and drops the rest.
void SerialLine::AwaitOutput() noexcept {
  constexpr int patience = 1000;
  constexpr auto step = std::chrono::milliseconds(5);
  int before = INT_MAX;
  Deadline deadline(patience);
  for (;;) {
    int pending = 0;
    if (SystemCount(m_nDescriptor, TIOCOUTQ, pending) != 0 || pending <= 0)
      return;
    if (pending < before) {
      before = pending;
      deadline = Deadline(patience);
    }
    if (deadline.Left() == 0 || StopSignal::CurrentShouldStop()) {
      SystemFlush(m_nDescriptor, TCOFLUSH);
      return;
    }
    std::this_thread::sleep_for(step);
  }
}

bool SerialLine::Configure(const LineSettings& settings) {
  for (const LineSettings& candidate : NearestSettings(settings)) {
    if (Apply(candidate)) {
      RaiseSignals(candidate);
      return true;
    }
  }
  return false;
}

bool SerialLine::Apply(const LineSettings& settings) noexcept {
  termios2 kernel{};
  if (SystemGetModes(m_nDescriptor, kernel) != 0)
    return Fail(errno);
  ToKernel(ModesFor(settings, FromKernel(kernel)), kernel);
  return Uninterrupted([&] { return SystemSetModes(m_nDescriptor, kernel); }) == 0 || Fail(errno);
}

// Lines without signals, such as pseudo-terminals, refuse this; there is nothing to raise then.
void SerialLine::RaiseSignals(const LineSettings& settings) noexcept {
  int on = 0;
  int off = 0;
  (settings.dtr == SignalControl::Off ? off : on) |= TIOCM_DTR;
  // Under the handshake the driver moves RTS itself.
  if (settings.rts != SignalControl::Handshake)
    (settings.rts == SignalControl::Off ? off : on) |= TIOCM_RTS;
  SystemSignals(m_nDescriptor, TIOCMBIS, on);
  SystemSignals(m_nDescriptor, TIOCMBIC, off);
}

std::size_t SerialLine::Read(void* buffer, std::size_t capacity, int milliseconds) {
  if (!IsOpen() || capacity == 0)
    return 0;
  const Deadline deadline(milliseconds);
  while (Await(m_nDescriptor, POLLIN, deadline) != Readiness::TimeOut) {
    const ssize_t got = Uninterrupted([&] { return SystemRead(m_nDescriptor, buffer, capacity); });
    if (got > 0)
      return static_cast<std::size_t>(got);
    if (got == 0 || !IsTryAgain(errno)) {
      Fail(got == 0 ? EIO : errno);
      deadline.Sleep();
      break;
    }
    // Somebody else took the byte.
    if (deadline.Left() == 0)
      break;
    std::this_thread::sleep_for(kRetryPause);
  }
  return 0;
}

std::size_t SerialLine::Write(const void* bytes, std::size_t count, int milliseconds) {
  if (!IsOpen())
    return 0;
  std::size_t done = 0;
  Deadline deadline(milliseconds);
  while (done < count) {
    const char* const source = static_cast<const char*>(bytes) + done;
    const ssize_t put = Uninterrupted([&] { return SystemWrite(m_nDescriptor, source, count - done); });
    if (put > 0) {
      done += static_cast<std::size_t>(put);
      deadline = Deadline(milliseconds);
      continue;
    }
    if (put < 0 && !IsTryAgain(errno)) {
      Fail(errno);
      break;
    }
    // A device may say that it has room and take nothing all the same.
    const Readiness readiness = Await(m_nDescriptor, POLLOUT, deadline);
    if (readiness != Readiness::Ready || deadline.Left() == 0) {
      Fail(readiness == Readiness::Gone ? EIO : ETIMEDOUT);
      break;
    }
    std::this_thread::sleep_for(kRetryPause);
  }
  return done;
}

std::size_t SerialLine::BytesWaiting() const noexcept {
  int count = 0;
  return IsOpen() && SystemCount(m_nDescriptor, FIONREAD, count) == 0 && count > 0 ? static_cast<std::size_t>(count)
                                                                                   : 0;
}

bool SerialLine::PurgeInput() noexcept {
  return IsOpen() && (SystemFlush(m_nDescriptor, TCIFLUSH) == 0 || Fail(errno));
}

bool SerialLine::SetBreak() noexcept {
  return IsOpen() && (SystemControl(m_nDescriptor, TIOCSBRK) == 0 || Fail(errno));
}

bool SerialLine::ClearBreak() noexcept {
  return IsOpen() && (SystemControl(m_nDescriptor, TIOCCBRK) == 0 || Fail(errno));
}

} // namespace brindle
