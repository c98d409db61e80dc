#include "brindle/variable.h"

#include "platform/memory_account.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <memory>
#include <vector>

namespace {

constexpr int kRedimLimit = 16000; // the first size that Redim no longer takes

} // namespace

CBasicVariable::ItemList::ItemList(ItemList&& other) noexcept
    : m_nCurrent(std::exchange(other.m_nCurrent, 0)), m_nCount(other.m_nCount), m_nCapacity(other.m_nCapacity),
      m_isWatched(0) {
  if (m_nCapacity == 1) {
    std::construct_at(&m_first, std::move(other.m_first));
  } else {
    m_pHeap = other.m_pHeap;
    other.m_nCount = 1;
    other.m_nCapacity = 1;
    std::construct_at(&other.m_first);
    other.NoteDirect();
    NoteDirect();
  }
}

CBasicVariable::ItemList& CBasicVariable::ItemList::operator=(ItemList&& other) noexcept {
  if (this != &other) {
    const bool isWatched = m_isWatched != 0;
    std::destroy_at(this);
    std::construct_at(this, std::move(other));
    if (isWatched)
      Watch();
  }
  return *this;
}

CBasicVariable::ItemList::~ItemList() {
  Destroy();
}

void CBasicVariable::ItemList::Destroy() noexcept {
  if (m_nCapacity == 1) {
    std::destroy_at(&m_first);
    return;
  }
  std::destroy_n(m_pHeap, m_nCount);
  brindle::AccountedAllocator<CVarBase>().deallocate(m_pHeap, static_cast<std::size_t>(m_nCapacity));
}

void CBasicVariable::ItemList::Reserve(int capacity) {
  const auto wanted = static_cast<unsigned>(capacity);
  if (wanted <= m_nCapacity)
    return;
  CVarBase* heap = brindle::AccountedAllocator<CVarBase>().allocate(wanted);
  std::uninitialized_move_n(Data(), m_nCount, heap);
  Destroy();
  m_pHeap = heap;
  m_nCapacity = wanted & 0x7FFFFFFF;
  NoteDirect();
}

void CBasicVariable::ItemList::Resize(int count) {
  if (count < m_nCount) {
    // The end of an object may come back to this list: what goes is no part of it any more.
    const std::vector<CVarBase> doomed(std::make_move_iterator(Data() + count),
                                       std::make_move_iterator(Data() + m_nCount));
    std::destroy(Data() + count, Data() + m_nCount);
    m_nCount = count;
    NoteDirect();
    return;
  }
  Reserve(count);
  std::uninitialized_value_construct(Data() + m_nCount, Data() + count);
  m_nCount = count;
  NoteDirect();
}

void CBasicVariable::ItemList::Add(CVarBase&& item) {
  if (static_cast<unsigned>(m_nCount) == m_nCapacity)
    Reserve(m_nCount + m_nCount / 2 + 4);
  std::construct_at(Data() + m_nCount, std::move(item));
  ++m_nCount;
  NoteDirect();
}

void CBasicVariable::ItemList::Assign(const ItemList& other) {
  Resize(other.m_nCount);
  for (int i = 0; i < m_nCount && i < other.m_nCount; ++i)
    At(i).SetValue(other.At(i));
}

CBasicVariable::CBasicVariable(const CBasicVariable& other) : m_userData(other.m_userData) {
  m_items.Assign(other.m_items);
  m_items.m_nCurrent = other.m_items.m_nCurrent;
}

CBasicVariable::CBasicVariable(CBasicVariable&& other) noexcept
    : m_userData(other.m_userData), m_items(std::move(other.m_items)), m_pExtra(std::move(other.m_pExtra)) {
  if (m_pExtra != nullptr)
    m_items.Watch();
}

CBasicVariable::~CBasicVariable() = default;

void CBasicVariable::SetValue(const CString& text) {
  Current().SetValue(text);
  OnChange();
}

void CBasicVariable::SetValue(const double& number) {
  Current().SetValue(number);
  OnChange();
}

void CBasicVariable::SetValue(const int& number) {
  Current().SetValue(static_cast<long>(number));
  OnChange();
}

void CBasicVariable::SetValue(bool truth) {
  Current().SetValue(truth);
  OnChange();
}

void CBasicVariable::SetValue(IDispatch* const object) {
  Current().SetValue(object);
  OnChange();
}

void CBasicVariable::SetValue(const CBasicVariable& source) {
  Current().SetValue(source.Current());
  OnChange();
}

bool CBasicVariable::SetValue(const tagVARIANT& value) {
  if (!Current().SetValue(value))
    return false;
  OnChange();
  return true;
}

