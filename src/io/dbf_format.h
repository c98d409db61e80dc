// The bytes of a table's header: how they are built, read and kept up to date.
// Room: io. Used by: CDbf only.
// May touch: the file that names a table's code page.
// Must not: touch the table's own file.
// Invariant: all numbers are little-endian, whatever the machine is.
#pragma once

#include "brindle/dbf.h"
#include "platform/code_page.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

inline constexpr std::size_t kTableHeaderSize = 32;
inline constexpr std::size_t kTableFieldSize = 32;
inline constexpr std::uint32_t kShortestHeader = 33; // no fields, and the terminator
inline constexpr std::uint32_t kMostFields = 2046;   // what a 16-bit header length can describe
inline constexpr std::uint32_t kLongestField = 255;
inline constexpr std::uint32_t kLongestRecord = 65535;
inline constexpr char kFieldsTerminator = 0x0D;
inline constexpr char kEndMarker = 0x1A;
inline constexpr char kDeletedFlag = '*';
inline constexpr char kLiveFlag = ' ';

// What the first 32 bytes say.
struct TableHeader {
  std::uint32_t records = 0;
  std::uint32_t headerLength = 0;
  std::uint32_t recordLength = 0;
};
[[nodiscard]] TableHeader ParseHeader(std::string_view bytes) noexcept;
[[nodiscard]] CDbfFieldDescriptorEx ParseField(std::string_view bytes, const CodePage& page);

// Header, descriptors and terminator of a new table, still without date and record count.
[[nodiscard]] std::string BuildHeader(const std::vector<CDbfFieldDescriptorEx>& fields, const TableHeader& header,
                                      const CodePage& page);
// Sets today's date and the record count.
void StampHeader(std::string& bytes, std::uint32_t records);

// The text of a field's bytes.
[[nodiscard]] CString FieldText(std::string_view bytes, DBF_FIELD_TYPE type, const CodePage& page);
// How many of a field's bytes are its text.
[[nodiscard]] std::size_t TextLength(std::string_view bytes, DBF_FIELD_TYPE type) noexcept;

// "FOLDER/NAME.dbf" for "FOLDER/NAME.anything"; empty when there is no NAME.
[[nodiscard]] CString TableFileName(const CString& fileName);
// The code page of that table. Never null.
[[nodiscard]] std::shared_ptr<const CodePage> PageOfTable(const CString& tableFileName);

} // namespace brindle
