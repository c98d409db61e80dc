#include "brindle/text.h"

#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

static_assert(sizeof(CString) == sizeof(void*), "a text in a value takes one pointer");
static_assert(std::is_nothrow_move_constructible_v<CString>);

TEST(Text, bytes_become_the_units_of_their_values) {
  EXPECT_EQ(CString::FromBytes({}), CString());
  std::string bytes;
  std::u16string units;
  for (int length = 1; length <= 300; ++length) {
    bytes.push_back(static_cast<char>(static_cast<unsigned char>(length * 7)));
    units.push_back(static_cast<char16_t>(length * 7 % 256));
    const CString text = CString::FromBytes(bytes);
    ASSERT_EQ(text.View(), units);
    ASSERT_EQ(text.Units()[length], 0);
  }
}

TEST(Text, constructors_take_texts_of_every_kind) {
  const unsigned short units[] = {u'a', u'b', 0, u'c'};
  EXPECT_EQ(CString(), u"");
  EXPECT_EQ(CString(units), u"ab");
  EXPECT_EQ(CString(u"ab"), u"ab");
  EXPECT_EQ(CString("ab"), u"ab");
  EXPECT_EQ(CString(std::u16string_view(u"abc").substr(1)), u"bc");
  EXPECT_EQ(CString(units, 1), u"a");
  EXPECT_EQ(CString(units, 4).GetLength(), 4);
  EXPECT_EQ(CString(u"abc", 2), u"ab");
  EXPECT_EQ(CString(u"abc", 0), u"");
  EXPECT_EQ(CString(u"abc", -1), u"");
  EXPECT_EQ(CString(u'x'), u"x");
  EXPECT_EQ(CString(u'x', 3), u"xxx");
  EXPECT_EQ(CString(u'x', 0), u"");
  EXPECT_EQ(CString(u'x', -5), u"");
}

TEST(Text, null_is_the_empty_text) {
  EXPECT_EQ(CString(static_cast<const unsigned short*>(nullptr)), u"");
  EXPECT_EQ(CString(static_cast<const char16_t*>(nullptr)), u"");
  EXPECT_EQ(CString(static_cast<const char*>(nullptr)), u"");
  CString text(u"old");
  text = static_cast<const unsigned short*>(nullptr);
  EXPECT_TRUE(text.IsEmpty());
}

TEST(Text, utf8_there_and_back) {
  const std::string utf8 = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80";
  const CString text = CString::FromUtf8(utf8);
  EXPECT_EQ(text, u"a\u00E4\u20AC\U0001F600");
  EXPECT_EQ(text.GetLength(), 5); // the last character takes two units
  EXPECT_EQ(text.ToUtf8(), utf8);
  EXPECT_EQ(CString(static_cast<char16_t>(0xD800)).ToUtf8(), "\xEF\xBF\xBD");
  EXPECT_EQ(CString::FromUtf8(std::string_view("a\0b", 3)).GetLength(), 3);
}

TEST(Text, units_are_zero_terminated) {
  EXPECT_EQ(CString().GetString()[0], 0);
  const CString text(u"abc");
  EXPECT_EQ(text.GetString()[3], 0);
  const unsigned short* units = text;
  EXPECT_EQ(units[2], u'c');
  EXPECT_EQ(text[1], u'b');
  EXPECT_EQ(text.GetAt(0), u'a');
}

TEST(Text, copies_share_their_units_until_one_is_written) {
  const CString original(u"shared text");
  CString copy(original);
  EXPECT_EQ(copy.GetString(), original.GetString());
  CString assigned;
  assigned = original;
  EXPECT_EQ(assigned.GetString(), original.GetString());
  EXPECT_EQ(original.Left(11).GetString(), original.GetString());

  copy.SetAt(0, u'S');
  EXPECT_EQ(copy, u"Shared text");
  EXPECT_EQ(original, u"shared text");
  EXPECT_EQ(assigned, u"shared text");
}

