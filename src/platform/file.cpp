#ifndef _FILE_OFFSET_BITS
#define _FILE_OFFSET_BITS 64 // files beyond 2 GiB on 32-bit devices; counts only before the first system header
#endif

#include "platform/file.h"

#include "platform/faults.h"
#include "platform/file_root.h"
#include "platform/path.h"
#include "platform/stop_signal.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

static_assert(sizeof(off_t) == sizeof(std::int64_t));

namespace {

using brindle::FaultKind;
using brindle::Refused;

// Every system call of this file, so that a test can make a chosen one fail. Each returns what the call returns.
int SystemOpen(const char* path, int flags) noexcept {
  if (Refused(FaultKind::File, EMFILE))
    return -1;
  constexpr mode_t anyoneAsTheMaskAllows = 0666;
  return open(path, flags, anyoneAsTheMaskAllows);
}
int SystemStatus(int descriptor, struct stat& status) noexcept {
  if (Refused(FaultKind::File, EIO))
    return -1;
  return fstat(descriptor, &status);
}
int SystemLock(int descriptor) noexcept {
  if (Refused(FaultKind::File, ENOLCK))
    return -1;
  return flock(descriptor, LOCK_EX | LOCK_NB);
}
int SystemLockByte(int descriptor, std::uint64_t position, short kind) noexcept {
  struct flock range {};
  range.l_type = kind;
  range.l_whence = SEEK_SET;
  range.l_start = static_cast<off_t>(position);
  range.l_len = 1;
  // Of the opening, not of the process: closing another opening of the same file does not give it back.
  return fcntl(descriptor, F_OFD_SETLK, &range);
}
int SystemGetFlags(int descriptor) noexcept {
  if (Refused(FaultKind::File, EBADF))
    return -1;
  return fcntl(descriptor, F_GETFL);
}
int SystemSetFlags(int descriptor, int flags) noexcept {
  if (Refused(FaultKind::File, EBADF))
    return -1;
  return fcntl(descriptor, F_SETFL, flags);
}
ssize_t SystemRead(int descriptor, void* buffer, std::size_t count) noexcept {
  if (Refused(FaultKind::File, EIO))
    return -1;
  return read(descriptor, buffer, count);
}
ssize_t SystemWrite(int descriptor, const void* buffer, std::size_t count) noexcept {
  if (Refused(FaultKind::File, ENOSPC))
    return -1;
  const std::size_t writable = brindle::Writable(count);
  return writable == 0 && count > 0 ? -1 : write(descriptor, buffer, writable);
}
off_t SystemSeek(int descriptor, off_t offset, int from) noexcept {
  if (Refused(FaultKind::File, EIO))
    return -1;
  return lseek(descriptor, offset, from);
}
int SystemTruncate(int descriptor, off_t length) noexcept {
  if (Refused(FaultKind::File, EIO))
    return -1;
  return ftruncate(descriptor, length);
}
int SystemSync(int descriptor) noexcept {
  if (Refused(FaultKind::File, EIO))
    return -1;
  return fsync(descriptor);
}
int SystemClose(int descriptor) noexcept {
  return close(descriptor);
}
int SystemRemove(const char* path) noexcept {
  if (Refused(FaultKind::File, EACCES))
    return -1;
  return unlink(path);
}

// Repeats a call that a signal has interrupted.
template <typename Call> auto Uninterrupted(Call call) noexcept {
  auto result = call();
  while (result < 0 && errno == EINTR) {
    result = call();
  }
  return result;
}

[[noreturn]] void ThrowOsError(int osError) {
  throw CFileException::FromOsError(osError);
}

int AccessFlags(unsigned flags) noexcept {
  switch (flags & (CFile::modeWrite | CFile::modeReadWrite)) {
  case CFile::modeRead: return O_RDONLY;
  case CFile::modeWrite: return O_WRONLY;
  default: return O_RDWR;
  }
}

// Settles what an opened descriptor is before it is used; false refuses it.
bool PrepareDescriptor(int descriptor, unsigned flags, bool& mayWait) noexcept {
  struct stat status {};
  if (SystemStatus(descriptor, status) != 0 || S_ISDIR(status.st_mode)) {
    return false;
  }
  mayWait = !S_ISREG(status.st_mode);
  // A file system without locks cannot tell; only a lock that is taken refuses.
  if ((flags & CFile::shareExclusive) != 0 && Uninterrupted([&] { return SystemLock(descriptor); }) != 0 &&
      errno == EWOULDBLOCK) {
    return false;
  }
  // Only now, behind the lock: a refused opening must not empty a file that another one uses.
  const bool truncate = (flags & CFile::modeCreate) != 0 && (flags & CFile::modeNoTruncate) == 0;
  if (truncate && S_ISREG(status.st_mode) && AccessFlags(flags) != O_RDONLY && status.st_size != 0 &&
      Uninterrupted([&] { return SystemTruncate(descriptor, 0); }) != 0) {
    return false;
  }
  // A pipe or a device stays as it is: its waits are made here, where they can be ended.
  if (mayWait) {
    return true;
  }
  const int current = SystemGetFlags(descriptor);
  return current >= 0 && SystemSetFlags(descriptor, current & ~O_NONBLOCK) == 0;
}

} // namespace

