// WordCount: looks now and then for a stop while words are only read.
// Room: interpreter. Used by: putting a program together, the label scan, forward skips.
// May touch: the interpreter's budget.
// Must not: be used where statements are run; those are counted by the budget.
// Invariant: a program as long as it may be is left within a few thousand words of a stop.
#pragma once

#include "interpreter/execution_budget.h"

#include <cstdint>

namespace brindle {

class WordCount {
public:
  // One more word; false when it is to stop.
  [[nodiscard]] bool Take(ExecutionBudget& budget) noexcept {
    constexpr std::uint32_t kPortion = 4096; // a look at the clock costs as much as several words
    return ++m_nWords % kPortion != 0 || !budget.ShouldStop();
  }

private:
  std::uint32_t m_nWords = 0;
};

} // namespace brindle
