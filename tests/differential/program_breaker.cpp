// Slightly broken programs.
#include "program_generator.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace {

// Words, blanks and single signs; joined they give the program again.
std::vector<std::string> PiecesOf(const std::string& program) {
  std::vector<std::string> pieces;
  const auto isWord = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '.'; };
  for (std::size_t at = 0; at < program.size();) {
    std::size_t end = at + 1;
    if (isWord(program[at]))
      while (end < program.size() && isWord(program[end]))
        ++end;
    pieces.push_back(program.substr(at, end - at));
    at = end;
  }
  return pieces;
}

} // namespace

std::string BreakProgram(const std::string& program, std::uint64_t seed) {
  Random random(seed);
  std::vector<std::string> pieces = PiecesOf(program);
  if (random.Percent(8))
    pieces.resize(pieces.size() / 2 + static_cast<std::size_t>(random.Below(static_cast<int>(pieces.size() / 2))));
  constexpr const char* kWords[] = {"then",   "next", "endif", "end", "(", ")",    "[",  "]",
                                    "\"",     "=",    ",",     ":",   "1", "a",    "to", "else",
                                    "return", "for",  "loop",  "+",   "-", "nope", "\n", "#"};
  for (int faults = 1 + random.Below(3); faults > 0; --faults) {
    const auto pick = [&] { return static_cast<std::size_t>(random.Below(static_cast<int>(pieces.size()))); };
    std::size_t at = pick();
    for (int tries = 0; tries < 20 && (pieces[at] == " " || pieces[at] == "wd" || pieces[at] == "\n"); ++tries)
      at = pick();
    switch (random.Below(4)) {
    case 0: pieces[at].clear(); break;
    case 1: pieces[at] += " " + pieces[at]; break;
    case 2: std::swap(pieces[at], pieces[pick()]); break;
    default: pieces[at] = random.Of(kWords); break;
    }
  }
  std::string text;
  for (const std::string& piece : pieces)
    text += piece;
  return text;
}
