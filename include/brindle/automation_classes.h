// CAutomationClasses: where "createobject" finds the class of an identifier.
// Room: calls. Used by: hosts that bring classes of their own, the runner ("register"), the interpreter.
// May touch: the process-wide table of factories, registration files, server libraries.
// Must not: keep an object, or unload a library.
// Invariant: identifiers compare without regard to letter case.
#pragma once

#include "brindle/automation.h"
#include "brindle/export.h"
#include "brindle/text.h"

#include <functional>
#include <string>
#include <vector>

/// The classes that scripts can make objects of, for every interpreter of the process. An identifier is looked for
/// among the host's own classes, then in the registration files of server libraries (the user's data folder
/// first, see docs/components.md), and one that starts with "dbus:" on the bus. Call it on the interpreters' thread.
class BRINDLE_API CAutomationClasses {
public:
  CAutomationClasses() = delete;

  /// Makes an object, with one reference for the caller. What it throws becomes a report to the user.
  using Factory = std::function<HRESULT(IDispatch** object)>;

  /// Adds a class of the host, in the place of one it added before. False for an empty identifier or no factory.
  static bool Add(const CString& identifier, Factory factory);
  /// False when the host added no such class. Objects that were made stay.
  static bool Remove(const CString& identifier);

  /// The classes that server libraries have registered, in the order in which they are looked for.
  [[nodiscard]] static std::vector<CString> RegisteredClasses();

  /// What "createobject" does. On failure the object is null, and `reason` may say more than the code does.
  [[nodiscard]] static HRESULT CreateObject(const CString& identifier, IDispatch** object, CString& reason);

  /// Writes a registration file for a server library into the user's data folder, in the place of one that the
  /// library has there. False when the library offers no classes or the file cannot be written: `reason` says it.
  [[nodiscard]] static bool RegisterLibrary(const std::string& path, std::string& reason);
  /// Removes the registration file of a library, which need not exist any more, from the user's data folder.
  [[nodiscard]] static bool UnregisterLibrary(const std::string& path, std::string& reason);
};
