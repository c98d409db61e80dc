#ifndef _FILE_OFFSET_BITS
#define _FILE_OFFSET_BITS 64 // or the status of a large file could not be asked for on 32-bit devices
#endif

#include "platform/file_root.h"

#include "platform/faults.h"
#include "platform/path.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace brindle {

namespace {

constexpr int kMostLinks = 40;           // as many as the system follows
constexpr std::size_t kMostParts = 4096; // of a path, with what its links stand for

thread_local FileRoot::Scope* current = nullptr;
std::atomic<bool> alwaysWalks = false;

class Descriptor {
public:
  explicit Descriptor(int number = -1) noexcept : m_nNumber(number) {}
  Descriptor(Descriptor&& other) noexcept : m_nNumber(std::exchange(other.m_nNumber, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(m_nNumber, other.m_nNumber);
    return *this;
  }
  ~Descriptor() {
    if (m_nNumber >= 0) {
      const int error = errno;
      ::close(m_nNumber);
      errno = error;
    }
  }
  [[nodiscard]] int Number() const noexcept { return m_nNumber; }
  [[nodiscard]] int Release() noexcept { return std::exchange(m_nNumber, -1); }

private:
  int m_nNumber;
};

int OpenAt(int folder, const char* name, int flags) noexcept {
  if (Refused(FaultKind::File, EMFILE))
    return -1;
  constexpr mode_t anyoneAsTheMaskAllows = 0666;
  int descriptor = ::openat(folder, name, flags, anyoneAsTheMaskAllows);
  while (descriptor < 0 && errno == EINTR)
    descriptor = ::openat(folder, name, flags, anyoneAsTheMaskAllows);
  return descriptor;
}

int StatusAt(int folder, const std::string& name, struct stat& status) noexcept {
  return Refused(FaultKind::File, EIO) ? -1 : ::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW);
}

ssize_t LinkAt(int folder, const std::string& name, char* target, std::size_t size) noexcept {
  return Refused(FaultKind::File, EIO) ? -1 : ::readlinkat(folder, name.c_str(), target, size);
}

using SystemText = std::unique_ptr<char, decltype(&std::free)>;

SystemText RealPath(const std::string& path) noexcept {
  return {Refused(FaultKind::File, EIO) ? nullptr : ::realpath(path.c_str(), nullptr), &std::free};
}

SystemText CurrentFolder() noexcept {
  return {Refused(FaultKind::File, EIO) ? nullptr : ::getcwd(nullptr, 0), &std::free};
}

DIR* OpenFolder(int descriptor) noexcept {
  return Refused(FaultKind::File, ENOMEM) ? nullptr : ::fdopendir(descriptor);
}

const dirent* NextName(DIR* folder) noexcept {
  return Refused(FaultKind::File, EIO) ? nullptr : ::readdir(folder);
}

// The parts of a path, the first one last.
void PushParts(std::string_view path, std::vector<std::string>& parts) {
  std::vector<std::string> found;
  for (std::size_t start = 0, end = 0; end != std::string_view::npos; start = end + 1) {
    end = path.find('/', start);
    found.emplace_back(path.substr(start, end - start));
  }
  parts.insert(parts.end(), std::make_move_iterator(found.rbegin()), std::make_move_iterator(found.rend()));
}

template <typename Visit> void ForEachName(int folder, const char* name, Visit visit) {
  Descriptor descriptor(OpenAt(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  DIR* const directory = descriptor.Number() < 0 ? nullptr : OpenFolder(descriptor.Number());
  if (directory == nullptr)
    return;
  static_cast<void>(descriptor.Release());
  const std::unique_ptr<DIR, int (*)(DIR*)> owner(directory, ::closedir);
  while (const dirent* entry = NextName(directory))
    if (const std::string_view found = entry->d_name; found != "." && found != "..")
      visit(found);
}

// The name in that folder that equals `name` but for case, as ResolvePath finds it.
std::string WithoutCase(int folder, const std::string& name, bool mustBeFolder) {
  const std::u16string wanted = FoldedPath(PathFromNative(name));
  std::string best;
  ForEachName(folder, ".", [&](std::string_view candidate) {
    if ((!best.empty() && best <= candidate) || FoldedPath(PathFromNative(candidate)) != wanted)
      return;
    std::string found(candidate);
    struct stat status {};
    if (mustBeFolder && (StatusAt(folder, found, status) != 0 || !(S_ISDIR(status.st_mode) || S_ISLNK(status.st_mode))))
      return;
    best = std::move(found);
  });
  return best;
}

} // namespace

// Where a path leads: a name in an open folder.
struct FileRoot::Place {
  std::vector<Descriptor> folders; // below the root, the innermost last
  std::vector<std::string> names;  // of these folders
  std::string name = ".";          // in the innermost folder
  bool exists = false;
  int root = -1;

  [[nodiscard]] int Folder() const noexcept { return folders.empty() ? root : folders.back().Number(); }
};

std::shared_ptr<const FileRoot> FileRoot::Open(const std::string& folder) {
  if (folder.find('\0') != std::string::npos)
    return nullptr;
  Descriptor descriptor(OpenAt(AT_FDCWD, folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  const SystemText real = RealPath(folder);
  if (descriptor.Number() < 0 || real == nullptr)
    return nullptr;
  auto root = std::unique_ptr<FileRoot>(new FileRoot(-1, real.get()));
  root->m_nDescriptor = descriptor.Release(); // only now nothing can fail that would lose it
  return std::shared_ptr<const FileRoot>(std::move(root));
}

FileRoot::~FileRoot() {
  ::close(m_nDescriptor);
}

int FileRoot::Refuse() noexcept {
  if (current != nullptr)
    current->m_hasRefused = true;
  errno = EXDEV;
  return -1;
}

std::optional<std::u16string> FileRoot::NameOf(const std::string& native) const {
  // A file that is to be made has no path without links yet, but its folder has.
  const std::size_t separator = native.rfind('/');
  const std::string folder = separator == std::string::npos ? "." : native.substr(0, separator + 1);
  const auto real = [](const std::string& path) {
    const SystemText found = RealPath(path);
    return found != nullptr ? std::string(found.get()) : std::string();
  };
  std::string whole = real(native);
  if (whole.empty()) {
    whole = real(folder);
    if (whole.empty())
      return std::nullopt;
    whole += "/" + native.substr(separator == std::string::npos ? 0 : separator + 1);
  }
  const std::string root = m_strPath == "/" ? std::string() : m_strPath;
  if (whole.compare(0, root.size(), root) != 0 || (whole.size() > root.size() && whole[root.size()] != '/'))
    return std::nullopt;
  std::u16string name = PathFromNative(std::string_view(whole).substr(root.size()));
  std::replace(name.begin(), name.end(), u'/', u'\\');
  return name.empty() ? std::u16string(u"\\") : name;
}

// The path as seen from the root, without a separator in front.
std::string FileRoot::FromRoot(std::u16string_view path) const {
  std::string native = PathToNative(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  if (!native.empty() && native[0] != '/') {
    const SystemText here = CurrentFolder();
    const std::string folder = here != nullptr ? here.get() : std::string();
    const std::string root = m_strPath == "/" ? std::string() : m_strPath;
    if (folder.size() > root.size() && folder.compare(0, root.size(), root) == 0 && folder[root.size()] == '/')
      native.insert(0, folder.substr(root.size()) + "/");
  }
  const std::size_t start = std::min(native.find_first_not_of('/'), native.size());
  return native.empty() || start > 0 ? "./" + native.substr(start) : native;
}

// False with errno.
bool FileRoot::Walk(const std::string& fromRoot, Place& place) const {
  place.root = m_nDescriptor;
  std::vector<std::string> parts;
  PushParts(fromRoot, parts);
  for (int links = 0; !parts.empty();) {
    if (parts.size() > kMostParts)
      return errno = ENAMETOOLONG, false;
    std::string name = std::move(parts.back());
    parts.pop_back();
    if (name.empty() || name == ".")
      continue;
    if (name == "..") {
      if (place.folders.empty())
        return Refuse() == 0;
      place.folders.pop_back();
      place.names.pop_back();
      continue;
    }
    const bool isLast = parts.empty();
    struct stat status {};
    int result = StatusAt(place.Folder(), name, status);
    if (result != 0 && errno == ENOENT) {
      if (std::string other = WithoutCase(place.Folder(), name, !isLast); !other.empty()) {
        name = std::move(other);
        result = StatusAt(place.Folder(), name, status);
      } else if (isLast) {
        place.name = std::move(name);
        return true;
      } else {
        errno = ENOENT;
      }
    }
    if (result != 0)
      return false;
    if (S_ISLNK(status.st_mode)) {
      std::array<char, PATH_MAX> target;
      const ssize_t length = LinkAt(place.Folder(), name, target.data(), target.size());
      if (length < 0)
        return false;
      if (++links > kMostLinks)
        return errno = ELOOP, false;
      if (length > 0 && target[0] == '/')
        return Refuse() == 0;
      PushParts(std::string_view(target.data(), static_cast<std::size_t>(length)), parts);
      continue;
    }
    if (isLast) {
      place.name = std::move(name);
      place.exists = true;
      return true;
    }
    Descriptor folder(OpenAt(place.Folder(), name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (folder.Number() < 0)
      return false;
    place.folders.push_back(std::move(folder));
    place.names.push_back(std::move(name));
  }
  place.exists = true; // a folder: the last one walked into
  return true;
}

// What exists exactly as written, in one call where the system knows it. ENOSYS stands for everything that is left to
// the walk.
int FileRoot::OpenExisting(const std::string& fromRoot, int flags) const noexcept {
#ifdef SYS_openat2
  if (!alwaysWalks) {
    // The layout is the system's; not every C library has a header for it.
    struct {
      std::uint64_t flags;
      std::uint64_t mode;
      std::uint64_t resolve;
    } how = {static_cast<std::uint64_t>(flags & ~(O_CREAT | O_EXCL)), 0, 0};
    constexpr std::uint64_t kNoMagicLinks = 0x02;
    constexpr std::uint64_t kBeneath = 0x08;
    how.resolve = kNoMagicLinks | kBeneath;
    constexpr int kMostTries = 8; // it gives up when others rename meanwhile
    for (int i = 0; i < kMostTries; ++i) {
      const long descriptor = Refused(FaultKind::File, EMFILE)
                                  ? -1
                                  : ::syscall(SYS_openat2, m_nDescriptor, fromRoot.c_str(), &how, sizeof how);
      if (descriptor >= 0)
        return static_cast<int>(descriptor);
      if (errno != EINTR && errno != EAGAIN)
        break;
    }
    if (errno == EXDEV)
      return Refuse();
  }
#else
  static_cast<void>(fromRoot);
  static_cast<void>(flags);
#endif
  errno = ENOSYS;
  return -1;
}

int FileRoot::OpenFile(std::u16string_view path, int flags) const {
  const std::string fromRoot = FromRoot(path);
  if (path.empty() || fromRoot.find('\0') != std::string::npos)
    return errno = ENOENT, -1;
  if (const int descriptor = OpenExisting(fromRoot, flags | O_CLOEXEC); descriptor >= 0 || errno == EXDEV)
    return descriptor;
  Place place;
  if (!Walk(fromRoot, place))
    return -1;
  return OpenAt(place.Folder(), place.name.c_str(), flags | O_CLOEXEC | O_NOFOLLOW);
}

bool FileRoot::RemoveFile(std::u16string_view path) const {
  const std::string fromRoot = FromRoot(path);
  Place place;
  return !path.empty() && fromRoot.find('\0') == std::string::npos && Walk(fromRoot, place) &&
         !Refused(FaultKind::File, EACCES) && ::unlinkat(place.Folder(), place.name.c_str(), 0) == 0;
}

std::vector<std::u16string> FileRoot::FindFiles(std::u16string_view pattern) const {
  std::vector<std::u16string> names;
  const std::u16string_view folder = DirectoryPart(pattern);
  const std::u16string_view last = pattern.substr(folder.size());
  const std::string fromRoot = FromRoot(folder.empty() ? u"." : folder);
  Place place;
  if (pattern.find(u'\0') != std::u16string_view::npos || !Walk(fromRoot, place) || !place.exists || last.empty() ||
      last == u"." || last == u"..")
    return names;
  ForEachName(place.Folder(), place.name.c_str(), [&](std::string_view entry) {
    if (std::u16string name = PathFromNative(entry); MatchesPattern(name, last))
      names.push_back(std::move(name));
  });
  std::sort(names.begin(), names.end());
  // Without a wildcard one name is meant: the exact one, when there are several.
  if (names.size() > 1 && last.find_first_of(u"*?") == std::u16string_view::npos)
    names = {std::find(names.begin(), names.end(), last) != names.end() ? std::u16string(last) : names.front()};
  return names;
}

std::optional<std::string> FileRoot::PathOf(std::u16string_view path) const {
  const std::string fromRoot = FromRoot(path);
  Place place;
  if (path.empty() || fromRoot.find('\0') != std::string::npos || !Walk(fromRoot, place) || !place.exists)
    return std::nullopt;
  std::string native = m_strPath == "/" ? std::string() : m_strPath;
  for (const std::string& name : place.names)
    native += "/" + name;
  if (place.name != ".")
    native += "/" + place.name;
  return native.empty() ? "/" : native;
}

FileRoot::Scope::Scope(const FileRoot* root) noexcept : m_root(root), m_outer(std::exchange(current, this)) {}

FileRoot::Scope::~Scope() {
  current = m_outer;
}

const FileRoot* FileRoot::Current() noexcept {
  return current == nullptr ? nullptr : current->m_root;
}

void FileRoot::SetAlwaysWalks(bool always) noexcept {
  alwaysWalks = always;
}

} // namespace brindle
