#include "platform/stop_signal.h"

#include "brindle/stop_request.h"
#include "platform/faults.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <span>
#include <thread>

namespace brindle {

namespace {

thread_local StopSignal* current = nullptr;

// Every system call of this file that may be refused. Each returns what the call returns.
int SystemEvent() noexcept {
  return Refused(FaultKind::Process, EMFILE) ? -1 : ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
}
ssize_t SystemWrite(int descriptor, const std::uint64_t& count) noexcept {
  return Refused(FaultKind::Process, EAGAIN) ? -1 : ::write(descriptor, &count, sizeof count);
}
ssize_t SystemRead(int descriptor, std::uint64_t& count) noexcept {
  return Refused(FaultKind::Process, EIO) ? -1 : ::read(descriptor, &count, sizeof count);
}
int SystemPoll(std::span<pollfd> entries, FaultKind kind, int milliseconds) noexcept {
  return Refused(kind, ENOMEM) ? -1 : ::poll(entries.data(), entries.size(), milliseconds);
}

// Milliseconds left, rounded up; -1 to wait without limit.
int WaitTime(std::optional<StopSignal::Clock::time_point> moment) noexcept {
  if (!moment)
    return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*moment - StopSignal::Clock::now());
  return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 1'000'000));
}

} // namespace

StopSignal::~StopSignal() {
  if (const int descriptor = m_nDescriptor.load(); descriptor >= 0)
    ::close(descriptor);
}

// The waiting side stores the descriptor and then reads the flag, this one the other way round: whichever comes
// second sees the first.
void StopSignal::Request() noexcept {
  m_isRequested.store(true, std::memory_order_seq_cst);
  const int descriptor = m_nDescriptor.load(std::memory_order_seq_cst);
  if (descriptor < 0)
    return;
  const int error = errno;
  [[maybe_unused]] const ssize_t written = SystemWrite(descriptor, 1);
  errno = error;
}

void StopSignal::Clear() noexcept {
  m_isRequested.store(false, std::memory_order_seq_cst);
  m_wasLate = false;
}

bool StopSignal::ShouldStop() noexcept {
  if (m_isRequested.load(std::memory_order_seq_cst))
    return true;
  if (!IsLate())
    return false;
  m_wasLate = true;
  m_isRequested.store(true, std::memory_order_seq_cst);
  return true;
}

int StopSignal::Descriptor() noexcept {
  int descriptor = m_nDescriptor.load(std::memory_order_relaxed);
  if (descriptor < 0) {
    // Without a descriptor left in the system a wait ends when it ends.
    descriptor = SystemEvent();
    m_nDescriptor.store(descriptor, std::memory_order_seq_cst);
  } else if (!m_isRequested.load(std::memory_order_seq_cst)) {
    // Of a request that was answered long ago, or of one that is being made: its flag stands then, or will be seen.
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t got = SystemRead(descriptor, count);
  }
  return descriptor;
}

StopSignal* StopSignal::Current() noexcept {
  return current;
}

StopSignal::Scope::Scope(StopSignal* signal) noexcept : m_outer(current) {
  current = signal;
}

StopSignal::Scope::~Scope() {
  current = m_outer;
}

int StopSignal::CurrentDescriptor() noexcept {
  return current == nullptr ? -1 : current->Descriptor();
}

bool StopSignal::CurrentShouldStop() noexcept {
  return current != nullptr && current->ShouldStop();
}

std::optional<StopSignal::Clock::time_point> StopSignal::Earlier(std::optional<Clock::time_point> moment) noexcept {
  if (current == nullptr || !current->m_deadline)
    return moment;
  return moment ? std::min(*moment, *current->m_deadline) : current->m_deadline;
}

void StopSignal::SleepUntil(Clock::time_point moment) noexcept {
  constexpr auto kBlindPause = std::chrono::milliseconds(5);
  for (;;) {
    std::array<pollfd, 1> entries = {pollfd{CurrentDescriptor(), POLLIN, 0}};
    if (CurrentShouldStop() || Clock::now() >= moment)
      return;
    // A system that cannot wait for a descriptor can still sleep.
    if (SystemPoll(entries, FaultKind::Process, WaitTime(Earlier(moment))) < 0 && errno != EINTR)
      std::this_thread::sleep_for(kBlindPause);
  }
}

bool StopSignal::Await(int descriptor, short events) noexcept {
  for (;;) {
    std::array<pollfd, 2> entries = {pollfd{descriptor, events, 0}, pollfd{CurrentDescriptor(), POLLIN, 0}};
    if (CurrentShouldStop())
      return false;
    const int ready = SystemPoll(entries, FaultKind::File, WaitTime(Earlier(std::nullopt)));
    if (entries[0].revents != 0 || (ready < 0 && errno != EINTR))
      return true;
  }
}

} // namespace brindle

bool CStopRequest::IsMade() noexcept {
  return brindle::StopSignal::CurrentShouldStop();
}

int CStopRequest::Descriptor() noexcept {
  return brindle::StopSignal::CurrentDescriptor();
}

std::optional<CStopRequest::Clock::time_point> CStopRequest::Deadline() noexcept {
  return brindle::StopSignal::Earlier(std::nullopt);
}
