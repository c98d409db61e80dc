// Steps that the kinds of code pages share: the windows-1252 meaning of a byte, and quick ways through ASCII runs.
// Room: platform. Used by: the code pages of this room only.
// May touch: nothing.
// Must not touch: the process locale.
// Invariant: an ASCII run is copied byte for unit, whatever stands around it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace brindle {

// windows-1252 differs from ISO-8859-1 only in 0x80 to 0x9F; its five undefined bytes keep their own value.
inline constexpr std::array<char16_t, 32> Windows1252Controls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr char16_t Windows1252Character(unsigned char byte) noexcept {
  return byte >= 0x80 && byte <= 0x9F ? Windows1252Controls[byte - 0x80U] : static_cast<char16_t>(byte);
}

constexpr unsigned char ToByte(char character) noexcept {
  return static_cast<unsigned char>(character);
}
constexpr char ToChar(unsigned byte) noexcept {
  return static_cast<char>(static_cast<unsigned char>(byte));
}

// Most text of scripts and data is ASCII; these two find how far that goes, eight bytes at a time.
inline std::size_t AsciiRun(std::string_view bytes) noexcept {
  std::size_t length = 0;
  for (std::uint64_t word = 0; length + sizeof word <= bytes.size(); length += sizeof word) {
    std::memcpy(&word, bytes.data() + length, sizeof word);
    if ((word & 0x8080808080808080U) != 0) {
      break;
    }
  }
  while (length < bytes.size() && ToByte(bytes[length]) < 0x80) {
    ++length;
  }
  return length;
}

inline std::size_t AsciiRun(std::u16string_view text) noexcept {
  constexpr std::size_t kUnits = sizeof(std::uint64_t) / sizeof(char16_t);
  std::size_t length = 0;
  for (std::uint64_t word = 0; length + kUnits <= text.size(); length += kUnits) {
    std::memcpy(&word, text.data() + length, sizeof word);
    if ((word & 0xFF80FF80FF80FF80U) != 0) {
      break;
    }
  }
  while (length < text.size() && text[length] < 0x80) {
    ++length;
  }
  return length;
}

// Takes the ASCII run off the front of `bytes`.
inline void DecodeAscii(std::string_view& bytes, std::u16string& text) {
  const std::size_t length = AsciiRun(bytes);
  const std::size_t start = text.size();
  text.resize(start + length);
  for (std::size_t index = 0; index < length; ++index) {
    text[start + index] = static_cast<char16_t>(bytes[index]);
  }
  bytes.remove_prefix(length);
}

inline void AppendAscii(std::u16string_view run, std::string& bytes) {
  const std::size_t start = bytes.size();
  bytes.resize(start + run.size());
  for (std::size_t index = 0; index < run.size(); ++index) {
    bytes[start + index] = static_cast<char>(run[index]);
  }
}

} // namespace brindle
