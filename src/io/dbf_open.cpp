// CDbf from opening to closing.
#include "brindle/dbf.h"

#include "io/dbf_file.h"
#include "io/dbf_format.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace brindle;

namespace {

// Somebody else who has this table open too, and has closed it since its header was read here, has counted his records
// in the file.
unsigned long WithOthersRecords(unsigned long records, std::string_view headerFound, TableFile& file) {
  file.Seek(0);
  std::array<char, kTableHeaderSize> header; // not the file's block: a table closes without memory
  if (file.Read(header) < header.size())
    return records;
  const auto added = static_cast<std::int64_t>(ParseHeader({header.data(), header.size()}).records) -
                     static_cast<std::int64_t>(ParseHeader(headerFound).records);
  return static_cast<unsigned long>(std::max<std::int64_t>(0, static_cast<std::int64_t>(records) + added));
}

} // namespace

CDbf::CDbf() : m_pFile(std::make_unique<TableFile>()) {}

CDbf::~CDbf() {
  Close();
}

bool CDbf::IsOpen() const noexcept {
  return m_pFile->IsOpen();
}

void CDbf::CleanUp() {
  m_descriptors.clear();
  m_pairs.clear();
  m_strHeader.clear();
  m_nFilteredSize = -1;
  m_nNumRecords = 0;
  m_nHeaderLength = 0;
  m_nRecordLength = 0;
  m_nFieldsLength = 0;
  m_bDeleted = false;
  m_nMode = DBF_READ;
}

bool CDbf::SetFileName(const CString& fileName) {
  m_strFileName = TableFileName(fileName);
  if (m_strFileName.IsEmpty())
    return false;
  m_pPage = PageOfTable(m_strFileName);
  return true;
}

bool CDbf::Open(const CString& fileName, ReadWrite mode, CDbf* pTemplate) {
  Close();
  if (mode == DBF_WRITE && !InitFromTemplate(pTemplate))
    return false;
  m_nMode = mode;
  bool opened = false;
  if (SetFileName(fileName)) {
    if (mode == DBF_WRITE)
      opened = OpenWrite();
    else if (mode == DBF_READ || mode == DBF_READ_WRITE)
      opened = OpenRead();
  }
  if (!opened)
    CleanUp();
  return opened;
}

bool CDbf::Create(const CString& fileName, const CArray<CDbfFieldDescriptorEx*, CDbfFieldDescriptorEx*>& fields,
                  unsigned long nCount) {
  // Copied before anything is let go: the descriptors may be this table's own.
  if (nCount > kMostFields || nCount > static_cast<unsigned long>(fields.GetSize()))
    return false;
  std::vector<CDbfFieldDescriptorEx> copies;
  std::uint32_t offset = 0;
  for (int i = 0; i < static_cast<int>(nCount); ++i) {
    if (fields[i] == nullptr)
      return false;
    CDbfFieldDescriptorEx& copy = copies.emplace_back(*fields[i]);
    copy.m_nOffset = offset; // Deliberate: by the lengths asked for, not by those that are stored
    offset += copy.m_nLength;
    copy.m_nLength = static_cast<std::uint32_t>(VerifyFieldLength(static_cast<int>(copy.m_nLength), copy.m_nType));
  }

  Close();
  m_nMode = DBF_WRITE;
  for (const CDbfFieldDescriptorEx& copy : copies)
    AddField(copy);
  const bool created = SetFileName(fileName) && OpenWrite();
  if (!created)
    CleanUp();
  return created;
}

bool CDbf::OpenWrite() {
  if (m_strFileName.IsEmpty() || m_descriptors.size() > kMostFields || m_nFieldsLength + 1 > kLongestRecord)
    return false;
  for (const CDbfFieldDescriptorEx& field : m_descriptors)
    if (field.m_nLength > kLongestField)
      return false;

  m_nHeaderLength = static_cast<std::uint32_t>(m_descriptors.size() * kTableFieldSize) + kShortestHeader;
  m_nRecordLength = m_nFieldsLength + 1;
  m_strHeader =
      BuildHeader(m_descriptors, {.headerLength = m_nHeaderLength, .recordLength = m_nRecordLength}, *m_pPage);
  if (!m_pFile->Open(m_strFileName, CFile::modeCreate | CFile::modeReadWrite | CFile::shareExclusive))
    return false;
  if (WriteHeader() >= 0)
    return true;
  m_pFile->Close();
  return false;
}

bool CDbf::OpenRead() {
  if (m_strFileName.IsEmpty())
    return false;
  const unsigned access = m_nMode == DBF_READ ? CFile::modeRead : CFile::modeReadWrite;
  if (!m_pFile->Open(m_strFileName, access | CFile::shareDenyNone))
    return false;
  try {
    ReadHeader();
    return true;
  } catch (const CFileException&) {
    m_pFile->Close();
    return false;
  }
}

