// Script values to the bus's types and back.
// Room: components. Used by: BusObject.
// May touch: messages.
// Must not: guess: a type that is not listed is refused by name.
// Invariant: a value that does not fit its type is refused, never cut.
#pragma once

#include "bus.h"

#include <brindle/component.h>

#include <functional>
#include <string>

namespace brindle {

// Makes the object for a path that came as a result, with one reference for the caller.
using PathToObject = std::function<IDispatch*(const std::string& path)>;

// Appends one argument: scalars, text, signatures, object paths (text, or an object on the bus), and a variant that
// holds a truth, an integer, a double or a text as the value is one. Throws, naming the argument, for anything else.
void AppendArgument(sd_bus_message* message, const std::string& type, const CVarBase& value, const std::string& name);

// Whether results of this signature can be taken; what a variant holds shows only when it is there.
[[nodiscard]] bool CanRead(const std::string& signature);

// Everything in the message: nothing, one value, or items. Throws for a type that CanRead refuses.
[[nodiscard]] VARIANT ReadResult(sd_bus_message* message, const PathToObject& toObject);

// Of an object made here: where it stands. Empty for any other object.
[[nodiscard]] std::string PathOfObject(IDispatch* object);

} // namespace brindle
