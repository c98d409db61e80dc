// The tables that scripts have open, by handle.
// Room: io. Used by: the dBase functions, the interpreter's end.
// May touch: tables.
// Must not: keep a handle for a table: a handle is the table's place, and closing one moves those behind it down.
// Invariant: every object is an open table; taking one out of the list closes it.
#pragma once

#include "brindle/dbf.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace brindle {

// A file with a format of its own.
class CFileFormatObj {
public:
  enum Kind : int { kNone = 0, kDbf = 1 };

  CFileFormatObj() = default;
  CFileFormatObj(const CFileFormatObj&) = delete;
  CFileFormatObj& operator=(const CFileFormatObj&) = delete;
  virtual ~CFileFormatObj() = default;
  virtual bool Close() = 0;
  [[nodiscard]] virtual bool Open(const CString& name, ReadWrite mode) = 0;
  [[nodiscard]] Kind GetKind() const noexcept { return m_nKind; }

protected:
  Kind m_nKind = kNone;
};

class CDbfFormatObj final : public CFileFormatObj {
public:
  CDbfFormatObj() { m_nKind = kDbf; }
  ~CDbfFormatObj() override { m_table.Close(); }
  bool Close() override { return m_table.Close(); }
  [[nodiscard]] bool Open(const CString& name, ReadWrite mode) override { return m_table.Open(name, mode); }
  [[nodiscard]] CDbf& Table() noexcept { return m_table; }

private:
  CDbf m_table;
};

class FileFormatTable {
public:
  // The new object's handle.
  int Add(std::unique_ptr<CFileFormatObj> object) {
    m_objects.push_back(std::move(object));
    return static_cast<int>(m_objects.size()) - 1;
  }
  // Null for a handle that is not in use.
  [[nodiscard]] CFileFormatObj* Find(int handle) const noexcept {
    return IsInUse(handle) ? m_objects[static_cast<std::size_t>(handle)].get() : nullptr;
  }
  // The table of a handle, null when there is none.
  [[nodiscard]] CDbf* FindTable(int handle) const noexcept {
    CFileFormatObj* object = Find(handle);
    return object != nullptr && object->GetKind() == CFileFormatObj::kDbf
               ? &static_cast<CDbfFormatObj*>(object)->Table()
               : nullptr;
  }
  // False for a handle that is not in use. Deliberate: every handle above it moves down by one.
  bool Close(int handle) {
    if (!IsInUse(handle))
      return false;
    m_objects.erase(m_objects.begin() + handle);
    return true;
  }
  void CloseAll() noexcept { m_objects.clear(); }
  // Room for the values of a record that is to be written.
  [[nodiscard]] CStringArray& Scratch() noexcept { return m_scratch; }

private:
  [[nodiscard]] bool IsInUse(int handle) const noexcept {
    return handle >= 0 && static_cast<std::size_t>(handle) < m_objects.size();
  }

  std::vector<std::unique_ptr<CFileFormatObj>> m_objects;
  CStringArray m_scratch;
};

} // namespace brindle
