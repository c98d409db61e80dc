// The tokenizer and the label scan, over any text.
#include "fuzz_support.h"

#include "platform/code_page.h"
#include "support/test_access.h"

using namespace brindle;
using fuzz::Require;

namespace {

constexpr char16_t kMark = u'\xFEFF';

class OkUser : public CUserInterface {
public:
  [[nodiscard]] ErrorAnswer ShowError(const CString&) override { return ErrorAnswer::Ok; }
};

// UTF-16 units behind a mark: text that no code page gives, lone surrogates say.
std::u16string TextOf(std::string_view bytes) {
  const auto unitAt = [bytes](std::size_t at) {
    return static_cast<char16_t>(static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1])
                                                                             << 8);
  };
  if (bytes.size() < 2 || unitAt(0) != kMark)
    return CodePage::Utf8().Decode(bytes);
  std::u16string text;
  for (std::size_t at = 2; at + 1 < bytes.size(); at += 2)
    text += unitAt(at);
  return text;
}

void CheckToken(const Token& token, std::u16string_view text, std::uint32_t position) {
  Require(token.start == position && token.end >= position && token.end <= text.size(), "a token lies in the text");
  const bool isEnd = token.command == COMMAND_END_OF_PROGRAM;
  Require(isEnd == (position == text.size()), "the end of the program is at the end of the text");
  Require(isEnd || token.kind == TOKEN_NONE || token.end > position, "a token is not empty");
  Require(static_cast<std::uint32_t>(token.text.GetLength()) <= std::max(token.end - token.start, 1U),
          "a token's text is no longer than the token");
  CString lowered = token.text;
  Require(token.lowered.IsEmpty() || token.lowered == lowered.MakeLower(), "a word is lower-cased as a text is");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::u16string decoded = TextOf({reinterpret_cast<const char*>(data), size});
  decoded += u'\n'; // as every program that is loaded
  CBrindle interpreter;
  OkUser user;
  interpreter.SetUserInterface(&user);
  InterpreterState& state = BrindleTestAccess::State(interpreter);
  state.program = std::make_shared<ProgramText>(decoded);
  const std::u16string_view text = state.program->Text();

  for (std::uint32_t position = 0;;) {
    position = SkipBlanks(text, position);
    const Token token = ScanToken(text, position, state.words);
    CheckToken(token, text, position);
    const Token& kept = state.program->TokenAt(position, state.words);
    Require(kept.kind == token.kind && kept.end == token.end && kept.text == token.text, "a token is kept as it is");
    if (token.command == COMMAND_END_OF_PROGRAM)
      break;
    position = std::max(token.end, position + 1);
  }
  // What a jump may hit is any place, not only where the tokens above begin.
  for (std::uint32_t position = 0; position < text.size() && position < 512; ++position)
    CheckToken(ScanToken(text, position, state.words), text, position);

  if (BrindleTestAccess::LabelsScan(interpreter))
    for (std::uint32_t position = 0; position < text.size();) {
      const Token& token = state.program->TokenAt(SkipBlanks(text, position), state.words);
      unsigned long target = 0;
      if (token.kind == TOKEN_LABEL && BrindleTestAccess::LabelGet(interpreter, token.text, target))
        Require(target > 0 && target <= text.size() && text[target - 1] == u':', "a label stands before its place");
      position = std::max(token.end, position + 1);
    }
  return 0;
}
