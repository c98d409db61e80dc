// The collections that only the library itself uses: map from text to pointer, list of pointers, lock.
// Room: platform. Used by: interpreter, calls, io.
// May touch: nothing but memory and the mutex.
// Invariant: none of them owns what its pointers point at.
#pragma once

#include "brindle/collections.h"

#include <list>
#include <mutex>
#include <unordered_map>

// A map from a text (compared by code unit) to a pointer that the caller owns.
class CMapStringToPtr {
public:
  [[nodiscard]] int GetCount() const noexcept { return static_cast<int>(m_entries.size()); }
  [[nodiscard]] bool IsEmpty() const noexcept { return m_entries.empty(); }
  [[nodiscard]] bool Lookup(const CString& key, void*& value) const {
    const auto entry = m_entries.find(key);
    if (entry == m_entries.end())
      return false;
    value = entry->second;
    return true;
  }
  // The pointer of that key as a T, or null.
  template <class T> [[nodiscard]] T* Find(const CString& key) const {
    const auto entry = m_entries.find(key);
    return entry == m_entries.end() ? nullptr : static_cast<T*>(entry->second);
  }
  void SetAt(const CString& key, void* value) { m_entries[key] = value; }
  bool RemoveKey(const CString& key) { return m_entries.erase(key) != 0; }
  void RemoveAll() noexcept { m_entries.clear(); }

  [[nodiscard]] auto begin() const noexcept { return m_entries.begin(); }
  [[nodiscard]] auto end() const noexcept { return m_entries.end(); }

private:
  std::unordered_map<CString, void*> m_entries;
};

// A list of pointers that the caller owns; a position stays valid while other entries come and go.
class CPtrList {
public:
  using POSITION = std::list<void*>::iterator;

  [[nodiscard]] int GetCount() const noexcept { return static_cast<int>(m_entries.size()); }
  [[nodiscard]] bool IsEmpty() const noexcept { return m_entries.empty(); }
  void AddTail(void* value) { m_entries.push_back(value); }
  void AddHead(void* value) { m_entries.push_front(value); }
  // Removes the entry nearest to the tail that holds this pointer; false when there is none.
  bool RemoveLast(const void* value) {
    for (auto entry = m_entries.end(); entry != m_entries.begin();) {
      if (*--entry == value) {
        m_entries.erase(entry);
        return true;
      }
    }
    return false;
  }
  [[nodiscard]] bool Contains(const void* value) const {
    for (const void* entry : m_entries)
      if (entry == value)
        return true;
    return false;
  }
  void RemoveAll() noexcept { m_entries.clear(); }

  [[nodiscard]] auto begin() const noexcept { return m_entries.begin(); }
  [[nodiscard]] auto end() const noexcept { return m_entries.end(); }

private:
  std::list<void*> m_entries;
};

// A lock that its owner may take again.
class CCriticalSection {
public:
  void Lock() { m_mutex.lock(); }
  void Unlock() { m_mutex.unlock(); }

private:
  std::recursive_mutex m_mutex;
};

// Holds a critical section until it ends, when it was told to take it.
class CSingleLock {
public:
  CSingleLock(CCriticalSection& section, bool initialLock) : m_section(section), m_bLocked(false) {
    if (initialLock)
      Lock();
  }
  CSingleLock(const CSingleLock&) = delete;
  CSingleLock& operator=(const CSingleLock&) = delete;
  ~CSingleLock() {
    if (m_bLocked)
      m_section.Unlock();
  }
  void Lock() {
    m_section.Lock();
    m_bLocked = true;
  }

private:
  CCriticalSection& m_section;
  bool m_bLocked;
};
