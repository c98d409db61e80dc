#include "platform/memory_account.h"

namespace brindle {

constinit thread_local std::int64_t detail::accountBalance = 0;

namespace {

[[gnu::tls_model("initial-exec")]] thread_local std::int64_t ceiling = MemoryAccount::kNoCeiling;

} // namespace

void MemoryAccount::Add(std::size_t bytes) {
  const std::int64_t sum = detail::accountBalance + static_cast<std::int64_t>(bytes);
  if (sum > ceiling && bytes >= kLargePiece) [[unlikely]]
    throw MemoryLimitReached();
  detail::accountBalance = sum;
}

std::int64_t MemoryAccount::Ceiling() noexcept {
  return ceiling;
}

void MemoryAccount::SetCeiling(std::int64_t newCeiling) noexcept {
  ceiling = newCeiling;
}

} // namespace brindle
