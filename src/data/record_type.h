// CTypeStructure: the packed layout of a record type, and a record with its block of memory.
// Room: data. Used by: the "type" statement, "dim", record fields; external calls pass the block.
// May touch: values.
// Must not: depend on the machine's pointer size: an indirect text field takes four bytes everywhere.
// Invariant: fields follow each other without padding; every access stays inside the block.
#pragma once

#include "brindle/variable.h"
#include "interpreter/language.h"
#include "platform/memory_account.h"

#include <cstddef>
#include <cstdint>
#include <vector>

enum TYPE_DEFINITION : int {
  TD_NONE = 0,
  TD_CHAR = 1,
  TD_WORD = 2,
  TD_INTEGER = 3,
  TD_FLOAT = 4,
  TD_DOUBLE = 5,
  TD_STRING = 6
};

struct CTypeField {
  CString m_strName; // as declared
  std::uint32_t m_nOffset = 0;
  TYPE_DEFINITION m_nType = TD_NONE;
  int m_nCount = 1;
  bool m_bIndirect = false; // a text without a size: the block holds a reference to it
};

class CTypeStructure {
public:
  using Bytes = std::vector<std::byte, brindle::AccountedAllocator<std::byte>>;

  // Bytes of one element; an indirect text's is that of the reference.
  [[nodiscard]] static std::uint32_t ElementWidth(TYPE_DEFINITION type) noexcept;

  // Appends a field behind the others. False when the block would become too large to be made.
  [[nodiscard]] bool AddField(const CString& name, TYPE_DEFINITION type, int count);
  // Makes this a record of that type, with a block of zeros.
  void MakeRecordOf(const CTypeStructure& type);

  [[nodiscard]] const std::vector<CTypeField>& Fields() const noexcept { return m_arrFields; }
  [[nodiscard]] std::uint32_t Size() const noexcept { return m_nSize; }
  [[nodiscard]] Bytes& Block() noexcept { return m_pData; }
  // The first field of exactly that name, null when there is none.
  [[nodiscard]] const CTypeField* FindField(const CString& name) const noexcept;

  // False for an unknown field or an element index out of range.
  [[nodiscard]] bool ReadField(const CString& name, int index, CBasicVariable& out) const;
  // A text field takes the write and ignores it.
  [[nodiscard]] bool WriteField(const CString& name, int index, const CBasicVariable& value);

private:
  std::vector<CTypeField> m_arrFields;
  Bytes m_pData; // empty in a type
  std::uint32_t m_nSize = 0;
};
