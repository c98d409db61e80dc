#include "platform/data_folders.h"

#include "platform/faults.h"
#include "platform/file.h"
#include "platform/path.h"
#include "platform/shared_library.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace brindle {

namespace {

namespace fs = std::filesystem;

// A folder in the environment counts only from the root, as the rule for these variables says.
std::string FolderFromEnvironment(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? value : std::string();
}

std::string HomeFolder() {
  std::string home = FolderFromEnvironment("HOME");
  if (home.empty())
    if (const passwd* const user = getpwuid(getuid()); user != nullptr && user->pw_dir != nullptr)
      home = user->pw_dir;
  return home;
}

// The calls of the standard library are refused in front of it.
bool IsRefused(std::error_code& error) noexcept {
  const bool refused = Refused(FaultKind::File, EIO);
  if (refused)
    error.assign(EIO, std::generic_category());
  return refused;
}

// A file that is gone at the end, unless it has got another name by then.
class UnfinishedFile {
public:
  explicit UnfinishedFile(std::string path) noexcept : m_path(std::move(path)) {}
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;
  ~UnfinishedFile() { unlink(m_path.c_str()); }
  [[nodiscard]] const std::string& Path() const noexcept { return m_path; }

private:
  std::string m_path;
};

} // namespace

std::string UserDataFolder() {
  std::string folder = FolderFromEnvironment("XDG_DATA_HOME");
  if (folder.empty())
    if (const std::string home = HomeFolder(); !home.empty())
      folder = home + "/.local/share";
  return folder;
}

std::vector<std::string> DataFolders() {
  std::vector<std::string> folders;
  const auto add = [&folders](std::string folder) {
    if (!folder.empty() && folder[0] == '/' && std::find(folders.begin(), folders.end(), folder) == folders.end())
      folders.push_back(std::move(folder));
  };
  add(UserDataFolder());
  const char* const variable = std::getenv("XDG_DATA_DIRS");
  std::string_view rest = variable != nullptr && *variable != '\0' ? variable : "/usr/local/share:/usr/share";
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    add(std::string(rest.substr(0, end)));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  if (const std::string own = OwnFolder(); !own.empty()) {
    add(fs::path(own + "/" + BRINDLE_DATA_FROM_LIBRARY).lexically_normal().string());
    add(own + "/share"); // a build folder
  }
  return folders;
}

std::vector<std::string> FilesIn(const std::string& folder, std::string_view ending) {
  std::vector<std::string> files;
  for (const std::string& name : NamesIn(folder))
    if (name.ends_with(ending))
      files.push_back(folder + "/" + name);
  return files;
}

bool WriteDataFile(const std::string& path, std::string_view bytes, std::string& reason) {
  const std::string folder = fs::path(path).parent_path().string();
  std::error_code error;
  if (!IsRefused(error))
    fs::create_directories(folder, error);
  if (error) {
    reason = "cannot make the folder " + folder + ": " + error.message();
    return false;
  }
  // Beside its place first: whoever reads meanwhile finds the old file or the new one.
  const UnfinishedFile unfinished(path + "." + std::to_string(getpid()) + ".part");
  try {
    CFile file;
    if (!file.Open(PathFromNative(unfinished.Path()), CFile::modeCreate | CFile::modeWrite)) {
      reason = "cannot write " + path;
      return false;
    }
    file.Write(bytes.data(), bytes.size());
    file.Close();
    if (!IsRefused(error))
      fs::rename(unfinished.Path(), path, error);
  } catch (const CFileException& exception) {
    error.assign(exception.m_nOsError, std::generic_category());
  }
  if (error)
    reason = "cannot write " + path + ": " + error.message();
  return !error;
}

bool RemoveDataFile(const std::string& path, std::string& reason) {
  std::error_code error;
  if (!IsRefused(error) && fs::remove(path, error))
    return true;
  reason = "cannot remove " + path + (error ? ": " + error.message() : std::string());
  return false;
}

std::string AbsolutePath(const std::string& path) {
  std::error_code error;
  fs::path absolute = fs::weakly_canonical(path, error);
  if (error || !absolute.is_absolute())
    absolute = fs::absolute(path, error).lexically_normal();
  return absolute.string();
}

} // namespace brindle
