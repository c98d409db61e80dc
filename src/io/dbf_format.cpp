#include "io/dbf_format.h"

#include "platform/clock.h"
#include "platform/file.h"
#include "platform/path.h"

#include <algorithm>
#include <array>

namespace brindle {

namespace {

// Where things stand in the header, and in a descriptor.
constexpr std::size_t kDateAt = 1;
constexpr std::size_t kRecordsAt = 4;
constexpr std::size_t kHeaderLengthAt = 8;
constexpr std::size_t kRecordLengthAt = 10;
constexpr std::size_t kNameSize = 11; // with its zero
constexpr std::size_t kTypeAt = 11;
constexpr std::size_t kLengthAt = 16;
constexpr std::size_t kDecimalsAt = 17;
constexpr char kVersion = 3;

struct TypeLetter {
  char letter;
  DBF_FIELD_TYPE type;
};
constexpr std::array kTypeLetters = {TypeLetter{'L', DBF_LOGICAL}, TypeLetter{'C', DBF_CHAR},
                                     TypeLetter{'N', DBF_NUMERIC}, TypeLetter{'D', DBF_DATE},
                                     TypeLetter{'F', DBF_FLOAT}};

DBF_FIELD_TYPE TypeOf(char letter) noexcept {
  for (const TypeLetter& entry : kTypeLetters)
    if (entry.letter == letter)
      return entry.type;
  return DBF_UNKNOWN;
}

char LetterOf(DBF_FIELD_TYPE type) noexcept {
  for (const TypeLetter& entry : kTypeLetters)
    if (entry.type == type)
      return entry.letter;
  return '\0';
}

std::uint32_t ByteAt(std::string_view bytes, std::size_t at) noexcept {
  return static_cast<unsigned char>(bytes[at]);
}

void SetByte(std::string& bytes, std::size_t at, std::uint32_t value) noexcept {
  bytes[at] = static_cast<char>(static_cast<unsigned char>(value & 0xFFU));
}

void SetWord(std::string& bytes, std::size_t at, std::uint32_t value) noexcept {
  SetByte(bytes, at, value);
  SetByte(bytes, at + 1, value >> 8);
}

std::shared_ptr<const CodePage> Borrowed(const CodePage& page) {
  return {std::shared_ptr<const CodePage>(), &page};
}

// The page that a code page file means. Programs write "UTF-8", "1252", "ANSI 1252" or "ISO 8859-1".
std::shared_ptr<const CodePage> FindPage(std::string text) {
  text.resize(std::min(text.find_first_of("\r\n"), text.size()));
  if (text.starts_with("\xEF\xBB\xBF"))
    text.erase(0, 3);
  std::erase_if(text, [](char character) { return character == ' ' || character == '\t' || character == '\0'; });
  if (std::shared_ptr<const CodePage> page = CodePage::Find(text))
    return page;
  constexpr std::string_view prefix = "ANSI";
  return text.starts_with(prefix) ? CodePage::Find(text.substr(prefix.size())) : nullptr;
}

} // namespace

TableHeader ParseHeader(std::string_view bytes) noexcept {
  const auto word = [bytes](std::size_t at) { return ByteAt(bytes, at) | ByteAt(bytes, at + 1) << 8; };
  return {.records = word(kRecordsAt) | word(kRecordsAt + 2) << 16,
          .headerLength = word(kHeaderLengthAt),
          .recordLength = word(kRecordLengthAt)};
}

CDbfFieldDescriptorEx ParseField(std::string_view bytes, const CodePage& page) {
  const std::string_view name = bytes.substr(0, kNameSize);
  return {CString(page.Decode(name.substr(0, name.find('\0')))), TypeOf(bytes[kTypeAt]), ByteAt(bytes, kLengthAt),
          ByteAt(bytes, kDecimalsAt)};
}

std::string BuildHeader(const std::vector<CDbfFieldDescriptorEx>& fields, const TableHeader& header,
                        const CodePage& page) {
  std::string bytes(kTableHeaderSize, '\0');
  bytes[0] = kVersion;
  SetWord(bytes, kHeaderLengthAt, header.headerLength);
  SetWord(bytes, kRecordLengthAt, header.recordLength);
  std::string name;
  for (const CDbfFieldDescriptorEx& field : fields) {
    std::string descriptor(kTableFieldSize, '\0');
    page.EncodedPrefix(field.GetName().View(), kNameSize - 1, name);
    descriptor.replace(0, name.size(), name);
    descriptor[kTypeAt] = LetterOf(field.GetType());
    SetByte(descriptor, kLengthAt, field.GetLength());
    SetByte(descriptor, kDecimalsAt, field.GetDecimalCount());
    bytes += descriptor;
  }
  bytes += kFieldsTerminator;
  return bytes;
}

void StampHeader(std::string& bytes, std::uint32_t records) {
  const LocalTime now = Now();
  SetByte(bytes, kDateAt, static_cast<std::uint32_t>(now.year % 100)); // Deliberate: not years since 1900
  SetByte(bytes, kDateAt + 1, static_cast<std::uint32_t>(now.month));
  SetByte(bytes, kDateAt + 2, static_cast<std::uint32_t>(now.day));
  SetWord(bytes, kRecordsAt, records);
  SetWord(bytes, kRecordsAt + 2, records >> 16);
}

std::size_t TextLength(std::string_view bytes, DBF_FIELD_TYPE type) noexcept {
  const std::string_view used = bytes.substr(0, type == DBF_LOGICAL ? 1 : bytes.size());
  return std::min(used.find('\0'), used.size());
}

CString FieldText(std::string_view bytes, DBF_FIELD_TYPE type, const CodePage& page) {
  return CString(page.Decode(bytes.substr(0, TextLength(bytes, type))));
}

CString TableFileName(const CString& fileName) {
  const std::u16string_view path = fileName.View();
  std::size_t start = DirectoryPart(path).size();
  const std::size_t drive = path.substr(start).find(u':');
  if (drive != std::u16string_view::npos)
    start += drive + 1;
  const std::size_t dot = path.rfind(u'.');
  const std::size_t end = dot == std::u16string_view::npos || dot < start ? path.size() : dot;
  return end == start ? CString() : CString(path.substr(0, end)) + u".dbf";
}

std::shared_ptr<const CodePage> PageOfTable(const CString& tableFileName) {
  constexpr std::uint64_t longestName = 256;
  const CString beside = tableFileName.Left(tableFileName.ReverseFind(u'.')) + u".cpg";
  std::string text;
  if (ReadWholeFile(beside.View(), text, longestName))
    if (std::shared_ptr<const CodePage> page = FindPage(std::move(text)))
      return page;
  return Borrowed(CodePage::Bytes());
}

} // namespace brindle
