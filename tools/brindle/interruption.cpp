#include "interruption.h"

#include <brindle/interpreter.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

std::array<int, 2> pipeEnds = {-1, -1}; // a handler can do no more than write: who waits watches the other end
std::atomic<CBrindle*> running = nullptr;
static_assert(std::atomic<CBrindle*>::is_always_lock_free);
struct sigaction before = {};

void NoteInterruption(int) {
  const int error = errno;
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = ::write(pipeEnds[1], &byte, 1);
  if (CBrindle* const interpreter = running)
    interpreter->RequestStop();
  errno = error;
}

} // namespace

Interruption::Interruption() {
  if (::pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0)
    return;
  struct sigaction action = {};
  action.sa_handler = NoteInterruption;
  ::sigaction(SIGINT, &action, &before);
}

Interruption::~Interruption() {
  if (pipeEnds[0] < 0)
    return;
  ::sigaction(SIGINT, &before, nullptr);
  ::close(pipeEnds[0]);
  ::close(pipeEnds[1]);
  pipeEnds = {-1, -1};
}

Interruption::Running::Running(CBrindle& interpreter) {
  running = &interpreter;
}

Interruption::Running::~Running() {
  running = nullptr;
}

Interruption::Wait Interruption::WaitForInput(std::optional<std::chrono::milliseconds> limit) {
  // Longer waits are cut short and begun anew by the caller.
  const int milliseconds = limit ? static_cast<int>(std::clamp<std::int64_t>(limit->count(), 0, 1'000'000)) : -1;
  std::array<pollfd, 2> waits = {pollfd{STDIN_FILENO, POLLIN, 0}, pollfd{pipeEnds[0], POLLIN, 0}};
  int ready = ::poll(waits.data(), waits.size(), milliseconds);
  if (ready < 0)
    ready = ::poll(waits.data(), waits.size(), 0); // which signal was it?
  if (ready <= 0)
    return Wait::TimedOut; // a window that changed its size is looked at anew
  return waits[1].revents != 0 ? Wait::Interrupted : Wait::Input;
}

bool Interruption::Take() {
  bool came = false;
  char byte = 0;
  while (pipeEnds[0] >= 0 && ::read(pipeEnds[0], &byte, 1) == 1)
    came = true;
  return came;
}
