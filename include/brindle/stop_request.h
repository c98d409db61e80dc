// CStopRequest: how code that waits inside a run learns that the run is to end.
// Room: platform. Used by: window systems, server libraries, host functions that wait.
// May touch: the request of the run in progress on this thread, and its descriptor.
// Must not: be asked on a thread other than the one that runs.
// Invariant: where nothing runs there is no request, no descriptor and no deadline.
#pragma once

#include "brindle/export.h"

#include <chrono>
#include <optional>

/// What to look at while waiting on behalf of a script: take the descriptor and the deadline, ask IsMade, wait for what
/// is to come and for these two, and begin anew. As soon as IsMade is true, stop waiting and return; the run ends
/// there.
class BRINDLE_API CStopRequest {
public:
  using Clock = std::chrono::steady_clock;

  /// Whether the innermost run on this thread is to end: by RequestStop, or because a budget is used up.
  [[nodiscard]] static bool IsMade() noexcept;
  /// Readable as soon as RequestStop is called; not to be read from, and not to be closed. -1 where nothing runs, and
  /// where the system has no descriptor left.
  [[nodiscard]] static int Descriptor() noexcept;
  /// When the run's time is up; nothing without a limit of time.
  [[nodiscard]] static std::optional<Clock::time_point> Deadline() noexcept;
};
