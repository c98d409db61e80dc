// ExecutionBudget: what a host allows an interpreter, and how much of it is left.
// Room: interpreter. Used by: the run loops and the machine, before each statement; everything that reaches outside.
// May touch: the thread's current stop signal and memory ceiling, while an entry lasts.
// Must not: report; the interpreter that finds it used up does.
// Invariant: one for an interpreter and all scripts that it runs by "run". Once it is used up nothing runs any more
// until the outermost entry is left.
#pragma once

#include "brindle/limits.h"
#include "interpreter/error_numbers.h"
#include "platform/file_root.h"
#include "platform/memory_account.h"
#include "platform/stop_signal.h"

#include <memory>
#include <optional>
#include <utility>

namespace brindle {

class ExecutionBudget {
public:
  // False, and nothing changes, when the root cannot be opened or something runs.
  [[nodiscard]] bool SetLimits(const CExecutionLimits& limits);
  [[nodiscard]] const CExecutionLimits& Limits() const noexcept { return m_limits; }
  // Null when no root is set.
  [[nodiscard]] const FileRoot* Root() const noexcept { return m_root.get(); }
  [[nodiscard]] StopSignal& Signal() noexcept { return m_signal; }

  // Whether statements are counted: compiled code has to do it as well then.
  [[nodiscard]] bool IsCounting() const noexcept { return m_isCounting; }
  // One relaxed read: a stop was asked for, or a budget is used up.
  [[nodiscard]] bool IsStopping() const noexcept { return m_signal.IsRequested(); }
  // The same, and whether the time has run out meanwhile.
  [[nodiscard]] bool ShouldStop() noexcept { return m_signal.ShouldStop(); }
  // One statement; false when it may not be run.
  [[nodiscard]] bool Take() noexcept {
    if (IsStopping()) [[unlikely]]
      return false;
    return !m_isCounting || TakeCounted();
  }
  // The same where a stop is looked for elsewhere.
  [[nodiscard]] bool TakeCounted() noexcept {
    if (m_nFuel == 0 && !Refuel()) [[unlikely]]
      return false;
    --m_nFuel;
    return true;
  }

  // The number of the error that ends the run; a given one counts when none was found before.
  [[nodiscard]] int Verdict(std::optional<int> number = std::nullopt) noexcept;
  // True once in an outermost entry.
  [[nodiscard]] bool TakeReport() noexcept { return !std::exchange(m_wasReported, true); }

  // Lasts as long as a run, or the handlers of an event that came while nothing ran.
  class Entry {
  public:
    explicit Entry(ExecutionBudget& budget) noexcept;
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;
    ~Entry();

  private:
    ExecutionBudget& m_budget;
    std::optional<StopSignal::Scope> m_signal;
    std::int64_t m_nOuterCeiling = MemoryAccount::kNoCeiling;
  };

private:
  [[nodiscard]] bool Refuel() noexcept;

  std::uint64_t m_nFuel = 0;           // statements until it is looked at the clock and the rest
  std::uint64_t m_nStatementsLeft = 0; // beside the fuel
  StopSignal m_signal;
  bool m_isCounting = false;
  bool m_wasReported = false;
  int m_nVerdict = kErrorNoText;
  int m_nEntries = 0;
  std::int64_t m_nBytesHeld = 0;    // when the last outermost entry was left
  std::int64_t m_nFirstBalance = 0; // of the thread when the current one began
  CExecutionLimits m_limits;
  std::shared_ptr<const FileRoot> m_root;
};

} // namespace brindle
