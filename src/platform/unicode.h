// Letters, digits, blanks and case of UTF-16 text, and the steps between UTF-8, UTF-16 and code points.
// Room: platform. Used by: values (text), interpreter (words), the code pages and path look-up of this room.
// May touch: nothing but its own constant tables.
// Must not touch: the process locale; a script must read the same on every machine.
// Invariant: mapping the case of a text never changes its length in 16-bit units.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace brindle {

namespace unicode_detail {
char16_t LowerFromTable(char16_t unit) noexcept;
char16_t UpperFromTable(char16_t unit) noexcept;
bool IsLetterFromTable(char16_t unit) noexcept;
bool IsDigitFromTable(char16_t unit) noexcept;
bool IsSpaceFromTable(char16_t unit) noexcept;
} // namespace unicode_detail

// Stands for whatever cannot be represented.
inline constexpr char32_t ReplacementCharacter = 0xFFFD;

constexpr bool IsHighSurrogate(char32_t unit) noexcept {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t unit) noexcept {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}
constexpr bool IsSurrogate(char32_t unit) noexcept {
  return unit >= 0xD800 && unit <= 0xDFFF;
}

// Simple case mapping of one unit; a surrogate comes back unchanged.
inline char16_t ToLowerUnit(char16_t unit) noexcept {
  if (unit < 0x80) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
  }
  return unicode_detail::LowerFromTable(unit);
}

inline char16_t ToUpperUnit(char16_t unit) noexcept {
  if (unit < 0x80) {
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 0x20) : unit;
  }
  return unicode_detail::UpperFromTable(unit);
}

// In place; a surrogate pair is mapped as the one character that it is.
void ToLower(std::span<char16_t> text) noexcept;
void ToUpper(std::span<char16_t> text) noexcept;

// Categories Lu, Ll, Lt, Lm and Lo.
inline bool IsLetter(char16_t unit) noexcept {
  if (unit < 0x80) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
  }
  return unicode_detail::IsLetterFromTable(unit);
}

// Category Nd: the digits of every script, not only "0" to "9".
inline bool IsDecimalDigit(char16_t unit) noexcept {
  if (unit < 0x80) {
    return unit >= u'0' && unit <= u'9';
  }
  return unicode_detail::IsDigitFromTable(unit);
}

// The White_Space property: blanks and line ends, the no-break kinds included.
inline bool IsSpace(char16_t unit) noexcept {
  if (unit < 0x80) {
    return unit == u' ' || (unit >= 0x09 && unit <= 0x0D);
  }
  return unicode_detail::IsSpaceFromTable(unit);
}

// The code point at `index`, which must be inside the text; `index` moves behind it. A lone surrogate is
// given as itself.
char32_t ReadUtf16(std::u16string_view text, std::size_t& index) noexcept;

// Appends one or two units. A surrogate code point is appended as the unit it is.
void AppendUtf16(char32_t codePoint, std::u16string& text);

// Length in bytes of the well-formed UTF-8 character that `bytes` starts with, or 0 when there is none
// (empty, overlong, a surrogate, beyond U+10FFFF or cut short); `codePoint` is set only on success.
std::size_t ReadUtf8(std::string_view bytes, char32_t& codePoint) noexcept;

// Appends one to four bytes; a surrogate becomes the replacement character.
void AppendUtf8(char32_t codePoint, std::string& bytes);

} // namespace brindle
