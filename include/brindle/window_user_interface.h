// CWindowUserInterface: a user interface of real windows, and the loader of those that come as plug-ins.
// Room: ui. Used by: the runner, hosts that want windows without linking a window system.
// May touch: the plug-in's file, the environment variables that name a display.
// Must not: know any window system.
// Invariant: the library itself needs no window system; a plug-in stays loaded until the process ends.
#pragma once

#include "brindle/console_user_interface.h"
#include "brindle/user_interface.h"

#include <memory>
#include <string>
#include <string_view>

/// What a runner needs of a user interface that shows windows.
class BRINDLE_API CWindowUserInterface : public CUserInterface {
public:
  /// Automatic and Ask show every error box. Continue and Abort answer without one; the error text then goes
  /// to standard error, as the console writes it.
  using ErrorPolicy = CConsoleUserInterface::ErrorPolicy;

  virtual void SetErrorPolicy(ErrorPolicy policy) noexcept = 0;
  /// How many errors and notices were reported so far.
  [[nodiscard]] virtual int GetNumberOfErrors() const noexcept = 0;
  /// Serves windows and timers until no window is open and no timer runs, or until SIGINT or SIGTERM, which
  /// it takes over. An exception that a timer has thrown comes out of here.
  virtual void ServeUntilClosed() = 0;

  /// The window system of that name ("qt"), from the file libbrindle-NAME.so. It is looked for in the folder
  /// that the environment variable BRINDLE_PLUGINS names, beside the library, and in the folder "brindle"
  /// there. Null when it is not there, was built for another version or reaches no display; `reason` then
  /// says which, in one line. Call it on the thread that will run the interpreters.
  [[nodiscard]] static std::unique_ptr<CWindowUserInterface> Load(std::string_view name, std::string& reason);

  /// Whether the environment names a display: DISPLAY, WAYLAND_DISPLAY or QT_QPA_PLATFORM is set.
  [[nodiscard]] static bool HasDisplay() noexcept;
};
