// The tokenizer's pure part: what stands at a position of a text, whatever the interpreter's state.
// Room: interpreter. Used by: ProgramText, which keeps the results.
// May touch: the text it is given.
// Must not: look functions or variables up: what a name means may change while the program runs.
// Invariant: a token ends behind its start, but for TOKEN_NONE and the end of the text.
#pragma once

#include "interpreter/word_tables.h"

#include <string_view>

namespace brindle {

struct FastEntry;

struct Token {
  BASIC_TOKEN_TYPE kind = TOKEN_NONE; // TOKEN_IDENTIFIER for a dotted name that is not called
  COMMAND_TYPE command = COMMAND_NONE;
  KEYWORD_TYPE keyword = KEYWORD_NONE;
  std::uint32_t start = 0;
  std::uint32_t end = 0;
  CString text;                      // a literal's without its quotes, a comment's and the end's empty
  CString lowered;                   // of words
  double number = 0;                 // of numeric literals
  mutable int variable = -1;         // the store's number for the name, once asked for
  mutable FastEntry* fast = nullptr; // of the statement that begins here, once it was run
};

// Any of "\n", "\r" and NUL.
[[nodiscard]] constexpr bool IsLineEnd(char16_t unit) noexcept {
  return unit == u'\n' || unit == u'\r' || unit == 0;
}

[[nodiscard]] bool IsDelimiterUnit(char16_t unit) noexcept;

// The first position at or behind `position` that is neither blank nor tab.
[[nodiscard]] inline std::uint32_t SkipBlanks(std::u16string_view text, std::uint32_t position) noexcept {
  while (position < text.size() && (text[position] == u' ' || text[position] == u'\t'))
    ++position;
  return position;
}

// The token that starts at `position`, which stands on no blank.
[[nodiscard]] Token ScanToken(std::u16string_view text, std::uint32_t position, const WordTable& words);

} // namespace brindle
