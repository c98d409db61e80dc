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

} // namespace brindle
