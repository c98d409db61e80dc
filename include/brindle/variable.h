// CVarBase and CBasicVariable: the values that scripts compute with.
// Room: values. Used by: everything above, and hosts.
// May touch: memory, object reference counts; an interpreter only to throw a change event.
// Must not: convert anything outside these getters, report errors.
// Invariant: a variable holds at least one item; an item of a boxed kind never leaves this class.
#pragma once

#include "brindle/automation.h"
#include "brindle/collections.h"
#include "brindle/text.h"

#include <cstdint>
#include <memory>

class CBrindle;
namespace brindle {
struct RawValues;
}

/// The kind of a value as the language sees it: a boolean is a number.
enum BASICVARTYPE : std::int32_t {
  BVT_NONE = 0,   ///< not set
  BVT_NUMBER = 1, ///< integer, double or boolean
  BVT_STRING = 2, ///< text
  BVT_OBJECT = 3  ///< Automation object
};

/// One dynamically typed scalar: not set, 32-bit integer, double, boolean, text or object.
/// An object is held with one reference, released when the value is overwritten or ends.
class BRINDLE_API CVarBase {
public:
  CVarBase() noexcept : m_kind(VT_EMPTY) {}
  CVarBase(const unsigned short* text) : CVarBase(CString(text)) {}
  CVarBase(const char16_t* text) : CVarBase(CString(text)) {}
  CVarBase(const char* text) : CVarBase(CString(text)) {}
  CVarBase(const CString& text) noexcept : m_kind(VT_BSTR), m_text(text) {}
  CVarBase(const double& number) noexcept : m_kind(VT_R8), m_double(number) {}
  /// The low 32 bits are kept.
  CVarBase(long number) noexcept : m_kind(VT_I4), m_integer(static_cast<std::int32_t>(number)) {}
  CVarBase(bool truth) noexcept : m_kind(VT_BOOL), m_integer(truth ? 0xFFFF : 0) {}
  /// Adds a reference to an object that is not null.
  CVarBase(IDispatch* const object) : m_kind(VT_EMPTY) { SetValue(object); }
  /// Copies the value, not the text buffer.
  CVarBase(const CVarBase& other) : m_kind(VT_EMPTY) { CopyValue(other); }
  CVarBase(CVarBase&& other) noexcept : m_kind(VT_EMPTY) { Take(other); }
  ~CVarBase() {
    if (m_kind > VT_R8) // numbers, and nothing, have no end
      Clear();
  }

  void SetValue(const unsigned short* text) { SetValue(CString(text)); }
  void SetValue(const char16_t* text) { SetValue(CString(text)); }
  void SetValue(const char* text) { SetValue(CString(text)); }
  void SetValue(const CString& text);
  void SetValue(const double& number);
  void SetValue(long number);
  void SetValue(bool truth);
  /// Adds a reference to an object that is not null; null is stored as a null object.
  void SetValue(IDispatch* const object);
  /// Copies the value and the text buffer.
  void SetValue(const CVarBase& other);
  /// Takes a value that came from outside. False, and unchanged, for arrays, references and the kinds that
  /// the language has no value for (currency, date, error, 8- and 64-bit integers, ...).
  [[nodiscard]] bool SetValue(const tagVARIANT& value);

  CVarBase& operator=(const double& number) { return SetValue(number), *this; }
  CVarBase& operator=(const CString& text) { return SetValue(text), *this; }
  CVarBase& operator=(const unsigned short* text) { return SetValue(text), *this; }
  CVarBase& operator=(const char16_t* text) { return SetValue(text), *this; }
  CVarBase& operator=(const char* text) { return SetValue(text), *this; }
  CVarBase& operator=(long number) { return SetValue(number), *this; }
  CVarBase& operator=(bool truth) { return SetValue(truth), *this; }
  CVarBase& operator=(IDispatch* const object) { return SetValue(object), *this; }
  CVarBase& operator=(const CVarBase& other) { return SetValue(other), *this; }
  CVarBase& operator=(CVarBase&& other) noexcept {
    if (this != &other) {
      const CVarBase old(std::move(*this));
      Take(other);
    }
    return *this;
  }

