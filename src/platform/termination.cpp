#include "platform/termination.h"

#include "platform/faults.h"

#include <array>
#include <cerrno>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace brindle {

namespace {

// A signal handler can do no more than write: whoever waits watches the other end.
int writeEnd = -1;

void NoteTermination(int) {
  const int error = errno;
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
  errno = error;
}

} // namespace

int TerminationDescriptor() noexcept {
  static int readEnd = -1;
  std::array<int, 2> ends{};
  if (readEnd >= 0 || Refused(FaultKind::Process, EMFILE) || ::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
    return readEnd;
  readEnd = ends[0];
  writeEnd = ends[1];
  struct sigaction action = {};
  action.sa_handler = NoteTermination;
  ::sigaction(SIGINT, &action, nullptr);
  ::sigaction(SIGTERM, &action, nullptr);
  return readEnd;
}

} // namespace brindle
