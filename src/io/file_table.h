// The files that a script has opened, by number.
// Room: io. Used by: "open", "close", the file functions.
// May touch: files.
// Invariant: exactly one of a holder's two slots is filled.
#pragma once

#include "io/text_file.h"
#include "platform/file.h"

#include <map>
#include <memory>

namespace brindle {

struct FileHolder {
  std::unique_ptr<CFile> raw;
  std::unique_ptr<TextFile> text;

  [[nodiscard]] std::uint64_t GetLength() const { return raw ? raw->GetLength() : text->GetLength(); }
  [[nodiscard]] bool IsAtEnd() const { return raw ? raw->GetPosition() >= raw->GetLength() : text->IsAtEnd(); }
  [[nodiscard]] std::uint64_t GetPosition() const { return raw ? raw->GetPosition() : text->GetPosition(); }
  void Seek(std::uint64_t position) {
    if (raw)
      raw->Seek(static_cast<std::int64_t>(position), CFile::begin);
    else
      text->Seek(position);
  }
  [[nodiscard]] std::size_t Read(void* buffer, std::size_t count) {
    return raw ? raw->Read(buffer, count) : text->ReadBytes(buffer, count);
  }
  void Write(const void* buffer, std::size_t count) {
    if (raw)
      raw->Write(buffer, count);
    else
      text->WriteBytes(buffer, count);
  }
};

class FileTable {
public:
  // A file that stands under the number is closed first.
  void Add(unsigned number, FileHolder holder) { m_files[number] = std::move(holder); }
  [[nodiscard]] FileHolder* Find(unsigned number) {
    const auto file = m_files.find(number);
    return file == m_files.end() ? nullptr : &file->second;
  }
  // False when the number is not open.
  bool Close(unsigned number) { return m_files.erase(number) != 0; }
  void CloseAll() noexcept { m_files.clear(); }

private:
  std::map<unsigned, FileHolder> m_files;
};

} // namespace brindle