TEST(Text, every_writing_member_leaves_the_copies_alone) {
  const CString original(u" abc Abc ");
  const auto check = [&](const char* name, auto write) {
    CString copy(original);
    write(copy);
    EXPECT_EQ(original, u" abc Abc ") << name;
    EXPECT_NE(copy, original) << name;
  };
  check("SetAt", [](CString& text) { text.SetAt(0, u'x'); });
  check("append", [](CString& text) { text += u"x"; });
  check("append unit", [](CString& text) { text += u'x'; });
  check("append text", [](CString& text) { text += CString(u"x"); });
  check("MakeLower", [](CString& text) { text.MakeLower(); });
  check("MakeUpper", [](CString& text) { text.MakeUpper(); });
  check("MakeReverse", [](CString& text) { text.MakeReverse(); });
  check("Trim", [](CString& text) { text.Trim(); });
  check("Replace", [](CString& text) { text.Replace(u'a', u'x'); });
  check("Remove", [](CString& text) { text.Remove(u'a'); });
  check("Insert", [](CString& text) { text.Insert(2, CString(u"x")); });
  check("Delete", [](CString& text) { text.Delete(2); });
  check("Empty", [](CString& text) { text.Empty(); });
  check("Format", [](CString& text) { text.Format(u"%d", 5); });
  check("GetBuffer", [](CString& text) {
    text.GetBuffer(3)[0] = u'x';
    text.ReleaseBuffer();
  });
  check("GetBufferSetLength", [](CString& text) { text.GetBufferSetLength(2)[0] = u'x'; });
}

TEST(Text, moved_from_text_is_usable) {
  CString source(u"text");
  CString target(std::move(source));
  EXPECT_EQ(target, u"text");
  EXPECT_EQ(source, u"");
  source = u"again";
  EXPECT_EQ(source, u"again");
  CString assigned(u"old");
  assigned = std::move(target);
  EXPECT_EQ(assigned, u"text");
  CString& same = assigned;
  assigned = std::move(same);
  EXPECT_EQ(assigned, u"text");
  assigned = static_cast<const CString&>(same);
  EXPECT_EQ(assigned, u"text");
}

TEST(Text, comparison_goes_by_unit_and_a_prefix_sorts_first) {
  struct Row {
    const char16_t* left;
    const char16_t* right;
    int order;
    int orderNoCase;
  };
  const Row rows[] = {{u"", u"", 0, 0},        {u"", u"a", -1, -1},  {u"a", u"", 1, 1},       {u"a", u"a", 0, 0},
                      {u"a", u"ab", -1, -1},   {u"B", u"a", -1, 1},  {u"a", u"A", 1, 0},      {u"Abc", u"aBC", -1, 0},
                      {u"ä", u"Ä", 1, 0},      {u"z", u"ä", -1, -1}, {u"\uFFFF", u"a", 1, 1}, {u"10", u"9", -1, -1},
                      {u"abc", u"abd", -1, -1}};
  const auto sign = [](int value) { return (value > 0) - (value < 0); };
  for (const Row& row : rows) {
    const CString left(row.left);
    const CString right(row.right);
    EXPECT_EQ(sign(left.Compare(right)), row.order) << left.ToUtf8() << " " << right.ToUtf8();
    EXPECT_EQ(sign(left.CompareNoCase(right)), row.orderNoCase) << left.ToUtf8() << " " << right.ToUtf8();
    EXPECT_EQ(left == right, row.order == 0);
    EXPECT_EQ(left != right, row.order != 0);
    EXPECT_EQ(left < right, row.order < 0);
    EXPECT_EQ(left > right, row.order > 0);
    EXPECT_EQ(left <= right, row.order <= 0);
    EXPECT_EQ(left >= right, row.order >= 0);
    EXPECT_EQ(left == row.right, row.order == 0);
    EXPECT_EQ(left != row.right, row.order != 0);
  }
}

TEST(Text, zeros_inside_count) {
  const CString text(u"a\0b", 3);
  EXPECT_EQ(text.GetLength(), 3);
  EXPECT_NE(text, CString(u"a"));
  EXPECT_EQ(text.Find(u'b'), 2);
  EXPECT_EQ((text + text).GetLength(), 6);
}

