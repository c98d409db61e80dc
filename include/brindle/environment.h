// CEnvironment: what a program arranges around its interpreters, once for the process.
// Room: calls. Used by: hosts, the runner.
// May touch: the process-wide code page and signal actions.
// Must not: hold state of its own.
// Invariant: nothing here needs an interpreter.
#pragma once

#include "brindle/export.h"
#include "brindle/text.h"

#include <optional>
#include <string>
#include <string_view>

/// Process-wide settings and helpers. Call the settings before the first interpreter runs, on one thread.
class BRINDLE_API CEnvironment {
public:
  CEnvironment() = delete;

  /// The ANSI code page of scripts and text files ("UTF-8", "windows-1252", "cp437"...; case does not count).
  /// False, and nothing changes, when no page has that name.
  [[nodiscard]] static bool SetAnsiCodePage(std::string_view name);

  /// A path as the system gave it (an argument of main, say) as text for ExecuteProgram. Bytes that are no
  /// UTF-8 survive the way there and back.
  [[nodiscard]] static CString PathFromNative(std::string_view path);

  /// The path to give to the system for a path as scripts write it: "\" works as "/", and what does not exist as
  /// written is looked up without regard to letter case. The other way is PathFromNative.
  [[nodiscard]] static std::string PathToNative(const CString& path);

  /// Makes a file that reaches the process's size limit fail like a full disk, which scripts and tables
  /// report, where the system would end the process by a signal. Child processes are started without it.
  static void ReportFileSizeLimits();

  /// The path of the plug-in "libbrindle-NAME.so", looked for as CWindowUserInterface::Load does; empty without one.
  [[nodiscard]] static std::string FindPlugIn(std::string_view name);

  /// How programs are run. For tests: the results do not depend on it.
  enum class Route {
    Automatic, ///< statements are compiled when they are run for the second time
    Parser,    ///< nothing is compiled
    Eager      ///< statements are compiled at once, and given up at every so many operations
  };
  /// For the interpreters made from now on. `giveUpEvery` counts operations of the eager route; 0 is never.
  static void SetRoute(Route route, unsigned giveUpEvery = 0) noexcept;

  /// The bytes of a script file that runs as the script `plain` does and cannot be read; nothing when the
  /// script would not come back as it is (it holds a zero byte, say), and then `reason` says why.
  [[nodiscard]] static std::optional<std::string> EncipherScript(std::string_view plain, std::string& reason);

  /// Whether these bytes of a script file are taken for an enciphered script.
  [[nodiscard]] static bool IsEncipheredScript(std::string_view script);
};
