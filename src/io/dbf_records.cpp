// CDbf: reading, writing, appending and deleting records.
#include "brindle/dbf.h"

#include "io/dbf_file.h"
#include "io/dbf_format.h"

#include <algorithm>

using namespace brindle;

namespace {

// Runs one operation on the file; a refusal of the system is false.
template <class Operation> bool Attempt(Operation operation) {
  try {
    return operation();
  } catch (const CFileException&) {
    return false;
  }
}

} // namespace

std::uint64_t CDbf::PlaceOf(std::uint64_t record) const noexcept {
  return m_nHeaderLength + record * m_nRecordLength;
}

std::uint64_t CDbf::OffsetToEnd() const {
  if (!IsOpen() || m_nRecordLength == 0)
    return 0;
  const std::uint64_t length = m_pFile->GetLength();
  return length < m_nHeaderLength ? 0 : PlaceOf((length - m_nHeaderLength) / m_nRecordLength);
}

bool CDbf::SeekToRecord(unsigned long nRecord) {
  constexpr std::uint64_t lastRecord = 0xFFFFFFFF; // what a header can count
  if (!IsOpen() || nRecord > lastRecord)
    return false;
  m_pFile->Seek(PlaceOf(nRecord));
  return true;
}

// ---- Reading

bool CDbf::ReadRecord() {
  // The header's record length rules: fields that it has no room for are empty.
  const std::size_t size = std::min(m_nRecordLength, m_nFieldsLength + 1);
  if (!IsOpen() || size == 0)
    return false;
  return Attempt([&] {
    const std::string_view bytes = m_pFile->Peek(size);
    if (bytes.size() < size)
      return false;
    m_bDeleted = bytes[0] == kDeletedFlag;
    StoreValues(bytes.substr(1));
    m_pFile->Skip(m_nRecordLength);
    return true;
  });
}

void CDbf::StoreValues(std::string_view fieldBytes) {
  const bool isAscii = m_pPage->AreAscii(fieldBytes);
  const bool hasZeros = fieldBytes.find('\0') != fieldBytes.npos;
  // In a page of single bytes a field has the same place in the decoded record.
  const bool decodeAtOnce = !isAscii && m_pPage->IsSingleByte();
  m_strDecoded.clear();
  if (decodeAtOnce)
    m_pPage->DecodeTo(fieldBytes, m_strDecoded);
  const std::u16string_view decoded = m_strDecoded;

  std::size_t offset = 0;
  for (std::size_t i = 0; i < m_pairs.size(); ++i) {
    const CDbfFieldDescriptorEx& field = m_descriptors[i];
    const std::size_t start = std::min(offset, fieldBytes.size());
    const std::string_view bytes = fieldBytes.substr(start, field.m_nLength);
    if (isAscii)
      m_pairs[i].SetValue(CString::FromBytes(
          hasZeros || field.m_nType == DBF_LOGICAL ? bytes.substr(0, TextLength(bytes, field.m_nType)) : bytes));
    else if (decodeAtOnce)
      m_pairs[i].SetValue(CString(decoded.substr(start, TextLength(bytes, field.m_nType))));
    else
      m_pairs[i].SetValue(FieldText(bytes, field.m_nType, *m_pPage));
    offset += field.m_nLength;
  }
}

bool CDbf::ReadRecord(unsigned long nRecord) {
  return SeekToRecord(nRecord) && ReadRecord();
}

bool CDbf::ReadRecord(unsigned long nRecord, CStringArray& values) {
  if (!ReadRecord(nRecord))
    return false;
  GetRecordFields(values);
  return true;
}

bool CDbf::IsValidRecord(unsigned long nRecord) {
  if (!SeekToRecord(nRecord))
    return false;
  return Attempt([&] {
    const std::string_view flag = m_pFile->Peek(1);
    if (flag.empty())
      return false;
    m_pFile->Skip(1);
    return flag[0] != kDeletedFlag;
  });
}

bool CDbf::GetAttributeStr(CString& value, unsigned long nRecord, int nField) {
  value.Empty();
  const CDbfFieldDescriptorEx* field = GetFieldDescriptor(nField);
  // Deliberate: records count from 1 here
  if (!IsOpen() || field == nullptr || nRecord == 0 || !SeekToRecord(nRecord - 1))
    return false;
  return Attempt([&] {
    m_pFile->Seek(m_pFile->GetPosition() + field->m_nOffset + 1);
    const std::string_view bytes = m_pFile->Peek(field->m_nLength);
    if (bytes.empty())
      return false;
    m_pFile->Skip(bytes.size());
    value = FieldText(bytes, field->m_nType, *m_pPage);
    return true;
  });
}

// ---- Writing

