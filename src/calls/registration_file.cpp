#include "calls/registration_file.h"

#include "platform/data_folders.h"
#include "platform/file.h"
#include "platform/path.h"

#include <algorithm>
#include <cstdint>

namespace brindle {

namespace {

constexpr std::string_view kEnding = ".server";
constexpr const char* kFolder = "/brindle/servers";
constexpr std::uint64_t kLongestFile = 1U << 20;

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t start = text.find_first_not_of(kBlanks);
  if (start == std::string_view::npos)
    return {};
  return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

std::string FolderOf(const std::string& path) {
  return path.substr(0, path.rfind('/') + 1);
}

} // namespace

bool Registration::HasClass(const CString& identifier) const noexcept {
  return std::any_of(classes.begin(), classes.end(),
                     [&](const CString& known) { return known.CompareNoCase(identifier) == 0; });
}

Registration ReadRegistration(const std::string& path) {
  Registration registration;
  std::string bytes;
  if (!ReadWholeFile(PathFromNative(path), bytes, kLongestFile))
    return registration;
  std::string_view rest = bytes;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = Trimmed(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const std::size_t equals = line.find('=');
    if (line.empty() || line[0] == '#' || equals == std::string_view::npos)
      continue;
    const std::string_view name = Trimmed(line.substr(0, equals));
    const std::string_view value = Trimmed(line.substr(equals + 1));
    if (name == "library" && !value.empty())
      registration.library = value[0] == '/' ? std::string(value) : FolderOf(path) + std::string(value);
    else if (name == "class" && !value.empty())
      registration.classes.push_back(CString::FromUtf8(value));
  }
  if (registration.library.empty())
    registration.classes.clear();
  return registration;
}

std::string FormatRegistration(const Registration& registration) {
  std::string text = "# A server library for \"createobject\".\nlibrary=" + registration.library + "\n";
  for (const CString& identifier : registration.classes)
    text += "class=" + identifier.ToUtf8() + "\n";
  return text;
}

std::optional<Registration> FindRegistration(const CString& identifier) {
  for (const std::string& folder : DataFolders())
    for (const std::string& file : FilesIn(folder + kFolder, kEnding))
      if (Registration registration = ReadRegistration(file); registration.HasClass(identifier))
        return registration;
  return std::nullopt;
}

std::vector<Registration> AllRegistrations() {
  std::vector<Registration> found;
  for (const std::string& folder : DataFolders())
    for (const std::string& file : FilesIn(folder + kFolder, kEnding))
      found.push_back(ReadRegistration(file));
  return found;
}

RegistrationPlace PlaceOf(const std::string& library) {
  const std::string data = UserDataFolder();
  if (data.empty())
    return {};
  const std::string folder = data + kFolder;
  const std::vector<std::string> files = FilesIn(folder, kEnding);
  for (const std::string& file : files)
    if (AbsolutePath(ReadRegistration(file).library) == AbsolutePath(library))
      return {file, true};
  std::string name = library.substr(library.rfind('/') + 1);
  name = name.substr(0, std::max<std::size_t>(name.find('.'), 1));
  std::string path = folder + "/" + name + std::string(kEnding);
  for (int number = 2; std::find(files.begin(), files.end(), path) != files.end(); ++number)
    path = folder + "/" + name + "-" + std::to_string(number) + std::string(kEnding);
  return {path, false};
}

} // namespace brindle