  [[nodiscard]] BASICVARTYPE GetType() const noexcept;
  [[nodiscard]] bool IsSet() const noexcept { return GetType() != BVT_NONE; }
  /// Integers as "%i", doubles as "%f", booleans as "True" or "False", not set as the empty text.
  [[nodiscard]] CString GetStringValue() const;
  /// Text reads by its longest leading number, 0 when it has none.
  [[nodiscard]] double GetDoubleValue() const noexcept;
  /// -2147483648 .. 2147483647: doubles are truncated toward zero and saturated, not-a-number gives 0.
  [[nodiscard]] long GetLongValue() const noexcept;
  /// Borrowed: no reference is added. Null when no object is held.
  [[nodiscard]] IDispatch* GetObjectValue() const noexcept;

  /// Adds 1 to an integer (wrapping) or a double. False, and unchanged, for every other kind.
  bool Increment() noexcept;

  /// A writable buffer of at least `minLength` units that starts with the value's text; what a caller
  /// leaves in it, up to the first zero, becomes the value with ReleaseStringBuffer.
  [[nodiscard]] unsigned short* GetStringBuffer(int minLength);
  void ReleaseStringBuffer();

protected:
  // Kinds that never reach a host: a variable's slot in the store that is undefined, an object, a slot whose
  // variable stands elsewhere, an item with a text buffer beside its value. The last three are the highest:
  // what is below them can be overwritten without anybody noticing.
  enum : std::uint16_t { kSlotUndefined = VT_NULL, kObject = 0xFFEF, kSlotBoxed = 0xFFF0, kBuffered = 0xFFF1 };
  struct Buffered;

  void Clear() noexcept;
  void Take(CVarBase& other) noexcept;
  void Replace(CVarBase&& fresh) noexcept;
  void CopyValue(const CVarBase& other);
  [[nodiscard]] const CVarBase& Value() const noexcept;
  Buffered& MakeBuffered();

  std::uint16_t m_kind;
  union {
    double m_double;
    std::int32_t m_integer; // integers, and booleans as 0 or 0xFFFF
    IDispatch* m_pObject;
    Buffered* m_pBuffered;
    void* m_pBox; // used by the variable store only
    CString m_text;
  };

  friend class CBasicVariable;
  friend struct brindle::RawValues;
};

/// A script variable: one or more items, one of them current, and an optional change event.
/// Members without an index read and write the current item (0 after construction). Every member that
/// changes the value ends by throwing the change event; the event's handlers run before it returns.
/// A value belongs to the thread of its interpreter.
class BRINDLE_API CBasicVariable {
public:
  CBasicVariable() noexcept = default;
  CBasicVariable(const CString& text) noexcept : m_items(CVarBase(text)) {}
  CBasicVariable(const unsigned short* text) : m_items(CVarBase(text)) {}
  CBasicVariable(const char16_t* text) : m_items(CVarBase(text)) {}
  CBasicVariable(const char* text) : m_items(CVarBase(text)) {}
  CBasicVariable(double number) noexcept : m_items(CVarBase(number)) {}
  CBasicVariable(int number) noexcept : m_items(CVarBase(static_cast<long>(number))) {}
  /// Stored as the 32-bit integer of the low 32 bits.
  CBasicVariable(unsigned long number) noexcept : m_items(CVarBase(static_cast<long>(number))) {}
  CBasicVariable(bool truth) noexcept : m_items(CVarBase(truth)) {}
  CBasicVariable(const CBasicVariable& other);
  CBasicVariable(CBasicVariable&& other) noexcept;
  ~CBasicVariable();

