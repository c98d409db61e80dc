#include "io/dbf_fixture.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

constexpr std::size_t kPricesHeader = 32 + 2 * 32 + 1;
constexpr std::size_t kLettersHeader = 32 + 32 + 1;

TEST_F(DbfTest, records_come_back_as_written) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  ASSERT_TRUE(table.AppendRecord(Values({"bolt", "1.5"}), true));
  ASSERT_TRUE(table.AppendRecord(Values({"nut", "20"}), true));
  EXPECT_EQ(table.GetNumRecords(), 2U);
  CStringArray values;
  ASSERT_TRUE(table.ReadRecord(0, values));
  ASSERT_EQ(values.GetSize(), 2);
  EXPECT_EQ(values[0].ToUtf8(), Padded("bolt", 10)) << "blanks are part of a value";
  EXPECT_EQ(values[1].ToUtf8(), Padded("1.50", 18));
}

TEST_F(DbfTest, every_type_starts_at_the_left_and_is_cut_on_the_right) {
  CDbf table;
  ASSERT_TRUE(Create(table, Path("t"),
                     {{CString(u"C"), DBF_CHAR, 3},
                      {CString(u"N"), DBF_NUMERIC, 18, 0},
                      {CString(u"L"), DBF_LOGICAL, 1},
                      {CString(u"D"), DBF_DATE, 8},
                      {CString(u"F"), DBF_FLOAT, 20, 0}}));
  ASSERT_TRUE(table.AppendRecord(Values({"a", "7", "T", "2026", "-1"}), false));
  ASSERT_TRUE(table.AppendRecord(Values({"abcd", "1234567890123456789", "true", "2026-07-31", "123456789012345678901"}),
                                 false));
  ASSERT_TRUE(table.AppendRecord(Values({"", "", "", "", ""}), false));
  EXPECT_EQ(Bytes().substr(32 * 6 + 1), " a  " + Padded("7", 18) + "T" + "2026    " + Padded("-1", 20) + " abc" +
                                            "123456789012345678" + "t" + "2026-07-" + "12345678901234567890" +
                                            Padded(" ", 51));
}

TEST_F(DbfTest, reading_goes_on_behind_the_record_read_last) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  for (const char* expected : {"aaaa", "bbbb", "cccc"}) {
    ASSERT_TRUE(table.ReadRecord());
    EXPECT_EQ(ValuesOf(table), Texts{expected});
  }
  ASSERT_TRUE(table.SeekToRecord(1));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), Texts{"bbbb"});
  ASSERT_TRUE(table.ReadRecord(0));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), Texts{"bbbb"});
}

TEST_F(DbfTest, a_failed_read_keeps_the_values_and_the_place) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord(2));
  for (int again = 0; again < 3; ++again) {
    EXPECT_FALSE(table.ReadRecord());
    EXPECT_EQ(ValuesOf(table), Texts{"cccc"});
  }
  // A record that arrives there is read.
  std::string bytes = Bytes();
  bytes.pop_back();
  m_folder.Write("t.dbf", bytes + " dddd\x1A");
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), Texts{"dddd"});

  CStringArray values = Values({"mine"});
  EXPECT_FALSE(table.ReadRecord(99, values));
  EXPECT_EQ(values[0], u"mine");
}

TEST_F(DbfTest, a_record_cut_short_is_not_read) {
  PutLetters();
  const std::string whole = Bytes();
  for (std::size_t missing = 2; missing < 6; ++missing) { // the marker, and 1 to 4 bytes of the record
    m_folder.Write("t.dbf", whole.substr(0, whole.size() - missing));
    CDbf table;
    ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
    ASSERT_TRUE(table.ReadRecord(1));
    EXPECT_FALSE(table.ReadRecord()) << missing;
    EXPECT_EQ(ValuesOf(table), Texts{"bbbb"});
  }
}

TEST_F(DbfTest, seeking_does_not_look_at_the_record_count) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  for (const unsigned long record : {0UL, 2UL, 3UL, 1000000UL, 0xFFFFFFFFUL})
    EXPECT_TRUE(table.SeekToRecord(record)) << record;
  EXPECT_FALSE(table.SeekToRecord(0x100000000UL));
  EXPECT_FALSE(table.SeekToRecord(~0UL));
}

TEST_F(DbfTest, the_deleted_mark_is_that_of_the_record_read_last) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.MarkRecordAsDeleted(1));
  EXPECT_EQ(Bytes()[kLettersHeader + 5], '*');
  EXPECT_EQ(table.GetNumRecords(), 3U);
  EXPECT_FALSE(table.IsRecordDeleted());
  ASSERT_TRUE(table.ReadRecord(1));
  EXPECT_TRUE(table.IsRecordDeleted());
  EXPECT_EQ(ValuesOf(table), Texts{"bbbb"});
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_FALSE(table.IsRecordDeleted());
  EXPECT_TRUE(table.IsValidRecord(0));
  EXPECT_FALSE(table.IsValidRecord(1));
  EXPECT_TRUE(table.IsValidRecord(2));
  EXPECT_FALSE(table.IsValidRecord(50));
}

