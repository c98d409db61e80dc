// TableFile: a file with a position of its own and blocks read ahead, for tables.
// Room: io. Used by: CDbf only.
// May touch: its file.
// Must not: keep a write back; what was written is with the system when Write returns.
// Invariant: bytes read ahead are given out only while no table of this process has written to a file of that name
// since; a jump to another place drops them, so that it shows what other programs have written.
#pragma once

#include "brindle/text.h"
#include "platform/file.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace brindle {

// Every member but Open, Close and the plain queries may throw CFileException.
class TableFile {
public:
  // `flags` as for CFile::Open.
  [[nodiscard]] bool Open(const CString& path, unsigned flags);
  void Close() noexcept;
  [[nodiscard]] bool IsOpen() const noexcept { return m_file.IsOpen(); }

  [[nodiscard]] std::uint64_t GetPosition() const noexcept { return m_nPosition; }
  void Seek(std::uint64_t position) noexcept;

  // The next `count` bytes, fewer only at the end of the file; the position stays. Valid until the next call.
  [[nodiscard]] std::string_view Peek(std::size_t count);
  // As many of the next bytes as there are, past what was read ahead; the position stays. Needs no memory.
  [[nodiscard]] std::size_t Read(std::span<char> bytes);
  // Moves on without dropping what was read ahead.
  void Skip(std::uint64_t count) noexcept { m_nPosition += count; }
  // Writes at the position, in one call to the system, and moves behind it.
  void Write(std::string_view bytes);

  // Of a file whose end is this table's alone it is asked of the system only when another table of this process has
  // written since.
  [[nodiscard]] std::uint64_t GetLength();
  void SetLength(std::uint64_t length);
  void Flush() { m_file.Flush(); }

private:
  void MoveFileTo(std::uint64_t position);
  void CountWrite(std::string_view bytes) noexcept;
  void DropBlock() noexcept;

  friend class EndOfTable;
  struct SharedName;
  static SharedName& NameOf(const CString& path);

  CFile m_file;
  bool m_bOwnsEnd = false;         // as long as it is open: it was opened without sharing
  std::uint64_t m_nLength = 0;     // of such a file
  std::uint64_t m_nLengthSeen = 0; // the count of writes when the length was asked for, or 0
  std::uint64_t m_nPosition = 0;
  std::uint64_t m_nFilePosition = 0; // the system's
  std::string m_block;
  std::uint64_t m_nBlockStart = 0;
  std::size_t m_nNextBlock = 0;    // how much to read ahead next
  std::uint64_t m_nWritesSeen = 0; // the count of writes when the block was read
  SharedName* m_pName = nullptr;
};

// While it lives no other program that appends to the table or closes it moves the table's end. Throws CFileException
// when another program has created the table and still has it open, or was stopped in the middle of appending.
class EndOfTable {
public:
  explicit EndOfTable(TableFile& table);
  EndOfTable(const EndOfTable&) = delete;
  EndOfTable& operator=(const EndOfTable&) = delete;
  ~EndOfTable();

private:
  TableFile& m_table;
  bool m_bTaken = false;
};

} // namespace brindle
