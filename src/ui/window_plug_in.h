// What a window system's plug-in exports.
// Room: ui. Used by: the loader, every plug-in.
// May touch: nothing; names and types.
// Must not: change without the version: a plug-in of another version refuses to start.
// Invariant: both sides are built from this header.
#pragma once

#include <string>

class CWindowUserInterface;

namespace brindle {

// `libraryVersion` is the caller's. Null, and a reason in one line, when no window can be shown; it does not throw.
using CreateWindowSystem = CWindowUserInterface*(const char* libraryVersion, std::string& reason);

inline constexpr const char* kCreateWindowSystem = "BrindleCreateWindowSystem";

} // namespace brindle