  CBasicVariable& operator=(const CBasicVariable& other) { return Set(other), *this; }
  CBasicVariable& operator=(const double& number) { return SetValue(number), *this; }
  CBasicVariable& operator=(const CString& text) { return SetValue(text), *this; }
  CBasicVariable& operator=(const unsigned short* text) { return SetValue(text), *this; }
  CBasicVariable& operator=(const char16_t* text) { return SetValue(text), *this; }
  CBasicVariable& operator=(const char* text) { return SetValue(text), *this; }
  CBasicVariable& operator=(int number) { return SetValue(number), *this; }
  CBasicVariable& operator=(unsigned long number) { return SetValue(static_cast<int>(number)), *this; }
  CBasicVariable& operator=(bool truth) { return SetValue(truth), *this; }
  CBasicVariable& operator=(IDispatch* const object) { return SetValue(object), *this; }
  /// A character code, zero-extended / an 8-bit value, sign-extended.
  CBasicVariable& operator=(const unsigned short& unit) { return SetValue(static_cast<int>(unit)), *this; }
  CBasicVariable& operator=(const char& byte) {
    return SetValue(static_cast<int>(static_cast<signed char>(byte))), *this;
  }
  CBasicVariable& operator=(const float& number) { return SetValue(static_cast<double>(number)), *this; }
  CBasicVariable& operator++() { return Increment(), *this; }

  [[nodiscard]] CString GetStringValue() const { return Current().GetStringValue(); }
  [[nodiscard]] double GetNumberValue() const noexcept { return Current().GetDoubleValue(); }
  [[nodiscard]] IDispatch* GetObjectValue() const noexcept { return Current().GetObjectValue(); }
  [[nodiscard]] BASICVARTYPE GetType() const noexcept { return Current().GetType(); }
  /// The current item itself.
  [[nodiscard]] const CVarBase& GetItem() const noexcept { return Current(); }

  void SetValue(const CString& text);
  void SetValue(const unsigned short* text) { SetValue(CString(text)); }
  void SetValue(const char16_t* text) { SetValue(CString(text)); }
  void SetValue(const char* text) { SetValue(CString(text)); }
  void SetValue(const double& number);
  void SetValue(const int& number);
  void SetValue(bool truth);
  void SetValue(IDispatch* const object);
  /// Copies the source's current item into this variable's current item.
  void SetValue(const CBasicVariable& source);
  /// False, unchanged and without an event for a kind that the language has no value for.
  bool SetValue(const tagVARIANT& value);
  /// False, unchanged and without an event unless the current item is an integer or a double.
  bool Increment();

  /// Write item `index`; the current index stays. The caller checks the index: one outside the items is
  /// ignored. The object form stores the pointer's low 32 bits as an integer and adds no reference.
  void SetValue(const CString& text, int index);
  void SetValue(const unsigned short* text, int index) { SetValue(CString(text), index); }
  void SetValue(const double& number, int index);
  void SetValue(const int& number, int index);
  void SetValue(IDispatch* const object, int index);

  [[nodiscard]] int GetNumItems() const noexcept { return m_items.Count(); }
  /// True for two items and more: an array of one item is a scalar.
  [[nodiscard]] bool IsArray() const noexcept { return m_items.Count() > 1; }
  [[nodiscard]] int GetCurIndex() const noexcept { return m_items.m_nCurrent; }
  /// Ignored unless 0 <= index < GetNumItems().
  void SetCurIndex(int index) noexcept {
    if (index >= 0 && index < m_items.Count())
      m_items.m_nCurrent = index;
  }

  /// Appends an item that is not set and returns its index.
  int AddItem();
  /// Append a value and return its index; the first value of a variable that is not set takes item 0.
  int AddItem(double number) { return AppendItem(CVarBase(number)); }
  int AddItem(int number) { return AppendItem(CVarBase(static_cast<long>(number))); }
  int AddItem(unsigned long number) { return AppendItem(CVarBase(static_cast<long>(number))); }
  int AddItem(bool truth) { return AppendItem(CVarBase(truth)); }
  int AddItem(const CString& text) { return AppendItem(CVarBase(text)); }
  int AddItem(const unsigned short* text) { return AppendItem(CVarBase(text)); }
  int AddItem(const char16_t* text) { return AppendItem(CVarBase(text)); }
  int AddItem(const char* text) { return AppendItem(CVarBase(text)); }
  int AddItem(IDispatch* object) { return AppendItem(CVarBase(object)); }
  /// Takes the source's item at this variable's own current index (not set when the source has none there).
  int AddItem(const CBasicVariable& source);
  /// Appends items that are not set until there are `size`; never shrinks.
  void SetArraySize(int size);
  /// Makes it exactly `size` items when 1 <= size < 16000; the current index becomes 0 in any case.
  void Redim(int size);

