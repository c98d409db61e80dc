#include "brindle/text.h"

#include "platform/code_page.h"
#include "platform/number_text.h"
#include "platform/text_blocks.h"
#include "platform/unicode.h"

#include <algorithm>
#include <cassert>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>

using brindle::detail::TextBlock;

namespace brindle::detail {

namespace {

TextBlock* BlockOf(const void* units, std::size_t length) {
  if (length == 0)
    return nullptr;
  if (length > static_cast<std::size_t>(CString::kMaxLength))
    throw std::length_error("text too long");
  TextBlock* block = MakeBlock(static_cast<int>(length));
  std::memcpy(block->Units(), units, length * sizeof(char16_t));
  block->Units()[length] = 0;
  block->length = static_cast<int>(length);
  return block;
}

std::size_t LengthOf(const unsigned short* text) {
  std::size_t length = 0;
  while (text != nullptr && text[length] != 0)
    ++length;
  return length;
}

} // namespace

} // namespace brindle::detail

using brindle::detail::BlockOf;
using brindle::detail::LengthOf;
using brindle::detail::MakeBlock;

CString::CString(const unsigned short* text) : m_pBlock(BlockOf(text, LengthOf(text))) {}

CString::CString(const char16_t* text) : CString(text == nullptr ? std::u16string_view() : std::u16string_view(text)) {}

CString::CString(const char* text) {
  if (text != nullptr)
    *this = CString(brindle::CodePage::Ansi().Decode(text));
}

CString::CString(std::u16string_view text) : m_pBlock(BlockOf(text.data(), text.size())) {}

CString::CString(const unsigned short* text, int length)
    : m_pBlock(BlockOf(text, length > 0 ? static_cast<std::size_t>(length) : 0)) {}

CString::CString(const char16_t* text, int length)
    : m_pBlock(BlockOf(text, length > 0 ? static_cast<std::size_t>(length) : 0)) {}

CString::CString(char16_t unit, int repeat) {
  if (repeat < 1)
    return;
  m_pBlock = MakeBlock(repeat);
  std::fill_n(m_pBlock->Units(), repeat, unit);
  m_pBlock->Units()[repeat] = 0;
  m_pBlock->length = repeat;
}

CString CString::FromUtf8(std::string_view text) {
  return CString(brindle::CodePage::Utf8().Decode(text));
}

namespace {

// Eight at a time, the last eight once more where they are not a full step: most texts are short.
void Widen(std::string_view bytes, char16_t* units) {
  constexpr std::size_t kStep = 8;
  using Bytes = unsigned char __attribute__((vector_size(kStep)));
  using Units = unsigned short __attribute__((vector_size(kStep * sizeof(char16_t))));
  const auto widenAt = [&](std::size_t at) {
    Bytes narrow;
    std::memcpy(&narrow, bytes.data() + at, sizeof narrow);
    const Units wide = __builtin_convertvector(narrow, Units);
    std::memcpy(units + at, &wide, sizeof wide);
  };
  if (bytes.size() < kStep) {
    for (std::size_t at = 0; at < bytes.size(); ++at)
      units[at] = static_cast<unsigned char>(bytes[at]);
    return;
  }
  for (std::size_t at = 0; at + kStep < bytes.size(); at += kStep)
    widenAt(at);
  widenAt(bytes.size() - kStep);
}

} // namespace

CString CString::FromBytes(std::string_view bytes) {
  CString text;
  if (bytes.empty())
    return text;
  if (bytes.size() > static_cast<std::size_t>(kMaxLength))
    throw std::length_error("text too long");
  text.m_pBlock = MakeBlock(static_cast<int>(bytes.size()));
  char16_t* const units = text.m_pBlock->Units();
  Widen(bytes, units);
  units[bytes.size()] = 0;
  text.m_pBlock->length = static_cast<int>(bytes.size());
  return text;
}

std::string CString::ToUtf8() const {
  return brindle::CodePage::Utf8().Encode(View());
}

