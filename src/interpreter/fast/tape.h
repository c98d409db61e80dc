// FastTape: values that a compiled statement had computed when it gave up, for the executing parser to take.
// Room: interpreter. Used by: the machine, which records it; the evaluator, which takes from it.
// May touch: nothing.
// Must not: hold a value whose words will be read by anybody but the statement that gave up.
// Invariant: in the order of the text; all of it is taken before anything new is computed.
#pragma once

#include "brindle/variable.h"

#include <cassert>
#include <cstdint>
#include <vector>

namespace brindle {

struct FastTapeEntry {
  std::uint32_t start = 0; // of the first word that the value stands for
  std::uint32_t end = 0;   // behind the last one
  int level = 0;           // of the grammar: 2 for a sum ... 7 for a single operand
  CBasicVariable value;
};

class FastTape {
public:
  [[nodiscard]] bool IsEmpty() const noexcept { return m_next == m_entries.size(); }
  // The value of the expression of that level that starts there, null when it was not computed.
  [[nodiscard]] FastTapeEntry* Take(std::uint32_t start, int level) noexcept {
    if (IsEmpty() || m_entries[m_next].start != start || m_entries[m_next].level != level)
      return nullptr;
    return &m_entries[m_next++];
  }
  void Record(std::vector<FastTapeEntry>&& entries) noexcept {
    assert(IsEmpty());
    m_entries = std::move(entries);
    m_next = 0;
  }
  void Clear() noexcept {
    m_entries.clear();
    m_next = 0;
  }

private:
  std::vector<FastTapeEntry> m_entries;
  std::size_t m_next = 0;
};

} // namespace brindle
