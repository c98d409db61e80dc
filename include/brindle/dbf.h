// CDbf: dBase III table files, read, created and updated record by record.
// Room: io. Used by: the dBase functions of scripts, hosts.
// May touch: the table's file, and a file beside it that names its code page.
// Must not: convert numbers or dates; every value is text. Throw because of a file.
// Invariant: while a table is open there is one name/value pair a field; what a member has written is with the
// system when the member returns.
#pragma once

#include "brindle/collections.h"
#include "brindle/export.h"
#include "brindle/text.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {
class CodePage;
class TableFile;
} // namespace brindle

/// What a field holds.
enum DBF_FIELD_TYPE : int {
  DBF_LOGICAL = 1, ///< "L": one character, one of Y y N n T t F f, or "?"
  DBF_CHAR = 2,    ///< "C": text
  DBF_NUMERIC = 3, ///< "N": a decimal number as text
  DBF_DATE = 4,    ///< "D": eight digits, year, month, day; not validated
  DBF_FLOAT = 5,   ///< "F": a decimal number as text
  DBF_UNKNOWN = 6  ///< any other letter of a table that is read; its bytes are taken as text
};

/// How a table is opened.
enum ReadWrite : int {
  DBF_READ = 0,      ///< an existing table for reading; the first write turns it into DBF_READ_WRITE
  DBF_WRITE = 1,     ///< a new table with the fields of a template table
  DBF_READ_WRITE = 2 ///< an existing table for reading and updating
};

/// The description of one field. Plain data: copies are independent.
class BRINDLE_API CDbfFieldDescriptorEx {
public:
  CDbfFieldDescriptorEx() = default;
  /// `name`: at most 10 bytes of it in the table's code page are stored. `length`: bytes in the record; what
  /// CDbf::Create makes of it says CDbf::VerifyFieldLength. `decimals`: digits behind the point, 0 to 255, for
  /// numeric and float fields.
  CDbfFieldDescriptorEx(const CString& name, DBF_FIELD_TYPE type, std::uint32_t length, std::uint32_t decimals = 0)
      : m_strName(name), m_nLength(length), m_nDecimals(decimals), m_nType(type) {}

  [[nodiscard]] const CString& GetName() const noexcept { return m_strName; }
  [[nodiscard]] DBF_FIELD_TYPE GetType() const noexcept { return m_nType; }
  /// Bytes in the record.
  [[nodiscard]] std::uint32_t GetLength() const noexcept { return m_nLength; }
  [[nodiscard]] std::uint32_t GetDecimalCount() const noexcept { return m_nDecimals; }
  /// Bytes between the record's deletion flag and the field; 0 until a table has given the descriptor one. In a
  /// table that CDbf::Create has just made it is counted with the lengths as they were asked for, not as stored.
  [[nodiscard]] std::uint32_t GetOffset() const noexcept { return m_nOffset; }

private:
  friend class CDbf;

  CString m_strName;
  std::uint32_t m_nLength = 0;
  std::uint32_t m_nDecimals = 0;
  std::uint32_t m_nOffset = 0;
  DBF_FIELD_TYPE m_nType = DBF_UNKNOWN;
};

/// A field's name and its value in the current record. Plain data: copies are independent.
class BRINDLE_API CAttributePair {
public:
  CAttributePair() = default;
  CAttributePair(const CString& name, const CString& value) : m_strName(name), m_strValue(value) {}

  [[nodiscard]] const CString& GetName() const noexcept { return m_strName; }
  [[nodiscard]] const CString& GetValue() const noexcept { return m_strValue; }
  void SetValue(const CString& value) noexcept { m_strValue = value; }
  void SetValue(CString&& value) noexcept { m_strValue = std::move(value); }

private:
  CString m_strName;
  CString m_strValue;
};

/// One table. Records and fields count from 0 (but see GetAttributeStr). A record stays in the file when it is
/// deleted; it is only marked. The table has a reading position: a new one stands at record 0, reading a record
/// moves it to the next one.
///
/// Every bool result means success. False stands for a table that is not open, for a file that is missing,
/// damaged, too short, locked or refused by the system, and for what a member's own text names; nothing is
/// reported elsewhere, and no member throws anything but std::bad_alloc.
///
/// Text is converted by the code page of bytes: the ANSI page when that has one byte a character, else
/// windows-1252; a file NAME.cpg beside the table names another page for it, UTF-8 included. A character that
/// does not fit into the rest of its field is left out whole.
///
/// Reading keeps up to 64 KiB ahead of the position. What other tables of this process write to the same file is
/// seen at once; what another program writes is seen behind the next seek to another record.
///
/// Not copyable; an object is used by one thread at a time.
class BRINDLE_API CDbf {
public:
  CDbf();
  /// Closes the table.
  virtual ~CDbf();
  CDbf(const CDbf&) = delete;
  CDbf& operator=(const CDbf&) = delete;