bool CBasicVariable::Increment() {
  if (!Current().Increment())
    return false;
  OnChange();
  return true;
}

void CBasicVariable::SetValue(const CString& text, int index) {
  if (!HasItem(index))
    return;
  m_items.At(index).SetValue(text);
  OnChange();
}

void CBasicVariable::SetValue(const double& number, int index) {
  if (!HasItem(index))
    return;
  m_items.At(index).SetValue(number);
  OnChange();
}

void CBasicVariable::SetValue(const int& number, int index) {
  if (!HasItem(index))
    return;
  m_items.At(index).SetValue(static_cast<long>(number));
  OnChange();
}

void CBasicVariable::SetValue(IDispatch* const object, int index) {
  // Deliberate: unlike the form without an index this stores a number, so no reference is taken.
  const auto bits = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(object));
  SetValue(static_cast<std::int32_t>(bits), index);
}

int CBasicVariable::AddItem() {
  m_items.Add(CVarBase());
  const int index = m_items.Count() - 1;
  OnChange();
  return index;
}

int CBasicVariable::AddItem(const CBasicVariable& source) {
  // Deliberate: the index is this variable's, not the source's.
  return AppendItem(source.HasItem(m_items.m_nCurrent) ? CVarBase(source.m_items.At(m_items.m_nCurrent)) : CVarBase());
}

int CBasicVariable::AppendItem(CVarBase&& item) {
  int index = 0;
  if (IsSet()) {
    m_items.Add(std::move(item));
    index = m_items.Count() - 1;
  } else {
    CVarBase& first = m_items.At(0);
    if (first.m_kind == VT_EMPTY)
      first.Take(item);
    else
      first.SetValue(item); // one that somebody asked a text buffer of
  }
  OnChange();
  return index;
}

void CBasicVariable::SetArraySize(int size) {
  while (m_items.Count() < size)
    AddItem();
}

void CBasicVariable::Redim(int size) {
  if (size >= 1 && size < kRedimLimit) {
    m_items.Resize(size);
    DropFieldNames(size);
  }
  m_items.m_nCurrent = 0;
  OnChange();
}

void CBasicVariable::Set(const CBasicVariable& source) {
  if (this != &source) {
    m_items.Assign(source.m_items);
    DropFieldNames(0);
    m_items.m_nCurrent = source.m_items.m_nCurrent;
    m_userData = source.m_userData;
  }
  OnChange();
}

void CBasicVariable::Set(const CVarBase& item) {
  if (m_items.Count() > 1)
    m_items.Resize(1);
  m_items.m_nCurrent = 0;
  m_items.At(0).SetValue(item);
  DropFieldNames(0);
  OnChange();
}

bool CBasicVariable::HoldsObject() const noexcept {
  const CVarBase* const first = &m_items.At(0);
  return std::any_of(first, first + m_items.Count(), [](const CVarBase& item) {
    return item.m_kind >= CVarBase::kObject && item.GetType() == BVT_OBJECT;
  });
}

void CBasicVariable::ReleaseStringBuffer() {
  Current().ReleaseStringBuffer();
  OnChange();
}

CBasicVariable::Extra& CBasicVariable::MakeExtra() {
  if (m_pExtra == nullptr)
    m_pExtra = std::make_unique<Extra>();
  m_items.Watch();
  return *m_pExtra;
}

void CBasicVariable::DropFieldNames(int from) {
  if (m_pExtra != nullptr && m_pExtra->fieldNames.GetSize() > from)
    m_pExtra->fieldNames.SetSize(from);
}

void CBasicVariable::SetFieldName(const CString& name) {
  MakeExtra().fieldNames.SetAtGrow(m_items.m_nCurrent, name);
}

bool CBasicVariable::SetCurField(const CString& name) {
  // Items beyond the last named one have the empty name.
  const int named = m_pExtra == nullptr ? 0 : m_pExtra->fieldNames.GetSize();
  for (int i = 0; i < m_items.Count(); ++i) {
    if (name.CompareNoCase(i < named ? m_pExtra->fieldNames[i] : CString()) == 0) {
      m_items.m_nCurrent = i;
      return true;
    }
  }
  return false;
}

void CBasicVariable::SetChangeEvent(CBrindle* interpreter, const CString& event) {
  Extra& extra = MakeExtra();
  extra.pEventInterpreter = interpreter;
  extra.strEventName = event;
}

void CBasicVariable::RemoveChangeEvent() noexcept {
  if (m_pExtra != nullptr)
    m_pExtra->pEventInterpreter = nullptr;
}
