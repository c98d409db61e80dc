// CStackData and the control stack of the loops.
// Room: interpreter. Used by: for/next, do/loop, procedure scopes.
// May touch: nothing.
// Invariant: entries are taken from the top only; a loop left by "goto" leaves its entry.
#pragma once

#include "brindle/text.h"
#include "interpreter/scanner.h"

#include <cstdint>
#include <vector>

struct CStackData {
  CString name;               // loop variable of a "for", empty for a "do"
  double value = 0;           // end value of a "for"
  std::uint32_t position = 0; // the body of a "for", the word "do" of a "do"
  bool inUse = true;
  const brindle::Token* site = nullptr; // the variable in the text, of a "for" that a program runs
};

namespace brindle {

using ControlStack = std::vector<CStackData>;

} // namespace brindle
