// The fault tests' own allocator: it asks the seam before every allocation, and knows what is still held.
// Room: tests. Used by: the fault tests; it takes the place of operator new, and of malloc in what is linked here.
// May touch: memory of the C library.
// Must not: allocate for itself.
// Invariant: what the tests allocate for themselves is neither refused nor counted.
#pragma once

#include "platform/faults.h"

#include <cstddef>

namespace faults {

// Allocations held by the product.
[[nodiscard]] std::size_t Held() noexcept;

// With BRINDLE_FAULT_TRACE set every allocation keeps its call chain: writes those of the ones held that are younger
// than the mark to standard error, as addresses for addr2line.
[[nodiscard]] std::size_t Mark() noexcept;
void TraceHeldSince(std::size_t mark) noexcept;
// The same for the last allocation that was refused.
void TraceRefused() noexcept;

// While one lives, the test is at work and not the product.
class TestsOwn {
public:
  TestsOwn() noexcept;
  TestsOwn(const TestsOwn&) = delete;
  TestsOwn& operator=(const TestsOwn&) = delete;
  ~TestsOwn();

private:
  bool m_wasActive;
  bool m_wasOwn;
};

} // namespace faults
