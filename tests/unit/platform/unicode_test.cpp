#include "platform/unicode.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace brindle {
namespace {

TEST(Unicode, units_map_by_simple_case_mapping) {
  struct Row {
    const char* name;
    char16_t upper;
    char16_t lower;
  };
  const Row rows[] = {
      {"ascii first", u'A', u'a'},         {"ascii last", u'Z', u'z'},
      {"latin-1", 0x00C4, 0x00E4},         {"latin y with diaeresis", 0x0178, 0x00FF},
      {"latin extended", 0x0100, 0x0101},  {"greek", 0x03A9, 0x03C9},
      {"cyrillic", 0x0416, 0x0436},        {"cyrillic io", 0x0401, 0x0451},
      {"armenian", 0x0531, 0x0561},        {"georgian", 0x1C90, 0x10D0},
      {"cherokee", 0x13A0, 0xAB70},        {"sharp s capital is a one-way pair", 0x1E9E, 0x00DF},
      {"greek with iota", 0x1FBC, 0x1FB3}, {"roman number", 0x2160, 0x2170},
      {"circled", 0x24B6, 0x24D0},         {"full width", 0xFF21, 0xFF41},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ToLowerUnit(row.upper), row.lower);
    EXPECT_EQ(ToLowerUnit(row.lower), row.lower);
    EXPECT_EQ(ToUpperUnit(row.upper), row.upper);
    if (row.lower != 0x00DF) {
      EXPECT_EQ(ToUpperUnit(row.lower), row.upper);
    }
  }
}

TEST(Unicode, units_with_a_longer_full_mapping_keep_their_simple_one) {
  EXPECT_EQ(ToUpperUnit(0x00DF), 0x00DF); // sharp s
  EXPECT_EQ(ToUpperUnit(0xFB01), 0xFB01); // ligature fi
  EXPECT_EQ(ToLowerUnit(0x0130), u'i');   // I with dot, in every locale
  EXPECT_EQ(ToUpperUnit(0x0131), u'I');   // dotless i
  EXPECT_EQ(ToLowerUnit(u'I'), u'i');
  EXPECT_EQ(ToUpperUnit(0x1F80), 0x1F88);
  EXPECT_EQ(ToUpperUnit(0x01C6), 0x01C4); // dz with caron, not its title case
  EXPECT_EQ(ToLowerUnit(0x01C5), 0x01C6);
}

TEST(Unicode, caseless_units_and_surrogates_stay) {
  for (const char16_t unit : {u'0', u'@', u'[', u'`', u'{', char16_t{0x7F}, char16_t{0xD7}, char16_t{0xF7},
                              char16_t{0x3042}, char16_t{0x4E00}, char16_t{0xD800}, char16_t{0xD801}, char16_t{0xDBFF},
                              char16_t{0xDC28}, char16_t{0xDFFF}, char16_t{0xFFFF}}) {
    SCOPED_TRACE(static_cast<unsigned>(unit));
    EXPECT_EQ(ToLowerUnit(unit), unit);
    EXPECT_EQ(ToUpperUnit(unit), unit);
  }
}

TEST(Unicode, mapping_twice_changes_nothing_more) {
  for (unsigned code = 0; code <= 0xFFFF; ++code) {
    const auto unit = static_cast<char16_t>(code);
    ASSERT_EQ(ToLowerUnit(ToLowerUnit(unit)), ToLowerUnit(unit)) << code;
    ASSERT_EQ(ToUpperUnit(ToUpperUnit(unit)), ToUpperUnit(unit)) << code;
  }
}

TEST(Unicode, texts_map_in_place_with_their_surrogate_pairs) {
  std::u16string text = u"Ab\u00C4\U00010400\U0001E900\U0001F600";
  ToLower(text);
  EXPECT_EQ(text, u"ab\u00E4\U00010428\U0001E922\U0001F600");
  ToUpper(text);
  EXPECT_EQ(text, u"AB\u00C4\U00010400\U0001E900\U0001F600");

  std::u16string broken = {u'A', 0xD801, u'B', 0xDC00, u'C', 0xD801};
  ToLower(broken);
  EXPECT_EQ(broken, (std::u16string{u'a', 0xD801, u'b', 0xDC00, u'c', 0xD801}));

  std::u16string empty;
  ToLower(empty);
  EXPECT_TRUE(empty.empty());
}

