// Registration files: which server library has which classes. One text file a library, lines of the form NAME=VALUE:
// one "library" (a path, from the file's own folder if it is relative) and a "class" for every identifier.
// Room: calls. Used by: the class look-up, registering.
// May touch: the files "*.server" in the folder brindle/servers of the data folders.
// Must not: load a library.
// Invariant: a file that makes no sense counts as one without classes.
#pragma once

#include "brindle/text.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

struct Registration {
  std::string library; // from the root
  std::vector<CString> classes;

  [[nodiscard]] bool HasClass(const CString& identifier) const noexcept;
};

// What the file says; `path` also tells where relative paths start.
[[nodiscard]] Registration ReadRegistration(const std::string& path);
[[nodiscard]] std::string FormatRegistration(const Registration& registration);

// The first registration, in the order of the data folders, that has the class.
[[nodiscard]] std::optional<Registration> FindRegistration(const CString& identifier);

// Every one, in that order.
[[nodiscard]] std::vector<Registration> AllRegistrations();

// The user's registration file for a library; the name for a new one when there is none. Empty when the user has no
// data folder.
struct RegistrationPlace {
  std::string path;
  bool exists = false;
};
[[nodiscard]] RegistrationPlace PlaceOf(const std::string& library);

} // namespace brindle