TEST(Text, parts_are_clamped_to_the_text) {
  const CString text(u"abcdef");
  struct Row {
    int first;
    int count;
    const char16_t* expected;
  };
  const Row rows[] = {
      {0, 0, u""},           {0, 3, u"abc"},          {2, 2, u"cd"},     {4, 9, u"ef"},           {6, 1, u""},
      {7, 1, u""},           {INT_MAX, 1, u""},       {-1, 2, u"ab"},    {INT_MIN, 3, u"abc"},    {2, -1, u""},
      {2, INT_MAX, u"cdef"}, {INT_MAX, INT_MAX, u""}, {0, 6, u"abcdef"}, {0, INT_MAX, u"abcdef"}, {5, INT_MIN, u""}};
  for (const Row& row : rows)
    EXPECT_EQ(text.Mid(row.first, row.count), row.expected) << row.first << " " << row.count;
  EXPECT_EQ(text.Mid(2), u"cdef");
  EXPECT_EQ(text.Mid(-2), u"abcdef");
  EXPECT_EQ(text.Mid(6), u"");
  EXPECT_EQ(text.Mid(INT_MAX), u"");
  EXPECT_EQ(text.Left(2), u"ab");
  EXPECT_EQ(text.Left(-1), u"");
  EXPECT_EQ(text.Left(INT_MAX), u"abcdef");
  EXPECT_EQ(text.Right(2), u"ef");
  EXPECT_EQ(text.Right(0), u"");
  EXPECT_EQ(text.Right(-1), u"");
  EXPECT_EQ(text.Right(INT_MIN), u"");
  EXPECT_EQ(text.Right(INT_MAX), u"abcdef");
  EXPECT_EQ(CString().Mid(0, 5), u"");
  EXPECT_EQ(CString().Right(5), u"");
}

TEST(Text, find_starts_where_it_is_told) {
  const CString text(u"abcabc");
  EXPECT_EQ(text.Find(u'b'), 1);
  EXPECT_EQ(text.Find(u'b', 1), 1);
  EXPECT_EQ(text.Find(u'b', 2), 4);
  EXPECT_EQ(text.Find(u'b', 5), -1);
  EXPECT_EQ(text.Find(u'b', 6), -1);
  EXPECT_EQ(text.Find(u'b', INT_MAX), -1);
  EXPECT_EQ(text.Find(u'x'), -1);
  EXPECT_EQ(text.Find(CString(u"bc")), 1);
  EXPECT_EQ(text.Find(CString(u"bc"), 2), 4);
  EXPECT_EQ(text.Find(CString(u"bc"), 5), -1);
  EXPECT_EQ(text.Find(CString(u"abcabcd")), -1);
  EXPECT_EQ(text.Find(CString(u"x"), INT_MAX), -1);
  EXPECT_EQ(text.FindOneOf(CString(u"xcb")), 1);
  EXPECT_EQ(text.FindOneOf(CString(u"xyz")), -1);
  EXPECT_EQ(text.FindOneOf(CString()), -1);
  EXPECT_EQ(text.ReverseFind(u'b'), 4);
  EXPECT_EQ(text.ReverseFind(u'x'), -1);
  EXPECT_EQ(CString().Find(u'a'), -1);
  EXPECT_EQ(CString().ReverseFind(u'a'), -1);
}

