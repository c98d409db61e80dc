#include "entry.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

// Words that begin statements or belong to one. ORDER COMMAND; sorted
constexpr std::array<std::string_view, 49> kCommands = {
    "alter",  "call",    "close",      "closedialog", "declare",      "dialog",        "dim",
    "do",     "else",    "encrypt",    "end",         "endalter",     "enddialog",     "endfunction",
    "endif",  "endpage", "endsub",     "endtype",     "event",        "for",           "function",
    "global", "goto",    "if",         "include",     "library",      "loop",          "map",
    "next",   "open",    "page",       "playsound",   "print",        "propertysheet", "rem",
    "return", "run",     "runexe",     "setfocus",    "stayresident", "stop",          "sub",
    "then",   "throw",   "timerstart", "timerstop",   "to",           "type",          "watch"};
static_assert(std::is_sorted(kCommands.begin(), kCommands.end()));

struct Block {
  std::string_view opens;
  std::string_view closes;
};
constexpr std::array kBlocks = {Block{"if", "endif"},
                                Block{"for", "next"},
                                Block{"do", "loop"},
                                Block{"type", "endtype"},
                                Block{"function", "endfunction"},
                                Block{"sub", "endsub"},
                                Block{"dialog", "enddialog"},
                                Block{"propertysheet", "enddialog"},
                                Block{"page", "endpage"},
                                Block{"alter", "endalter"}};

struct Word {
  enum Kind { Name, Text, Sign, LineEnd, End };
  Kind kind = End;
  std::string lowered;     // of names and signs
  char next = '\0';        // the character behind it
  bool isOpenText = false; // a text without its closing quote
  std::size_t end = 0;     // in the entry, behind it
};

// Walks through an entry by the language's own rules for where a word ends.
class WordReader {
public:
  explicit WordReader(std::string_view entry) : m_entry(entry) {}

  [[nodiscard]] Word Read() {
    while (m_at < m_entry.size() && (m_entry[m_at] == ' ' || m_entry[m_at] == '\t'))
      ++m_at;
    Word word;
    if (m_at >= m_entry.size())
      return word;
    const char first = m_entry[m_at];
    if (first == '#') {
      SkipLine();
      return Read();
    }
    if (first == '\n' || first == '\r') {
      ++m_at;
      word.kind = Word::LineEnd;
    } else if (first == '"') {
      const std::size_t quote = m_entry.find('"', m_at + 1);
      word.kind = Word::Text;
      word.isOpenText = quote == std::string_view::npos;
      m_at = word.isOpenText ? m_entry.size() : quote + 1;
    } else if (IsDelimiter(first)) {
      word.kind = Word::Sign;
      word.lowered = first;
      ++m_at;
    } else {
      word.kind = Word::Name;
      while (m_at < m_entry.size() && !IsDelimiter(m_entry[m_at]))
        word.lowered += Lowered(m_entry[m_at++]);
      if (word.lowered == "rem" && (m_at >= m_entry.size() || m_entry[m_at] != ':')) {
        SkipLine();
        return Read();
      }
    }
    word.end = m_at;
    word.next = m_at < m_entry.size() ? m_entry[m_at] : '\0';
    return word;
  }

private:
  static bool IsDelimiter(char character) {
    return std::string_view(" ;,+-<>/*%^=()[]~:!'@&{}|?$\t\n\r").find(character) != std::string_view::npos;
  }
  static char Lowered(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  }
  void SkipLine() { m_at = std::min(m_entry.find('\n', m_at), m_entry.size()); }

  std::string_view m_entry;
  std::size_t m_at = 0;
};

bool IsLabel(const Word& word) {
  return word.kind == Word::Name && word.next == ':';
}

bool IsCommand(const Word& word) {
  return word.kind == Word::Name && !IsLabel(word) &&
         std::binary_search(kCommands.begin(), kCommands.end(), std::string_view(word.lowered));
}

bool IsSign(const Word& word, char sign) {
  return word.kind == Word::Sign && word.lowered[0] == sign;
}

// What stands behind a name: "=", or an index and "=".
bool IsAssignment(WordReader reader) {
  Word word = reader.Read();
  if (IsSign(word, '[')) {
    int depth = 1;
    while (depth > 0 && word.kind != Word::End) {
      word = reader.Read();
      depth += IsSign(word, '[') ? 1 : IsSign(word, ']') ? -1 : 0;
    }
    word = reader.Read();
  }
  return IsSign(word, '=');
}

// Behind the last word of the first statement.
std::size_t EndOfStatement(WordReader reader) {
  std::size_t end = 0;
  for (Word word = reader.Read(); word.kind != Word::End && word.kind != Word::LineEnd && !IsSign(word, ':');
       word = reader.Read())
    end = word.end;
  return end;
}

} // namespace

bool IsComplete(std::string_view entry) {
  WordReader reader(entry);
  std::vector<std::string_view> open; // the words that close what is open
  bool atStart = true;                // of a statement
  bool isOpenLine = false;            // behind "open" on its line, whose "for" starts no loop
  for (Word word = reader.Read(); word.kind != Word::End; word = reader.Read()) {
    if (word.isOpenText)
      return false;
    if (IsCommand(word)) {
      const bool isHead = word.lowered == "function" || word.lowered == "sub";
      for (const Block& block : kBlocks)
        if (word.lowered == block.opens && (!isHead || atStart) && !(isOpenLine && word.lowered == "for"))
          open.push_back(block.closes);
      // What stands in between was left open, and running it will say so.
      if (const auto closed = std::find(open.rbegin(), open.rend(), word.lowered); closed != open.rend())
        open.erase(std::prev(closed.base()), open.end());
      isOpenLine = word.lowered == "open" || (isOpenLine && word.lowered == "for");
    }
    atStart = word.kind == Word::LineEnd || IsSign(word, ':') || IsLabel(word);
    if (atStart)
      isOpenLine = false;
  }
  return open.empty();
}

bool IsEmpty(std::string_view entry) {
  WordReader reader(entry);
  Word word = reader.Read();
  while (word.kind == Word::LineEnd)
    word = reader.Read();
  return word.kind == Word::End;
}

std::string ProgramOf(std::string_view entry) {
  WordReader reader(entry);
  const Word first = reader.Read();
  const std::string text(entry);
  if (IsCommand(first))
    return first.lowered == "function" || first.lowered == "sub" ? "end : " + text : text;
  const bool isStatement = first.kind == Word::LineEnd || first.kind == Word::End || IsLabel(first) ||
                           (first.kind == Word::Name && IsAssignment(reader));
  if (isStatement)
    return text;
  // "print" takes a text that stands first for a whole item.
  if (first.kind == Word::Text && IsSign(reader.Read(), '+')) {
    const std::size_t end = EndOfStatement(WordReader(entry));
    return "print (" + text.substr(0, end) + ")" + text.substr(end);
  }
  return "print " + text;
}
