#include "ui/qt/display.h"

#include "platform/shared_library.h"

#include <cstdlib>
#include <string_view>

namespace brindle {

namespace {

std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : std::string();
}

bool ReachesX() {
  std::string ignored;
  const SharedLibrary library = SharedLibrary::Open("libxcb.so.1", ignored);
  auto* const connect = library.FindFunction<void*(const char*, int*)>("xcb_connect");
  auto* const hasError = library.FindFunction<int(void*)>("xcb_connection_has_error");
  auto* const disconnect = library.FindFunction<void(void*)>("xcb_disconnect");
  if (connect == nullptr || hasError == nullptr || disconnect == nullptr)
    return true;
  void* const connection = connect(nullptr, nullptr); // never null; a failed one has an error
  const bool reached = hasError(connection) == 0;
  disconnect(connection);
  return reached;
}

bool ReachesWayland() {
  std::string ignored;
  const SharedLibrary library = SharedLibrary::Open("libwayland-client.so.0", ignored);
  auto* const connect = library.FindFunction<void*(const char*)>("wl_display_connect");
  auto* const disconnect = library.FindFunction<void(void*)>("wl_display_disconnect");
  if (connect == nullptr || disconnect == nullptr)
    return true;
  void* const display = connect(nullptr);
  if (display != nullptr)
    disconnect(display);
  return display != nullptr;
}

} // namespace

bool CanReachDisplay(std::string& reason) {
  const std::string platform = Variable("QT_QPA_PLATFORM");
  const bool forX = platform.starts_with("xcb");
  const bool forWayland = platform.starts_with("wayland");
  if (!platform.empty() && !forX && !forWayland)
    return true; // one that needs no server, or one of its own
  const std::string display = Variable("DISPLAY");
  const std::string wayland = Variable("WAYLAND_DISPLAY");
  if (!forX && !wayland.empty() && ReachesWayland())
    return true;
  if (!forWayland && !display.empty() && ReachesX())
    return true;
  if (display.empty() && wayland.empty())
    reason = "no display: neither DISPLAY nor WAYLAND_DISPLAY is set";
  else
    reason = "the display " + (display.empty() || forWayland ? wayland : display) + " cannot be reached";
  return false;
}

} // namespace brindle