TEST(Text, replace_counts_what_it_replaced_from_left_to_right) {
  struct Row {
    const char16_t* text;
    const char16_t* from;
    const char16_t* to;
    int count;
    const char16_t* expected;
  };
  const Row rows[] = {{u"abcabc", u"b", u"XY", 2, u"aXYcaXYc"},
                      {u"abcabc", u"bc", u"", 2, u"aa"},
                      {u"aaa", u"aa", u"b", 1, u"ba"},
                      {u"aaaa", u"aa", u"a", 2, u"aa"},
                      {u"abc", u"x", u"y", 0, u"abc"},
                      {u"abc", u"", u"y", 0, u"abc"},
                      {u"", u"a", u"b", 0, u""},
                      {u"abc", u"abc", u"", 1, u""},
                      {u"abc", u"abcd", u"x", 0, u"abc"},
                      {u"ab", u"a", u"aa", 1, u"aab"},
                      {u"abab", u"ab", u"ab", 2, u"abab"}};
  for (const Row& row : rows) {
    CString text(row.text);
    EXPECT_EQ(text.Replace(CString(row.from), CString(row.to)), row.count) << CString(row.text).ToUtf8();
    EXPECT_EQ(text, row.expected);
  }
  CString text(u"banana");
  EXPECT_EQ(text.Replace(u'a', u'o'), 3);
  EXPECT_EQ(text, u"bonono");
  EXPECT_EQ(text.Remove(u'o'), 3);
  EXPECT_EQ(text, u"bnn");
  EXPECT_EQ(text.Remove(u'x'), 0);
}

TEST(Text, replace_may_be_given_the_text_itself) {
  CString text(u"ab");
  EXPECT_EQ(text.Replace(text, CString(u"x")), 1);
  EXPECT_EQ(text, u"x");
  text = u"a-a";
  EXPECT_EQ(text.Replace(CString(u"a"), text), 2);
  EXPECT_EQ(text, u"a-a-a-a");
}

TEST(Text, insert_is_clamped_and_gives_the_new_length) {
  CString text(u"bd");
  EXPECT_EQ(text.Insert(1, CString(u"c")), 3);
  EXPECT_EQ(text.Insert(0, CString(u"a")), 4);
  EXPECT_EQ(text.Insert(99, CString(u"e")), 5);
  EXPECT_EQ(text, u"abcde");
  EXPECT_EQ(text.Insert(-3, CString(u"<")), 6);
  EXPECT_EQ(text, u"<abcde");
  EXPECT_EQ(text.Insert(3, text), 12);
  EXPECT_EQ(text, u"<ab<abcdecde");
  EXPECT_EQ(text.Insert(1, CString()), 12);
}

TEST(Text, delete_gives_the_new_length) {
  CString text(u"abcdef");
  EXPECT_EQ(text.Delete(1), 5);
  EXPECT_EQ(text, u"acdef");
  EXPECT_EQ(text.Delete(1, 2), 3);
  EXPECT_EQ(text, u"aef");
  EXPECT_EQ(text.Delete(2, INT_MAX), 2);
  EXPECT_EQ(text, u"ae");
  EXPECT_EQ(text.Delete(2), 2);
  EXPECT_EQ(text.Delete(0, 0), 2);
  EXPECT_EQ(text.Delete(0, -1), 2);
  EXPECT_EQ(text.Delete(INT_MAX, INT_MAX), 2);
  EXPECT_EQ(text, u"ae");
  EXPECT_EQ(text.Delete(0, 2), 0);
  EXPECT_EQ(text, u"");
  EXPECT_EQ(text.Delete(0), 0);
}

TEST(Text, delete_before_the_start_begins_at_the_start) {
  CString text(u"abcdef");
  EXPECT_EQ(text.Delete(-2, 2), 4);
  EXPECT_EQ(text, u"cdef");
}

TEST(Text, case_and_order_of_units) {
  CString text(u"Straße Ärger ΑΒΓ 123");
  text.MakeUpper();
  EXPECT_EQ(text.GetLength(), 20);
  EXPECT_EQ(text.Mid(7), u"ÄRGER ΑΒΓ 123");
  text.MakeLower();
  EXPECT_EQ(text.Mid(7), u"ärger αβγ 123");
  EXPECT_EQ(CString(u"abc").MakeReverse(), u"cba");
  EXPECT_EQ(CString().MakeReverse(), u"");
  EXPECT_EQ(CString().MakeUpper(), u"");
  EXPECT_EQ(CString().MakeLower(), u"");
}

