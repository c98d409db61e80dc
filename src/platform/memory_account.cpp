#include "platform/memory_account.h"

namespace brindle {

namespace {

// The library is loaded with its program as a rule, so the two have fixed places: every text counts here.
[[gnu::tls_model("initial-exec")]] thread_local std::int64_t balance = 0;
[[gnu::tls_model("initial-exec")]] thread_local std::int64_t ceiling = MemoryAccount::kNoCeiling;

} // namespace

void MemoryAccount::Add(std::size_t bytes) {
  const std::int64_t sum = balance + static_cast<std::int64_t>(bytes);
  if (sum > ceiling && bytes >= kLargePiece) [[unlikely]]
    throw MemoryLimitReached();
  balance = sum;
}

void MemoryAccount::Remove(std::size_t bytes) noexcept {
  balance -= static_cast<std::int64_t>(bytes);
}

std::int64_t MemoryAccount::Balance() noexcept {
  return balance;
}

std::int64_t MemoryAccount::Ceiling() noexcept {
  return ceiling;
}

void MemoryAccount::SetCeiling(std::int64_t newCeiling) noexcept {
  ceiling = newCeiling;
}

} // namespace brindle