TEST_F(DbfTest, writing_over_a_deleted_record_brings_it_back) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.MarkRecordAsDeleted(1));
  ASSERT_TRUE(table.ReadRecord(1));
  ASSERT_TRUE(table.WriteRecord(1, true));
  EXPECT_FALSE(table.IsRecordDeleted());
  EXPECT_TRUE(table.IsValidRecord(1));
  EXPECT_EQ(Bytes().substr(kLettersHeader), " aaaa bbbb cccc\x1A");
}

TEST_F(DbfTest, marking_and_checking_leave_the_position_within_the_record) {
  Put({.fields = {{"A", 'C', 2}}, .records = {" ab", " cd", " ef"}});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.IsValidRecord(0));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), Texts{"b "}) << "as a file that is read on from behind the flag";
  ASSERT_TRUE(table.MarkRecordAsDeleted(0));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), Texts{"b "});
}

TEST_F(DbfTest, a_written_record_leaves_the_position_behind_it) {
  PutLetters();
  OpenDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ_WRITE));
  ASSERT_TRUE(table.WriteRecord(0, Values({"xxxx"}), false));
  ASSERT_TRUE(table.WriteRecord(false)) << "at the position: record 1";
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), Texts{"cccc"});
  EXPECT_EQ(Bytes().substr(kLettersHeader), " xxxx xxxx cccc\x1A");
  EXPECT_EQ(table.GetNumRecords(), 3U);
}

TEST_F(DbfTest, a_record_may_be_written_behind_the_last_one) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.WriteRecord(3, Values({"dddd"}), true));
  EXPECT_EQ(table.GetNumRecords(), 3U) << "only appending counts";
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes().substr(4, 4), LittleEndian(3, 4));
  EXPECT_EQ(Bytes().substr(kLettersHeader), " aaaa bbbb cccc dddd\x1A");
}

TEST_F(DbfTest, what_does_not_fit_into_a_field_does_not_touch_what_stands_beside_it) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  const std::string name(24, 'n');
  CStringArray values;
  values.Add(CString::FromUtf8(name.substr(0, 20) + "\xC3\xA9" + "abcdefghijklmnop\xE2\x82\xAC"));
  values.Add(CString(u"1\u20AC2"));
  ASSERT_TRUE(table.AppendRecord(values, true));
  ASSERT_TRUE(table.ReadRecord(0));
  CStringArray read;
  table.GetRecordFields(read);
  ASSERT_EQ(read.GetSize(), 2);
  for (int field = 0; field < 2; ++field) {
    const std::u16string_view written = values[field].View();
    const std::u16string_view stored = read[field].View();
    EXPECT_EQ(table.GetFieldValue(field), read[field]);
    const std::size_t kept = std::min(written.size(), stored.size());
    EXPECT_EQ(stored.substr(0, kept), written.substr(0, kept));
    EXPECT_EQ(stored.find_first_not_of(u' ', kept), stored.npos);
  }
}

TEST_F(DbfTest, values_given_away_are_written_and_become_the_current_ones) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  CStringArray values = Values({"given", "12.50"});
  ASSERT_TRUE(table.AppendRecord(std::move(values), true));
  EXPECT_EQ(table.GetFieldValue(0), u"given");
  EXPECT_EQ(Bytes().substr(kPricesHeader), Price("given", "12.50"));
  CStringArray few = Values({"alone"});
  EXPECT_FALSE(table.AppendRecord(std::move(few), true));
  EXPECT_EQ(table.GetFieldValue(0), u"given") << "nothing changes";
}

TEST_F(DbfTest, too_few_values_write_nothing) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  const std::string before = Bytes();
  EXPECT_FALSE(table.AppendRecord(Values({"only one"}), true));
  EXPECT_FALSE(table.WriteRecord(0, Values({}), true));
  EXPECT_EQ(Bytes(), before);
  EXPECT_TRUE(table.AppendRecord(Values({"a", "b", "one more"}), true));
  EXPECT_EQ(Bytes().substr(kPricesHeader), Price("a", "b"));
}

TEST_F(DbfTest, an_append_overwrites_the_end_marker_and_closing_writes_a_fresh_one) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  ASSERT_TRUE(table.AppendRecord(Values({"a", "1"}), false));
  ASSERT_TRUE(table.Close());
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.AppendRecord(Values({"b", "2"}), false));
  EXPECT_EQ(Bytes().substr(kPricesHeader), Price("a", "1") + Price("b", "2"));
  EXPECT_EQ(Bytes().substr(4, 4), LittleEndian(1, 4)) << "the header is brought up to date when the table closes";
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes().substr(kPricesHeader), Price("a", "1") + Price("b", "2") + "\x1A");
  EXPECT_EQ(Bytes().substr(4, 4), LittleEndian(2, 4));
}