CFileException CFileException::FromOsError(int osError) noexcept {
  switch (osError) {
  case 0: return {none, osError};
  case ENOENT: return {fileNotFound, osError};
  case ENOTDIR:
  case ENAMETOOLONG: return {badPath, osError};
  case EMFILE:
  case ENFILE: return {tooManyOpenFiles, osError};
  case EACCES:
  case EPERM:
  case EROFS: return {accessDenied, osError};
  case EBADF: return {invalidFile, osError};
  case EINVAL:
  case ESPIPE:
  case EOVERFLOW: return {badSeek, osError};
  case EIO: return {hardIO, osError};
  case ENOSPC:
  case EDQUOT:
  case EFBIG: return {diskFull, osError};
  default: return {generic, osError};
  }
}

CFile::CFile(CFile&& other) noexcept
    : m_nDescriptor(std::exchange(other.m_nDescriptor, -1)), m_bMayWait(other.m_bMayWait) {}

CFile& CFile::operator=(CFile&& other) noexcept {
  if (this != &other) {
    Close();
    m_nDescriptor = std::exchange(other.m_nDescriptor, -1);
    m_bMayWait = other.m_bMayWait;
  }
  return *this;
}

CFile::~CFile() {
  Close();
}

bool CFile::Open(std::u16string_view path, unsigned flags) {
  Close();
  const brindle::FileRoot* const root = brindle::FileRoot::Current();
  const std::string nativePath = root != nullptr ? std::string() : brindle::ResolvePath(path);
  if (root == nullptr && (nativePath.empty() || nativePath.find('\0') != std::string::npos)) {
    return false;
  }

  // Without O_NONBLOCK a pipe would wait for its other side; O_NOCTTY keeps a terminal from taking the process over.
  int openFlags = AccessFlags(flags) | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  if ((flags & modeCreate) != 0) {
    openFlags |= O_CREAT;
    // A descriptor for reading cannot empty its file later.
    if ((flags & modeNoTruncate) == 0 && AccessFlags(flags) == O_RDONLY) {
      openFlags |= O_TRUNC;
    }
  }
  const int descriptor = root != nullptr ? root->OpenFile(path, openFlags)
                                         : Uninterrupted([&] { return SystemOpen(nativePath.c_str(), openFlags); });
  if (descriptor < 0) {
    return false;
  }
  if (!PrepareDescriptor(descriptor, flags, m_bMayWait)) {
    SystemClose(descriptor);
    return false;
  }
  m_nDescriptor = descriptor;
  return true;
}

std::size_t CFile::Read(void* buffer, std::size_t count) {
  std::size_t done = 0;
  while (done < count) {
    char* const target = static_cast<char*>(buffer) + done;
    const ssize_t got = Uninterrupted([&] { return SystemRead(m_nDescriptor, target, count - done); });
    if (got < 0 && m_bMayWait && (errno == EAGAIN || errno == EWOULDBLOCK)) {
      if (!brindle::StopSignal::Await(m_nDescriptor, POLLIN)) {
        ThrowOsError(EINTR);
      }
      continue;
    }
    if (got < 0) {
      ThrowOsError(errno);
    }
    if (got == 0) {
      break;
    }
    done += static_cast<std::size_t>(got);
  }
  return done;
}

void CFile::Write(const void* buffer, std::size_t count) {
  std::size_t done = 0;
  while (done < count) {
    const char* const source = static_cast<const char*>(buffer) + done;
    const ssize_t put = Uninterrupted([&] { return SystemWrite(m_nDescriptor, source, count - done); });
    if (put < 0 && m_bMayWait && (errno == EAGAIN || errno == EWOULDBLOCK)) {
      if (!brindle::StopSignal::Await(m_nDescriptor, POLLOUT)) {
        ThrowOsError(EINTR);
      }
      continue;
    }
    if (put <= 0) {
      const int osError = put < 0 ? errno : EIO; // a device that takes nothing and says nothing would keep this going
      TakeBack(done);
      ThrowOsError(osError);
    }
    done += static_cast<std::size_t>(put);
  }
}

