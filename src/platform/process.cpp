#ifndef _FILE_OFFSET_BITS
#define _FILE_OFFSET_BITS 64 // or the status of a large file could not be asked for on 32-bit devices
#endif

#include "platform/process.h"

#include "platform/faults.h"
#include "platform/path.h"

#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string>

namespace brindle {

namespace {

// Each new process runs on a part of its own of this space, whose contents it holds as a copy. Page-sized parts would
// do; sanitizers ask for more.
constexpr std::size_t LaunchStackSize = std::size_t{256} << 10;

struct Launch {
  const char* program;
  std::array<char*, 3> arguments;
  char* stack; // two parts of LaunchStackSize
};

bool IsExecutableFile(const std::string& path) noexcept {
  struct stat status {};
  return !Refused(FaultKind::Process, EIO) && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         access(path.c_str(), X_OK) == 0;
}

// Until the program starts only system calls are allowed: another thread of the host may have held any lock at the
// moment of copying.

void UseNullForStandardStreams() noexcept {
  const int null = open("/dev/null", O_RDWR);
  if (null < 0) {
    return;
  }
  for (int stream = 0; stream <= 2; ++stream) {
    dup2(null, stream);
  }
  if (null > 2) {
    close(null);
  }
}

// Descriptors of the host that would stay open in the program, a pipe's end for example, and keep others waiting.
void CloseOtherDescriptors() noexcept {
#ifdef SYS_close_range
  if (syscall(SYS_close_range, 3U, ~0U, 0U) == 0) {
    return;
  }
#endif
  constexpr int usualLimit = 1024;
  for (int descriptor = 3; descriptor < usualLimit; ++descriptor) {
    close(descriptor);
  }
}

int RunProgram(void* argument) {
  const auto* launch = static_cast<const Launch*>(argument);
  setsid();

  // A mask and ignored signals would outlive the start of the program.
  struct sigaction defaultAction {};
  defaultAction.sa_handler = SIG_DFL;
  for (int number = 1; number < NSIG; ++number) {
    sigaction(number, &defaultAction, nullptr);
  }
  sigset_t noSignals;
  sigemptyset(&noSignals);
  sigprocmask(SIG_SETMASK, &noSignals, nullptr);

  UseNullForStandardStreams();
  CloseOtherDescriptors();
  execv(launch->program, launch->arguments.data());
  return 127;
}

// Ends at once, so that the program becomes a child of the system, which clears it away when it ends.
int RunIntermediate(void* argument) {
  auto* launch = static_cast<Launch*>(argument);
  clone(RunProgram, launch->stack + 2 * LaunchStackSize, SIGCHLD, launch);
  return 0;
}

void Start(const std::string& program, const std::string* argument) {
  std::string name = program;
  std::string text = argument != nullptr ? *argument : std::string();
  const auto stack = std::make_unique<char[]>(2 * LaunchStackSize);
  Launch launch{program.c_str(), {name.data(), argument != nullptr ? text.data() : nullptr, nullptr}, stack.get()};

  // No handler of the host may run in the copies.
  sigset_t allSignals;
  sigset_t savedMask;
  sigfillset(&allSignals);
  pthread_sigmask(SIG_SETMASK, &allSignals, &savedMask);
  // Without an exit signal the host's SIGCHLD handler is not called and its wait for any child does not see this one.
  pid_t intermediate =
      Refused(FaultKind::Process, EAGAIN) ? -1 : clone(RunIntermediate, stack.get() + LaunchStackSize, 0, &launch);
  if (intermediate < 0 && errno == EINVAL) {
    // Emulators that run a program built for another processor know no other exit signal.
    intermediate = clone(RunIntermediate, stack.get() + LaunchStackSize, SIGCHLD, &launch);
  }
  pthread_sigmask(SIG_SETMASK, &savedMask, nullptr);

  if (intermediate > 0) {
    while (waitpid(intermediate, nullptr, __WALL) < 0 && errno == EINTR) {
    }
  }
}

// "scheme:" as in an address; one letter alone would be a drive.
bool IsAddress(std::string_view text) noexcept {
  const std::size_t colon = text.find(':');
  return colon != std::string_view::npos && colon >= 2 &&
         std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(colon), [](unsigned char character) {
           return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
         });
}

// Empty when the desktop has no opener.
std::string FindOpener() {
  const char* const variable = std::getenv("PATH");
  std::string_view folders = variable != nullptr ? variable : "/usr/local/bin:/usr/bin:/bin";
  while (!folders.empty()) {
    const std::size_t end = std::min(folders.find(':'), folders.size());
    std::string candidate(folders.substr(0, end));
    candidate += candidate.empty() ? "./xdg-open" : "/xdg-open";
    if (IsExecutableFile(candidate)) {
      return candidate;
    }
    folders.remove_prefix(std::min(end + 1, folders.size()));
  }
  return {};
}

} // namespace

void StartFile(std::u16string_view path, std::u16string_view parameters) {
  std::string native = ResolvePath(path);
  if (native.empty() || native.find('\0') != std::string::npos) {
    return;
  }
  if (IsExecutableFile(native)) {
    const std::string text = PathToNative(parameters);
    Start(native, text.empty() ? nullptr : &text);
    return;
  }

  if (access(native.c_str(), F_OK) != 0) {
    native = PathToNative(path);
    if (!IsAddress(native)) {
      return;
    }
  } else if (native[0] == '-') {
    native.insert(0, "./"); // a name, not an option of the opener
  }
  const std::string opener = FindOpener();
  if (!opener.empty()) {
    Start(opener, &native);
  }
}

void IgnoreFileSizeSignal() noexcept {
  ::signal(SIGXFSZ, SIG_IGN);
}

} // namespace brindle
