// A code page in which every byte is one character, as a table of 256 characters.
// Room: platform. Used by: the code pages of this room only.
// May touch: nothing but its table.
// Must not touch: the system's character conversion.
// Invariant: the 256 characters differ, so that every byte comes back as itself.
#pragma once

#include "platform/code_page.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace brindle {

using ByteTable = std::array<char16_t, 256>;

// Marks a byte that a page leaves undefined.
inline constexpr char16_t UndefinedByte = 0xFFFF;

// Gives every undefined byte, and every byte whose character an earlier byte has, a character of its own: the one of
// its own number, or one of the private use area where that is taken.
void CompleteTable(ByteTable& table) noexcept;

[[nodiscard]] ByteTable Windows1252Table() noexcept;
[[nodiscard]] ByteTable Latin1Table() noexcept;

class TablePage final : public CodePage {
public:
  // `table` must be complete.
  TablePage(std::string_view name, const ByteTable& table);

  void DecodeTo(std::string_view bytes, std::u16string& text) const override;
  [[nodiscard]] std::size_t IncompleteTail(std::string_view bytes) const override;
  [[nodiscard]] std::size_t BytesOfUnits(std::string_view bytes, std::size_t units) const override;

protected:
  std::size_t EncodeTo(std::u16string_view text, std::size_t maxBytes, std::string& bytes) const override;

private:
  [[nodiscard]] char ByteOf(char32_t codePoint) const noexcept;

  ByteTable m_table;
  std::array<std::pair<char16_t, unsigned char>, 256> m_reverse; // sorted by character
};

} // namespace brindle
