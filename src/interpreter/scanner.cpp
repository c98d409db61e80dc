#include "interpreter/scanner.h"

#include "platform/number_text.h"
#include "platform/unicode.h"

#include <array>

namespace brindle {

namespace {

constexpr std::u16string_view kDelimiters = u" ;,+-<>/*%^=()[]~:!'@&{}|?$\t\n\r";

constexpr auto kIsDelimiter = [] {
  std::array<bool, 128> table{};
  for (const char16_t unit : kDelimiters)
    table[unit] = true;
  table[0] = true;
  return table;
}();

CString TextOf(std::u16string_view text, std::uint32_t from, std::uint32_t to) {
  return CString(text.substr(from, to - from));
}

// One line end, "\r\n" included; a blank line after "\n" is eaten with it.
void ScanLineEnd(std::u16string_view text, Token& token) {
  token.kind = TOKEN_DELIMITER;
  token.command = COMMAND_END_OF_LINE;
  token.text = CString(u'\n', 1);
  ++token.end;
  if (token.end < text.size() && IsLineEnd(text[token.end]))
    ++token.end;
}

void ScanString(std::u16string_view text, Token& token) {
  token.kind = TOKEN_STRING;
  const std::size_t quote = text.find(u'"', token.start + 1);
  const auto last = static_cast<std::uint32_t>(quote == std::u16string_view::npos ? text.size() : quote);
  token.text = TextOf(text, token.start + 1, last);
  token.end = last < text.size() ? last + 1 : last;
}

void ScanWord(std::u16string_view text, Token& token, const WordTable& words) {
  token.text = TextOf(text, token.start, token.end);
  token.lowered = token.text;
  token.lowered.MakeLower();
  const char16_t next = token.end < text.size() ? text[token.end] : u'\0';
  const WordCodes codes = words.Find(token.lowered);
  if (next == u':') {
    token.kind = TOKEN_LABEL;
    ++token.end;
  } else if (codes.command != COMMAND_NONE) {
    token.kind = TOKEN_COMMAND;
    token.command = codes.command;
  } else if (next == u'(') {
    token.kind = TOKEN_FUNCTION;
  } else if (token.text.Find(u'.') >= 0) {
    token.kind = TOKEN_IDENTIFIER;
  } else if (codes.keyword != KEYWORD_NONE) {
    token.kind = TOKEN_KEYWORD;
    token.keyword = codes.keyword;
  } else {
    token.kind = TOKEN_VARIABLE;
  }
}

} // namespace

bool IsDelimiterUnit(char16_t unit) noexcept {
  return unit < kIsDelimiter.size() && kIsDelimiter[unit];
}

Token ScanToken(std::u16string_view text, std::uint32_t position, const WordTable& words) {
  Token token;
  token.start = token.end = position;
  if (position >= text.size()) {
    token.kind = TOKEN_DELIMITER;
    token.command = COMMAND_END_OF_PROGRAM;
    return token;
  }
  const char16_t unit = text[position];
  const auto untilDelimiter = [&] {
    while (token.end < text.size() && !IsDelimiterUnit(text[token.end]))
      ++token.end;
  };
  if (IsLineEnd(unit)) {
    ScanLineEnd(text, token);
  } else if (unit == u'#') {
    while (token.end < text.size() && !IsLineEnd(text[token.end]))
      ++token.end;
    token.kind = TOKEN_COMMENT;
  } else if (IsDelimiterUnit(unit)) {
    token.kind = TOKEN_DELIMITER;
    token.text = CString(unit, 1);
    ++token.end;
  } else if (unit == u'"') {
    ScanString(text, token);
  } else if (IsDecimalDigit(unit)) {
    untilDelimiter();
    token.kind = TOKEN_NUMBER;
    token.text = TextOf(text, token.start, token.end);
    token.number = ParseDouble(token.text.View());
  } else if (IsLetter(unit)) {
    untilDelimiter();
    ScanWord(text, token, words);
  }
  return token;
}

} // namespace brindle
