// Tokens that a program text keeps are those that a fresh scan finds, in every script there is.
#include "support/script_test.h"

#include "interpreter/script_loader.h"

#include <algorithm>

namespace {

namespace fs = std::filesystem;

using TokenCacheTest = ScriptTest;

fs::path SourceFolder() {
  return fs::path(BRINDLE_SOURCE_FOLDER);
}

std::vector<fs::path> Scripts() {
  std::vector<fs::path> scripts;
  for (const char* folder : {"tests/scripts", "examples"})
    for (const auto& entry : fs::recursive_directory_iterator(SourceFolder() / folder))
      if (entry.is_regular_file() && entry.path().extension() == ".bas")
        scripts.push_back(entry.path());
  std::sort(scripts.begin(), scripts.end());
  return scripts;
}

void ExpectSame(const brindle::Token& kept, const brindle::Token& scanned) {
  EXPECT_EQ(kept.kind, scanned.kind);
  EXPECT_EQ(kept.command, scanned.command);
  EXPECT_EQ(kept.keyword, scanned.keyword);
  EXPECT_EQ(kept.start, scanned.start);
  EXPECT_EQ(kept.end, scanned.end);
  EXPECT_EQ(kept.text, scanned.text);
  EXPECT_EQ(kept.lowered, scanned.lowered);
  EXPECT_EQ(kept.number, scanned.number);
}

// What the reader says of one token.
struct Reading {
  BASIC_TOKEN_TYPE kind, previousKind;
  int command, keyword, function;
  std::string text;
  std::uint32_t position;
  bool operator==(const Reading&) const = default;
};

std::vector<Reading> ReadAll(CBrindle& interpreter) {
  const brindle::InterpreterState& state = BrindleTestAccess::State(interpreter);
  std::vector<Reading> readings;
  BrindleTestAccess::Rewind(interpreter);
  while (!BrindleTestAccess::IsEndOfProgram(interpreter)) {
    const BASIC_TOKEN_TYPE kind = BrindleTestAccess::get_token(interpreter);
    readings.push_back({kind, state.token.previousKind, state.token.command, state.token.keyword,
                        kind == TOKEN_FUNCTION ? state.token.function : 0, state.token.Text().ToUtf8(),
                        state.position});
    if (kind == TOKEN_NONE)
      BrindleTestAccess::NextChar(interpreter);
  }
  return readings;
}

TEST_F(TokenCacheTest, every_script_reads_the_same_kept_and_scanned) {
  const std::vector<fs::path> scripts = Scripts();
  ASSERT_GT(scripts.size(), 500U) << "the script tests are not where they were";
  std::size_t tokens = 0;
  for (const fs::path& script : scripts) {
    const auto text = brindle::LoadScriptFile(CString::FromUtf8(script.string()));
    ASSERT_TRUE(text) << script;
    SetText(*text + u"\n");
    const std::vector<Reading> scanned = ReadAll(Interpreter());
    State().keepTokens = true;
    const std::vector<Reading> first = ReadAll(Interpreter());
    const std::vector<Reading> again = ReadAll(Interpreter());
    EXPECT_TRUE(first == scanned) << script;
    EXPECT_TRUE(again == scanned) << script;
    tokens += scanned.size();
  }
  EXPECT_GT(tokens, scripts.size() * 5);
}

TEST_F(TokenCacheTest, a_token_can_be_asked_for_at_any_position) {
  for (const fs::path& script : Scripts()) {
    if (script.string().find("/examples/") == std::string::npos &&
        script.string().find("/tokens/") == std::string::npos)
      continue;
    SCOPED_TRACE(script);
    const auto text = brindle::LoadScriptFile(CString::FromUtf8(script.string()));
    ASSERT_TRUE(text);
    brindle::ProgramText program(*text);
    // Backwards, so that every token is asked for before the ones in front of it.
    for (std::uint32_t position = program.Length() + 1; position-- > 0;) {
      if (position < program.Length() && (program.At(position) == u' ' || program.At(position) == u'\t'))
        continue;
      const brindle::Token scanned = brindle::ScanToken(*text, position, State().words);
      const brindle::Token& kept = program.TokenAt(position, State().words);
      ExpectSame(kept, scanned);
      EXPECT_EQ(&program.TokenAt(position, State().words), &kept) << "a kept token never moves";
    }
  }
}

TEST_F(TokenCacheTest, a_kept_function_name_is_looked_up_every_time) {
  SetText(u"later(", true);
  Access::get_token(Interpreter());
  EXPECT_EQ(State().token.function, FUNCTION_NONE);
  auto function = std::make_unique<CFuncDesc>(CString(u"later"), 0U);
  ASSERT_TRUE(Access::AddFunction(Interpreter(), function.get()));
  function.release();
  Access::Rewind(Interpreter());
  Access::get_token(Interpreter());
  EXPECT_EQ(State().token.function, FUNCTION_SCRIPT);
}

} // namespace
