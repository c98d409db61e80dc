// CArray and CStringArray: growable arrays in the style that hosts of the interface know.
// Room: platform. Used by: everything.
// May touch: nothing but memory.
// Invariant: elements 0 .. count - 1 are constructed, the rest of the storage is raw.
#pragma once

#include "brindle/text.h"

#include <cassert>
#include <memory>
#include <new>
#include <utility>

/// A growable array of TYPE; ARG_TYPE is what the writing members take. Indices are checked by assertions
/// only: an index outside the array is a fault of the caller. Growth may throw std::bad_alloc, and then
/// leaves the array as it was. Unlike std::vector<bool>, an array of bool holds addressable elements.
template <class TYPE, class ARG_TYPE = const TYPE&> class CArray {
public:
  CArray() noexcept = default;
  CArray(const CArray& other) { Copy(other); }
  CArray(CArray&& other) noexcept
      : m_pData(std::exchange(other.m_pData, nullptr)), m_nSize(std::exchange(other.m_nSize, 0)),
        m_nCapacity(std::exchange(other.m_nCapacity, 0)) {}
  CArray& operator=(const CArray& other) {
    if (this != &other)
      Copy(other);
    return *this;
  }
  CArray& operator=(CArray&& other) noexcept {
    std::swap(m_pData, other.m_pData);
    std::swap(m_nSize, other.m_nSize);
    std::swap(m_nCapacity, other.m_nCapacity);
    return *this;
  }
  ~CArray() { RemoveAll(); }

  [[nodiscard]] int GetSize() const noexcept { return m_nSize; }
  [[nodiscard]] int GetCount() const noexcept { return m_nSize; }
  [[nodiscard]] int GetUpperBound() const noexcept { return m_nSize - 1; }
  [[nodiscard]] bool IsEmpty() const noexcept { return m_nSize == 0; }

  /// Sets the element count; new elements are value-initialised. `growBy` is accepted for the interface's
  /// sake: the array grows by half its size.
  void SetSize(int size, [[maybe_unused]] int growBy = -1) {
    assert(size >= 0);
    if (size < m_nSize) {
      std::destroy(m_pData + size, m_pData + m_nSize);
      m_nSize = size;
      return;
    }
    Reserve(size);
    std::uninitialized_value_construct(m_pData + m_nSize, m_pData + size);
    m_nSize = size;
  }
  /// Room for `capacity` elements without changing the count.
  void Reserve(int capacity) {
    if (capacity > m_nCapacity)
      Move(capacity);
  }
  void FreeExtra() {
    if (m_nCapacity > m_nSize)
      Move(m_nSize);
  }
  void RemoveAll() noexcept {
    if (m_pData == nullptr)
      return;
    std::destroy(m_pData, m_pData + m_nSize);
    std::allocator<TYPE>().deallocate(m_pData, static_cast<std::size_t>(m_nCapacity));
    m_pData = nullptr;
    m_nSize = m_nCapacity = 0;
  }

  [[nodiscard]] const TYPE& GetAt(int index) const { return (*this)[index]; }
  [[nodiscard]] TYPE& GetAt(int index) { return (*this)[index]; }
  [[nodiscard]] TYPE& ElementAt(int index) { return (*this)[index]; }
  void SetAt(int index, ARG_TYPE element) { (*this)[index] = element; }
  /// As SetAt; an index at or past the end first grows the array to hold it.
  void SetAtGrow(int index, ARG_TYPE element) {
    TYPE copy(std::forward<ARG_TYPE>(element)); // it may be one of the array's own
    if (index >= m_nSize)
      SetSize(index + 1);
    (*this)[index] = std::move(copy);
  }
  [[nodiscard]] const TYPE& operator[](int index) const {
    assert(index >= 0 && index < m_nSize);
    return m_pData[index];
  }
  [[nodiscard]] TYPE& operator[](int index) {
    assert(index >= 0 && index < m_nSize);
    return m_pData[index];
  }
  [[nodiscard]] TYPE* GetData() noexcept { return m_pData; }
  [[nodiscard]] const TYPE* GetData() const noexcept { return m_pData; }

  /// Appends and returns the new element's index. The element may be one of the array's own.
  int Add(ARG_TYPE element) {
    TYPE copy(std::forward<ARG_TYPE>(element));
    GrowForOneMore();
    std::construct_at(m_pData + m_nSize, std::move(copy));
    return m_nSize++;
  }
  int Append(const CArray& source) {
    const int first = m_nSize;
    const int count = source.m_nSize;
    Reserve(first + count);
    std::uninitialized_copy(source.m_pData, source.m_pData + count, m_pData + first);
    m_nSize += count;
    return first;
  }
  void Copy(const CArray& source) {
    if (this == &source)
      return;
    RemoveAll();
    if (source.m_nSize > 0)
      Append(source);
  }
  void InsertAt(int index, ARG_TYPE element, int count = 1) {
    assert(index >= 0 && count >= 0);
    const TYPE copy(element);
    const int oldSize = m_nSize;
    SetSize((index > oldSize ? index : oldSize) + count);
    for (int i = oldSize - 1; i >= index; --i)
      m_pData[i + count] = std::move(m_pData[i]);
    for (int i = 0; i < count; ++i)
      m_pData[index + i] = copy;
  }
  void RemoveAt(int index, int count = 1) {
    assert(index >= 0 && count >= 0 && index + count <= m_nSize);
    for (int i = index; i + count < m_nSize; ++i)
      m_pData[i] = std::move(m_pData[i + count]);
    SetSize(m_nSize - count);
  }

  [[nodiscard]] TYPE* begin() noexcept { return m_pData; }
  [[nodiscard]] TYPE* end() noexcept { return m_pData + m_nSize; }
  [[nodiscard]] const TYPE* begin() const noexcept { return m_pData; }
  [[nodiscard]] const TYPE* end() const noexcept { return m_pData + m_nSize; }

private:
  void GrowForOneMore() {
    if (m_nSize == m_nCapacity)
      Move(m_nCapacity + m_nCapacity / 2 + 4);
  }
  void Move(int capacity) {
    TYPE* data = capacity == 0 ? nullptr : std::allocator<TYPE>().allocate(static_cast<std::size_t>(capacity));
    try {
      std::uninitialized_move(m_pData, m_pData + m_nSize, data);
    } catch (...) {
      if (data != nullptr)
        std::allocator<TYPE>().deallocate(data, static_cast<std::size_t>(capacity));
      throw;
    }
    if (m_pData != nullptr) {
      std::destroy(m_pData, m_pData + m_nSize);
      std::allocator<TYPE>().deallocate(m_pData, static_cast<std::size_t>(m_nCapacity));
    }
    m_pData = data;
    m_nCapacity = capacity;
  }

  TYPE* m_pData = nullptr;
  int m_nSize = 0;
  int m_nCapacity = 0;
};

/// An array of texts.
class CStringArray : public CArray<CString, const CString&> {};
