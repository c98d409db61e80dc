// Who hears of errors instead of the user, while a script is read but not run.
// Room: interpreter. Used by: ReportError, the check of scripts.
// May touch: nothing.
// Must not: be asked what to do next; without a run there is nothing to go on with.
// Invariant: the reading position is where the user's box would have quoted it.
#pragma once

namespace brindle {

class ErrorListener {
public:
  virtual ~ErrorListener() = default;
  // The number is that of an ErrorNumber.
  virtual void OnError(int number) = 0;
};

} // namespace brindle
