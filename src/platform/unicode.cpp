#include "platform/unicode.h"

#include <cstdint>

namespace brindle {

namespace {

struct UnitRecord {
  std::uint16_t lowerDistance;
  std::uint16_t upperDistance;
  std::uint8_t flags;
};

struct CaseRange {
  char32_t first;
  char32_t last;
  std::int32_t distance;
};

constexpr std::uint8_t LetterFlag = 1;
constexpr std::uint8_t DigitFlag = 2;
constexpr std::uint8_t SpaceFlag = 4;

#include "platform/unicode_tables.inc"

const UnitRecord& RecordOf(char16_t unit) noexcept {
  constexpr unsigned mask = (1U << BlockShift) - 1;
  const std::size_t block = BlockOfUnit[unit >> BlockShift];
  return UnitRecords[RecordOfUnit[(block << BlockShift) + (unit & mask)]];
}

char32_t MapBeyondUnits(char32_t codePoint, std::span<const CaseRange> ranges) noexcept {
  for (const CaseRange& range : ranges) {
    if (codePoint < range.first) {
      break;
    }
    if (codePoint <= range.last) {
      return static_cast<char32_t>(static_cast<std::int32_t>(codePoint) + range.distance);
    }
  }
  return codePoint;
}

constexpr char32_t CombineSurrogates(char16_t high, char16_t low) noexcept {
  return 0x10000 + ((static_cast<char32_t>(high) - 0xD800) << 10) + (static_cast<char32_t>(low) - 0xDC00);
}

constexpr char16_t HighSurrogateOf(char32_t codePoint) noexcept {
  return static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10));
}

constexpr char16_t LowSurrogateOf(char32_t codePoint) noexcept {
  return static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
}

template <typename MapUnit>
void MapCase(std::span<char16_t> text, MapUnit mapUnit, std::span<const CaseRange> ranges) noexcept {
  for (std::size_t index = 0; index < text.size(); ++index) {
    const char16_t unit = text[index];
    if (IsHighSurrogate(unit) && index + 1 < text.size() && IsLowSurrogate(text[index + 1])) {
      const char32_t mapped = MapBeyondUnits(CombineSurrogates(unit, text[index + 1]), ranges);
      text[index] = HighSurrogateOf(mapped);
      text[++index] = LowSurrogateOf(mapped);
    } else {
      text[index] = mapUnit(unit);
    }
  }
}

} // namespace

namespace unicode_detail {

char16_t LowerFromTable(char16_t unit) noexcept {
  return static_cast<char16_t>(unit + RecordOf(unit).lowerDistance);
}

char16_t UpperFromTable(char16_t unit) noexcept {
  return static_cast<char16_t>(unit + RecordOf(unit).upperDistance);
}

bool IsLetterFromTable(char16_t unit) noexcept {
  return (RecordOf(unit).flags & LetterFlag) != 0;
}
bool IsDigitFromTable(char16_t unit) noexcept {
  return (RecordOf(unit).flags & DigitFlag) != 0;
}
bool IsSpaceFromTable(char16_t unit) noexcept {
  return (RecordOf(unit).flags & SpaceFlag) != 0;
}

} // namespace unicode_detail

void ToLower(std::span<char16_t> text) noexcept {
  MapCase(
      text, [](char16_t unit) noexcept { return ToLowerUnit(unit); }, LowerRanges);
}

void ToUpper(std::span<char16_t> text) noexcept {
  MapCase(
      text, [](char16_t unit) noexcept { return ToUpperUnit(unit); }, UpperRanges);
}

char32_t ReadUtf16(std::u16string_view text, std::size_t& index) noexcept {
  const char16_t unit = text[index++];
  if (IsHighSurrogate(unit) && index < text.size() && IsLowSurrogate(text[index])) {
    return CombineSurrogates(unit, text[index++]);
  }
  return unit;
}

void AppendUtf16(char32_t codePoint, std::u16string& text) {
  if (codePoint < 0x10000) {
    text.push_back(static_cast<char16_t>(codePoint));
  } else {
    text.push_back(HighSurrogateOf(codePoint));
    text.push_back(LowSurrogateOf(codePoint));
  }
}

std::size_t ReadUtf8(std::string_view bytes, char32_t& codePoint) noexcept {
  if (bytes.empty()) {
    return 0;
  }
  const auto lead = static_cast<unsigned char>(bytes[0]);
  if (lead < 0x80) {
    codePoint = lead;
    return 1;
  }

  std::size_t length = 0;
  char32_t smallest = 0;
  char32_t value = 0;
  if ((lead & 0xE0) == 0xC0) {
    length = 2;
    smallest = 0x80;
    value = lead & 0x1FU;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3;
    smallest = 0x800;
    value = lead & 0x0FU;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4;
    smallest = 0x10000;
    value = lead & 0x07U;
  } else {
    return 0;
  }
  if (bytes.size() < length) {
    return 0;
  }
  for (std::size_t index = 1; index < length; ++index) {
    const auto byte = static_cast<unsigned char>(bytes[index]);
    if ((byte & 0xC0) != 0x80) {
      return 0;
    }
    value = (value << 6) | (byte & 0x3FU);
  }
  // An overlong form or a surrogate would let one text have several spellings.
  if (value < smallest || value > 0x10FFFF || IsSurrogate(value)) {
    return 0;
  }
  codePoint = value;
  return length;
}

void AppendUtf8(char32_t codePoint, std::string& bytes) {
  const auto append = [&bytes](char32_t byte) { bytes.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
  if (IsSurrogate(codePoint)) {
    codePoint = ReplacementCharacter;
  }
  if (codePoint < 0x80) {
    append(codePoint);
  } else if (codePoint < 0x800) {
    append(0xC0 | (codePoint >> 6));
    append(0x80 | (codePoint & 0x3F));
  } else if (codePoint < 0x10000) {
    append(0xE0 | (codePoint >> 12));
    append(0x80 | ((codePoint >> 6) & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  } else {
    append(0xF0 | (codePoint >> 18));
    append(0x80 | ((codePoint >> 12) & 0x3F));
    append(0x80 | ((codePoint >> 6) & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  }
}

} // namespace brindle
