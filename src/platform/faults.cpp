#include "platform/faults.h"

#include <cerrno>

namespace brindle {

constinit FaultPlan faultPlan;

bool CountCall(FaultKind kind, int osError) noexcept {
  if (kind != faultPlan.kind)
    return false;
  const std::uint64_t number = ++faultPlan.calls;
  if (faultPlan.chosen == 0 || number < faultPlan.chosen || (number > faultPlan.chosen && !faultPlan.lasting))
    return false;
  ++faultPlan.refused;
  errno = osError;
  return true;
}

// A single byte has no part, and one that is refused is a fault of another kind: it counts only behind the chosen one.
std::size_t CountWrite(std::size_t size) noexcept {
  if (faultPlan.kind != FaultKind::PartialWrite || (size < 2 && faultPlan.refused == 0))
    return size;
  const bool isChosenAlready = faultPlan.refused > 0;
  if (!CountCall(FaultKind::PartialWrite, ENOSPC))
    return size;
  return isChosenAlready ? 0 : size / 2;
}

} // namespace brindle
