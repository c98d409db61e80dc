#include "platform/terminal.h"

#include <unistd.h>

#include <cerrno>

namespace brindle {

bool IsTerminal(int descriptor) noexcept {
  const int savedError = errno;
  const bool terminal = isatty(descriptor) == 1;
  errno = savedError;
  return terminal;
}

} // namespace brindle
