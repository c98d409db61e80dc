#include "interpreter/execution_budget.h"

#include "platform/path.h"

#include <algorithm>
#include <limits>

namespace brindle {

namespace {

// Statements between two looks at the clock and at the memory.
constexpr std::uint64_t kPortion = 64;

} // namespace

bool ExecutionBudget::SetLimits(const CExecutionLimits& limits) {
  if (m_nEntries > 0)
    return false;
  std::shared_ptr<const FileRoot> root;
  if (!limits.root.IsEmpty()) {
    root = FileRoot::Open(ResolvePath(limits.root.View()));
    if (root == nullptr)
      return false;
  }
  m_limits = limits;
  m_root = std::move(root);
  m_isCounting = limits.statements != 0 || limits.milliseconds != 0 || limits.bytes != 0;
  m_signal.Clear();
  return true;
}

bool ExecutionBudget::Refuel() noexcept {
  if (m_limits.statements != 0 && m_nStatementsLeft == 0) {
    static_cast<void>(Verdict(kErrorStatementLimit));
    return false;
  }
  if (m_signal.IsLate()) {
    static_cast<void>(Verdict(kErrorTimeLimit));
    return false;
  }
  if (m_limits.bytes != 0 && MemoryAccount::Balance() > MemoryAccount::Ceiling()) {
    static_cast<void>(Verdict(kErrorMemoryLimit));
    return false;
  }
  m_nFuel = m_limits.statements != 0 ? std::min(kPortion, m_nStatementsLeft) : kPortion;
  if (m_limits.statements != 0)
    m_nStatementsLeft -= m_nFuel;
  return true;
}

int ExecutionBudget::Verdict(std::optional<int> number) noexcept {
  if (m_nVerdict == kErrorNoText) {
    if (number)
      m_nVerdict = *number;
    else
      m_nVerdict = m_signal.WasLate() ? kErrorTimeLimit : kErrorStopped;
    m_signal.Note();                                      // whatever still runs, or waits, finds it
    MemoryAccount::SetCeiling(MemoryAccount::kNoCeiling); // for the texts of the report
  }
  return m_nVerdict;
}

ExecutionBudget::Entry::Entry(ExecutionBudget& budget) noexcept : m_budget(budget) {
  if (m_budget.m_nEntries++ > 0)
    return;
  const CExecutionLimits& limits = m_budget.m_limits;
  m_budget.m_nFuel = 0;
  m_budget.m_nStatementsLeft = limits.statements;
  m_signal.emplace(&m_budget.m_signal);
  if (limits.milliseconds != 0)
    m_budget.m_signal.SetDeadline(StopSignal::Clock::now() + std::chrono::milliseconds(limits.milliseconds));
  m_budget.m_nFirstBalance = MemoryAccount::Balance();
  m_nOuterCeiling = MemoryAccount::Ceiling();
  if (limits.bytes != 0) {
    constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max() / 2);
    MemoryAccount::SetCeiling(m_budget.m_nFirstBalance - m_budget.m_nBytesHeld +
                              static_cast<std::int64_t>(std::min(limits.bytes, kMost)));
  }
}

ExecutionBudget::Entry::~Entry() {
  if (--m_budget.m_nEntries > 0)
    return;
  m_budget.m_nBytesHeld += MemoryAccount::Balance() - m_budget.m_nFirstBalance;
  MemoryAccount::SetCeiling(m_nOuterCeiling);
  m_budget.m_signal.SetDeadline(std::nullopt);
  m_budget.m_signal.Clear();
  m_budget.m_nVerdict = kErrorNoText;
  m_budget.m_wasReported = false;
}

} // namespace brindle