CString CString::Join(std::u16string_view a, std::u16string_view b) {
  CString joined;
  if (a.empty() && b.empty())
    return joined;
  if (a.size() + b.size() > static_cast<std::size_t>(kMaxLength))
    throw std::length_error("text too long");
  joined.m_pBlock = MakeBlock(static_cast<int>(a.size() + b.size()));
  char16_t* units = joined.m_pBlock->Units();
  std::copy(a.begin(), a.end(), units);
  std::copy(b.begin(), b.end(), units + a.size());
  units[a.size() + b.size()] = 0;
  joined.m_pBlock->length = static_cast<int>(a.size() + b.size());
  return joined;
}

void CString::Own(int capacity) {
  if (m_pBlock != nullptr && m_pBlock->capacity >= capacity &&
      m_pBlock->references.load(std::memory_order_acquire) == 1) {
    m_pBlock->hash.store(0, std::memory_order_relaxed);
    return;
  }
  const int length = GetLength();
  TextBlock* block = MakeBlock(std::max(capacity, length));
  std::copy_n(Units(), length, block->Units());
  block->Units()[length] = 0;
  block->length = length;
  brindle::detail::Release(m_pBlock);
  m_pBlock = block;
}

CString& CString::Append(std::u16string_view text) {
  if (text.empty())
    return *this;
  const std::size_t length = static_cast<std::size_t>(GetLength());
  const std::size_t total = length + text.size();
  if (total > static_cast<std::size_t>(kMaxLength))
    throw std::length_error("text too long");
  const bool inPlace = m_pBlock != nullptr && m_pBlock->capacity >= static_cast<int>(total) &&
                       m_pBlock->references.load(std::memory_order_acquire) == 1;
  // The text may be a part of this one: a second reference keeps the old block until it has been copied.
  const CString keep = inPlace ? CString() : *this;
  // Growing by half keeps repeated appending linear.
  const std::size_t room =
      inPlace ? total : std::min(total + (length > 0 ? total / 2 : 0), static_cast<std::size_t>(kMaxLength));
  Own(static_cast<int>(room));
  std::copy(text.begin(), text.end(), m_pBlock->Units() + length);
  m_pBlock->Units()[total] = 0;
  m_pBlock->length = static_cast<int>(total);
  return *this;
}

void CString::SetAt(int index, char16_t unit) {
  assert(index >= 0 && index < GetLength());
  Own(GetLength());
  m_pBlock->Units()[index] = unit;
}

int CString::Compare(const CString& other) const noexcept {
  return View().compare(other.View());
}