  /// Opens a table; one that is open is closed first. The name's extension, if any, is replaced by ".dbf".
  /// DBF_WRITE makes a new table with those fields of `pTemplate` whose flag in the attribute filter is set (see
  /// SetAttributeFilter; all of them when the filter has another size than the template has fields), replaces an
  /// existing file, and keeps others from creating it too while it is open. The other modes ignore `pTemplate`,
  /// which is borrowed for the call.
  bool Open(const CString& fileName, ReadWrite mode, CDbf* pTemplate = nullptr);
  /// Makes a new table of the first `nCount` of the fields given, which are copied, and replaces an existing file
  /// of that name (extension as in Open). The lengths become those that VerifyFieldLength says. Nobody else can
  /// create the file while it is open. False, and no file is touched, when `nCount` exceeds the array, a pointer
  /// is null, or the table could not be described by its header: more than 2046 fields, a field of an unknown
  /// type above 255 bytes, more than 65535 bytes a record.
  bool Create(const CString& fileName, const CArray<CDbfFieldDescriptorEx*, CDbfFieldDescriptorEx*>& fields,
              unsigned long nCount);
  /// Closes the file; a created or updated table first gets today's date, its record count and the end marker.
  /// True for a table that is not open. The object can be used for another table.
  bool Close();
  /// Closes the table and removes its file. True when no such file is left.
  bool Delete();
  /// Back to record 0, with empty values and what the header says now. False for a table that this object created.
  bool Rewind();
  /// Waits until everything written is on the device. True without waiting for a table opened for reading.
  bool Flush();

  [[nodiscard]] bool IsOpen() const noexcept;
  /// What the header says, plus what was appended and minus what was removed since. It is not compared with the
  /// length of the file.
  [[nodiscard]] unsigned long GetNumRecords() const noexcept { return m_nNumRecords; }
  [[nodiscard]] int GetNumFields() const noexcept { return static_cast<int>(m_descriptors.size()); }
  /// Null when there is no such field. Owned by the table, valid until it is closed, reopened or first written to.
  [[nodiscard]] CDbfFieldDescriptorEx* GetFieldDescriptor(int nField) noexcept;
  /// False, and the second argument keeps its value, when there is no such field.
  bool GetFieldName(int nField, CString& name) const;
  bool GetFieldType(int nField, DBF_FIELD_TYPE& type) const noexcept;
  /// Whether the record read last is marked as deleted.
  [[nodiscard]] bool IsRecordDeleted() const noexcept { return m_bDeleted; }

  /// Reads the record at the position and moves behind it. Blanks around values are kept; a field's text ends at
  /// a zero byte. False, with the values and the position as they were, when the file ends before the record does.
  bool ReadRecord();
  bool ReadRecord(unsigned long nRecord);
  /// As above, and copies the values out.
  bool ReadRecord(unsigned long nRecord, CStringArray& values);
  /// Whether the record is there and not marked as deleted. Leaves the position behind the record's first byte.
  [[nodiscard]] bool IsValidRecord(unsigned long nRecord);
  /// Moves the position; the record need not exist.
  bool SeekToRecord(unsigned long nRecord);
  /// Writes the current values over a record, which thereby is no longer deleted, and moves behind it. `bCheck`
  /// first brings logical and numeric values into the field's form: a logical value is its first letter when that
  /// is one of YyNnTtFf, else "?"; a number with a point is filled or cut to the field's decimals, never rounded.
  /// Every value starts at the left end of its field; what does not fit is cut off. The record need not exist;
  /// the record count does not change.
  bool WriteRecord(unsigned long nRecord, bool bCheck);
  /// As above with these values (see SetRecordFields).
  bool WriteRecord(unsigned long nRecord, const CStringArray& values, bool bCheck);
  /// Writes the current values behind the last whole record of the file and moves behind it. False for a table
  /// whose header gives records no length or ends behind the end of the file.
  bool AppendRecord(bool bCheck);
  bool AppendRecord(const CStringArray& values, bool bCheck);
  /// As above; what `values` holds afterwards is of no use.
  bool AppendRecord(CStringArray&& values, bool bCheck);
  /// Marks a record; the record count and the values stay. Leaves the position behind the record's first byte.
  bool MarkRecordAsDeleted(unsigned long nRecord);
  /// Takes the lengths of `nCount` records off the end of the file and off the record count. False when `nCount`
  /// is 0 or more than there are.
  bool DeleteLastRecord(unsigned long nCount);
  /// Takes over the source's current values: those of the fields whose flag in this table's filter is set, in
  /// order, into this table's fields from the first one on. Nothing is written. False when the source is null or
  /// has more such fields than this table.
  bool CopyRecord(CDbf* pSource);

