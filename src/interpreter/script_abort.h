// The exception by which the user's Cancel unwinds to the run, event or timer call in progress.
// Room: interpreter. Used by: ReportError, and every boundary that a run is entered through.
// May touch: nothing.
// Invariant: never leaves the library.
#pragma once

namespace brindle {

struct ScriptAbort {};

} // namespace brindle
