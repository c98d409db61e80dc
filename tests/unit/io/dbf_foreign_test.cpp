// Tables that other programs made: what is not understood is left as it is.
#include "io/dbf_fixture.h"

namespace {

// A table with everything that this program does not write: version, reserved bytes, a longer header, a field of
// an unknown type, and bytes behind the fields of every record.
RawTable ForeignTable() {
  RawTable table{.fields = {{"NAME", 'C', 4}, {"MEMO", 'M', 4}},
                 .records = {std::string(" aaaa\x01\0\0\0zzz", 12), std::string("*bbbb\x02\0\0\0yyy", 12)},
                 .recordLength = 12};
  table.version = 0x30;
  table.reserved = "12345678901234567890";
  table.fieldReserved = "abcdefghijklmn";
  table.behindTerminator = std::string(263, 'q');
  return table;
}

TEST_F(DbfTest, a_foreign_table_is_read) {
  Put(ForeignTable());
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(table.GetNumFields(), 2);
  EXPECT_EQ(table.GetNumRecords(), 2U);
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), (Texts{"aaaa", "\x01"}));
  EXPECT_FALSE(table.IsRecordDeleted());
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), (Texts{"bbbb", "\x02"}));
  EXPECT_TRUE(table.IsRecordDeleted());
  EXPECT_FALSE(table.ReadRecord());
  CString text;
  ASSERT_TRUE(table.GetAttributeStr(text, 2, 0));
  EXPECT_EQ(text, u"bbbb");
}

TEST_F(DbfTest, updating_a_foreign_table_keeps_what_is_not_understood) {
  RawTable raw = ForeignTable();
  Put(raw);
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord(0));
  ASSERT_TRUE(table.WriteRecord(0, Values({"AA", "\x01"}), true));
  ASSERT_TRUE(table.AppendRecord(Values({"cccc", "dd"}), true));
  ASSERT_TRUE(table.Close());

  raw.date = DateBytes();
  raw.records[0] = std::string(" AA  \x01\0\0\0zzz", 12); // the memo's number and the bytes behind it as before
  raw.records.push_back(" ccccdd     ");                  // filled up with blanks to the record's length
  EXPECT_EQ(Bytes(), raw.Bytes());
}

TEST_F(DbfTest, a_changed_value_of_an_unknown_type_is_written_as_text) {
  RawTable raw = ForeignTable();
  Put(raw);
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ_WRITE));
  ASSERT_TRUE(table.WriteRecord(0, Values({"AAAA", "7"}), true));
  EXPECT_EQ(Bytes().substr(raw.Header().size(), 12), " AAAA7   zzz");
}

TEST_F(DbfTest, a_foreign_record_written_past_the_end_is_whole) {
  RawTable raw = ForeignTable();
  Put(raw);
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ_WRITE));
  ASSERT_TRUE(table.WriteRecord(2, Values({"cccc", "dd"}), true));
  EXPECT_EQ(Bytes().substr(raw.Header().size() + 24), " ccccdd     ");
}

TEST_F(DbfTest, marking_a_foreign_record_changes_one_byte) {
  RawTable raw = ForeignTable();
  Put(raw);
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.MarkRecordAsDeleted(0));
  ASSERT_TRUE(table.Close());
  raw.date = DateBytes();
  raw.records[0][0] = '*';
  EXPECT_EQ(Bytes(), raw.Bytes());
}

TEST_F(DbfTest, the_header_of_an_own_table_is_rewritten_as_it_was) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  ASSERT_TRUE(table.AppendRecord(Values({"a", "1"}), true));
  ASSERT_TRUE(table.Close());
  const std::string before = Bytes();
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ_WRITE));
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes(), before);
}

TEST_F(DbfTest, records_longer_than_their_fields_are_read_one_by_one) {
  Put({.fields = {{"A", 'C', 2}}, .records = {" aaxx", " bbyy", " cczz"}, .recordLength = 5});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  for (const char* expected : {"aa", "bb", "cc"}) {
    ASSERT_TRUE(table.ReadRecord());
    EXPECT_EQ(ValuesOf(table), Texts{expected});
  }
  EXPECT_FALSE(table.ReadRecord());
}