int CString::CompareNoCase(const CString& other) const noexcept {
  const std::u16string_view a = View();
  const std::u16string_view b = other.View();
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const char16_t left = brindle::ToLowerUnit(a[i]);
    const char16_t right = brindle::ToLowerUnit(b[i]);
    if (left != right)
      return left < right ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

CString CString::Left(int count) const {
  return Mid(0, count);
}

CString CString::Right(int count) const {
  const int length = GetLength();
  return count >= length ? *this : Mid(length - std::max(count, 0));
}

CString CString::Mid(int first) const {
  return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const {
  const int length = GetLength();
  first = std::clamp(first, 0, length);
  count = std::clamp(count, 0, length - first);
  if (count == length)
    return *this;
  return CString(View().substr(static_cast<std::size_t>(first), static_cast<std::size_t>(count)));
}

namespace {

int FoundAt(std::size_t position) {
  return position == std::u16string_view::npos ? -1 : static_cast<int>(position);
}

} // namespace

int CString::Find(char16_t unit, int start) const noexcept {
  return FoundAt(View().find(unit, static_cast<std::size_t>(std::max(start, 0))));
}

int CString::Find(const CString& text, int start) const noexcept {
  return FoundAt(View().find(text.View(), static_cast<std::size_t>(std::max(start, 0))));
}

int CString::FindOneOf(const CString& units) const noexcept {
  return FoundAt(View().find_first_of(units.View()));
}

int CString::ReverseFind(char16_t unit) const noexcept {
  return FoundAt(View().rfind(unit));
}

CString& CString::MakeLower() {
  const std::u16string_view text = View();
  // Most names are in lower case already: then the shared block stays shared.
  if (std::none_of(text.begin(), text.end(), [](char16_t unit) {
        return brindle::ToLowerUnit(unit) != unit || (unit >= 0xD800 && unit <= 0xDFFF);
      }))
    return *this;
  Own(GetLength());
  brindle::ToLower({m_pBlock->Units(), static_cast<std::size_t>(m_pBlock->length)});
  return *this;
}

CString& CString::MakeUpper() {
  if (IsEmpty())
    return *this;
  Own(GetLength());
  brindle::ToUpper({m_pBlock->Units(), static_cast<std::size_t>(m_pBlock->length)});
  return *this;
}

CString& CString::MakeReverse() {
  if (IsEmpty())
    return *this;
  Own(GetLength());
  std::reverse(m_pBlock->Units(), m_pBlock->Units() + m_pBlock->length);
  return *this;
}

CString& CString::TrimLeft() {
  const std::u16string_view text = View();
  const auto first = std::find_if_not(text.begin(), text.end(), brindle::IsSpace);
  return *this = Mid(static_cast<int>(first - text.begin()));
}

CString& CString::TrimRight() {
  int length = GetLength();
  while (length > 0 && brindle::IsSpace(GetAt(length - 1)))
    --length;
  return *this = Left(length);
}

CString& CString::Trim() {
  return TrimRight().TrimLeft();
}

CString& CString::TrimLeft(const CString& units) {
  const std::size_t first = View().find_first_not_of(units.View());
  return *this = first == std::u16string_view::npos ? CString() : Mid(static_cast<int>(first));
}

CString& CString::TrimRight(const CString& units) {
  return *this = Left(FoundAt(View().find_last_not_of(units.View())) + 1);
}

int CString::Replace(const CString& oldText, const CString& newText) {
  if (oldText.IsEmpty())
    return 0;
  int count = 0;
  CString result;
  int from = 0;
  for (int found = Find(oldText); found >= 0; found = Find(oldText, from)) {
    result.Append(View().substr(static_cast<std::size_t>(from), static_cast<std::size_t>(found - from)));
    result.Append(newText.View());
    from = found + oldText.GetLength();
    ++count;
  }
  if (count > 0) {
    result.Append(View().substr(static_cast<std::size_t>(from)));
    Swap(result);
  }
  return count;
}

int CString::Replace(char16_t oldUnit, char16_t newUnit) {
  return Replace(CString(oldUnit, 1), CString(newUnit, 1));
}

int CString::Remove(char16_t unit) {
  return Replace(CString(unit, 1), CString());
}

int CString::Insert(int index, const CString& text) {
  index = std::clamp(index, 0, GetLength());
  CString result = Left(index);
  result.Append(text.View());
  result.Append(View().substr(static_cast<std::size_t>(index)));
  Swap(result);
  return GetLength();
}

int CString::Delete(int index, int count) {
  index = std::max(index, 0);
  if (index >= GetLength() || count <= 0)
    return GetLength();
  CString result = Left(index);
  if (count < GetLength() - index)
    result.Append(View().substr(static_cast<std::size_t>(index) + static_cast<std::size_t>(count)));
  Swap(result);
  return GetLength();
}

unsigned short* CString::GetBuffer(int minLength) {
  Own(std::max(minLength, GetLength()));
  return reinterpret_cast<unsigned short*>(m_pBlock->Units());
}

unsigned short* CString::GetBufferSetLength(int length) {
  unsigned short* buffer = GetBuffer(length);
  ReleaseBuffer(length);
  return buffer;
}

void CString::ReleaseBuffer(int newLength) {
  if (m_pBlock == nullptr)
    return;
  Own(m_pBlock->capacity);
  if (newLength < 0) {
    newLength = 0;
    while (newLength < m_pBlock->capacity && m_pBlock->Units()[newLength] != 0)
      ++newLength;
  }
  m_pBlock->length = std::min(newLength, m_pBlock->capacity);
  m_pBlock->Units()[m_pBlock->length] = 0;
}

std::uint32_t CString::HashOf(std::u16string_view text) noexcept {
  std::uint32_t hash = 0x811C9DC5U;
  for (const char16_t unit : text)
    hash = (hash ^ unit) * 0x01000193U;
  hash ^= hash >> 15;
  return hash == 0 ? 1 : hash; // 0 marks "not computed"
}

std::uint32_t CString::Hash() const noexcept {
  if (m_pBlock == nullptr)
    return HashOf({});
  std::uint32_t hash = m_pBlock->hash.load(std::memory_order_relaxed);
  if (hash == 0) {
    hash = HashOf(View());
    m_pBlock->hash.store(hash, std::memory_order_relaxed);
  }
  return hash;
}

namespace {

// The size letters "h" and "hh" keep the low 16 or 8 bits.
std::int64_t Shortened(const brindle::FormatDirective& directive, std::int64_t value, bool isSigned) {
  if (directive.shorts == 0 || directive.longs > 0)
    return value;
  if (directive.shorts == 1)
    return isSigned ? static_cast<std::int16_t>(value) : static_cast<std::uint16_t>(value);
  return isSigned ? static_cast<std::int8_t>(value) : static_cast<std::uint8_t>(value);
}

// Takes the arguments of one directive from the list and appends its text.
void AppendDirective(CString& out, brindle::FormatDirective directive, std::va_list& arguments) {
  if (directive.widthFromArgument) {
    directive.width = va_arg(arguments, int);
    if (directive.width < 0) {
      directive.leftAligned = true;
      directive.width = -directive.width;
    }
  }
  if (directive.precisionFromArgument) {
    const int precision = va_arg(arguments, int);
    if (precision >= 0)
      directive.precision = precision;
  }
  switch (directive.conversion) {
  case u'd':
  case u'i':
    brindle::AppendInteger(out, directive,
                           Shortened(directive,
                                     directive.longs >= 2   ? va_arg(arguments, long long)
                                     : directive.longs == 1 ? va_arg(arguments, long)
                                                            : va_arg(arguments, int),
                                     true));
    break;
  case u'u':
  case u'o':
  case u'x':
  case u'X':
    brindle::AppendInteger(
        out, directive,
        Shortened(directive,
                  static_cast<std::int64_t>(directive.longs >= 2   ? va_arg(arguments, unsigned long long)
                                            : directive.longs == 1 ? va_arg(arguments, unsigned long)
                                                                   : va_arg(arguments, unsigned)),
                  false));
    break;
  case u'e':
  case u'E':
  case u'f':
  case u'F':
  case u'g':
  case u'G': brindle::AppendFloating(out, directive, va_arg(arguments, double)); break;
  case u'c': {
    const char16_t unit = static_cast<char16_t>(va_arg(arguments, int));
    brindle::AppendText(out, directive, std::u16string_view(&unit, 1));
    break;
  }
  case u's':
    if (directive.shorts == 0) {
      brindle::AppendText(out, directive, CString(va_arg(arguments, const unsigned short*)).View());
      break;
    }
    [[fallthrough]];
  case u'S': brindle::AppendText(out, directive, CString(va_arg(arguments, const char*)).View()); break;
  case u'%': out += u'%'; break;
  default: break; // an unknown letter prints nothing and takes nothing
  }
}

CString FormatArguments(std::u16string_view format, std::va_list& arguments) {
  CString out;
  std::size_t position = 0;
  while (position < format.size()) {
    const std::size_t percent = std::min(format.find(u'%', position), format.size());
    out.Append(format.substr(position, percent - position));
    position = percent;
    if (position < format.size()) {
      ++position;
      AppendDirective(out, brindle::ReadDirective(format, position), arguments);
    }
  }
  return out;
}

} // namespace

void CString::Format(const unsigned short* format, ...) {
  const CString text(format);
  std::va_list arguments;
  va_start(arguments, format);
  *this = FormatArguments(text.View(), arguments);
  va_end(arguments);
}

void CString::Format(const char16_t* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  *this = FormatArguments(format, arguments);
  va_end(arguments);
}

void CString::Format(const char* format, ...) {
  const CString text(format);
  std::va_list arguments;
  va_start(arguments, format);
  *this = FormatArguments(text.View(), arguments);
  va_end(arguments);
}
