// The signals that ask a process to end, as a descriptor that waiting loops can watch.
// Room: platform. Used by: the standard streams, the window systems.
// May touch: the actions of SIGINT and SIGTERM.
// Must not: do anything before it is asked for.
// Invariant: once taken over, neither signal ends the process.
#pragma once

namespace brindle {

// Takes the signals over when called first. The descriptor becomes readable when one has come, and stays so;
// -1 when the system has no descriptor left, and then the signals keep their actions.
[[nodiscard]] int TerminationDescriptor() noexcept;

} // namespace brindle