  /// The names of the fields.
  void GetAttributes(CStringArray& names) const;
  /// The current values, one a field.
  void GetRecordFields(CStringArray& values) const;
  /// One current value, valid until the values change. There is such a field.
  [[nodiscard]] const CString& GetFieldValue(int nField) const noexcept {
    return m_pairs[static_cast<std::size_t>(nField)].GetValue();
  }
  /// Sets the current values; entries beyond the fields are ignored. False, and nothing changes, when there are
  /// fewer entries than fields.
  bool SetRecordFields(const CStringArray& values);
  /// Reads one field straight from the file, without touching the current values; the position ends up behind it.
  /// Deliberately unlike everywhere else the record counts from 1. `value` is empty when this fails; a field that
  /// the file holds only in part gives that part.
  bool GetAttributeStr(CString& value, unsigned long nRecord, int nField);

  /// Selects fields, one flag each, for making a table from a template, CopyRecord and FilteredRecordSize. The
  /// flags are copied and outlive Close. Without any, every field counts as selected; a field beyond them does not.
  void SetAttributeFilter(const CArray<bool, bool>& filter);
  /// Bytes of the selected fields together, 0 when the table is not open.
  long FilteredRecordSize();

  /// "L" "BOOL", "C" "CHAR", "N" "NUMERIC" "INTEGER", "D" "DATE", "F" "FLOAT", in any letter case; any other word
  /// is DBF_UNKNOWN.
  [[nodiscard]] static DBF_FIELD_TYPE StringToDBFFieldType(const CString& word);
  /// The length that a new field gets: logical 1, character the given one but at least 1 and at most 253, numeric
  /// 18, date 8, float 20, unknown the given one.
  [[nodiscard]] static int VerifyFieldLength(int nLength, DBF_FIELD_TYPE type) noexcept;

protected:
  /// Opens the named file by the mode and reads its header.
  bool OpenRead();
  /// Creates the named file and writes its header.
  bool OpenWrite();
  /// Takes over the fields of a template that the filter selects. False without fields to take over.
  bool InitFromTemplate(CDbf* pTemplate);
  /// Writes header, descriptors and terminator with today's date and the record count; what another program has
  /// put there besides is written back as it was found. The number of bytes, -1 when that fails.
  long WriteHeader();
  /// Makes a table that was opened for reading writable, keeping its values and position. False leaves a table
  /// that the system refuses to open for writing as it is, and closes one whose file is none any more.
  bool SwitchToWriteMode();
  /// Forgets fields, values, counts and mode; neither the file nor the filter.
  void CleanUp();
  /// Writes the current values at the position.
  bool WriteRecord(bool bCheck);
  /// Selects that many fields.
  void SetAttributeFilter(int nCount);
  [[nodiscard]] long CalcFilteredRecordSize() const noexcept;
  /// The text to store for a value when it is to be checked.
  [[nodiscard]] CString CheckFieldFormat(const CString& value, const CDbfFieldDescriptorEx* pField) const;
  /// Where the last whole record of the file ends, 0 when the file has no room for records.
  [[nodiscard]] std::uint64_t OffsetToEnd() const;

private:
  // What a record is written for: an existing place keeps bytes that belong to no field.
  enum class Place { Existing, End };

  [[nodiscard]] bool SetFileName(const CString& fileName);
  void AddField(const CDbfFieldDescriptorEx& field);
  [[nodiscard]] bool TakeRecordFields(CStringArray& values);
  void ReadHeader();
  [[nodiscard]] bool IsCutOff() const;
  [[nodiscard]] std::uint64_t PlaceOf(std::uint64_t record) const noexcept;
  [[nodiscard]] bool IsSelected(int field) const noexcept;
  void StoreValues(std::string_view fieldBytes);
  void EncodeRecord(bool check, std::string_view found);
  void WriteAt(std::uint64_t place, bool check, Place kind);

  std::unique_ptr<brindle::TableFile> m_pFile;
  std::shared_ptr<const brindle::CodePage> m_pPage; // never null while there is a file name
  CString m_strFileName;
  std::string m_strHeader;     // header, descriptors and terminator as they stand in the file
  std::u16string m_strDecoded; // these three are kept for their memory
  std::string m_strRecord;
  std::string m_strField;
  std::vector<CDbfFieldDescriptorEx> m_descriptors;
  std::vector<CAttributePair> m_pairs;
  std::vector<bool> m_filter;
  long m_nFilteredSize = -1; // -1: to be worked out
  unsigned long m_nNumRecords = 0;
  std::uint32_t m_nHeaderLength = 0;
  std::uint32_t m_nRecordLength = 0;
  std::uint32_t m_nFieldsLength = 0; // of all fields together
  int m_nMode = DBF_READ;
  bool m_bDeleted = false;
};
