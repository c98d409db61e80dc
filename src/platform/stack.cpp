#include "platform/stack.h"

#include "platform/faults.h"

#include <pthread.h>
#include <sys/auxv.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>

namespace brindle {

namespace {

constexpr std::uintptr_t LargestMainStack = std::uintptr_t{64} << 20;

// All 0 when unknown.
struct StackBounds {
  std::uintptr_t low = 0;
  std::uintptr_t high = 0;
};

bool OnMainThread() noexcept {
  return syscall(SYS_gettid) == static_cast<long>(getpid());
}

// The main thread's stack grows on demand: how far is the limit's affair, not that of the pages mapped so far.
std::uintptr_t MainStackSize() noexcept {
  rlimit limit{};
  if (getrlimit(RLIMIT_STACK, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY || limit.rlim_cur > LargestMainStack) {
    return LargestMainStack;
  }
  return static_cast<std::uintptr_t>(limit.rlim_cur);
}

// The thread library would read the list of all mappings for these. The system puts the name of the program at the very
// begin of the stack, with a word of zeros behind it.
StackBounds MainBounds(std::uintptr_t frame) noexcept {
  const std::uintptr_t name = getauxval(AT_EXECFN);
  if (name == 0) {
    // Half of the limit leaves room for what the host has used above this frame.
    return {frame - std::min(MainStackSize() / 2, frame), UINTPTR_MAX};
  }
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const std::uintptr_t last = name + std::strlen(reinterpret_cast<const char*>(name)) + sizeof(std::uint64_t);
  const std::uintptr_t high = (last / page + 1) * page;
  return {high - std::min(MainStackSize(), high), high};
}

StackBounds QueryBounds(std::uintptr_t frame) noexcept {
  if (OnMainThread()) {
    return MainBounds(frame);
  }
  pthread_attr_t attributes;
  if (Refused(FaultKind::Process, ENOMEM) || pthread_getattr_np(pthread_self(), &attributes) != 0) {
    return {};
  }
  void* address = nullptr;
  std::size_t size = 0;
  std::size_t guard = 0;
  const bool known =
      pthread_attr_getstack(&attributes, &address, &size) == 0 && pthread_attr_getguardsize(&attributes, &guard) == 0;
  pthread_attr_destroy(&attributes);
  if (!known) {
    return {};
  }

  StackBounds bounds;
  bounds.low = reinterpret_cast<std::uintptr_t>(address);
  bounds.high = bounds.low + size;
  // Some C libraries count the guard pages as part of the stack; leaving them out twice costs a page.
  bounds.low += guard;
  return bounds;
}

} // namespace

std::size_t RemainingStack() noexcept {
  thread_local StackBounds bounds;
  thread_local bool asked = false;
  // The frame's address, not that of a local: the address sanitizer may keep locals elsewhere.
  const auto frame = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  if (!asked) {
    bounds = QueryBounds(frame);
    asked = true;
  }
  if (frame > bounds.high) {
    return UnknownStackRemaining;
  }
  if (frame < bounds.low) {
    // Just below the end is the guard; far below is a stack of another kind.
    return bounds.low - frame < UnknownStackRemaining ? 0 : UnknownStackRemaining;
  }
  return frame - bounds.low;
}

} // namespace brindle
