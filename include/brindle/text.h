// CString: text of 16-bit units on every platform.
// Room: platform. Used by: everything.
// May touch: nothing but memory and the code page that 8-bit text is read with.
// Invariant: an empty text owns no memory; copies share one counted block until one of them is written to.
#pragma once

#include "brindle/export.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

namespace brindle::detail {

// Header of a shared text block; the units and a terminating zero follow it in memory.
struct TextBlock {
  std::atomic<std::int32_t> references;
  std::int32_t length;
  std::int32_t capacity;
  std::atomic<std::uint32_t> hash; // 0 = not computed yet

  [[nodiscard]] char16_t* Units() noexcept { return reinterpret_cast<char16_t*>(this + 1); }
  [[nodiscard]] const char16_t* Units() const noexcept { return reinterpret_cast<const char16_t*>(this + 1); }
};

// A process that has only one thread can count without the bus lock.
inline bool CountsWithoutLock() noexcept {
#if __has_include(<sys/single_threaded.h>)
  return __libc_single_threaded != 0;
#else
  return false;
#endif
}

inline void Retain(TextBlock* block) noexcept {
  if (block == nullptr)
    return;
  if (CountsWithoutLock())
    block->references.store(block->references.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
  else
    block->references.fetch_add(1, std::memory_order_relaxed);
}

BRINDLE_API void FreeBlock(TextBlock* block) noexcept;

inline void Release(TextBlock* block) noexcept {
  if (block == nullptr)
    return;
  if (CountsWithoutLock()) {
    const std::int32_t left = block->references.load(std::memory_order_relaxed) - 1;
    if (left == 0)
      FreeBlock(block);
    else
      block->references.store(left, std::memory_order_relaxed);
  } else if (block->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    FreeBlock(block);
  }
}

} // namespace brindle::detail

/// A text of UTF-16 units. Copies are cheap (they share storage), an empty text allocates nothing.
/// Positions and lengths count 16-bit units; a character beyond U+FFFF takes two. Positions outside the
/// text are clamped by the extracting members. Every comparison goes by code unit, without a locale.
/// Members that grow the text may throw std::bad_alloc, or std::length_error beyond 2^30 units.
/// Objects may be read from several threads; one object must not be written while another thread uses it.
class BRINDLE_API CString {
public:
  static constexpr int kMaxLength = 1 << 30;

  CString() noexcept = default;
  CString(const CString& other) noexcept : m_pBlock(other.m_pBlock) { brindle::detail::Retain(m_pBlock); }
  CString(CString&& other) noexcept : m_pBlock(other.m_pBlock) { other.m_pBlock = nullptr; }
  /// A zero-terminated text; null gives the empty text.
  CString(const unsigned short* text);
  CString(const char16_t* text);
  /// A zero-terminated 8-bit text in the ANSI code page; null gives the empty text.
  CString(const char* text);
  CString(std::u16string_view text);
  CString(const unsigned short* text, int length);
  CString(const char16_t* text, int length);
  /// `repeat` copies of one unit (none when repeat is below 1).
  explicit CString(char16_t unit, int repeat = 1);
  ~CString() { brindle::detail::Release(m_pBlock); }

  CString& operator=(const CString& other) noexcept {
    brindle::detail::Retain(other.m_pBlock);
    brindle::detail::Release(m_pBlock);
    m_pBlock = other.m_pBlock;
    return *this;
  }
  CString& operator=(CString&& other) noexcept {
    std::swap(m_pBlock, other.m_pBlock);
    return *this;
  }
  CString& operator=(const unsigned short* text) { return *this = CString(text); }
  CString& operator=(const char16_t* text) { return *this = CString(text); }
  CString& operator=(const char* text) { return *this = CString(text); }

  [[nodiscard]] static CString FromUtf8(std::string_view text);
  /// Each byte becomes the unit of its value: for ASCII text.
  [[nodiscard]] static CString FromBytes(std::string_view bytes);
  /// UTF-8; a lone surrogate becomes U+FFFD.
  [[nodiscard]] std::string ToUtf8() const;

  [[nodiscard]] int GetLength() const noexcept { return m_pBlock == nullptr ? 0 : m_pBlock->length; }
  [[nodiscard]] bool IsEmpty() const noexcept { return GetLength() == 0; }
  void Empty() noexcept { CString().Swap(*this); }
  void Swap(CString& other) noexcept { std::swap(m_pBlock, other.m_pBlock); }

  /// The unit at `index`; 0 <= index < length, checked by an assertion only.
  [[nodiscard]] char16_t GetAt(int index) const noexcept { return View()[static_cast<std::size_t>(index)]; }
  [[nodiscard]] char16_t operator[](int index) const noexcept { return GetAt(index); }
  void SetAt(int index, char16_t unit);

