// Whether a window could be shown, asked before Qt is: Qt ends the process where there is no display.
// Room: ui. Used by: the plug-in.
// May touch: the client libraries of the window systems, to connect and leave again.
// Must not: need one of them to be installed.
// Invariant: in doubt the answer is yes.
#pragma once

#include <string>

namespace brindle {

[[nodiscard]] bool CanReachDisplay(std::string& reason);

} // namespace brindle