TEST(Unicode, letters_digits_and_spaces_are_told_by_category) {
  struct Row {
    const char* name;
    char16_t unit;
    bool letter;
    bool digit;
    bool space;
  };
  const Row rows[] = {
      {"a", u'a', true, false, false},
      {"Z", u'Z', true, false, false},
      {"at sign", u'@', false, false, false},
      {"underscore", u'_', false, false, false},
      {"0", u'0', false, true, false},
      {"9", u'9', false, true, false},
      {"slash before 0", u'/', false, false, false},
      {"colon after 9", u':', false, false, false},
      {"blank", u' ', false, false, true},
      {"tab", u'\t', false, false, true},
      {"carriage return", u'\r', false, false, true},
      {"backspace before tab", 0x08, false, false, false},
      {"shift out after carriage return", 0x0E, false, false, false},
      {"next line", 0x85, false, false, true},
      {"no-break space", 0xA0, false, false, true},
      {"degree", 0xB0, false, false, false},
      {"superscript two", 0xB2, false, false, false},
      {"ordinal", 0xAA, true, false, false},
      {"e acute", 0xE9, true, false, false},
      {"times", 0xD7, false, false, false},
      {"title case letter", 0x01C5, true, false, false},
      {"modifier letter", 0x02B0, true, false, false},
      {"combining acute", 0x0301, false, false, false},
      {"hebrew", 0x05D0, true, false, false},
      {"arabic digit", 0x0663, false, true, false},
      {"devanagari digit", 0x0967, false, true, false},
      {"roman number is Nl", 0x2160, false, false, false},
      {"em space", 0x2003, false, false, true},
      {"zero width space", 0x200B, false, false, false},
      {"line separator", 0x2028, false, false, true},
      {"ideographic space", 0x3000, false, false, true},
      {"hiragana", 0x3042, true, false, false},
      {"ideograph", 0x4E2D, true, false, false},
      {"hangul", 0xAC00, true, false, false},
      {"surrogate", 0xD835, false, false, false},
      {"private use", 0xE000, false, false, false},
      {"full-width digit", 0xFF15, false, true, false},
      {"not a character", 0xFFFF, false, false, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(IsLetter(row.unit), row.letter);
    EXPECT_EQ(IsDecimalDigit(row.unit), row.digit);
    EXPECT_EQ(IsSpace(row.unit), row.space);
  }
}

TEST(Unicode, utf8_is_read_only_when_well_formed) {
  struct Row {
    const char* name;
    std::string_view bytes;
    std::size_t length;
    char32_t codePoint;
  };
  const Row rows[] = {
      {"empty", "", 0, 0},
      {"nul", std::string_view("\0", 1), 1, 0},
      {"last of one byte", "\x7F", 1, 0x7F},
      {"first of two", "\xC2\x80", 2, 0x80},
      {"last of two", "\xDF\xBF", 2, 0x7FF},
      {"first of three", "\xE0\xA0\x80", 3, 0x800},
      {"before the surrogates", "\xED\x9F\xBF", 3, 0xD7FF},
      {"behind the surrogates", "\xEE\x80\x80", 3, 0xE000},
      {"last of three", "\xEF\xBF\xBF", 3, 0xFFFF},
      {"first of four", "\xF0\x90\x80\x80", 4, 0x10000},
      {"last of all", "\xF4\x8F\xBF\xBF", 4, 0x10FFFF},
      {"more behind", "\xC3\xA9x", 2, 0xE9},
      {"overlong two", "\xC0\x80", 0, 0},
      {"overlong two, last", "\xC1\xBF", 0, 0},
      {"overlong three", "\xE0\x9F\xBF", 0, 0},
      {"overlong four", "\xF0\x8F\xBF\xBF", 0, 0},
      {"surrogate", "\xED\xA0\x80", 0, 0},
      {"last surrogate", "\xED\xBF\xBF", 0, 0},
      {"too high", "\xF4\x90\x80\x80", 0, 0},
      {"no such lead", "\xF8\x88\x80\x80\x80", 0, 0},
      {"continuation alone", "\x80", 0, 0},
      {"cut short", "\xE2\x82", 0, 0},
      {"broken off", "\xE2\x82x", 0, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    char32_t codePoint = 0;
    EXPECT_EQ(ReadUtf8(row.bytes, codePoint), row.length);
    EXPECT_EQ(codePoint, row.codePoint);
    if (row.length > 0) {
      std::string written;
      AppendUtf8(codePoint, written);
      EXPECT_EQ(written, row.bytes.substr(0, row.length));
    }
  }
}

TEST(Unicode, utf16_is_read_and_written_by_code_point) {
  const std::u16string text = {u'a', 0xD83D, 0xDE00, 0xDE00, 0xD83D};
  std::size_t index = 0;
  std::vector<char32_t> read;
  std::u16string written;
  while (index < text.size()) {
    read.push_back(ReadUtf16(text, index));
    AppendUtf16(read.back(), written);
  }
  EXPECT_EQ(read, (std::vector<char32_t>{U'a', 0x1F600, 0xDE00, 0xD83D}));
  EXPECT_EQ(written, text);

  std::string bytes;
  AppendUtf8(0xD83D, bytes);
  EXPECT_EQ(bytes, "\xEF\xBF\xBD");
}

} // namespace
} // namespace brindle
