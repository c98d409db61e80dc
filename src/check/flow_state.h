// What is known at a place of a script, whatever way leads there: what variables may be, which loops are open.
// Room: check. Used by: the walk through a script.
// May touch: nothing.
// Invariant: joining only ever adds what may be and forgets which loops are open, so that a walk comes to an end.
#pragma once

#include "interpreter/function_signature.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace brindle {

// Beside the kinds of values: nobody has assigned the variable.
inline constexpr ValueKinds kUndefinedValue = 32;

struct OpenLoop {
  bool isFor = false;
  std::uint32_t target = 0; // where "next" or "loop" goes back to

  friend bool operator==(const OpenLoop&, const OpenLoop&) = default;
};

struct FlowState {
  std::vector<ValueKinds> variables; // by the number of the name
  std::vector<OpenLoop> loops;       // the control stack's top entries, the innermost last
  bool loopsKnown = true;            // nothing is below them

  // Whether anything changed.
  bool Join(const FlowState& other) {
    bool changed = false;
    for (std::size_t i = 0; i < variables.size(); ++i) {
      const auto joined = static_cast<ValueKinds>(variables[i] | other.variables[i]);
      changed = changed || joined != variables[i];
      variables[i] = joined;
    }
    if (loops == other.loops && loopsKnown == other.loopsKnown)
      return changed;
    // What is on top of both is still known.
    std::size_t same = 0;
    while (same < loops.size() && same < other.loops.size() &&
           loops[loops.size() - 1 - same] == other.loops[other.loops.size() - 1 - same])
      ++same;
    changed = changed || same != loops.size() || loopsKnown;
    loops.erase(loops.begin(), loops.end() - static_cast<std::ptrdiff_t>(same));
    loopsKnown = false;
    return changed;
  }
};

} // namespace brindle
