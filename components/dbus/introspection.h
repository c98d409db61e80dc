// What an object on the bus says of itself: interfaces, methods with their signatures, properties.
// Room: components. Used by: BusObject.
// May touch: the text it is given.
// Must not: trust it; any text gives some list of members.
// Invariant: members stand in the order of the text; those of nested nodes belong to other objects and are left out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brindle {

struct BusMember {
  std::string interface;
  std::string name;
  bool isProperty = false;
  std::vector<std::string> in; // a method's argument types
  std::string out;             // its results one behind the other, or the property's type
};

// Members of one interface, or of all when `interface` is empty; the interfaces that every object has come last.
[[nodiscard]] std::vector<BusMember> ReadIntrospection(std::string_view xml, const std::string& interface);

} // namespace brindle
