// The words that mean something by themselves: commands and keywords.
// Room: interpreter. Used by: the scanner, LookupCommand, LookupKeyword.
// May touch: nothing.
// Invariant: keys are in lower case; no word is both a command and a keyword.
#pragma once

#include "brindle/text.h"
#include "interpreter/language.h"

#include <unordered_map>

namespace brindle {

struct WordCodes {
  COMMAND_TYPE command = COMMAND_NONE;
  KEYWORD_TYPE keyword = KEYWORD_NONE;
};

class WordTable {
public:
  [[nodiscard]] WordCodes Find(const CString& lowered) const;
  void AddCommand(const CString& word, COMMAND_TYPE code) { m_words[word].command = code; }
  void AddKeyword(const CString& word, KEYWORD_TYPE code) { m_words[word].keyword = code; }
  void ClearCommands() {
    for (auto& word : m_words)
      word.second.command = COMMAND_NONE;
  }
  void ClearKeywords() {
    for (auto& word : m_words)
      word.second.keyword = KEYWORD_NONE;
  }

private:
  std::unordered_map<CString, WordCodes> m_words;
};

} // namespace brindle
