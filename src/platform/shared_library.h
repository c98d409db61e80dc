// Shared libraries: opening one by its path or name, and finding what it exports.
// Room: platform. Used by: calls (declared routines, server libraries), the plug-ins' loaders.
// May touch: the system's dynamic loader.
// Must not: unload: objects, threads and exit handlers of a library live as long as the process.
// Invariant: a failure leaves nothing behind but its reason; no name, however odd, crashes.
#pragma once

#include <string>

namespace brindle {

// One opened library. Copies are the same library; opening one again gives the one that is there.
class SharedLibrary {
public:
  SharedLibrary() noexcept = default;

  // `path` is in the system's own bytes. A name without "/" is searched as the system searches its own libraries;
  // a path is taken as it is. The result is not open when that fails, and `failure` then says why in one line.
  [[nodiscard]] static SharedLibrary Open(const std::string& path, std::string& failure);

  // A library that ships with this one: in the folder that the environment variable BRINDLE_PLUGINS names, beside
  // this library, or in the folder "brindle" there.
  [[nodiscard]] static SharedLibrary OpenPlugIn(const std::string& fileName, std::string& failure);

  // Its path; empty when it is in none of these folders.
  [[nodiscard]] static std::string FindPlugIn(const std::string& fileName);

  [[nodiscard]] bool IsOpen() const noexcept { return m_pHandle != nullptr; }
  // Null when the library exports no such name (or nothing is open).
  [[nodiscard]] void* FindSymbol(const std::string& name) const;

  // The same as a function; the caller knows its type.
  template <class Function> [[nodiscard]] Function* FindFunction(const std::string& name) const {
    return reinterpret_cast<Function*>(FindSymbol(name));
  }

private:
  explicit SharedLibrary(void* handle) noexcept : m_pHandle(handle) {}

  void* m_pHandle = nullptr;
};

// The folder of the file that holds this code: the library's, or the program's where it is linked in. Without a
// separator at its end; empty when the system cannot tell.
[[nodiscard]] std::string OwnFolder();

} // namespace brindle