TEST(Text, trim_takes_white_space_or_the_units_given) {
  EXPECT_EQ(CString(u" \t\r\n a b \v\f").Trim(), u"a b");
  EXPECT_EQ(CString(u"  a ").TrimLeft(), u"a ");
  EXPECT_EQ(CString(u"  a ").TrimRight(), u"  a");
  EXPECT_EQ(CString(u" \t ").Trim(), u"");
  EXPECT_EQ(CString().Trim(), u"");
  EXPECT_EQ(CString(u"xyaxy").TrimLeft(CString(u"yx")), u"axy");
  EXPECT_EQ(CString(u"xyaxy").TrimRight(CString(u"yx")), u"xya");
  EXPECT_EQ(CString(u"xyx").TrimLeft(CString(u"xy")), u"");
  EXPECT_EQ(CString(u"xyx").TrimRight(CString(u"xy")), u"");
  EXPECT_EQ(CString(u" a ").TrimLeft(CString()), u" a ");
  EXPECT_EQ(CString(u" a ").TrimRight(CString()), u" a ");
  CString text(u"abc");
  EXPECT_EQ(text.TrimLeft(text), u"");
}

TEST(Text, own_text_can_be_appended) {
  CString text(u"ab");
  text += text;
  EXPECT_EQ(text, u"abab");
  for (int i = 0; i < 10; ++i)
    text += text;
  EXPECT_EQ(text.GetLength(), 4096);
  EXPECT_EQ(text.Left(6), u"ababab");
  EXPECT_EQ(text.Right(5), u"babab");

  CString part(u"0123456789");
  std::u16string expected = u"0123456789";
  for (int i = 0; i < 50; ++i) { // in place and with growth
    const std::u16string_view middle = part.View().substr(2, 5);
    expected += std::u16string(middle);
    part.Append(middle);
    ASSERT_EQ(part.View(), expected);
  }
  part.Append(part.View());
  EXPECT_EQ(part.View(), expected + expected);
  CString shared(part);
  part.Append(shared.View().substr(3));
  EXPECT_EQ(shared.View(), expected + expected);
}

TEST(Text, sums_join_their_texts) {
  const CString a(u"a");
  EXPECT_EQ(a + CString(u"b"), u"ab");
  EXPECT_EQ(a + u"b", u"ab");
  EXPECT_EQ(u"b" + a, u"ba");
  EXPECT_EQ(a + u'c', u"ac");
  EXPECT_EQ(CString() + CString(), u"");
  EXPECT_EQ(a + CString(), u"a");
  CString text;
  text += a;
  EXPECT_EQ(text.GetString(), a.GetString()); // shared, not copied
  text += CString();
  EXPECT_EQ(text, u"a");
}

TEST(Text, appending_unit_by_unit_stays_linear_in_moves) {
  CString text;
  int moves = 0;
  const unsigned short* last = nullptr;
  for (int i = 0; i < 100000; ++i) {
    text += static_cast<char16_t>(u'a' + i % 26);
    moves += text.GetString() != last ? 1 : 0;
    last = text.GetString();
  }
  EXPECT_EQ(text.GetLength(), 100000);
  EXPECT_EQ(text.GetAt(99999), u'a' + 99999 % 26);
  EXPECT_LT(moves, 200);
}

TEST(Text, buffer_holds_the_text_and_takes_a_new_one) {
  CString text(u"abc");
  unsigned short* buffer = text.GetBuffer(10);
  EXPECT_EQ(CString(buffer), u"abc");
  for (int i = 0; i < 10; ++i)
    buffer[i] = static_cast<unsigned short>(u'0' + i);
  buffer[10] = 0;
  text.ReleaseBuffer();
  EXPECT_EQ(text, u"0123456789");

  buffer = text.GetBuffer(0); // never less than the text
  EXPECT_EQ(CString(buffer), u"0123456789");
  buffer[4] = 0;
  text.ReleaseBuffer();
  EXPECT_EQ(text, u"0123");

  EXPECT_NE(text.GetBuffer(20), nullptr);
  text.ReleaseBuffer(2);
  EXPECT_EQ(text, u"01");
  EXPECT_EQ(text.GetString()[2], 0);

  EXPECT_NE(text.GetBuffer(20), nullptr);
  text.ReleaseBuffer(0);
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(text, CString());
}

