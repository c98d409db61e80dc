#include "interpreter/program_text.h"

#include "interpreter/fast/code.h"

namespace brindle {

namespace {

std::uint64_t SkipKey(std::uint32_t position, COMMAND_TYPE open, COMMAND_TYPE middle) {
  return (static_cast<std::uint64_t>(position) << 16) | (static_cast<std::uint64_t>(open) << 8) |
         static_cast<std::uint64_t>(middle);
}

} // namespace

ProgramText::ProgramText(std::u16string text, const CString& name)
    : m_text(std::move(text)), m_strName(name), m_fast(std::make_unique<FastCode>()) {}

ProgramText::~ProgramText() = default;

const Token& ProgramText::ReadToken(std::uint32_t position, const WordTable& words) {
  const std::size_t page = position / kPageSize;
  if (page >= m_pages.size())
    m_pages.resize(page + 1);
  if (m_pages[page] == nullptr)
    m_pages[page] = std::make_unique<const Token*[]>(kPageSize);
  m_tokens.push_back(ScanToken(m_text, position, words));
  m_pages[page][position % kPageSize] = &m_tokens.back();
  return m_tokens.back();
}

SourceLines::Place ProgramText::PlaceOf(std::uint32_t position) const {
  if (m_lines == nullptr)
    m_lines = std::make_unique<SourceLines>(m_text, m_files);
  return m_lines->At(position);
}

const SkipTarget* ProgramText::FindSkip(std::uint32_t position, COMMAND_TYPE open, COMMAND_TYPE middle) const {
  const auto skip = m_skips.find(SkipKey(position, open, middle));
  return skip == m_skips.end() ? nullptr : &skip->second;
}

void ProgramText::KeepSkip(std::uint32_t position, COMMAND_TYPE open, COMMAND_TYPE middle, const SkipTarget& target) {
  m_skips.insert_or_assign(SkipKey(position, open, middle), target);
}

} // namespace brindle
