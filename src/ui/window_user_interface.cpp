#include "brindle/window_user_interface.h"

#include "brindle/version.h"
#include "platform/shared_library.h"
#include "ui/window_plug_in.h"

#include <algorithm>
#include <cstdlib>

std::unique_ptr<CWindowUserInterface> CWindowUserInterface::Load(std::string_view name, std::string& reason) {
  // The name becomes part of a path.
  const auto isPlain = [](char letter) { return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9'); };
  if (name.empty() || !std::all_of(name.begin(), name.end(), isPlain)) {
    reason = "no name of a window system: " + std::string(name);
    return nullptr;
  }
  const std::string file = "libbrindle-" + std::string(name) + ".so";
  const brindle::SharedLibrary library = brindle::SharedLibrary::OpenPlugIn(file, reason);
  if (!library.IsOpen())
    return nullptr;
  auto* const create = library.FindFunction<brindle::CreateWindowSystem>(brindle::kCreateWindowSystem);
  if (create == nullptr) {
    reason = file + ": no window system";
    return nullptr;
  }
  return std::unique_ptr<CWindowUserInterface>(create(BRINDLE_VERSION, reason));
}

bool CWindowUserInterface::HasDisplay() noexcept {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    const char* const value = std::getenv(name);
    if (value != nullptr && *value != '\0')
      return true;
  }
  return false;
}
