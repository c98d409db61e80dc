// DbfTest: a folder for tables, tables made byte by byte, and a CDbf whose protected members can be called.
// Room: tests. Used by: the unit tests of CDbf.
// May touch: a fresh folder below the system's one for temporary files.
// Must not: build the bytes of a table with the library's own code: they are what it is compared with.
// Invariant: every test starts with an empty folder.
#pragma once

#include "brindle/dbf.h"
#include "support/script_test.h"
#include "support/text_printing.h"

#include <cstdint>
#include <ctime>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

// A CDbf with nothing protected.
class OpenDbf : public CDbf {
public:
  using CDbf::CalcFilteredRecordSize;
  using CDbf::CheckFieldFormat;
  using CDbf::CleanUp;
  using CDbf::InitFromTemplate;
  using CDbf::OffsetToEnd;
  using CDbf::OpenRead;
  using CDbf::OpenWrite;
  using CDbf::SetAttributeFilter;
  using CDbf::SwitchToWriteMode;
  using CDbf::WriteHeader;
  using CDbf::WriteRecord;
};

inline std::string LittleEndian(std::uint32_t value, int bytes) {
  std::string text;
  for (; bytes > 0; --bytes, value >>= 8)
    text.push_back(static_cast<char>(static_cast<unsigned char>(value & 0xFFU)));
  return text;
}

// The three bytes of today's date.
inline std::string DateBytes() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return LittleEndian(static_cast<std::uint32_t>(local.tm_year % 100), 1) +
         LittleEndian(static_cast<std::uint32_t>(local.tm_mon + 1), 1) +
         LittleEndian(static_cast<std::uint32_t>(local.tm_mday), 1);
}

inline std::string Padded(std::string text, std::size_t length, char filler = ' ') {
  text.resize(length, filler);
  return text;
}

// A table as bytes. What is not set follows from the fields and records.
struct RawTable {
  struct Field {
    std::string name;
    char type = 'C';
    int length = 0;
    int decimals = 0;
  };
  std::vector<Field> fields;
  std::vector<std::string> records = {}; // each with its flag, as long as they are given
  std::string date = std::string("\x5f\x07\x1a", 3);
  char version = 3;
  int recordCount = -1;
  int headerLength = -1;
  int recordLength = -1;
  std::string reserved = std::string(20, '\0');      // bytes 12 to 31
  std::string fieldReserved = std::string(14, '\0'); // bytes 18 to 31 of every descriptor
  std::string terminator = "\x0D";
  std::string behindTerminator = {};
  std::string end = "\x1A";

  [[nodiscard]] std::string Header() const {
    int fieldsLength = 0;
    std::string descriptors;
    for (const Field& field : fields) {
      fieldsLength += field.length;
      descriptors += Padded(field.name, 11, '\0') + field.type + std::string(4, '\0') +
                     LittleEndian(static_cast<std::uint32_t>(field.length), 1) +
                     LittleEndian(static_cast<std::uint32_t>(field.decimals), 1) + fieldReserved;
    }
    const auto orElse = [](int value, std::size_t otherwise) {
      return value < 0 ? static_cast<std::uint32_t>(otherwise) : static_cast<std::uint32_t>(value);
    };
    return version + date + LittleEndian(orElse(recordCount, records.size()), 4) +
           LittleEndian(orElse(headerLength, 32 + descriptors.size() + terminator.size() + behindTerminator.size()),
                        2) +
           LittleEndian(orElse(recordLength, static_cast<std::size_t>(fieldsLength) + 1), 2) + reserved + descriptors +
           terminator + behindTerminator;
  }
  [[nodiscard]] std::string Bytes() const {
    std::string bytes = Header();
    for (const std::string& record : records)
      bytes += record;
    return bytes + end;
  }
};

class DbfTest : public testing::Test {
protected:
  using Texts = std::vector<std::string>;

  [[nodiscard]] CString Path(std::string_view name) const { return CString::FromUtf8(m_folder.Path(name).string()); }
  [[nodiscard]] std::string Bytes(std::string_view name = "t.dbf") const { return m_folder.Read(name); }
  void Put(const RawTable& table, std::string_view name = "t.dbf") const { m_folder.Write(name, table.Bytes()); }
  // Writes into an existing file without a table, as another program would.
  void Overwrite(std::string_view name, std::size_t at, std::string_view bytes) const {
    std::string contents = Bytes(name);
    contents.replace(at, bytes.size(), bytes);
    m_folder.Write(name, contents);
  }

  static bool Create(CDbf& table, const CString& path, std::initializer_list<CDbfFieldDescriptorEx> fields) {
    std::vector<CDbfFieldDescriptorEx> copies(fields);
    CArray<CDbfFieldDescriptorEx*, CDbfFieldDescriptorEx*> pointers;
    for (CDbfFieldDescriptorEx& field : copies)
      pointers.Add(&field);
    return table.Create(path, pointers, copies.size());
  }
  // NAME, C 10, and PRICE, N with 2 decimals: records of 29 bytes.
  bool CreatePrices(CDbf& table, std::string_view name = "t") const {
    return Create(table, Path(name), {{CString(u"NAME"), DBF_CHAR, 10}, {CString(u"PRICE"), DBF_NUMERIC, 18, 2}});
  }
  static CStringArray Values(std::initializer_list<std::string_view> texts) {
    CStringArray values;
    for (const std::string_view text : texts)
      values.Add(CString::FromUtf8(text));
    return values;
  }
  static Texts ValuesOf(const CDbf& table) {
    CStringArray values;
    table.GetRecordFields(values);
    Texts texts;
    for (const CString& value : values)
      texts.push_back(value.ToUtf8());
    return texts;
  }
  // A record of CreatePrices' table.
  static std::string Price(const std::string& name, const std::string& price, char flag = ' ') {
    return flag + Padded(name, 10) + Padded(price, 18);
  }
  // Three rows of NAME, C 4, closed.
  void PutLetters(std::string_view name = "t.dbf") const {
    Put({.fields = {{"NAME", 'C', 4}}, .records = {" aaaa", " bbbb", " cccc"}}, name);
  }

  TemporaryFolder m_folder;
};
