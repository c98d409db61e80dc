#include "data/record_type.h"

#include "platform/number_text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace {

constexpr std::uint32_t kTextUnitWidth = 4; // of an inline text field, and of an indirect one's reference
constexpr std::uint64_t kLargestRecord = 256U * 1024U * 1024U;

template <class T> T Load(const std::byte* from) {
  T value;
  std::memcpy(&value, from, sizeof value);
  return value;
}

template <class T> void Store(std::byte* to, T value) {
  std::memcpy(to, &value, sizeof value);
}

// The zero-terminated text that starts the field; it ends with the field at the latest.
CString InlineText(const std::byte* from, std::size_t bytes) {
  std::u16string text;
  for (std::size_t at = 0; at + sizeof(char16_t) <= bytes; at += sizeof(char16_t)) {
    const auto unit = Load<char16_t>(from + at);
    if (unit == 0)
      break;
    text += unit;
  }
  return CString(text);
}

} // namespace

std::uint32_t CTypeStructure::ElementWidth(TYPE_DEFINITION type) noexcept {
  switch (type) {
  case TD_CHAR: return 1;
  case TD_WORD: return 2;
  case TD_INTEGER:
  case TD_FLOAT: return 4;
  case TD_DOUBLE: return 8;
  case TD_STRING: return kTextUnitWidth;
  default: return 0;
  }
}

bool CTypeStructure::AddField(const CString& name, TYPE_DEFINITION type, int count) {
  const std::uint64_t size = static_cast<std::uint64_t>(count) * ElementWidth(type);
  if (size == 0)
    return true;
  if (m_nSize + size > kLargestRecord)
    return false;
  m_arrFields.push_back({name, m_nSize, type, count, type == TD_STRING && count == 1});
  m_nSize += static_cast<std::uint32_t>(size);
  return true;
}

void CTypeStructure::MakeRecordOf(const CTypeStructure& type) {
  m_arrFields = type.m_arrFields;
  m_nSize = type.m_nSize;
  m_pData.assign(m_nSize, std::byte{0});
}

const CTypeField* CTypeStructure::FindField(const CString& name) const noexcept {
  for (const CTypeField& field : m_arrFields)
    if (field.m_strName == name)
      return &field;
  return nullptr;
}

bool CTypeStructure::ReadField(const CString& name, int index, CBasicVariable& out) const {
  const CTypeField* field = FindField(name);
  if (field == nullptr || index < 0 || index >= field->m_nCount || m_pData.size() < m_nSize)
    return false;
  const std::byte* start = m_pData.data() + field->m_nOffset;
  const std::byte* element = start + static_cast<std::size_t>(index) * ElementWidth(field->m_nType);
  switch (field->m_nType) {
  case TD_CHAR: out.SetValue(static_cast<int>(Load<std::int8_t>(element))); return true;
  case TD_WORD: out.SetValue(static_cast<int>(Load<std::uint16_t>(element))); return true;
  case TD_INTEGER: out.SetValue(static_cast<int>(Load<std::int32_t>(element))); return true;
  case TD_FLOAT: out.SetValue(static_cast<double>(Load<float>(element))); return true;
  case TD_DOUBLE: out.SetValue(Load<double>(element)); return true;
  case TD_STRING:
    // Nothing here ever stores a reference, and a zero one is the empty text.
    out.SetValue(field->m_bIndirect ? CString()
                                    : InlineText(start, static_cast<std::size_t>(field->m_nCount) * kTextUnitWidth));
    return true;
  default: return false;
  }
}

bool CTypeStructure::WriteField(const CString& name, int index, const CBasicVariable& value) {
  const CTypeField* field = FindField(name);
  if (field == nullptr || index < 0 || index >= field->m_nCount || m_pData.size() < m_nSize)
    return false;
  std::byte* element =
      m_pData.data() + field->m_nOffset + static_cast<std::size_t>(index) * ElementWidth(field->m_nType);
  const double number = value.GetNumberValue();
  switch (field->m_nType) {
  case TD_CHAR: Store(element, static_cast<std::uint8_t>(brindle::ToInt32(number))); return true;
  case TD_WORD: Store(element, static_cast<std::uint16_t>(brindle::ToUint32(number))); return true;
  case TD_INTEGER: Store(element, brindle::ToInt32(number)); return true;
  case TD_FLOAT: Store(element, brindle::ToFloat(number)); return true;
  case TD_DOUBLE: Store(element, number); return true;
  case TD_STRING: return true; // accepted and ignored
  default: return false;
  }
}
