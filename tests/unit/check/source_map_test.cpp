// Where positions of a program that was put together from files were written.
#include "check/source_map.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace brindle {
namespace {

struct PlaceRow {
  const char* name;
  std::u16string_view before; // the position is behind the first occurrence of this text
  std::uint32_t file;
  int line;
  int column;
};

SourcePlace PlaceBehind(const SourceMap& map, std::u16string_view text, std::u16string_view before) {
  return map.PlaceOf(static_cast<std::uint32_t>(text.find(before) + before.size()));
}

void Expect(const SourceMap& map, std::u16string_view text, const PlaceRow& row) {
  const SourcePlace place = PlaceBehind(map, text, row.before);
  EXPECT_EQ(row.file, place.file) << row.name;
  EXPECT_EQ(row.line, place.line) << row.name;
  EXPECT_EQ(row.column, place.column) << row.name;
}

TEST(SourceMap, line_ends_are_one_sign_or_two) {
  const std::u16string_view text = u"a\nb\rc\r\nd\n\ne";
  InclusionMap inclusions;
  inclusions.Add(0, static_cast<std::uint32_t>(text.size()), 0, "main");
  const SourceMap map(text, inclusions);
  const PlaceRow rows[] = {
      {"first", u"", 0, 1, 1},
      {"behind a line feed", u"a\n", 0, 2, 1},
      {"behind a return", u"b\r", 0, 3, 1},
      {"behind both", u"c\r\n", 0, 4, 1},
      {"behind a blank line", u"d\n\n", 0, 6, 1},
      {"the last", u"\ne", 0, 6, 2},
  };
  for (const PlaceRow& row : rows)
    Expect(map, text, row);
}

TEST(SourceMap, an_included_text_counts_its_own_lines) {
  // As "include" does it: behind the end of its line, with line ends around the file's text.
  std::u16string text = u"one\r\ntwo\r\n";
  InclusionMap inclusions;
  inclusions.Add(0, static_cast<std::uint32_t>(text.size()), 0, "main");
  const std::u16string outer = u"\nouter1\nouter2\n\n";
  text.insert(4, outer); // between the return and the line feed
  inclusions.Add(4, static_cast<std::uint32_t>(outer.size()), 1, "outer");
  const auto at = static_cast<std::uint32_t>(text.find(u"outer2"));
  const std::u16string inner = u"\ninner1\n\n";
  text.insert(at, inner);
  inclusions.Add(at, static_cast<std::uint32_t>(inner.size()), 1, "inner");
  const std::u16string library = u"lib1\nlib2\n";
  inclusions.Add(static_cast<std::uint32_t>(text.size()), static_cast<std::uint32_t>(library.size()), 0, "library");
  text += library;

  const SourceMap map(text, inclusions);
  const PlaceRow rows[] = {
      {"before the include", u"on", 0, 1, 3},        {"the first included line", u"outer", 1, 1, 6},
      {"a line included there", u"inner1", 2, 1, 7}, {"behind what is included there", u"outer2", 1, 2, 7},
      {"behind the include", u"tw", 0, 2, 3},        {"the library", u"lib1\nlib", 3, 2, 4},
  };
  for (const PlaceRow& row : rows)
    Expect(map, text, row);
}

TEST(SourceMap, an_empty_text_has_one_place) {
  const SourceMap map(u"", InclusionMap());
  EXPECT_EQ(1, map.PlaceOf(0).line);
  EXPECT_EQ(1, map.PlaceOf(0).column);
}

} // namespace
} // namespace brindle