TEST(Text, buffer_without_a_zero_ends_with_its_room) {
  CString text;
  unsigned short* buffer = text.GetBuffer(4);
  for (int i = 0; i < 4; ++i)
    buffer[i] = u'x';
  buffer[4] = 0;
  text.ReleaseBuffer();
  EXPECT_EQ(text, u"xxxx");
}

TEST(Text, buffer_of_an_empty_text) {
  CString text;
  EXPECT_EQ(text.GetBuffer(0)[0], 0);
  text.ReleaseBuffer();
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(text, u"");
  CString never;
  never.ReleaseBuffer();
  never.ReleaseBuffer(5);
  EXPECT_EQ(never.GetLength(), 0);
}

TEST(Text, buffer_set_to_a_length_has_it_at_once) {
  CString text(u"abc");
  unsigned short* buffer = text.GetBufferSetLength(5);
  EXPECT_EQ(text.GetLength(), 5);
  EXPECT_EQ(text.Left(3), u"abc");
  buffer[3] = u'd';
  buffer[4] = u'e';
  EXPECT_EQ(text, u"abcde");
  EXPECT_NE(text.GetBufferSetLength(2), nullptr);
  EXPECT_EQ(text, u"ab");
  EXPECT_NE(text.GetBufferSetLength(0), nullptr);
  EXPECT_EQ(text, u"");
}

TEST(Text, equal_texts_have_equal_hashes_however_they_were_made) {
  CString made(u"hello");
  EXPECT_EQ(made.Hash(), CString::HashOf(u"hello"));
  CString other(u"hell");
  EXPECT_NE(other.Hash(), made.Hash());
  other += u'o';
  EXPECT_EQ(other.Hash(), made.Hash());
  other.SetAt(0, u'j');
  EXPECT_NE(other.Hash(), made.Hash());
  other.GetBuffer(5)[0] = u'h';
  other.ReleaseBuffer();
  EXPECT_EQ(other.Hash(), made.Hash());
  other.MakeUpper();
  EXPECT_EQ(other.Hash(), CString(u"HELLO").Hash());
  other.MakeReverse();
  EXPECT_EQ(other.Hash(), CString(u"OLLEH").Hash());
  other.Empty();
  EXPECT_EQ(other.Hash(), CString().Hash());
  EXPECT_EQ(other.Hash(), CString::HashOf({}));
  CString emptied(u"x");
  emptied.GetBuffer(1)[0] = 0;
  emptied.ReleaseBuffer();
  EXPECT_EQ(emptied.Hash(), CString().Hash());

  std::unordered_set<CString> set{CString(u"a"), CString(u"b"), CString(u"a")};
  EXPECT_EQ(set.size(), 2U);
}

TEST(Text, hashes_of_many_names_differ) {
  std::unordered_set<std::uint32_t> hashes;
  for (int i = 0; i < 10000; ++i) {
    CString name;
    name.Format(u"variable%d", i);
    hashes.insert(name.Hash());
  }
  EXPECT_GT(hashes.size(), 9990U);
}

TEST(Text, texts_beyond_the_limit_are_refused) {
  const CString quarter(u'x', 1 << 20);
  CString text = quarter;
  EXPECT_THROW(static_cast<void>(text.GetBuffer(CString::kMaxLength + 1)), std::length_error);
  EXPECT_EQ(text, quarter);
}

template <class... Arguments> void ExpectFormat(const char* format, Arguments... arguments) {
  char expected[2048];
  std::snprintf(expected, sizeof expected, format, arguments...);
  const CString wide(format);
  CString text;
  text.Format(wide.GetString(), arguments...);
  EXPECT_EQ(text.ToUtf8(), expected) << format;
  text.Format(wide.Units(), arguments...);
  EXPECT_EQ(text.ToUtf8(), expected) << format;
  text.Format(format, arguments...);
  EXPECT_EQ(text.ToUtf8(), expected) << format;
}

