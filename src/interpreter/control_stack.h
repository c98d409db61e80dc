// CStackData and the control stack of the loops.
// Room: interpreter. Used by: for/next, do/loop, procedure scopes, compiled statements.
// May touch: nothing.
// Invariant: entries are taken from the top only; a loop left by "goto" leaves its entry. Below all entries lies one
// that is no loop's, so that whoever compares with the top need not ask whether there is one.
#pragma once

#include "brindle/text.h"
#include "interpreter/scanner.h"

#include <cstdint>
#include <utility>
#include <vector>

struct CStackData {
  CString name;               // loop variable of a "for", empty for a "do"
  double value = 0;           // end value of a "for"
  std::uint32_t position = 0; // the body of a "for", the word "do" of a "do"
  bool inUse = true;
  const brindle::Token* site = nullptr; // the variable in the text, of a "for" that a program runs
};

namespace brindle {

class ControlStack {
public:
  static constexpr std::uint32_t kNowhere = 0xFFFFFFFE; // no position of a text

  struct Entry : CStackData {
    std::uint32_t doPosition = kNowhere; // of the word "do"; nowhere for a "for" that a program runs
  };

  ControlStack() = default;
  ControlStack(const ControlStack&) = delete;
  ControlStack& operator=(const ControlStack&) = delete;

  [[nodiscard]] bool empty() const noexcept { return m_nSize == 0; }
  [[nodiscard]] std::uint32_t size() const noexcept { return m_nSize; }
  // Of an empty stack the entry that is no loop's.
  [[nodiscard]] const Entry& top() const noexcept { return *m_pTop; }
  [[nodiscard]] const Entry& operator[](std::size_t index) const noexcept { return m_entries[index]; }
  [[nodiscard]] auto begin() const noexcept { return m_entries.begin(); }
  [[nodiscard]] auto end() const noexcept { return m_entries.end(); }

  void push(CStackData&& loop) {
    const std::uint32_t position = loop.site == nullptr ? loop.position : kNowhere;
    m_entries.push_back({std::move(loop), position});
    m_pTop = &m_entries.back();
    ++m_nSize;
  }
  // The stack is not empty.
  void pop() noexcept {
    m_entries.pop_back();
    m_pTop = --m_nSize == 0 ? &kBottom : m_pTop - 1;
  }
  [[nodiscard]] CStackData Take() {
    CStackData loop = std::move(m_entries.back());
    pop();
    return loop;
  }
  // Drops what was pushed since there were so many.
  void shrink(std::size_t size) noexcept {
    while (m_nSize > size)
      pop();
  }
  void swap(ControlStack& other) noexcept {
    m_entries.swap(other.m_entries);
    std::swap(m_pTop, other.m_pTop);
    std::swap(m_nSize, other.m_nSize);
  }

private:
  static const Entry kBottom;

  std::vector<Entry> m_entries;
  std::uint32_t m_nSize = 0; // of them, where each call can have it without a division
  const Entry* m_pTop = &kBottom;
};

inline constinit const ControlStack::Entry ControlStack::kBottom{{CString(), 0, kNowhere, false, nullptr}, kNowhere};

} // namespace brindle
