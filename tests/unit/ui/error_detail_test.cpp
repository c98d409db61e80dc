// What the console shows below an error text.
#include "ui/console/error_detail.h"

#include <gtest/gtest.h>

namespace {

CErrorPlace Place(const char16_t* line, int column) {
  CErrorPlace place;
  place.number = 55;
  place.file = u"a.bas";
  place.line = 12;
  place.column = column;
  place.sourceLine = line;
  return place;
}

TEST(ErrorDetailTest, the_mark_stands_below_the_column) {
  EXPECT_EQ(brindle::FormatErrorPlace(Place(u"  next", 3)), "a.bas:12:3\n 12 |   next\n    |   ^\n");
  EXPECT_EQ(brindle::FormatErrorPlace(Place(u"next", 1)), "a.bas:12:1\n 12 | next\n    | ^\n");
}

TEST(ErrorDetailTest, tabs_stay_and_other_control_characters_do_not) {
  EXPECT_EQ(brindle::FormatErrorPlace(Place(u"\t\x1b[2Jx", 6)), "a.bas:12:6\n 12 | \t [2Jx\n    | \t    ^\n");
}

TEST(ErrorDetailTest, a_character_of_two_units_takes_one_place) {
  EXPECT_EQ(brindle::FormatErrorPlace(Place(u"\"\U0001F332\" x", 5)),
            "a.bas:12:5\n 12 | \"\U0001F332\" x\n    |     ^\n");
}

TEST(ErrorDetailTest, of_a_long_line_the_part_around_the_column_is_shown) {
  const std::u16string line(1000, u'x');
  const std::string text = brindle::FormatErrorPlace(Place(line.c_str(), 500));
  EXPECT_EQ(text, "a.bas:12:500\n 12 | ... " + std::string(160, 'x') + "\n    | " + std::string(104, ' ') + "^\n");
}

TEST(ErrorDetailTest, without_a_line_the_file_stands_alone) {
  CErrorPlace place = Place(u"", 0);
  place.line = 0;
  EXPECT_EQ(brindle::FormatErrorPlace(place), "a.bas\n");
  place.file = CString();
  EXPECT_EQ(brindle::FormatErrorPlace(place), "");
}

TEST(ErrorDetailTest, the_source_of_an_enciphered_script_is_not_shown) {
  EXPECT_EQ(brindle::FormatErrorPlace(Place(u"", 3)), "a.bas:12:3\n");
}

TEST(ErrorDetailTest, every_kind_of_call_has_its_words) {
  using Kind = CCallFrame::Kind;
  CErrorPlace place = Place(u"", 3);
  place.calls = {{Kind::Procedure, u"inner", u"lib\\b.bas", 4},
                 {Kind::Handler, u"OnTick", u"", 0},
                 {Kind::Handler, u"OnPing", u"a.bas", 7},
                 {Kind::Program, u"a.bas", u"main.bas", 3}};
  EXPECT_EQ(brindle::FormatErrorPlace(place), "a.bas:12:3\n"
                                              "  in inner, called at lib/b.bas:4\n"
                                              "  in the handler OnTick\n"
                                              "  in the handler OnPing, called at a.bas:7\n"
                                              "  in a.bas, run at main.bas:3\n");
}

TEST(ErrorDetailTest, of_many_calls_the_innermost_are_shown_and_the_others_counted) {
  CErrorPlace place = Place(u"", 1);
  place.calls.assign(13, {CCallFrame::Kind::Procedure, u"f", u"a.bas", 1});
  std::string shown = "a.bas:12:1\n";
  for (int i = 0; i < 12; ++i)
    shown += "  in f, called at a.bas:1\n";
  EXPECT_EQ(brindle::FormatErrorPlace(place), shown + "  and 1 call more\n");
  place.callsLeftOut = 1000;
  EXPECT_EQ(brindle::FormatErrorPlace(place), shown + "  and 1001 calls more\n");
}

TEST(ErrorDetailTest, a_character_of_two_units_is_not_cut_where_a_long_line_begins) {
  std::u16string line;
  while (line.size() < 1000)
    line += u"\U0001F332";
  // The part would begin in the middle of a character.
  for (const int column : {301, 302}) {
    const std::string text = brindle::FormatErrorPlace(Place(line.c_str(), column));
    EXPECT_EQ(text.find("\xEF\xBF\xBD"), std::string::npos) << text;
    EXPECT_NE(text.find("| ... \U0001F332"), std::string::npos) << text;
  }
}

TEST(ErrorDetailTest, what_a_terminal_would_obey_in_a_files_name_is_not_shown) {
  CErrorPlace place = Place(u"next", 1);
  place.file = u"a\x1b[2J\x7f.bas";
  EXPECT_EQ(brindle::FormatErrorPlace(place), "a?[2J?.bas:12:1\n 12 | next\n    | ^\n");
}

} // namespace
