#include "file_operations.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

namespace brindle {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string& what, const std::string& reason) {
  throw std::runtime_error(what + ": " + reason);
}

[[noreturn]] void FailWithError(const std::string& what, int error) {
  Fail(what, std::generic_category().message(error));
}

std::string Quoted(const std::string& path) {
  return "\"" + path + "\"";
}

// Empty paths and paths with a zero byte name nothing, however the system would read them.
void Check(const std::string& path) {
  if (path.empty() || path.find('\0') != std::string::npos)
    throw std::runtime_error("a path is empty or holds a zero character");
}

class Descriptor {
public:
  explicit Descriptor(int number) : m_number(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (m_number >= 0)
      close(m_number);
  }
  [[nodiscard]] int Get() const { return m_number; }
  // Where the last write can still fail.
  [[nodiscard]] int Close() { return close(std::exchange(m_number, -1)) == 0 ? 0 : errno; }

private:
  int m_number;
};

// The file beside the target that becomes it when it is whole; removed when it does not.
class Unfinished {
public:
  explicit Unfinished(const std::string& target)
      : m_path(target + ".XXXXXX"), m_file(mkostemp(m_path.data(), O_CLOEXEC)) {}
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;
  ~Unfinished() {
    if (!m_path.empty() && m_opened)
      unlink(m_path.c_str());
  }
  [[nodiscard]] Descriptor& File() { return m_file; }
  [[nodiscard]] const std::string& Path() const { return m_path; }
  void Finished() { m_path.clear(); }

private:
  std::string m_path;
  Descriptor m_file;
  bool m_opened = m_file.Get() >= 0;
};

bool IsSameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return fs::equivalent(a, b, error);
}

// Into the place of nothing, or of an older file when that was allowed.
int PutInPlace(const std::string& from, const std::string& to, bool overwrite) {
  if (overwrite)
    return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
  // In one step, so that a file that appears meanwhile is not lost.
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
    return 0;
  if (errno != EINVAL && errno != ENOSYS)
    return errno;
  if (Exists(to)) // a file system that cannot do it in one step
    return EEXIST;
  return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

void CopyBytes(int from, int to, const std::string& what) {
  std::vector<char> buffer(std::size_t{1} << 17);
  for (;;) {
    const ssize_t count = read(from, buffer.data(), buffer.size());
    if (count == 0)
      return;
    if (count < 0 && errno == EINTR)
      continue;
    if (count < 0)
      FailWithError(what, errno);
    for (ssize_t done = 0; done < count;) {
      const ssize_t written = write(to, buffer.data() + done, static_cast<std::size_t>(count - done));
      if (written < 0 && errno != EINTR)
        FailWithError(what, errno);
      done += written > 0 ? written : 0;
    }
  }
}

std::string Target(const std::string& from, const std::string& to) {
  if (!IsFolder(to))
    return to;
  const std::string plain = from.substr(0, from.find_last_not_of('/') + 1);
  return to + "/" + plain.substr(plain.rfind('/') + 1);
}

void CopyFile(const std::string& from, const std::string& to, bool overwrite, const std::string& what) {
  const Descriptor source(open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (source.Get() < 0 || fstat(source.Get(), &status) != 0)
    FailWithError(what, errno);
  if (S_ISDIR(status.st_mode))
    Fail(what, "it is a folder");
  if (!S_ISREG(status.st_mode))
    Fail(what, "it is no plain file");
  if (Exists(to) && IsSameFile(from, to))
    Fail(what, "both are the same file");
  if (Exists(to) && !overwrite)
    Fail(what, "the target is there already");
  if (IsFolder(to))
    Fail(what, "the target is a folder");

  Unfinished unfinished(to);
  if (unfinished.File().Get() < 0)
    FailWithError(what, errno);
  CopyBytes(source.Get(), unfinished.File().Get(), what);
  constexpr mode_t kPermissions = 0777; // no file becomes privileged by being copied
  const timespec times[2] = {status.st_atim, status.st_mtim};
  if (fchmod(unfinished.File().Get(), status.st_mode & kPermissions) != 0 ||
      futimens(unfinished.File().Get(), times) != 0 || fsync(unfinished.File().Get()) != 0)
    FailWithError(what, errno);
  if (const int error = unfinished.File().Close(); error != 0)
    FailWithError(what, error);
  if (const int error = PutInPlace(unfinished.Path(), to, overwrite); error != 0)
    FailWithError(what, error);
  unfinished.Finished();
}

} // namespace

bool Exists(const std::string& path) {
  struct stat status {};
  return !path.empty() && path.find('\0') == std::string::npos && lstat(path.c_str(), &status) == 0;
}

bool IsFolder(const std::string& path) {
  struct stat status {};
  return Exists(path) && stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

double SizeOf(const std::string& path) {
  Check(path);
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);
  if (error)
    Fail("no size of " + Quoted(path), error.message());
  return static_cast<double>(size);
}

double FreeSpaceOf(const std::string& path) {
  Check(path);
  std::error_code error;
  const fs::space_info space = fs::space(path, error);
  if (error)
    Fail("no free space of " + Quoted(path), error.message());
  return static_cast<double>(space.available);
}

void Copy(const std::string& from, const std::string& to, bool overwrite) {
  Check(from);
  Check(to);
  const std::string target = Target(from, to);
  CopyFile(from, target, overwrite, "cannot copy " + Quoted(from) + " to " + Quoted(target));
}

void Move(const std::string& from, const std::string& to, bool overwrite) {
  Check(from);
  Check(to);
  const std::string target = Target(from, to);
  const std::string what = "cannot move " + Quoted(from) + " to " + Quoted(target);
  if (!Exists(from))
    FailWithError(what, ENOENT);
  if (Exists(target) && IsSameFile(from, target))
    Fail(what, "both are the same file");
  if (Exists(target) && !overwrite)
    Fail(what, "the target is there already");
  const int error = PutInPlace(from, target, overwrite);
  if (error == 0)
    return;
  if (error != EXDEV)
    FailWithError(what, error);
  if (IsFolder(from) || fs::is_symlink(from))
    Fail(what, "only files can be moved to another file system");
  // The copy is whole and on its device before the first one goes.
  CopyFile(from, target, overwrite, what);
  if (unlink(from.c_str()) != 0) {
    const int refused = errno;
    if (!overwrite)
      unlink(target.c_str()); // one file again, as before
    FailWithError(what, refused);
  }
}

void Delete(const std::string& path) {
  Check(path);
  const bool folder = IsFolder(path) && !fs::is_symlink(path);
  if ((folder ? rmdir(path.c_str()) : unlink(path.c_str())) == 0)
    return;
  const std::string what = "cannot delete " + Quoted(path);
  if (errno == ENOTEMPTY || errno == EEXIST)
    Fail(what, "the folder is not empty");
  FailWithError(what, errno);
}

void CreateFolder(const std::string& path) {
  Check(path);
  if (mkdir(path.c_str(), 0777) != 0 && !(errno == EEXIST && IsFolder(path)))
    FailWithError("cannot create the folder " + Quoted(path), errno);
}

} // namespace brindle
