// ProgramText: one program's text with its labels and with what reading it found.
// Room: interpreter. Used by: the reading position, the label scan, forward skips, procedure descriptors.
// May touch: nothing but itself.
// Must not: depend on the interpreter's state; several runs may hold several texts.
// Invariant: the text changes only while no token has been cached (loading); a cached token never moves.
#pragma once

#include "interpreter/inclusion_map.h"
#include "interpreter/scanner.h"
#include "interpreter/source_lines.h"

#include <cassert>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace brindle {

// Where a forward skip from some position ends: the token it stopped on, and the kind of the one before.
struct SkipTarget {
  std::uint32_t lastToken = 0;
  BASIC_TOKEN_TYPE previousKind = TOKEN_NONE;
};

class FastCode;

class ProgramText {
public:
  // `name` is the program's file as it was given.
  explicit ProgramText(std::u16string text, const CString& name = CString());
  ~ProgramText();

  [[nodiscard]] std::u16string_view Text() const noexcept { return m_text; }
  [[nodiscard]] std::uint32_t Length() const noexcept { return static_cast<std::uint32_t>(m_text.size()); }
  // NUL at and behind the end.
  [[nodiscard]] char16_t At(std::uint32_t position) const noexcept {
    return position < m_text.size() ? m_text[position] : u'\0';
  }
  void Insert(std::uint32_t position, std::u16string_view text) {
    assert(m_tokens.empty());
    m_text.insert(position, text);
    m_lines.reset();
  }

  [[nodiscard]] const CString& Name() const noexcept { return m_strName; }
  // The files that the text was put together from.
  [[nodiscard]] const InclusionMap& Files() const noexcept { return m_files; }
  void AddFile(std::uint32_t start, std::uint32_t length, std::uint32_t lead, std::string file, const CString& name) {
    m_files.Add(start, length, lead, std::move(file), name);
    m_lines.reset();
  }
  // The program's own file was enciphered: nobody is shown its lines for the asking.
  void HideSource() noexcept { m_bHidden = true; }
  [[nodiscard]] bool IsHidden() const noexcept { return m_bHidden; }
  // What a position is for a person.
  [[nodiscard]] SourceLines::Place PlaceOf(std::uint32_t position) const;

  // False when the label is there already.
  [[nodiscard]] bool AddLabel(const CString& name, std::uint32_t position) {
    return m_labels.try_emplace(name, position).second;
  }
  [[nodiscard]] std::optional<std::uint32_t> FindLabel(const CString& name) const {
    const auto label = m_labels.find(name);
    return label == m_labels.end() ? std::nullopt : std::optional(label->second);
  }
  void ClearLabels() noexcept { m_labels.clear(); }

  // The token that starts at `position` (on no blank); kept from the first reading on.
  [[nodiscard]] const Token& TokenAt(std::uint32_t position, const WordTable& words) {
    const std::size_t page = position / kPageSize;
    if (page < m_pages.size() && m_pages[page] != nullptr)
      if (const Token* token = m_pages[page][position % kPageSize])
        return *token;
    return ReadToken(position, words);
  }

  // Skips are told apart by where they start and which words they count.
  [[nodiscard]] const SkipTarget* FindSkip(std::uint32_t position, COMMAND_TYPE open, COMMAND_TYPE middle) const;
  void KeepSkip(std::uint32_t position, COMMAND_TYPE open, COMMAND_TYPE middle, const SkipTarget& target);

  // What the statements of this text were compiled to.
  [[nodiscard]] FastCode& Fast() noexcept { return *m_fast; }

private:
  // The index table comes in pages, so that a text of which little runs costs little.
  static constexpr std::uint32_t kPageSize = 1024;
  using Page = std::unique_ptr<const Token*[]>; // null where no token has been read

  [[nodiscard]] const Token& ReadToken(std::uint32_t position, const WordTable& words);

  std::u16string m_text;
  CString m_strName;
  InclusionMap m_files;
  bool m_bHidden = false;
  mutable std::unique_ptr<SourceLines> m_lines; // made when the first error is reported
  std::unordered_map<CString, std::uint32_t> m_labels;
  std::vector<Page> m_pages;
  std::deque<Token> m_tokens;
  std::unordered_map<std::uint64_t, SkipTarget> m_skips;
  std::unique_ptr<FastCode> m_fast;
};

} // namespace brindle