TEST_F(DbfTest, fields_that_a_record_has_no_room_for_are_empty_and_never_written) {
  Put({.fields = {{"A", 'C', 2}, {"B", 'C', 4}, {"C", 'C', 3}}, .records = {" aabb", " ccdd"}, .recordLength = 5});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), (Texts{"aa", "bb", ""}));
  ASSERT_TRUE(table.WriteRecord(0, Values({"AA", "BBBB", "CCC"}), true));
  ASSERT_TRUE(table.AppendRecord(Values({"ee", "ffff", "ggg"}), true));
  EXPECT_EQ(Bytes().substr(129), " AABB ccdd eeff") << "the next record is not touched";
  ASSERT_TRUE(table.ReadRecord(1));
  EXPECT_EQ(ValuesOf(table), (Texts{"cc", "dd", ""}));
}

TEST_F(DbfTest, a_record_length_of_0_holds_no_records) {
  Put({.fields = {{"A", 'C', 2}}, .records = {" aa"}, .recordLength = 0});
  const std::string before = Bytes();
  OpenDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(table.GetNumRecords(), 1U);
  EXPECT_TRUE(table.SeekToRecord(5));
  EXPECT_FALSE(table.ReadRecord());
  EXPECT_FALSE(table.AppendRecord(Values({"bb"}), true));
  EXPECT_FALSE(table.WriteRecord(0, Values({"bb"}), true));
  EXPECT_FALSE(table.MarkRecordAsDeleted(0));
  EXPECT_EQ(table.OffsetToEnd(), 0U);
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes(), before.substr(0, 1) + DateBytes() + before.substr(4)) << "no marker where no records are";
}

TEST_F(DbfTest, a_record_length_of_1_is_a_flag_without_fields) {
  Put({.fields = {{"A", 'C', 2}}, .records = {" ", "*"}, .recordLength = 1, .end = ""});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), Texts{""});
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_TRUE(table.IsRecordDeleted());
  EXPECT_FALSE(table.ReadRecord());
}

TEST_F(DbfTest, a_header_length_beyond_the_file_leaves_no_room_for_records) {
  Put({.fields = {{"A", 'C', 2}}, .records = {" aa"}, .headerLength = 5000});
  const std::string before = Bytes();
  OpenDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ)) << "header, descriptors and terminator can be read";
  EXPECT_FALSE(table.ReadRecord());
  EXPECT_EQ(table.OffsetToEnd(), 0U);
  EXPECT_FALSE(table.AppendRecord(Values({"bb"}), true));
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes(), before.substr(0, 1) + DateBytes() + before.substr(4));
}

TEST_F(DbfTest, fields_of_0_and_of_255_bytes_are_read_and_written) {
  Put({.fields = {{"A", 'C', 0}, {"B", 'C', 255}, {"L", 'L', 0}, {"N", 'N', 0, 2}},
       .records = {" " + std::string(255, 'b')}});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), (Texts{"", std::string(255, 'b'), "", ""}));
  CString text;
  EXPECT_FALSE(table.GetAttributeStr(text, 1, 0));
  ASSERT_TRUE(table.AppendRecord(Values({"x", std::string(300, 'c'), "y", "1.5"}), true));
  EXPECT_EQ(Bytes().substr(161 + 256), " " + std::string(255, 'c'));
}

TEST_F(DbfTest, a_record_count_beyond_the_file_ends_with_the_file) {
  Put({.fields = {{"A", 'C', 2}}, .records = {" aa"}, .recordCount = 0x7FFFFFFF});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(table.GetNumRecords(), 0x7FFFFFFFU);
  EXPECT_TRUE(table.ReadRecord(0));
  EXPECT_FALSE(table.ReadRecord(1));
  EXPECT_FALSE(table.ReadRecord(0x7FFFFFFE));
}

} // namespace