  /// Zero-terminated; valid until this object changes or ends.
  [[nodiscard]] const unsigned short* GetString() const noexcept {
    return reinterpret_cast<const unsigned short*>(Units());
  }
  operator const unsigned short*() const noexcept { return GetString(); }
  [[nodiscard]] const char16_t* Units() const noexcept { return m_pBlock == nullptr ? u"" : m_pBlock->Units(); }
  [[nodiscard]] std::u16string_view View() const noexcept {
    return m_pBlock == nullptr ? std::u16string_view()
                               : std::u16string_view(m_pBlock->Units(), static_cast<std::size_t>(m_pBlock->length));
  }

  /// Below 0, 0 or above 0, by code unit; a proper prefix sorts first.
  [[nodiscard]] int Compare(const CString& other) const noexcept;
  /// As Compare, both sides folded to lower case by Unicode simple case mapping.
  [[nodiscard]] int CompareNoCase(const CString& other) const noexcept;

  [[nodiscard]] CString Left(int count) const;
  [[nodiscard]] CString Right(int count) const;
  /// From `first` to the end, or at most `count` units of it. A negative first counts as 0.
  [[nodiscard]] CString Mid(int first) const;
  [[nodiscard]] CString Mid(int first, int count) const;

  /// Position of the first occurrence at or after `start`, -1 when there is none.
  [[nodiscard]] int Find(char16_t unit, int start = 0) const noexcept;
  [[nodiscard]] int Find(const CString& text, int start = 0) const noexcept;
  [[nodiscard]] int FindOneOf(const CString& units) const noexcept;
  [[nodiscard]] int ReverseFind(char16_t unit) const noexcept;

  CString& MakeLower();
  CString& MakeUpper();
  CString& MakeReverse();
  /// Removes white space, or the units given, from one end or both.
  CString& TrimLeft();
  CString& TrimRight();
  CString& Trim();
  CString& TrimLeft(const CString& units);
  CString& TrimRight(const CString& units);

  /// Replaces every occurrence, scanning left to right; returns how many there were. An empty `oldText`
  /// replaces nothing.
  int Replace(const CString& oldText, const CString& newText);
  int Replace(char16_t oldUnit, char16_t newUnit);
  int Remove(char16_t unit);
  /// Inserts before `index` (clamped to the text) / deletes; both return the new length.
  int Insert(int index, const CString& text);
  int Delete(int index, int count = 1);

  /// printf-style with %d %i %u %x %X %o %c %s %S %e %E %f %g %G %%, flags, width, precision, and the
  /// size letters h, l, ll. %s takes a zero-terminated UTF-16 text, %S and %hs an 8-bit one. Numbers never
  /// depend on the locale. `format` must outlive the call.
  void Format(const unsigned short* format, ...);
  void Format(const char16_t* format, ...);
  void Format(const char* format, ...);

  /// A writable buffer of at least `minLength` units and a zero, holding the text. Valid until
  /// ReleaseBuffer, which takes the length from the first zero when `newLength` is -1.
  [[nodiscard]] unsigned short* GetBuffer(int minLength);
  [[nodiscard]] unsigned short* GetBufferSetLength(int length);
  void ReleaseBuffer(int newLength = -1);

  CString& Append(std::u16string_view text);
  CString& operator+=(const CString& text) { return IsEmpty() ? *this = text : Append(text.View()); }
  CString& operator+=(char16_t unit) { return Append(std::u16string_view(&unit, 1)); }
  CString& operator+=(const char16_t* text) { return Append(text); }

  /// Equal texts have equal hashes, in every process.
  [[nodiscard]] std::uint32_t Hash() const noexcept;
  static std::uint32_t HashOf(std::u16string_view text) noexcept;

  friend bool operator==(const CString& a, const CString& b) noexcept {
    return a.m_pBlock == b.m_pBlock || a.View() == b.View();
  }
  friend bool operator!=(const CString& a, const CString& b) noexcept { return !(a == b); }
  friend bool operator<(const CString& a, const CString& b) noexcept { return a.View() < b.View(); }
  friend bool operator>(const CString& a, const CString& b) noexcept { return b < a; }
  friend bool operator<=(const CString& a, const CString& b) noexcept { return !(b < a); }
  friend bool operator>=(const CString& a, const CString& b) noexcept { return !(a < b); }
  friend bool operator==(const CString& a, const char16_t* b) noexcept { return a.View() == b; }
  friend bool operator!=(const CString& a, const char16_t* b) noexcept { return a.View() != b; }
  friend CString operator+(const CString& a, const CString& b) { return Join(a.View(), b.View()); }
  friend CString operator+(const CString& a, const char16_t* b) { return Join(a.View(), b); }
  friend CString operator+(const char16_t* a, const CString& b) { return Join(a, b.View()); }
  friend CString operator+(const CString& a, char16_t b) { return Join(a.View(), std::u16string_view(&b, 1)); }

private:
  static CString Join(std::u16string_view a, std::u16string_view b);
  // Makes the block this object's own, with room for `capacity` units, keeping the text.
  void Own(int capacity);

  brindle::detail::TextBlock* m_pBlock = nullptr;
};

template <> struct std::hash<CString> {
  std::size_t operator()(const CString& text) const noexcept { return text.Hash(); }
};