TEST(TextFormat, numbers_print_as_with_printf) {
  for (const int value : {0, 1, -1, 42, -42, 65535, INT_MAX, INT_MIN})
    for (const char* format : {"%d", "%i", "%5d", "%-12d|", "%+d", "% d", "%012d", "%.8d", "a%db", "%u", "%x", "%X",
                               "%#x", "%o", "%#o", "%8.3x"})
      ExpectFormat(format, value);
  for (const long long value : {0LL, -1LL, LLONG_MAX, LLONG_MIN, 1LL << 40})
    for (const char* format : {"%lld", "%lli", "%llu", "%llx", "%20llX", "%llo"})
      ExpectFormat(format, value);
  for (const long value : {0L, -1L, LONG_MAX, LONG_MIN})
    for (const char* format : {"%ld", "%li", "%lu", "%lx"})
      ExpectFormat(format, value);
  for (const double value : {0.0, -0.5, 1.0 / 3, 1e10, 1e-10, 123456.789})
    for (const char* format :
         {"%f", "%e", "%g", "%E", "%G", "%.2f", "%10.3f", "%-10.1e|", "%+g", "%#g", "%010f", "%.0f"})
      ExpectFormat(format, value);
}

TEST(TextFormat, short_sizes_cut_the_number_as_printf_does) {
  for (const int value : {0, 5, 32767, 32768, 65535, 70000, -1, -32769})
    for (const char* format : {"%hd", "%hi", "%hu", "%hx", "%ho", "%hhd", "%hhu", "%hhx"})
      ExpectFormat(format, value);
}

TEST(TextFormat, several_arguments_and_stars) {
  ExpectFormat("%d %f %x|%%|", 1, 2.5, 255);
  ExpectFormat("%*d|%-*d|", 6, 42, 6, 42);
  ExpectFormat("%*d|", -6, 42);
  ExpectFormat("%.*f|%*.*f", 2, 1.23456, 8, 3, 1.23456);
  ExpectFormat("%.*f", -1, 1.5);
  ExpectFormat("%c%c", 'a', 'b');
  ExpectFormat("%5c|%-5c|", 'a', 'b');
  ExpectFormat("no conversions");
  ExpectFormat("%%");
  ExpectFormat("100%%", 0);
}

TEST(TextFormat, texts_by_their_width) {
  const CString wide(u"wide ä");
  CString text;
  text.Format(u"%s|%10s|%-8s|%.2s", wide.GetString(), wide.GetString(), wide.GetString(), wide.GetString());
  EXPECT_EQ(text, u"wide ä|    wide ä|wide ä  |wi");
  text.Format(u"%S|%hs|%5S|%.1hs", "narrow", "narrow", "ab", "ab");
  EXPECT_EQ(text, u"narrow|narrow|   ab|a");
  text.Format(u"%ls", wide.GetString());
  EXPECT_EQ(text, wide);
  text.Format(u"%s", CString().GetString());
  EXPECT_EQ(text, u"");
  text.Format(u"ä %c", 0x20AC);
  EXPECT_EQ(text, u"ä \u20AC");
}

TEST(TextFormat, own_text_may_be_an_argument) {
  CString text(u"abc");
  text.Format(u"<%s|%s>", text.GetString(), text.GetString());
  EXPECT_EQ(text, u"<abc|abc>");
  text.Format(u"%d", 5);
  EXPECT_EQ(text, u"5");
}

TEST(TextThreads, copies_are_counted_right_in_several_threads) {
  const CString original(u"shared between threads");
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i)
    threads.emplace_back([&original] {
      for (int step = 0; step < 20000; ++step) {
        CString copy(original);
        CString other = copy;
        other += u'!';
        if (original.Hash() != copy.Hash())
          std::abort();
      }
    });
  for (std::thread& thread : threads)
    thread.join();
  CString last(original);
  last.SetAt(0, u'S'); // writes in place only if nobody else holds the units
  EXPECT_EQ(original, u"shared between threads");
}

} // namespace
