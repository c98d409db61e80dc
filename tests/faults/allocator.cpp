#include "faults/allocator.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <new>

#include <execinfo.h>
#include <unistd.h>

// The linker leads every call of malloc in the objects of this program to the first, from there to the second.
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void __real_free(void* memory);
}

namespace faults {

namespace {

constexpr std::size_t kFrames = 24;
constexpr std::size_t kSlots = std::size_t{1} << 20; // a power of two, far more than a scenario holds

struct Slot {
  void* memory;
  std::size_t number; // of the allocation, counted from 1
  bool own;           // the test's, not the product's
};
struct Chain {
  void* frames[kFrames];
  int count;
};

Slot slots[kSlots];
Chain chains[kSlots];
Chain refusedChain;
std::size_t used = 0;
std::size_t held = 0;
std::size_t lastNumber = 0;
bool testsOwn = true; // until the first trial everything is the test's

bool Tracing() noexcept {
  static const bool tracing = std::getenv("BRINDLE_FAULT_TRACE") != nullptr;
  return tracing;
}

void Keep(Chain& chain) noexcept {
  chain.count = backtrace(chain.frames, kFrames);
}

void Write(const Chain& chain) noexcept {
  backtrace_symbols_fd(chain.frames, chain.count, STDERR_FILENO);
  [[maybe_unused]] const auto written = write(STDERR_FILENO, "--\n", 3);
}

std::size_t HomeOf(const void* memory) noexcept {
  return static_cast<std::size_t>((reinterpret_cast<std::uintptr_t>(memory) >> 4) * 0x9E3779B97F4A7C15U >> 44);
}
static_assert(kSlots == std::size_t{1} << (64 - 44));

// The slot of the memory, or the free one where it belongs.
std::size_t Find(const void* memory) noexcept {
  std::size_t slot = HomeOf(memory);
  while (slots[slot].memory != nullptr && slots[slot].memory != memory)
    slot = (slot + 1) % kSlots;
  return slot;
}

void Note(void* memory) noexcept {
  if (++used >= kSlots / 2)
    std::abort();
  const std::size_t slot = Find(memory);
  slots[slot] = {memory, ++lastNumber, testsOwn};
  held += testsOwn ? 0 : 1;
  if (Tracing() && !testsOwn)
    Keep(chains[slot]);
}

// Memory that came from elsewhere, such as the C library's own, is unknown here.
void Forget(const void* memory) noexcept {
  std::size_t slot = Find(memory);
  if (slots[slot].memory == nullptr)
    return;
  held -= slots[slot].own ? 0 : 1;
  --used;
  // Those behind move up that would not be found across the gap.
  for (std::size_t next = (slot + 1) % kSlots; slots[next].memory != nullptr; next = (next + 1) % kSlots) {
    const std::size_t home = HomeOf(slots[next].memory);
    if ((next - home) % kSlots >= (next - slot) % kSlots) {
      slots[slot] = slots[next];
      if (Tracing())
        chains[slot] = chains[next];
      slot = next;
    }
  }
  slots[slot].memory = nullptr;
}

bool IsRefused() noexcept {
  if (!brindle::Refused(brindle::FaultKind::Memory, ENOMEM))
    return false;
  if (Tracing())
    Keep(refusedChain);
  return true;
}

void* Allocate(std::size_t size) noexcept {
  void* const memory = IsRefused() ? nullptr : __real_malloc(std::max<std::size_t>(size, 1));
  if (memory != nullptr)
    Note(memory);
  return memory;
}

void* AllocateAligned(std::size_t size, std::align_val_t alignment) noexcept {
  const auto step = static_cast<std::size_t>(alignment);
  void* const memory =
      IsRefused() ? nullptr : std::aligned_alloc(step, (std::max<std::size_t>(size, 1) + step - 1) / step * step);
  if (memory != nullptr)
    Note(memory);
  return memory;
}

void* OrThrow(void* memory) {
  if (memory == nullptr)
    throw std::bad_alloc();
  return memory;
}

void Release(void* memory) noexcept {
  if (memory == nullptr)
    return;
  Forget(memory);
  __real_free(memory);
}

} // namespace

std::size_t Held() noexcept {
  return held;
}

std::size_t Mark() noexcept {
  return lastNumber;
}

void TraceHeldSince(std::size_t mark) noexcept {
  if (!Tracing())
    return;
  for (std::size_t slot = 0; slot < kSlots; ++slot)
    if (slots[slot].memory != nullptr && !slots[slot].own && slots[slot].number > mark)
      Write(chains[slot]);
}

void TraceRefused() noexcept {
  if (Tracing())
    Write(refusedChain);
}

TestsOwn::TestsOwn() noexcept : m_wasActive(brindle::faultPlan.active), m_wasOwn(testsOwn) {
  brindle::faultPlan.active = false;
  testsOwn = true;
}

TestsOwn::~TestsOwn() {
  brindle::faultPlan.active = m_wasActive;
  testsOwn = m_wasOwn;
}

// The product's turn begins and ends with a trial.
void SetTestsOwn(bool own) noexcept {
  testsOwn = own;
}

} // namespace faults

extern "C" {
void* __wrap_malloc(std::size_t size) {
  return faults::Allocate(size);
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
  void* const memory = faults::IsRefused() ? nullptr : __real_calloc(count, size);
  if (memory != nullptr)
    faults::Note(memory);
  return memory;
}
void* __wrap_realloc(void* memory, std::size_t size) {
  if (faults::IsRefused())
    return nullptr;
  if (memory != nullptr)
    faults::Forget(memory);
  void* const moved = __real_realloc(memory, size);
  faults::Note(moved != nullptr ? moved : memory);
  return moved;
}
void __wrap_free(void* memory) {
  faults::Release(memory);
}
}

void* operator new(std::size_t size) {
  return faults::OrThrow(faults::Allocate(size));
}
void* operator new[](std::size_t size) {
  return faults::OrThrow(faults::Allocate(size));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return faults::Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return faults::Allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return faults::OrThrow(faults::AllocateAligned(size, alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return faults::OrThrow(faults::AllocateAligned(size, alignment));
}
void operator delete(void* memory) noexcept {
  faults::Release(memory);
}
void operator delete[](void* memory) noexcept {
  faults::Release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  faults::Release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  faults::Release(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  faults::Release(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  faults::Release(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
  faults::Release(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
  faults::Release(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
  faults::Release(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept {
  faults::Release(memory);
}