// Throws CFileException when the file ends too early or is no table.
void CDbf::ReadHeader() {
  const auto read = [this](std::size_t count) {
    const std::string_view bytes = m_pFile->Peek(count);
    if (bytes.size() < count)
      throw CFileException(CFileException::generic, 0);
    m_strHeader += bytes;
    m_pFile->Skip(count);
    return bytes;
  };
  m_strHeader.clear();
  m_descriptors.clear();
  m_pairs.clear();
  m_nFieldsLength = 0;

  const TableHeader header = ParseHeader(read(kTableHeaderSize));
  // Such a length means more fields than any file can describe.
  if (header.headerLength < kShortestHeader)
    throw CFileException(CFileException::generic, 0);
  const std::uint32_t fields = (header.headerLength - kShortestHeader) / kTableFieldSize;
  for (std::uint32_t i = 0; i < fields; ++i) {
    // Other programs leave room behind their last field, or keep things of their own there.
    const std::string_view next = m_pFile->Peek(1);
    if (!next.empty() && next[0] == kFieldsTerminator)
      break;
    CDbfFieldDescriptorEx field = ParseField(read(kTableFieldSize), *m_pPage);
    field.m_nOffset = m_nFieldsLength;
    AddField(field);
  }
  read(1);
  m_nNumRecords = header.records;
  m_nHeaderLength = header.headerLength;
  m_nRecordLength = header.recordLength;
  m_pFile->Seek(m_nHeaderLength);
}

long CDbf::WriteHeader() {
  if (!IsOpen())
    return -1;
  StampHeader(m_strHeader, static_cast<std::uint32_t>(m_nNumRecords));
  try {
    m_pFile->Seek(0);
    m_pFile->Write(m_strHeader);
    m_pFile->Seek(m_nHeaderLength);
  } catch (const CFileException&) {
    return -1;
  }
  return static_cast<long>(m_strHeader.size());
}

bool CDbf::Close() {
  bool done = true;
  if (IsOpen() && m_nMode != DBF_READ) {
    try {
      const EndOfTable mine(*m_pFile);
      m_nNumRecords = WithOthersRecords(m_nNumRecords, m_strHeader, *m_pFile);
      done = WriteHeader() >= 0;
      // Without room for records the file keeps its length: there is no place for the marker that is not the header.
      if (const std::uint64_t end = OffsetToEnd(); end > 0) {
        m_pFile->Seek(end);
        m_pFile->Write(std::string_view(&kEndMarker, 1));
        m_pFile->SetLength(end + 1);
      }
    } catch (const CFileException&) {
      done = false;
    }
  }
  CleanUp();
  m_pFile->Close();
  return done;
}

bool CDbf::Delete() {
  Close();
  if (m_strFileName.IsEmpty())
    return false;
  CFile file;
  return CFile::Remove(m_strFileName.View()) || !file.Open(m_strFileName.View(), CFile::modeRead);
}

bool CDbf::Rewind() {
  if (!IsOpen() || m_nMode == DBF_WRITE)
    return false;
  const int mode = m_nMode;
  const bool closed = Close();
  m_nMode = mode;
  if (OpenRead())
    return closed;
  CleanUp();
  return false;
}

bool CDbf::Flush() {
  if (!IsOpen())
    return false;
  try {
    if (m_nMode != DBF_READ)
      m_pFile->Flush();
    return true;
  } catch (const CFileException&) {
    return false;
  }
}

// Whether the file has lost its header meanwhile: then it is no table any more.
bool CDbf::IsCutOff() const {
  try {
    return m_pFile->GetLength() < m_strHeader.size();
  } catch (const CFileException&) {
    return false;
  }
}

bool CDbf::SwitchToWriteMode() {
  if (!IsOpen())
    return false;
  if (m_nMode != DBF_READ)
    return true;
  // In an object of its own, so that a table that the system refuses to open or read once more stays as it is.
  CDbf writable;
  if (!writable.Open(m_strFileName, DBF_READ_WRITE)) {
    if (IsCutOff())
      Close();
    return false;
  }
  for (std::size_t i = 0; i < m_pairs.size() && i < writable.m_pairs.size(); ++i)
    writable.m_pairs[i].SetValue(m_pairs[i].GetValue());
  writable.m_pFile->Seek(m_pFile->GetPosition());
  m_pFile.swap(writable.m_pFile);
  m_strHeader.swap(writable.m_strHeader);
  m_descriptors.swap(writable.m_descriptors);
  m_pairs.swap(writable.m_pairs);
  m_nFilteredSize = -1;
  m_nNumRecords = writable.m_nNumRecords;
  m_nHeaderLength = writable.m_nHeaderLength;
  m_nRecordLength = writable.m_nRecordLength;
  m_nFieldsLength = writable.m_nFieldsLength;
  m_nMode = std::exchange(writable.m_nMode, DBF_READ); // it closes the file that was only read
  return true;
}
