// Faults made on purpose: a chosen call is refused, so that a test sees what the refusal leaves behind.
// Room: platform. Used by: every call of this room that the system may refuse, and the fault tests' own allocator.
// May touch: the plan and errno.
// Must not: be exported or reachable through anything that is: only a program that links this room's objects can
// set the plan, and nothing in the library does.
// Invariant: without a plan a call costs one relaxed load and a branch that is never taken.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace brindle {

// PartialWrite: the chosen write to a file takes the first half of its bytes, and those behind it, when it is lasting,
// take none, as on a device that has become full.
enum class FaultKind : std::uint8_t { Memory, File, Serial, Library, Process, PartialWrite };

// What a test has set and what came of it. Not for several threads at once.
struct FaultPlan {
  std::atomic<bool> active = false;
  FaultKind kind = FaultKind::Memory;
  bool lasting = false;     // every call from the chosen one on, not it alone
  std::uint64_t chosen = 0; // counted from 1; 0 refuses none
  std::uint64_t calls = 0;  // of this kind so far
  std::uint64_t refused = 0;
};

extern FaultPlan faultPlan;

// Counts a call of the plan's kind; true, with `osError` in errno, when it is to be refused.
[[nodiscard]] bool CountCall(FaultKind kind, int osError) noexcept;

// Stands before the call itself: whether the call is refused, as if with this error.
[[nodiscard]] inline bool Refused(FaultKind kind, int osError) noexcept {
  return faultPlan.active.load(std::memory_order_relaxed) && CountCall(kind, osError);
}

// The same for a write of so many bytes: how many it may be given. 0, with ENOSPC in errno, when it is to be refused.
[[nodiscard]] std::size_t CountWrite(std::size_t size) noexcept;

[[nodiscard]] inline std::size_t Writable(std::size_t size) noexcept {
  return faultPlan.active.load(std::memory_order_relaxed) ? CountWrite(size) : size;
}

} // namespace brindle
