#include "platform/shared_library.h"

#include "platform/faults.h"

#include <dlfcn.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

namespace brindle {

namespace {

// The loader would wait for the other side of a pipe.
bool IsRegularFile(const std::string& path) noexcept {
  struct stat status {};
  return !Refused(FaultKind::Library, EIO) && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

std::string OneLine(std::string text) {
  for (char& character : text)
    if (character == '\n' || character == '\r')
      character = ' ';
  return text;
}

} // namespace

SharedLibrary SharedLibrary::Open(const std::string& path, std::string& failure) {
  // For the loader an empty name is the program itself.
  if (path.empty() || path.find('\0') != std::string::npos) {
    failure = "not the name of a library";
    return SharedLibrary();
  }
  if (path.find('/') != std::string::npos && !IsRegularFile(path)) {
    failure = OneLine(path) + ": no such file";
    return SharedLibrary();
  }
  // Everything is bound now, so that what is missing fails here and not in the middle of a call.
  void* const handle = Refused(FaultKind::Library, ENOMEM) ? nullptr : dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) {
    const char* const reason = dlerror();
    failure = OneLine(reason != nullptr ? reason : path + ": cannot be loaded");
  }
  return SharedLibrary(handle);
}

std::string SharedLibrary::FindPlugIn(const std::string& fileName) {
  std::string folders[3];
  if (const char* const chosen = std::getenv("BRINDLE_PLUGINS"))
    folders[0] = chosen;
  folders[1] = OwnFolder();
  if (!folders[1].empty())
    folders[2] = folders[1] + "/brindle";
  for (const std::string& folder : folders) {
    const std::string path = folder + "/" + fileName;
    if (!folder.empty() && IsRegularFile(path))
      return path;
  }
  return std::string();
}

SharedLibrary SharedLibrary::OpenPlugIn(const std::string& fileName, std::string& failure) {
  const std::string path = FindPlugIn(fileName);
  if (!path.empty())
    return Open(path, failure);
  failure = fileName + ": not found";
  return SharedLibrary();
}

void* SharedLibrary::FindSymbol(const std::string& name) const {
  if (m_pHandle == nullptr || name.empty() || name.find('\0') != std::string::npos)
    return nullptr;
  return Refused(FaultKind::Library, ENOMEM) ? nullptr : dlsym(m_pHandle, name.c_str());
}

std::string OwnFolder() {
  Dl_info info{};
  if (Refused(FaultKind::Library, ENOMEM) || dladdr(reinterpret_cast<const void*>(&OwnFolder), &info) == 0 ||
      info.dli_fname == nullptr)
    return std::string();
  // A link may stand anywhere; what ships with the library stands beside the file itself.
  const std::unique_ptr<char, decltype(&std::free)> real(
      Refused(FaultKind::Library, ENOMEM) ? nullptr : realpath(info.dli_fname, nullptr), &std::free);
  const std::string path = real != nullptr ? real.get() : info.dli_fname;
  const std::size_t separator = path.rfind('/');
  return separator == std::string::npos ? std::string() : path.substr(0, separator);
}

} // namespace brindle
