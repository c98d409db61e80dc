// The exception by which the user's Cancel unwinds to the run, event or timer call in progress.
// Room: interpreter. Used by: ReportError, and every boundary that a run is entered through.
// May touch: nothing.
// Invariant: thrown only inside a run, and caught by a boundary of the interpreter that it belongs to: what it
// passes on the way, other interpreters included, is unwound as well.
#pragma once

class CBrindle;

namespace brindle {

struct ScriptAbort {
  const CBrindle* owner;
};

} // namespace brindle