TEST_F(DbfTest, a_partial_record_at_the_end_is_overwritten) {
  for (const std::string& rest : {std::string(), std::string("\x1A"), std::string(" pa"), std::string(" par")}) {
    Put({.fields = {{"A", 'C', 4}}, .records = {" aaaa"}, .end = rest});
    OpenDbf table;
    ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
    EXPECT_EQ(table.OffsetToEnd(), kLettersHeader + 5);
    ASSERT_TRUE(table.AppendRecord(Values({"bbbb"}), true));
    ASSERT_TRUE(table.Close());
    EXPECT_EQ(Bytes().substr(kLettersHeader), " aaaa bbbb\x1A") << rest.size();
  }
}

TEST_F(DbfTest, closing_cuts_a_partial_record_off) {
  Put({.fields = {{"A", 'C', 4}}, .records = {" aaaa"}, .end = " pa"});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ_WRITE));
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes().substr(kLettersHeader), " aaaa\x1A");
}

TEST_F(DbfTest, appending_goes_by_the_file_and_counts_on_from_the_header) {
  // What is left when the program that wrote the table never closed it.
  Put({.fields = {{"A", 'C', 4}}, .records = {" aaaa", " bbbb", " cccc"}, .recordCount = 0, .end = ""});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(table.GetNumRecords(), 0U);
  ASSERT_TRUE(table.ReadRecord(2));
  EXPECT_EQ(ValuesOf(table), Texts{"cccc"});
  ASSERT_TRUE(table.AppendRecord(Values({"dddd"}), true));
  EXPECT_EQ(table.GetNumRecords(), 1U);
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes().substr(kLettersHeader), " aaaa bbbb cccc dddd\x1A");
}

TEST_F(DbfTest, the_last_records_can_be_removed) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_FALSE(table.DeleteLastRecord(0));
  EXPECT_FALSE(table.DeleteLastRecord(4)) << "more than there are";
  const std::string before = Bytes();
  ASSERT_TRUE(table.DeleteLastRecord(1));
  EXPECT_EQ(table.GetNumRecords(), 2U);
  EXPECT_EQ(Bytes(), before.substr(0, before.size() - 5)) << "lengths of records off the end of the file";
  EXPECT_FALSE(table.ReadRecord(2));
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes().substr(kLettersHeader), " aaaa bbbb\x1A");
  EXPECT_EQ(Bytes().substr(4, 4), LittleEndian(2, 4));

  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.DeleteLastRecord(2));
  EXPECT_EQ(table.GetNumRecords(), 0U);
  EXPECT_FALSE(table.DeleteLastRecord(1));
  ASSERT_TRUE(table.AppendRecord(Values({"dddd"}), true));
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes().substr(kLettersHeader), " dddd\x1A");
}

TEST_F(DbfTest, a_file_shorter_than_the_records_to_remove_is_left_alone) {
  Put({.fields = {{"A", 'C', 4}}, .records = {" aaaa"}, .recordCount = 1000});
  const std::string before = Bytes();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_FALSE(table.DeleteLastRecord(before.size() / 5 + 1));
  EXPECT_EQ(Bytes(), before);
}

TEST_F(DbfTest, a_single_field_is_read_from_the_file_with_records_from_1) {
  Put({.fields = {{"A", 'C', 2}, {"L", 'L', 3}, {"N", 'N', 4}}, .records = {" abyes1.50", " cdno 2.50"}});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord(0));
  CString text;
  EXPECT_TRUE(table.GetAttributeStr(text, 1, 0));
  EXPECT_EQ(text, u"ab");
  EXPECT_TRUE(table.GetAttributeStr(text, 2, 1));
  EXPECT_EQ(text, u"n") << "the first byte of a logical field";
  EXPECT_TRUE(table.GetAttributeStr(text, 2, 2));
  EXPECT_EQ(text, u"2.50");
  EXPECT_EQ(ValuesOf(table), (Texts{"ab", "y", "1.50"})) << "the current values stay";
  for (const int field : {-1, 3, 100}) {
    text = u"left over";
    EXPECT_FALSE(table.GetAttributeStr(text, 1, field)) << field;
    EXPECT_TRUE(text.IsEmpty());
  }
  for (const unsigned long record : {0UL, 4UL, 1000000UL, ~0UL}) {
    text = u"left over";
    EXPECT_FALSE(table.GetAttributeStr(text, record, 0)) << record;
    EXPECT_TRUE(text.IsEmpty());
  }
}

