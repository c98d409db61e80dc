// CDbf: tables made from another one's fields, and the column filter.
#include "brindle/dbf.h"

#include "io/dbf_file.h"

#include <utility>

bool CDbf::InitFromTemplate(CDbf* pTemplate) {
  if (pTemplate == nullptr || pTemplate->m_descriptors.empty())
    return false;
  const std::vector<CDbfFieldDescriptorEx> fields = pTemplate->m_descriptors; // which may be this table itself
  CleanUp();
  if (m_filter.size() != fields.size())
    SetAttributeFilter(static_cast<int>(fields.size()));
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (!m_filter[i])
      continue;
    CDbfFieldDescriptorEx field = fields[i];
    field.m_nOffset = m_nFieldsLength;
    AddField(field);
  }
  return true;
}

void CDbf::SetAttributeFilter(const CArray<bool, bool>& filter) {
  m_filter.assign(filter.begin(), filter.end());
  m_nFilteredSize = -1;
}

void CDbf::SetAttributeFilter(int nCount) {
  m_filter.assign(nCount < 0 ? 0 : static_cast<std::size_t>(nCount), true);
  m_nFilteredSize = -1;
}

bool CDbf::IsSelected(int field) const noexcept {
  const auto index = static_cast<std::size_t>(field);
  return m_filter.empty() || (index < m_filter.size() && m_filter[index]);
}

long CDbf::CalcFilteredRecordSize() const noexcept {
  long size = 0;
  for (int i = 0; i < GetNumFields(); ++i)
    if (IsSelected(i))
      size += static_cast<long>(m_descriptors[static_cast<std::size_t>(i)].m_nLength);
  return size;
}

long CDbf::FilteredRecordSize() {
  if (!IsOpen())
    return 0;
  if (m_nFilteredSize < 0)
    m_nFilteredSize = CalcFilteredRecordSize();
  return m_nFilteredSize;
}

bool CDbf::CopyRecord(CDbf* pSource) {
  if (pSource == nullptr)
    return false;
  std::size_t next = 0;
  for (int i = 0; i < pSource->GetNumFields(); ++i) {
    if (!IsSelected(i))
      continue;
    if (next == m_pairs.size())
      return false;
    m_pairs[next].SetValue(pSource->m_pairs[static_cast<std::size_t>(i)].GetValue());
    ++next;
  }
  return true;
}
