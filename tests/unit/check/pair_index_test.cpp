#include "check/pair_index.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace brindle {
namespace {

const std::vector<std::u16string> kTexts = {
    u"",
    u"if a = 1 then\nb = 1\nelse\nb = 2\nendif\nc = 3\n",
    u"if a = 1 then b = 1 else if a = 2 then b = 2 endif endif\n",
    u"if a = 1 then\nif b = 1 then\nif c = 1 then\n",
    u"endif\nelse\nif a = 1 then\nelse\nelse\nendif\nendif\n",
    u"for i = 1 to 3\nfor j = 1 to 3\nnext\ndo while i < j\nloop\nnext\nnext\n",
    u"open \"x\" for output as 1\nfor i = 1 to 2\nopen \"y\" for input as 2 : for j = 1 to 2\nnext\nnext\n",
    u"open \"x\"\nfor i = 1 to 2\nnext\n",
    u"if a = 1 then\nrem endif else\n# endif\nprint \"endif\"\nendif\n",
    u"sub s()\nif a = 1 then\nendsub\nendif\nfor i = 1 to 2\nfunction f()\nnext\nendfunction\nsub t\nendsub\n",
    u"if a = 1 then\n$ ~ endif\n\"open\nelse\nendif",
    std::u16string(u"if a = 1 then\n\0endif\n", 21),
    u"do while a < 1\ndo while\nloop\nendif:else: loop\nif: endif\n",
};

// Words of the language, names and signs in any order.
std::u16string RandomText(std::minstd_rand& random) {
  const char16_t* const pieces[] = {u"if",   u"then",  u"else", u"endif",  u"for", u"next", u"do",
                                    u"loop", u"while", u"open", u"rem",    u"a",   u"= 1",  u"\n",
                                    u"\n",   u":",     u"\"x",  u"endsub", u"sub", u"to"};
  std::u16string text;
  for (int i = 0; i < 60; ++i) {
    text += pieces[random() % std::size(pieces)];
    text += u' ';
  }
  return text;
}

// Where a skip from the reader's position ends, and what has been read then.
template <class Skip> auto EndOf(ScriptReader& reader, std::uint32_t from, Skip skip) {
  reader.Resume(from, TOKEN_DELIMITER);
  skip();
  const Token& token = reader.Current();
  return std::tuple(token.start, token.command, token.kind, reader.Position(), reader.PreviousKind());
}

void ExpectSameEnds(const std::u16string& text) {
  ScriptReader skipping;
  skipping.SetText(CString(u"script.bas"), text);
  ScriptReader indexed;
  indexed.SetText(CString(u"script.bas"), text);
  PairIndex index(indexed);
  constexpr std::tuple<PairIndex::Block, COMMAND_TYPE, COMMAND_TYPE, COMMAND_TYPE> kBlocks[] = {
      {PairIndex::Block::If, COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE},
      {PairIndex::Block::For, COMMAND_FOR, COMMAND_NEXT, COMMAND_NONE},
      {PairIndex::Block::Do, COMMAND_DO, COMMAND_LOOP, COMMAND_NONE}};
  for (std::uint32_t from = 0; from <= indexed.Text().size(); ++from)
    for (const auto& [block, open, close, middle] : kBlocks)
      ASSERT_EQ(EndOf(indexed, from, [&, block = block] { index.Skip(block); }),
                EndOf(skipping, from,
                      [&, open = open, close = close, middle = middle] { skipping.FindLastPair(open, close, middle); }))
          << CString(text).ToUtf8() << "\nfrom " << from;
}

TEST(PairIndex, a_skip_ends_where_reading_on_ends_from_every_place_of_a_text) {
  for (const std::u16string& text : kTexts)
    ExpectSameEnds(text);
  std::minstd_rand random(7);
  for (int i = 0; i < 40; ++i)
    ExpectSameEnds(RandomText(random));
}

TEST(PairIndex, blocks_inside_each_other_are_read_once_closed_or_not) {
  constexpr int kDepth = 5000;
  for (const bool closed : {false, true}) {
    std::u16string text;
    for (int i = 0; i < kDepth; ++i)
      text += u"if a = 1 then\n";
    for (int i = 0; closed && i < kDepth; ++i)
      text += u"endif\n";
    ScriptReader reader;
    reader.SetText(CString(u"script.bas"), text);
    PairIndex index(reader);
    const std::uint32_t end = static_cast<std::uint32_t>(reader.Text().size());
    constexpr std::uint32_t kLine = 14;
    for (std::uint32_t i = 0; i < kDepth; ++i) {
      reader.Resume(i * kLine + kLine - 1, TOKEN_COMMAND);
      index.Skip(PairIndex::Block::If);
      ASSERT_EQ(reader.Current().start, closed ? kDepth * kLine + (kDepth - 1 - i) * 6 : end);
    }
    EXPECT_EQ(index.Rereadings(), 0U);
  }
}

} // namespace
} // namespace brindle