TEST_F(DbfTest, a_single_field_of_a_new_table_is_read_at_the_offset_asked_for) {
  CDbf table;
  ASSERT_TRUE(Create(table, Path("t"), {{CString(u"L"), DBF_LOGICAL, 3}, {CString(u"C"), DBF_CHAR, 6}}));
  ASSERT_TRUE(table.AppendRecord(Values({"y", "abcdef"}), true));
  CString text;
  ASSERT_TRUE(table.GetAttributeStr(text, 1, 1));
  EXPECT_EQ(text, u"cdef") << "offset 3 instead of 1, and the file ends";
  ASSERT_TRUE(table.Close());
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.GetAttributeStr(text, 1, 1));
  EXPECT_EQ(text, u"abcdef");
}

TEST_F(DbfTest, a_zero_byte_ends_a_text) {
  Put({.fields = {{"A", 'C', 4}, {"L", 'L', 1}, {"B", 'C', 2}},
       .records = {std::string(" ab\0d\0\0x", 8), std::string(" \0\0\0\0TYZ", 8)}});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), (Texts{"ab", "", ""}));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), (Texts{"", "T", "YZ"}));
}

TEST_F(DbfTest, the_current_values_can_be_set_and_read) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  EXPECT_EQ(ValuesOf(table), (Texts{"", ""}));
  EXPECT_FALSE(table.SetRecordFields(Values({"one"})));
  EXPECT_EQ(ValuesOf(table), (Texts{"", ""}));
  EXPECT_TRUE(table.SetRecordFields(Values({"one", "two", "three"})));
  EXPECT_EQ(ValuesOf(table), (Texts{"one", "two"}));
  ASSERT_TRUE(table.AppendRecord(true));
  EXPECT_EQ(Bytes().substr(kPricesHeader), Price("one", "two"));
}

TEST_F(DbfTest, what_another_object_writes_is_seen_at_once) {
  Put({.fields = {{"A", 'C', 4}}, .records = std::vector<std::string>(1000, " aaaa")});
  CDbf reader;
  CDbf writer;
  ASSERT_TRUE(reader.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(writer.Open(Path("./T"), DBF_READ_WRITE));
  for (unsigned long record = 0; record < 1000; ++record) {
    ASSERT_TRUE(writer.WriteRecord(record, Values({std::to_string(record)}), false));
    ASSERT_TRUE(reader.ReadRecord());
    ASSERT_EQ(ValuesOf(reader), Texts{Padded(std::to_string(record), 4)});
  }
  // The same with both roles in one object, which reads ahead of what it writes.
  ASSERT_TRUE(writer.SeekToRecord(0));
  for (unsigned long record = 0; record + 1 < 1000; ++record) {
    ASSERT_TRUE(writer.ReadRecord(record));
    ASSERT_TRUE(writer.WriteRecord(record + 1, Values({"x" + std::to_string(record)}), false));
    ASSERT_TRUE(writer.ReadRecord(record + 1));
    ASSERT_EQ(ValuesOf(writer), Texts{Padded("x" + std::to_string(record), 4)});
  }
}

TEST_F(DbfTest, what_another_program_writes_is_seen_behind_a_jump) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord(0));
  ASSERT_TRUE(table.ReadRecord());
  std::fstream(m_folder.Path("t.dbf"), std::ios::binary | std::ios::in | std::ios::out)
      .seekp(static_cast<std::streamoff>(kLettersHeader + 5))
      .write(" BBBB", 5);
  ASSERT_TRUE(table.ReadRecord(1));
  EXPECT_EQ(ValuesOf(table), Texts{"BBBB"});
}

// How many calls to the system's `what` ("syscr", "syscw") this process has made.
long SystemCalls(const std::string& what) {
  std::ifstream file("/proc/self/io");
  std::string name;
  long count = 0;
  while (file >> name >> count)
    if (name == what + ":")
      return count;
  return -1;
}

TEST_F(DbfTest, a_record_is_written_in_one_call_and_read_in_large_blocks) {
  if (SystemCalls("syscw") < 0)
    GTEST_SKIP() << "this system does not count calls";
  constexpr long records = 2000;
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  const CStringArray values = Values({"bolt", "1.5"});
  const long writesBefore = SystemCalls("syscw");
  for (long i = 0; i < records; ++i)
    ASSERT_TRUE(table.AppendRecord(values, true));
  EXPECT_EQ(SystemCalls("syscw") - writesBefore, records);
  EXPECT_EQ(Bytes().size(), kPricesHeader + 29 * records) << "everything is in the file before it is closed";

  ASSERT_TRUE(table.SeekToRecord(0));
  const long readsBefore = SystemCalls("syscr");
  for (long i = 0; i < records; ++i)
    ASSERT_TRUE(table.ReadRecord());
  EXPECT_LT(SystemCalls("syscr") - readsBefore, 25); // 58,000 bytes, in blocks that double up to 64 KiB
}

} // namespace
