// MemoryAccount: how many bytes the values made on this thread hold, and a ceiling for them.
// Room: platform. Used by: texts, and through AccountedAllocator and AccountedPiece what else a script can make grow;
// the interpreter's budget, which sets the ceiling.
// May touch: two numbers of the thread.
// Must not: allocate.
// Invariant: what was added is taken away with the same number of bytes; a value that ends on another thread than the
// one that made it moves both balances, of which only differences are looked at.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace brindle {

// A piece of memory was refused because of the ceiling.
class MemoryLimitReached : public std::bad_alloc {
public:
  [[nodiscard]] const char* what() const noexcept override { return "memory limit reached"; }
};

namespace detail {
// The library is loaded with its program as a rule, so this has a fixed place: every text counts here.
[[gnu::tls_model("initial-exec")]] extern constinit thread_local std::int64_t accountBalance;
} // namespace detail

class MemoryAccount {
public:
  static constexpr std::int64_t kNoCeiling = INT64_MAX;
  // Smaller pieces are added up only: whoever set the ceiling compares from time to time.
  static constexpr std::size_t kLargePiece = 4096;

  // Throws MemoryLimitReached, and adds nothing, when a large piece would pass the ceiling.
  static void Add(std::size_t bytes);
  // The same for a small piece, which is never refused.
  static void AddSmall(std::size_t bytes) noexcept { detail::accountBalance += static_cast<std::int64_t>(bytes); }
  static void Remove(std::size_t bytes) noexcept { detail::accountBalance -= static_cast<std::int64_t>(bytes); }
  [[nodiscard]] static std::int64_t Balance() noexcept { return detail::accountBalance; }
  [[nodiscard]] static std::int64_t Ceiling() noexcept;
  static void SetCeiling(std::int64_t ceiling) noexcept;
};

template <class T> class AccountedAllocator {
public:
  using value_type = T;

  AccountedAllocator() noexcept = default;
  template <class Other> AccountedAllocator(const AccountedAllocator<Other>&) noexcept {}

  [[nodiscard]] T* allocate(std::size_t count) {
    MemoryAccount::Add(count * sizeof(T));
    try {
      return std::allocator<T>().allocate(count);
    } catch (...) {
      MemoryAccount::Remove(count * sizeof(T));
      throw;
    }
  }
  void deallocate(T* memory, std::size_t count) noexcept {
    std::allocator<T>().deallocate(memory, count);
    MemoryAccount::Remove(count * sizeof(T));
  }
  friend bool operator==(const AccountedAllocator&, const AccountedAllocator&) noexcept { return true; }
};

// A member of what is made one by one: counts so many bytes while it lives.
template <std::size_t Bytes> class AccountedPiece {
public:
  AccountedPiece() { MemoryAccount::Add(Bytes); }
  AccountedPiece(const AccountedPiece&) : AccountedPiece() {}
  AccountedPiece& operator=(const AccountedPiece&) noexcept { return *this; }
  ~AccountedPiece() { MemoryAccount::Remove(Bytes); }
};

} // namespace brindle
