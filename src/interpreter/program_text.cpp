#include "interpreter/program_text.h"

namespace brindle {

namespace {

std::uint64_t SkipKey(std::uint32_t position, COMMAND_TYPE open, COMMAND_TYPE middle) {
  return (static_cast<std::uint64_t>(position) << 16) | (static_cast<std::uint64_t>(open) << 8) |
         static_cast<std::uint64_t>(middle);
}

} // namespace

const Token& ProgramText::TokenAt(std::uint32_t position, const WordTable& words) {
  const std::size_t pageNumber = position / kPageSize;
  if (pageNumber >= m_pages.size())
    m_pages.resize(pageNumber + 1);
  Page& page = m_pages[pageNumber];
  if (page == nullptr)
    page = std::make_unique<std::uint32_t[]>(kPageSize);
  std::uint32_t& index = page[position % kPageSize];
  if (index == 0) {
    m_tokens.push_back(ScanToken(m_text, position, words));
    index = static_cast<std::uint32_t>(m_tokens.size());
  }
  return m_tokens[index - 1];
}

const SkipTarget* ProgramText::FindSkip(std::uint32_t position, COMMAND_TYPE open, COMMAND_TYPE middle) const {
  const auto skip = m_skips.find(SkipKey(position, open, middle));
  return skip == m_skips.end() ? nullptr : &skip->second;
}

void ProgramText::KeepSkip(std::uint32_t position, COMMAND_TYPE open, COMMAND_TYPE middle, const SkipTarget& target) {
  m_skips.insert_or_assign(SkipKey(position, open, middle), target);
}

} // namespace brindle
