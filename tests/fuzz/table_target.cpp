// Tables: any bytes as a dBase file, every field of every record read in two ways, then updated and copied.
#include "fuzz_support.h"

#include "brindle/dbf.h"

#include <algorithm>
#include <array>

using fuzz::Require;

namespace {

constexpr unsigned long kMostRecords = 12; // read of one table; the header may promise four billion

CString PathOf(const char* name) {
  return CString::FromUtf8(fuzz::ScratchFolder() + "/" + name);
}

std::uint32_t WordAt(std::string_view bytes, std::size_t at) {
  return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1])
                                                                                << 8);
}

// Whether the record has room for the field, which reading one field straight from the file does not ask. Of a field
// without a length that gives nothing.
bool HasRoom(CDbf& table, int field, std::uint32_t recordLength) {
  const CDbfFieldDescriptorEx* descriptor = table.GetFieldDescriptor(field);
  return descriptor->GetLength() > 0 && 1 + descriptor->GetOffset() + descriptor->GetLength() <= recordLength;
}

void CheckFields(CDbf& table) {
  std::uint32_t offset = 0;
  for (int field = 0; field < table.GetNumFields(); ++field) {
    const CDbfFieldDescriptorEx* descriptor = table.GetFieldDescriptor(field);
    Require(descriptor != nullptr && descriptor->GetOffset() == offset, "a field stands behind the one before");
    Require(descriptor->GetLength() <= 255 && descriptor->GetDecimalCount() <= 255, "lengths are bytes");
    offset += descriptor->GetLength();
    CString name;
    DBF_FIELD_TYPE type = DBF_UNKNOWN;
    Require(table.GetFieldName(field, name) && table.GetFieldType(field, type), "a field has name and type");
    Require(name == descriptor->GetName() && name.GetLength() <= 11, "a name has at most eleven characters");
  }
  CString name;
  Require(!table.GetFieldName(table.GetNumFields(), name) && !table.GetFieldName(-1, name), "there are no more fields");
}

void CheckRecord(CDbf& table, unsigned long record, std::uint32_t recordLength) {
  CStringArray values;
  CString value;
  const bool read = table.ReadRecord(record, values);
  if (read)
    Require(static_cast<int>(values.GetSize()) == table.GetNumFields(), "every field has a value");
  const bool isDeleted = table.IsRecordDeleted();
  for (int field = 0; field < table.GetNumFields(); ++field) {
    const bool gotPart = table.GetAttributeStr(value, record + 1, field);
    if (read && HasRoom(table, field, recordLength))
      Require(gotPart && value == values[field], "a field reads the same by itself");
    Require(value.Find(u'\0') < 0, "a value ends at a zero");
  }
  if (read)
    Require(table.IsValidRecord(record) == !isDeleted, "a record that is there and not deleted is valid");
}

void ReadAll(CDbf& table, std::uint32_t recordLength) {
  CheckFields(table);
  const unsigned long count = std::min(table.GetNumRecords(), kMostRecords);
  for (unsigned long record = 0; record < count; ++record)
    CheckRecord(table, record, recordLength);
  for (const unsigned long record : {table.GetNumRecords(), 0xFFFFFFFFUL, 0x100000000UL, ~0UL})
    CheckRecord(table, record, recordLength);
}

CStringArray ValuesOf(fuzz::Input& steps, int fields) {
  CStringArray values;
  for (int field = 0; field < fields; ++field)
    values.Add(CString::FromUtf8(std::string(steps.Bytes(steps.Byte() % 32))));
  return values;
}

// False when the table is no longer open.
void Step(CDbf& table, fuzz::Input& steps) {
  const std::uint8_t what = steps.Byte();
  const unsigned long record = steps.Byte();
  const unsigned long before = table.GetNumRecords();
  const bool check = (what & 0x80) != 0;
  switch (what % 9) {
  case 0:
    if (table.AppendRecord(ValuesOf(steps, table.GetNumFields()), check))
      Require(table.GetNumRecords() == before + 1, "a record that is appended counts");
    break;
  case 1:
    if (table.WriteRecord(record, ValuesOf(steps, table.GetNumFields()), check))
      Require(table.GetNumRecords() == before && table.IsValidRecord(record), "a record that is written is there");
    break;
  case 2:
    if (table.MarkRecordAsDeleted(record))
      Require(!table.IsValidRecord(record), "a deleted record is not valid");
    break;
  case 3:
    if (table.DeleteLastRecord(record))
      Require(table.GetNumRecords() == before - record, "records that are removed do not count");
    break;
  case 4: (void)table.SeekToRecord(record); break;
  case 5: (void)table.ReadRecord(); break;
  case 6: (void)table.Rewind(); break;
  case 7: (void)table.AppendRecord(check); break;
  default: (void)table.Flush(); break;
  }
}

void CopyTo(CDbf& source) {
  CDbf copy;
  if (!copy.Open(PathOf("copy.dbf"), DBF_WRITE, &source))
    return;
  const int fields = copy.GetNumFields();
  Require(fields == source.GetNumFields(), "a copy has all fields");
  unsigned long copied = 0;
  for (unsigned long record = 0; record < 3 && source.ReadRecord(record); ++record) {
    Require(copy.CopyRecord(&source) && copy.AppendRecord(true), "a record can be copied");
    ++copied;
  }
  Require(copy.Close(), "a copy can be closed");
  Require(copy.Open(PathOf("copy.dbf"), DBF_READ) && copy.GetNumFields() == fields && copy.GetNumRecords() == copied,
          "a copy holds what was put into it");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::array<std::string_view, 4> kPages = {"", "UTF-8", "437", "Shift_JIS"};
  fuzz::Input input(data, size);
  const std::uint8_t page = input.Byte();
  fuzz::Input steps(data, 0);
  const std::string_view taken = input.Bytes(input.Byte());
  steps = fuzz::Input(reinterpret_cast<const std::uint8_t*>(taken.data()), taken.size());
  const int stepCount = page / 4 % 8;
  const std::string_view bytes = input.Rest();

  fuzz::WriteScratch("table.dbf", bytes);
  fuzz::WriteScratch("table.cpg", kPages[page % kPages.size()]);
  CDbf table;
  if (!table.Open(PathOf("table"), DBF_READ)) {
    Require(!table.IsOpen() && table.GetNumFields() == 0, "what is no table is not open");
    return 0;
  }
  Require(bytes.size() > 32, "a table has a header");
  ReadAll(table, WordAt(bytes, 10));
  if ((page & 0x20) != 0)
    CopyTo(table);
  for (int step = 0; step < stepCount && table.IsOpen(); ++step)
    Step(table, steps);
  if (stepCount > 0 && table.IsOpen()) {
    table.Close();
    Require(table.Open(PathOf("table"), DBF_READ_WRITE), "a table that was updated can be opened");
    ReadAll(table, WordAt(bytes, 10));
    Require(table.Close(), "a table can be closed");
  }
  return 0;
}