// The bytes of the current values as a record, into m_strRecord. `found` is what stands at the place now: a field of a
// type that is not known here keeps its bytes when its text has not changed, as the text may not be all that they hold.
void CDbf::EncodeRecord(bool check, std::string_view found) {
  std::string& record = m_strRecord;
  record.assign(m_nRecordLength, ' ');
  record[0] = kLiveFlag;
  std::size_t offset = 1;
  for (std::size_t i = 0; i < m_pairs.size() && offset < record.size(); ++i) {
    const CDbfFieldDescriptorEx& field = m_descriptors[i];
    const std::size_t room = std::min<std::size_t>(field.m_nLength, record.size() - offset);
    CString checked;
    const bool hasForm = check && field.m_nType != DBF_CHAR;
    if (hasForm)
      checked = CheckFieldFormat(m_pairs[i].GetValue(), &field);
    const CString& stored = hasForm ? checked : m_pairs[i].GetValue();
    const bool isThere = field.m_nType == DBF_UNKNOWN && found.size() == record.size() &&
                         FieldText(found.substr(offset, room), field.m_nType, *m_pPage) == stored;
    char* const place = record.data() + offset;
    if (isThere) {
      record.replace(offset, room, found, offset, room);
    } else if (!m_pPage->EncodeAscii(stored.View().substr(0, room), place)) {
      std::fill_n(place, room, ' ');
      m_pPage->EncodedPrefix(stored.View(), room, m_strField);
      record.replace(offset, m_strField.size(), m_strField);
    }
    offset += room;
  }
}

// Writes the current values, in one piece.
void CDbf::WriteAt(std::uint64_t place, bool check, Place kind) {
  m_pFile->Seek(place);
  const bool foreign = std::any_of(m_descriptors.begin(), m_descriptors.end(),
                                   [](const CDbfFieldDescriptorEx& field) { return field.m_nType == DBF_UNKNOWN; }) ||
                       m_nRecordLength > m_nFieldsLength + 1;
  const std::string_view found =
      foreign && kind == Place::Existing ? m_pFile->Peek(m_nRecordLength) : std::string_view();
  EncodeRecord(check, found);
  std::string& record = m_strRecord;
  // What stands behind the fields of a whole record is not this table's to change.
  if (found.size() == record.size() && m_nFieldsLength + 1 < record.size())
    record.replace(m_nFieldsLength + 1, record.npos, found, m_nFieldsLength + 1, found.npos);
  m_pFile->Write(record);
  m_bDeleted = false;
}

bool CDbf::WriteRecord(bool bCheck) {
  if (!SwitchToWriteMode() || m_nRecordLength == 0)
    return false;
  return Attempt([&] {
    WriteAt(m_pFile->GetPosition(), bCheck, Place::Existing);
    return true;
  });
}

bool CDbf::WriteRecord(unsigned long nRecord, bool bCheck) {
  return SwitchToWriteMode() && SeekToRecord(nRecord) && WriteRecord(bCheck);
}

bool CDbf::WriteRecord(unsigned long nRecord, const CStringArray& values, bool bCheck) {
  return SwitchToWriteMode() && SetRecordFields(values) && WriteRecord(nRecord, bCheck);
}

bool CDbf::AppendRecord(bool bCheck) {
  if (!SwitchToWriteMode())
    return false;
  return Attempt([&] {
    const EndOfTable mine(*m_pFile);
    const std::uint64_t end = OffsetToEnd();
    if (end == 0)
      return false;
    WriteAt(end, bCheck, Place::End);
    m_nNumRecords += 1;
    return true;
  });
}

bool CDbf::AppendRecord(const CStringArray& values, bool bCheck) {
  return SwitchToWriteMode() && SetRecordFields(values) && AppendRecord(bCheck);
}

bool CDbf::AppendRecord(CStringArray&& values, bool bCheck) {
  return SwitchToWriteMode() && TakeRecordFields(values) && AppendRecord(bCheck);
}

bool CDbf::MarkRecordAsDeleted(unsigned long nRecord) {
  if (!SwitchToWriteMode() || m_nRecordLength == 0 || !SeekToRecord(nRecord))
    return false;
  return Attempt([&] {
    m_pFile->Write(std::string_view(&kDeletedFlag, 1));
    return true;
  });
}

bool CDbf::DeleteLastRecord(unsigned long nCount) {
  if (!SwitchToWriteMode() || nCount == 0 || nCount > m_nNumRecords)
    return false;
  return Attempt([&] {
    const EndOfTable mine(*m_pFile);
    // Counted from the very end of the file: what is left of the last record goes with the next append or the end.
    const std::uint64_t length = m_pFile->GetLength();
    const std::uint64_t removed = static_cast<std::uint64_t>(m_nRecordLength) * nCount;
    if (length <= removed)
      return false;
    m_pFile->SetLength(length - removed);
    m_nNumRecords -= nCount;
    return true;
  });
}