// The first part of what could not be written whole: it goes where it made the file longer, so that a file that is
// only added to holds whole pieces. What stood in its place before is lost. Others may have added to the file since.
void CFile::TakeBack(std::size_t count) noexcept {
  if (count == 0 || m_bMayWait) {
    return;
  }
  const off_t end = SystemSeek(m_nDescriptor, 0, SEEK_CUR);
  const off_t start = end - static_cast<off_t>(count);
  struct stat status {};
  if (end < 0 || SystemSeek(m_nDescriptor, start, SEEK_SET) < 0 || SystemStatus(m_nDescriptor, status) != 0) {
    return;
  }
  if (status.st_size == end) {
    Uninterrupted([&] { return SystemTruncate(m_nDescriptor, start); });
  }
}

std::uint64_t CFile::Seek(std::int64_t offset, SeekPosition from) {
  const int origin = from == begin ? SEEK_SET : from == current ? SEEK_CUR : SEEK_END;
  const off_t position = SystemSeek(m_nDescriptor, offset, origin);
  if (position < 0) {
    ThrowOsError(errno);
  }
  return static_cast<std::uint64_t>(position);
}

std::uint64_t CFile::GetPosition() const {
  const off_t position = SystemSeek(m_nDescriptor, 0, SEEK_CUR);
  if (position < 0) {
    ThrowOsError(errno);
  }
  return static_cast<std::uint64_t>(position);
}

std::uint64_t CFile::GetLength() const {
  struct stat status {};
  if (SystemStatus(m_nDescriptor, status) != 0) {
    ThrowOsError(errno);
  }
  return static_cast<std::uint64_t>(status.st_size);
}

void CFile::SetLength(std::uint64_t length) {
  if (length > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) {
    ThrowOsError(EFBIG);
  }
  const auto target = static_cast<off_t>(length);
  if (Uninterrupted([&] { return SystemTruncate(m_nDescriptor, target); }) != 0) {
    ThrowOsError(errno);
  }
}

bool CFile::TryLockByte(std::uint64_t position, ByteLock kind) noexcept {
  const short type = kind == ByteLock::shared ? F_RDLCK : F_WRLCK;
  return Uninterrupted([&] { return SystemLockByte(m_nDescriptor, position, type); }) == 0 ||
         (errno != EAGAIN && errno != EACCES);
}

void CFile::UnlockByte(std::uint64_t position) noexcept {
  SystemLockByte(m_nDescriptor, position, F_UNLCK);
}

void CFile::Flush() {
  // Pipes and devices have nothing to bring to safety and say so with these two.
  if (Uninterrupted([&] { return SystemSync(m_nDescriptor); }) != 0 && errno != EINVAL && errno != EROFS) {
    ThrowOsError(errno);
  }
}

void CFile::Close() noexcept {
  if (m_nDescriptor >= 0) {
    // Not repeated after EINTR: the descriptor is gone by then and its number may be another file's.
    SystemClose(std::exchange(m_nDescriptor, -1));
  }
}

bool CFile::Remove(std::u16string_view path) {
  if (const brindle::FileRoot* const root = brindle::FileRoot::Current()) {
    return root->RemoveFile(path);
  }
  const std::string nativePath = brindle::ResolvePath(path);
  return nativePath.find('\0') == std::string::npos && SystemRemove(nativePath.c_str()) == 0;
}

namespace brindle {

bool ReadWholeFile(std::u16string_view path, std::string& bytes, std::uint64_t limit) {
  bytes.clear();
  try {
    CFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone)) {
      return false;
    }
    const std::uint64_t length = file.GetLength();
    if (length > limit) {
      return false;
    }
    // The length is only a first guess: devices report none, and a file may grow while it is read. One byte more
    // than the guess lets a usual file end within the first portion.
    std::size_t portion = static_cast<std::size_t>(length) + 1;
    std::size_t total = 0;
    for (;;) {
      bytes.resize(total + portion);
      const std::size_t got = file.Read(bytes.data() + total, portion);
      total += got;
      if (total > limit) {
        break;
      }
      if (got < portion) {
        bytes.resize(total);
        return true;
      }
      constexpr std::size_t nextPortion = std::size_t{64} << 10;
      portion = std::max(nextPortion, total / 2);
    }
  } catch (const CFileException&) {
    // Reported as false below.
  } catch (const std::bad_alloc&) {
    // Likewise.
  } catch (const std::length_error&) {
    // A length that no string can have, from a file with holes.
  }
  bytes = std::string();
  return false;
}

} // namespace brindle
