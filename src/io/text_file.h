// TextFile: a file read and written as text, line by line.
// Room: io. Used by: the file functions, IsExtensionScript.
// May touch: CFile, the ANSI code page.
// Must not: report errors; a failing file raises CFileException.
// Invariant: the position is that of the next unread character, however far the buffer has read ahead.
#pragma once

#include "brindle/text.h"
#include "platform/file.h"

#include <string>

namespace brindle {

// How text is written: one setting for the process, changed by the scripts.
enum class WriteEncoding { Ansi, Utf16 };

class TextFile {
public:
  enum class LineResult { Line, EndOfFile, TooLong };

  [[nodiscard]] static WriteEncoding GetWriteEncoding() noexcept;
  static void SetWriteEncoding(WriteEncoding encoding) noexcept;

  // A byte-order mark at the start makes it a file of UTF-16 units and is no part of its text.
  [[nodiscard]] bool Open(const CString& path, unsigned flags);
  void SeekToEnd();

  // The next line without its end; what follows a carriage return inside a line is dropped.
  [[nodiscard]] LineResult ReadLine(CString& line);
  // The text as it is, in the process's encoding; an empty file written in UTF-16 gets its mark first.
  void Write(const CString& text);

  [[nodiscard]] std::uint64_t GetPosition() const noexcept { return m_nBufferStart + m_nConsumed; }
  [[nodiscard]] std::uint64_t GetLength() const { return m_file.GetLength(); }
  // Whether nothing is left to read; the system is asked only when all that was read ahead has been given out.
  [[nodiscard]] bool IsAtEnd() const { return m_nConsumed >= m_buffer.size() && GetPosition() >= GetLength(); }
  void Seek(std::uint64_t position);
  // Bytes at the position, past the text reader.
  [[nodiscard]] std::size_t ReadBytes(void* buffer, std::size_t count);
  void WriteBytes(const void* buffer, std::size_t count);

private:
  [[nodiscard]] bool Fill();
  [[nodiscard]] std::size_t FindLineFeed(std::size_t from) const noexcept;
  [[nodiscard]] CString LineOf(std::size_t from, std::size_t to) const;
  void SkipMark();

  CFile m_file;
  bool m_bUnicode = false;
  std::string m_buffer;             // bytes read ahead
  std::uint64_t m_nBufferStart = 0; // where in the file the buffer begins
  std::size_t m_nConsumed = 0;      // how much of the buffer has been given out
};

} // namespace brindle
