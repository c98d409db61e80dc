// CDbf: the fields of a table, their values, and the form that values are stored in.
#include "brindle/dbf.h"

#include "io/dbf_file.h"

#include <algorithm>

namespace {

constexpr int kLongestCharacterField = 253;
constexpr int kNumericLength = 18;
constexpr int kDateLength = 8;
constexpr int kFloatLength = 20;

CString CheckedLogical(const CString& value) {
  if (!value.IsEmpty() && CString(u"YyNnTtFf").Find(value.GetAt(0)) >= 0)
    return value.Left(1);
  return CString(u"?");
}

// A number without a point, or with nothing before it, stays as it is.
CString CheckedNumber(const CString& value, int decimals) {
  const int point = value.Find(u'.');
  if (point <= 0)
    return value;
  const int behindPoint = value.GetLength() - point - 1;
  if (behindPoint <= decimals)
    return value + CString(u'0', decimals - behindPoint);
  return value.Left(point + 1 + decimals); // Deliberate: cut, not rounded; without decimals the point stays
}

} // namespace

// The field's pair comes with it, so that there are always as many of both.
void CDbf::AddField(const CDbfFieldDescriptorEx& field) {
  m_pairs.emplace_back(field.m_strName, CString());
  m_descriptors.push_back(field);
  m_nFieldsLength += field.m_nLength;
}

CDbfFieldDescriptorEx* CDbf::GetFieldDescriptor(int nField) noexcept {
  return nField >= 0 && nField < GetNumFields() ? &m_descriptors[static_cast<std::size_t>(nField)] : nullptr;
}

bool CDbf::GetFieldName(int nField, CString& name) const {
  if (nField < 0 || nField >= GetNumFields())
    return false;
  name = m_descriptors[static_cast<std::size_t>(nField)].m_strName;
  return true;
}

bool CDbf::GetFieldType(int nField, DBF_FIELD_TYPE& type) const noexcept {
  if (nField < 0 || nField >= GetNumFields())
    return false;
  type = m_descriptors[static_cast<std::size_t>(nField)].m_nType;
  return true;
}

void CDbf::GetAttributes(CStringArray& names) const {
  names.SetSize(GetNumFields());
  for (int i = 0; i < GetNumFields(); ++i)
    names[i] = m_pairs[static_cast<std::size_t>(i)].GetName();
}

void CDbf::GetRecordFields(CStringArray& values) const {
  values.SetSize(GetNumFields());
  for (int i = 0; i < GetNumFields(); ++i)
    values[i] = m_pairs[static_cast<std::size_t>(i)].GetValue();
}

bool CDbf::SetRecordFields(const CStringArray& values) {
  if (GetNumFields() > values.GetSize())
    return false;
  for (int i = 0; i < GetNumFields(); ++i)
    m_pairs[static_cast<std::size_t>(i)].SetValue(values[i]);
  return true;
}

// The old values go into the array.
bool CDbf::TakeRecordFields(CStringArray& values) {
  if (GetNumFields() > values.GetSize())
    return false;
  CString* value = values.GetData();
  for (CAttributePair& pair : m_pairs)
    pair.SetValue(std::move(*value++));
  return true;
}

CString CDbf::CheckFieldFormat(const CString& value, const CDbfFieldDescriptorEx* pField) const {
  switch (pField == nullptr ? DBF_UNKNOWN : pField->m_nType) {
  case DBF_LOGICAL: return CheckedLogical(value);
  case DBF_NUMERIC:
  case DBF_FLOAT: return CheckedNumber(value, static_cast<int>(pField->m_nDecimals & 0xFFU));
  case DBF_CHAR:
  case DBF_DATE:
  case DBF_UNKNOWN: break;
  }
  return value;
}

DBF_FIELD_TYPE CDbf::StringToDBFFieldType(const CString& word) {
  struct Word {
    const char16_t* text;
    DBF_FIELD_TYPE type;
  };
  // Deliberate: there is no letter for integers
  static constexpr Word kWords[] = {{u"L", DBF_LOGICAL},       {u"BOOL", DBF_LOGICAL}, {u"C", DBF_CHAR},
                                    {u"CHAR", DBF_CHAR},       {u"N", DBF_NUMERIC},    {u"NUMERIC", DBF_NUMERIC},
                                    {u"INTEGER", DBF_NUMERIC}, {u"D", DBF_DATE},       {u"DATE", DBF_DATE},
                                    {u"F", DBF_FLOAT},         {u"FLOAT", DBF_FLOAT}};
  const auto* found = std::find_if(std::begin(kWords), std::end(kWords),
                                   [&word](const Word& entry) { return word.CompareNoCase(CString(entry.text)) == 0; });
  return found == std::end(kWords) ? DBF_UNKNOWN : found->type;
}

// Deliberate: numbers and dates have one length, whatever was asked for.
int CDbf::VerifyFieldLength(int nLength, DBF_FIELD_TYPE type) noexcept {
  switch (type) {
  case DBF_LOGICAL: return 1;
  case DBF_CHAR: return std::clamp(nLength, 1, kLongestCharacterField);
  case DBF_NUMERIC: return kNumericLength;
  case DBF_DATE: return kDateLength;
  case DBF_FLOAT: return kFloatLength;
  case DBF_UNKNOWN: break;
  }
  return nLength;
}
