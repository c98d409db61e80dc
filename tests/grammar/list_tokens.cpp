// list_tokens: how the interpreter itself reads scripts, for comparing the grammar of the editors with it.
// Prints for each file "file PATH" and a line for each token: kind, command code, start and end in UTF-16 units.
#include "brindle/interpreter.h"
#include "interpreter/scanner.h"
#include "support/test_access.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

using namespace brindle;

namespace {

// The rest of their line is never read.
bool SkipsItsLine(COMMAND_TYPE command) {
  return command == COMMAND_REM || command == COMMAND_ENCRYPT || command == COMMAND_INCLUDE ||
         command == COMMAND_LIBRARY;
}

void Print(const Token& token) {
  std::printf("%d %d %u %u\n", static_cast<int>(token.kind), static_cast<int>(token.command), token.start, token.end);
}

void ListTokens(const std::u16string& text, const WordTable& words) {
  std::uint32_t position = 0;
  for (;;) {
    position = SkipBlanks(text, position);
    const Token token = ScanToken(text, position, words);
    if (token.command == COMMAND_END_OF_PROGRAM)
      return;
    Print(token);
    position = token.kind == TOKEN_NONE ? token.end + 1 : token.end;
    if (!SkipsItsLine(token.command))
      continue;
    if (token.command == COMMAND_INCLUDE || token.command == COMMAND_LIBRARY) {
      const Token name = ScanToken(text, SkipBlanks(text, position), words);
      if (name.kind == TOKEN_STRING) {
        Print(name);
        position = name.end;
      }
    }
    while (position < text.size() && !IsLineEnd(text[position]))
      ++position;
  }
}

} // namespace

int main(int count, char** arguments) {
  CBrindle interpreter;
  const WordTable& words = BrindleTestAccess::State(interpreter).words;
  for (int i = 1; i < count; ++i) {
    std::ifstream file(arguments[i], std::ios::binary);
    if (!file) {
      std::fprintf(stderr, "list_tokens: cannot read %s\n", arguments[i]);
      return 1;
    }
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::printf("file %s\n", arguments[i]);
    ListTokens(std::u16string(CString::FromUtf8(bytes).View()), words);
  }
  return 0;
}
