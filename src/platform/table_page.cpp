#include "platform/table_page.h"

#include "platform/code_page_runs.h"
#include "platform/unicode.h"

#include <algorithm>

namespace brindle {

void CompleteTable(ByteTable& table) noexcept {
  constexpr char16_t firstPrivateUse = 0xF700;
  const auto isTaken = [&table](char16_t character) {
    return std::find(table.begin(), table.end(), character) != table.end();
  };
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    const auto position = table.begin() + static_cast<std::ptrdiff_t>(byte);
    if (table[byte] != UndefinedByte && std::find(table.begin(), position, table[byte]) == position) {
      continue;
    }
    auto character = static_cast<char16_t>(byte);
    for (char16_t next = firstPrivateUse; isTaken(character); ++next) {
      character = next;
    }
    table[byte] = character;
  }
}

ByteTable Windows1252Table() noexcept {
  ByteTable table{};
  for (unsigned byte = 0; byte < table.size(); ++byte) {
    table[byte] = Windows1252Character(static_cast<unsigned char>(byte));
  }
  return table;
}

ByteTable Latin1Table() noexcept {
  ByteTable table{};
  for (unsigned byte = 0; byte < table.size(); ++byte) {
    table[byte] = static_cast<char16_t>(byte);
  }
  return table;
}

TablePage::TablePage(std::string_view name, const ByteTable& table) : CodePage(name, true, true), m_table(table) {
  for (std::size_t byte = 0; byte < m_table.size(); ++byte) {
    m_reverse[byte] = {m_table[byte], static_cast<unsigned char>(byte)};
    if (byte < 0x80 && m_table[byte] != byte)
      NoteNotAsciiBased(); // an EBCDIC page
  }
  std::sort(m_reverse.begin(), m_reverse.end());
}

void TablePage::DecodeTo(std::string_view bytes, std::u16string& text) const {
  if (IsAsciiBased())
    DecodeAscii(bytes, text);
  const std::size_t start = text.size();
  text.resize(start + bytes.size());
  for (std::size_t index = 0; index < bytes.size(); ++index) {
    text[start + index] = m_table[ToByte(bytes[index])];
  }
}

std::size_t TablePage::IncompleteTail(std::string_view) const {
  return 0;
}

std::size_t TablePage::BytesOfUnits(std::string_view bytes, std::size_t units) const {
  return std::min(bytes.size(), units);
}

std::size_t TablePage::EncodeTo(std::u16string_view text, std::size_t maxBytes, std::string& bytes) const {
  std::size_t index = IsAsciiBased() ? AsciiRun(text.substr(0, maxBytes)) : 0;
  AppendAscii(text.substr(0, index), bytes);
  for (std::size_t count = index; index < text.size() && count < maxBytes; ++count) {
    const char32_t codePoint = ReadUtf16(text, index);
    bytes.push_back(IsAsciiBased() && codePoint < 0x80 ? static_cast<char>(codePoint) : ByteOf(codePoint));
  }
  return index;
}

char TablePage::ByteOf(char32_t codePoint) const noexcept {
  const auto found = std::lower_bound(m_reverse.begin(), m_reverse.end(), codePoint,
                                      [](const auto& entry, char32_t wanted) { return entry.first < wanted; });
  if (found != m_reverse.end() && found->first == codePoint) {
    return ToChar(found->second);
  }
  return codePoint == U'?' ? '?' : ByteOf(U'?');
}

} // namespace brindle
