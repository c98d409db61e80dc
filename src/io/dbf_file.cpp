#include "io/dbf_file.h"

#include "platform/path.h"
#include "platform/stop_signal.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <limits>
#include <thread>
#include <utility>

namespace brindle {

namespace {

constexpr std::size_t kLargestBlock = std::size_t{64} << 10;
// Behind every byte that a table can have.
constexpr std::uint64_t kEndLock = std::uint64_t{1} << 62;
constexpr std::uint64_t kOwnerLock = kEndLock + 1;
constexpr std::chrono::seconds kPatience(2);
constexpr std::chrono::microseconds kRetryPause(200);
constexpr std::uint64_t kUnknown = std::numeric_limits<std::uint64_t>::max();

} // namespace

// What the tables of this process know of each other, by a hash of the file's name without its folder: two paths may
// lead to one file. Names that share an entry cost a block read again, no more.
struct TableFile::SharedName {
  std::atomic<std::uint64_t> writes = 1; // how often they were written to
  std::atomic<int> endOwners = 0;        // tables that own their end
};

TableFile::SharedName& TableFile::NameOf(const CString& path) {
  static std::array<SharedName, 256> names;
  CString name(path.View().substr(DirectoryPart(path.View()).size()));
  return names[name.MakeLower().Hash() % names.size()];
}

bool TableFile::Open(const CString& path, unsigned flags) {
  Close();
  m_pName = &NameOf(path); // needs memory: before anything is open
  if (!m_file.Open(path.View(), flags))
    return false;
  try {
    m_nFilePosition = m_file.Seek(0, CFile::begin);
  } catch (const CFileException&) {
    Close(); // a pipe or a terminal: reading it could wait for ever
    return false;
  }
  m_nLengthSeen = 0;
  // The first byte tells others not to wait for the second.
  if ((flags & CFile::shareExclusive) != 0 && m_file.TryLockByte(kOwnerLock)) {
    m_bOwnsEnd = m_file.TryLockByte(kEndLock);
    if (m_bOwnsEnd)
      ++m_pName->endOwners;
    else
      m_file.UnlockByte(kOwnerLock);
  }
  return true;
}

void TableFile::Close() noexcept {
  if (std::exchange(m_bOwnsEnd, false))
    --m_pName->endOwners;
  m_file.Close();
  m_nPosition = 0;
  m_nFilePosition = 0;
  DropBlock();
}

void TableFile::DropBlock() noexcept {
  m_block.clear();
  m_nNextBlock = 0;
}

void TableFile::Seek(std::uint64_t position) noexcept {
  if (position == m_nPosition)
    return;
  m_nPosition = position;
  DropBlock();
}

void TableFile::MoveFileTo(std::uint64_t position) {
  if (m_nFilePosition == position)
    return;
  if (position > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
    throw CFileException(CFileException::badSeek, 0);
  m_nFilePosition = kUnknown;
  m_nFilePosition = m_file.Seek(static_cast<std::int64_t>(position), CFile::begin);
}

std::string_view TableFile::Peek(std::size_t count) {
  const std::uint64_t writes = m_pName->writes.load(std::memory_order_acquire);
  const std::uint64_t blockEnd = m_nBlockStart + m_block.size();
  const bool current = writes == m_nWritesSeen;
  const bool inBlock = m_nPosition >= m_nBlockStart && m_nPosition <= blockEnd;
  if (current && inBlock && blockEnd - m_nPosition >= count)
    return std::string_view(m_block).substr(static_cast<std::size_t>(m_nPosition - m_nBlockStart), count);

  // A reader that goes on where it was gets more each time; one that jumps about, or whose file is being written
  // to, gets only what it asks for.
  const std::size_t size = current ? std::max(count, m_nNextBlock) : count;
  DropBlock();
  MoveFileTo(m_nPosition);
  m_block.resize(size);
  m_nFilePosition = kUnknown;
  std::size_t got = 0;
  try {
    got = m_file.Read(m_block.data(), size);
  } catch (...) {
    DropBlock();
    throw;
  }
  m_block.resize(got);
  m_nFilePosition = m_nPosition + got;
  m_nBlockStart = m_nPosition;
  m_nWritesSeen = writes;
  m_nNextBlock = std::min(size * 2, kLargestBlock);
  return std::string_view(m_block).substr(0, count);
}

std::size_t TableFile::Read(std::span<char> bytes) {
  MoveFileTo(m_nPosition);
  m_nFilePosition = kUnknown;
  const std::size_t got = m_file.Read(bytes.data(), bytes.size());
  m_nFilePosition = m_nPosition + got;
  return got;
}

void TableFile::Write(std::string_view bytes) {
  MoveFileTo(m_nPosition);
  m_nFilePosition = kUnknown;
  try {
    m_file.Write(bytes.data(), bytes.size());
  } catch (...) {
    m_pName->writes.fetch_add(1, std::memory_order_acq_rel); // some of the bytes may be there
    throw;
  }
  CountWrite(bytes);
  m_nPosition += bytes.size();
  m_nFilePosition = m_nPosition;
}

// Tells other tables, and brings the own block up to date where that was the only write since.
void TableFile::CountWrite(std::string_view bytes) noexcept {
  const std::uint64_t writes = m_pName->writes.fetch_add(1, std::memory_order_acq_rel);
  if (writes == m_nLengthSeen) {
    m_nLength = std::max<std::uint64_t>(m_nLength, m_nPosition + bytes.size());
    m_nLengthSeen = writes + 1;
  }
  if (writes != m_nWritesSeen)
    return;
  m_nWritesSeen = writes + 1;
  const std::uint64_t blockEnd = m_nBlockStart + m_block.size();
  const std::uint64_t from = std::max(m_nPosition, m_nBlockStart);
  const std::uint64_t to = std::min<std::uint64_t>(m_nPosition + bytes.size(), blockEnd);
  if (from < to)
    std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(from - m_nPosition),
              bytes.begin() + static_cast<std::ptrdiff_t>(to - m_nPosition),
              m_block.begin() + static_cast<std::ptrdiff_t>(from - m_nBlockStart));
}

std::uint64_t TableFile::GetLength() {
  if (!m_bOwnsEnd)
    return m_file.GetLength();
  const std::uint64_t writes = m_pName->writes.load(std::memory_order_acquire);
  if (writes != m_nLengthSeen) {
    m_nLength = m_file.GetLength();
    m_nLengthSeen = writes;
  }
  return m_nLength;
}

void TableFile::SetLength(std::uint64_t length) {
  m_pName->writes.fetch_add(1, std::memory_order_acq_rel);
  m_file.SetLength(length);
}

EndOfTable::EndOfTable(TableFile& table) : m_table(table) {
  if (m_table.m_bOwnsEnd)
    return;
  CFile& file = m_table.m_file;
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!(m_bTaken = file.TryLockByte(kEndLock))) {
    // A table of this process that owns its end asks for the length anew when others have written.
    if (m_table.m_pName->endOwners > 0)
      return;
    // Others may be asking as well.
    const bool isOwned = !file.TryLockByte(kOwnerLock, CFile::ByteLock::shared);
    if (!isOwned)
      file.UnlockByte(kOwnerLock);
    if (isOwned || StopSignal::CurrentShouldStop() || std::chrono::steady_clock::now() > deadline)
      throw CFileException(CFileException::accessDenied, 0);
    std::this_thread::sleep_for(kRetryPause);
  }
}

EndOfTable::~EndOfTable() {
  if (m_bTaken)
    m_table.m_file.UnlockByte(kEndLock);
}

} // namespace brindle
