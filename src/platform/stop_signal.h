// StopSignal: a request to stop that reaches its thread also while that waits for something.
// Room: platform. Used by: the interpreter's budget, which owns it; whatever in this room waits.
// May touch: one descriptor, made when a wait first needs it.
// Must not: know what is to be stopped.
// Invariant: Request is safe in a signal handler and on any thread; all else belongs to the thread that runs.
#pragma once

#include <atomic>
#include <chrono>
#include <optional>

namespace brindle {

class StopSignal {
public:
  using Clock = std::chrono::steady_clock;

  StopSignal() = default;
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;
  ~StopSignal();

  // No lock, no memory: a flag, and a write to the descriptor if there is one.
  void Request() noexcept;
  // By the running thread itself, which waits for nothing then: nobody is woken, so that the descriptor tells of those
  // requests alone that came from outside.
  void Note() noexcept { m_isRequested.store(true, std::memory_order_seq_cst); }
  [[nodiscard]] bool IsRequested() const noexcept { return m_isRequested.load(std::memory_order_relaxed); }
  void Clear() noexcept;
  void SetDeadline(std::optional<Clock::time_point> deadline) noexcept { m_deadline = deadline; }
  [[nodiscard]] bool IsLate() const noexcept { return m_deadline && Clock::now() >= *m_deadline; }
  // Being late is a request as well, from when it was noticed.
  [[nodiscard]] bool ShouldStop() noexcept;
  [[nodiscard]] bool WasLate() const noexcept { return m_wasLate; }

  // The signal of what runs on this thread, null when nothing does.
  [[nodiscard]] static StopSignal* Current() noexcept;
  class Scope {
  public:
    explicit Scope(StopSignal* signal) noexcept;
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope();

  private:
    StopSignal* m_outer;
  };

  // For waits that are to end as soon as the current signal says so: a descriptor that becomes readable then (-1 is
  // not to be looked at), and the moment at which to look again. ShouldStop is to be asked before each wait.
  [[nodiscard]] static int CurrentDescriptor() noexcept;
  [[nodiscard]] static bool CurrentShouldStop() noexcept;
  [[nodiscard]] static std::optional<Clock::time_point> Earlier(std::optional<Clock::time_point> moment) noexcept;
  // Sleeps until that moment at most.
  static void SleepUntil(Clock::time_point moment) noexcept;
  // Waits until the descriptor is ready for these events of poll; false when the current signal says stop.
  [[nodiscard]] static bool Await(int descriptor, short events) noexcept;

private:
  [[nodiscard]] int Descriptor() noexcept;

  std::atomic<bool> m_isRequested{false};
  std::atomic<int> m_nDescriptor{-1};
  bool m_wasLate = false;
  std::optional<Clock::time_point> m_deadline;
};
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

} // namespace brindle