  /// Copies every item, the current index and the user data; keeps this variable's own change event.
  void Set(const CBasicVariable& source);
  /// Makes it this one item.
  void Set(const CVarBase& item);

  [[nodiscard]] unsigned short* GetStringBuffer(int minLength) { return Current().GetStringBuffer(minLength); }
  void ReleaseStringBuffer();

  /// Always the empty text: a field's name is only ever asked for through SetCurField.
  [[nodiscard]] CString GetFieldName() const { return CString(); }
  /// Names the current item; copies of the variable do not carry the names.
  void SetFieldName(const CString& name);
  /// Makes the first item of that name (letter case aside) current; false when there is none.
  [[nodiscard]] bool SetCurField(const CString& name);

  /// From now on every change throws the event at that interpreter, which must outlive the binding.
  void SetChangeEvent(CBrindle* interpreter, const CString& event);
  void RemoveChangeEvent() noexcept;

  /// Whether any item holds an object.
  [[nodiscard]] bool HoldsObject() const noexcept;
  /// Whether it is more than one plain item: an array, or bound to an event, or with user data or names.
  [[nodiscard]] bool HasMoreThanOneItem() const noexcept {
    return m_items.Count() != 1 || m_pExtra != nullptr || m_userData != 0;
  }

  /// Free for the host; copied with the variable.
  std::uint64_t m_userData = 0;

private:
  friend struct brindle::RawValues;

  // One item in place, more on the heap.
  class ItemList {
  public:
    friend struct brindle::RawValues;
    ItemList() noexcept : m_nCapacity(1), m_isWatched(0), m_first() {}
    explicit ItemList(CVarBase&& item) noexcept : m_nCapacity(1), m_isWatched(0), m_first(std::move(item)) {}
    ItemList(ItemList&& other) noexcept;
    ItemList& operator=(ItemList&& other) noexcept;
    ~ItemList();
    [[nodiscard]] int Count() const noexcept { return m_nCount; }
    [[nodiscard]] CVarBase& At(int index) noexcept { return Data()[index]; }
    [[nodiscard]] const CVarBase& At(int index) const noexcept { return Data()[index]; }
    void Resize(int count);
    void Add(CVarBase&& item);
    void Assign(const ItemList& other);
    // From now on no item is to be written without its variable knowing.
    void Watch() noexcept {
      m_isWatched = 1;
      NoteDirect();
    }

    int m_nCurrent = 0;

  private:
    [[nodiscard]] CVarBase* Data() noexcept { return m_nCapacity == 1 ? &m_first : m_pHeap; }
    [[nodiscard]] const CVarBase* Data() const noexcept { return m_nCapacity == 1 ? &m_first : m_pHeap; }
    void Reserve(int capacity);
    void Destroy() noexcept;
    void NoteDirect() noexcept {
      m_nDirect = m_nCapacity == 1 || m_isWatched != 0 ? 0U : static_cast<unsigned>(m_nCount);
    }

    unsigned m_nDirect = 0; // how many of the first items can be written in place: none, or all
    int m_nCount = 1;
    unsigned m_nCapacity : 31;
    unsigned m_isWatched : 1;
    union {
      CVarBase m_first;
      CVarBase* m_pHeap;
    };
  };
  // What few variables have.
  struct Extra {
    CBrindle* pEventInterpreter = nullptr;
    CString strEventName;
    CStringArray fieldNames;
  };

  [[nodiscard]] CVarBase& Current() noexcept { return m_items.At(m_items.m_nCurrent); }
  [[nodiscard]] const CVarBase& Current() const noexcept { return m_items.At(m_items.m_nCurrent); }
  [[nodiscard]] bool IsSet() const noexcept { return m_items.Count() > 1 || m_items.At(0).IsSet(); }
  [[nodiscard]] bool HasItem(int index) const noexcept { return index >= 0 && index < m_items.Count(); }
  int AppendItem(CVarBase&& item);
  Extra& MakeExtra();
  void DropFieldNames(int from);
  void OnChange() {
    if (m_pExtra != nullptr && m_pExtra->pEventInterpreter != nullptr)
      ThrowChange();
  }
  void ThrowChange();

  ItemList m_items;
  std::unique_ptr<Extra> m_pExtra;
};
