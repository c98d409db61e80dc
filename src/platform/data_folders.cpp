#include "platform/data_folders.h"

#include "platform/shared_library.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

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
  std::error_code error;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator(); entry.increment(error))
    if (std::string path = entry->path().string(); path.ends_with(ending))
      files.push_back(std::move(path));
  std::sort(files.begin(), files.end());
  return files;
}

bool WriteDataFile(const std::string& path, std::string_view bytes, std::string& reason) {
  const fs::path place(path);
  std::error_code error;
  fs::create_directories(place.parent_path(), error);
  if (error) {
    reason = "cannot make the folder " + place.parent_path().string() + ": " + error.message();
    return false;
  }
  // Beside its place first: whoever reads meanwhile finds the old file or the new one.
  const fs::path unfinished = path + "." + std::to_string(getpid()) + ".part";
  std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (file)
    fs::rename(unfinished, place, error);
  if (file && !error)
    return true;
  reason = "cannot write " + path + (error ? ": " + error.message() : std::string());
  fs::remove(unfinished, error);
  return false;
}

bool RemoveDataFile(const std::string& path, std::string& reason) {
  std::error_code error;
  if (fs::remove(path, error))
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
