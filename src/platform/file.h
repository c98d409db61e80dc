// Files by descriptor: opening, reading, writing, seeking, and reading a whole file.
// Room: platform. Used by: data (tables), io (script files), the loader, the runner.
// May touch: the file system, through the calls gathered at the top of file.cpp.
// Must not touch: text conversion of contents; what the bytes mean is the caller's affair.
// Invariant: CFile keeps no bytes of its own: what Write accepted has been handed to the system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Thrown by value when the system refuses an operation on an open file (or when the file is not open). Reaching the
// end of a file is not a failure.
class CFileException {
public:
  enum Cause {
    none = 0,
    generic = 1,
    fileNotFound = 2,
    badPath = 3,
    tooManyOpenFiles = 4,
    accessDenied = 5,
    invalidFile = 6,
    badSeek = 9,
    hardIO = 10,
    diskFull = 13,
  };

  CFileException() = default;
  CFileException(Cause cause, int osError) : m_cause(cause), m_nOsError(osError) {}

  // The cause that stands for an errno value.
  [[nodiscard]] static CFileException FromOsError(int osError) noexcept;

  Cause m_cause = none;
  int m_nOsError = 0;
};

class CFile {
public:
  enum OpenFlags : unsigned {
    modeRead = 0x0000,
    modeWrite = 0x0001,
    modeReadWrite = 0x0002,
    shareExclusive = 0x0010,
    shareDenyNone = 0x0040,
    modeCreate = 0x1000,
    modeNoTruncate = 0x2000,
  };
  enum SeekPosition { begin, current, end };
  enum class ByteLock { alone, shared };

  CFile() = default;
  CFile(CFile&& other) noexcept;
  CFile& operator=(CFile&& other) noexcept;
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;
  ~CFile();

  // Closes what was open, then opens `path` (see brindle::ResolvePath). False when that fails; a folder never
  // opens. modeCreate makes a missing file and empties an existing one, unless modeNoTruncate is given too.
  // shareExclusive fails while another exclusive opening of the file, by any process, lasts; it is advisory:
  // others can open the file all the same. Opening a pipe or device never waits for its other side.
  [[nodiscard]] bool Open(std::u16string_view path, unsigned flags);
  [[nodiscard]] bool IsOpen() const noexcept { return m_nDescriptor >= 0; }

  // Fewer bytes than asked for only at the end of the file.
  std::size_t Read(void* buffer, std::size_t count);
  // Everything or an exception.
  void Write(const void* buffer, std::size_t count);

  // The new position, which may lie behind the end.
  std::uint64_t Seek(std::int64_t offset, SeekPosition from);
  [[nodiscard]] std::uint64_t GetPosition() const;
  [[nodiscard]] std::uint64_t GetLength() const;
  // The position stays as it is.
  void SetLength(std::uint64_t length);

  // Takes one byte for this opening alone (or for all that ask for it shared, to read), against every other one of the
  // file that asks for it, in this process or another; the byte may lie behind the end. False while somebody else has
  // it. It is advisory, and a file system without locks always gives it.
  [[nodiscard]] bool TryLockByte(std::uint64_t position, ByteLock kind = ByteLock::alone) noexcept;
  void UnlockByte(std::uint64_t position) noexcept;

  // Waits until the contents are on the device: for data that must outlive a loss of power, not for every write.
  void Flush();
  void Close() noexcept;

  // -1 when not open.
  [[nodiscard]] int Descriptor() const noexcept { return m_nDescriptor; }

  // Deletes a file, never a folder; false when there is none or it is refused.
  [[nodiscard]] static bool Remove(std::u16string_view path);

private:
  void TakeBack(std::size_t count) noexcept;

  int m_nDescriptor = -1;
  bool m_bMayWait = false; // a pipe or a device, whose other side is waited for
};

namespace brindle {

// False, with `bytes` empty, when the file cannot be opened or read, is a folder, is longer than `limit` or does not
// fit into memory.
[[nodiscard]] bool ReadWholeFile(std::u16string_view path, std::string& bytes, std::uint64_t limit);

} // namespace brindle
