#include "io/dbf_fixture.h"

#include "platform/code_page.h"

#include <filesystem>

namespace {

TEST_F(DbfTest, a_new_table_is_a_header_byte_for_byte) {
  CDbf table;
  ASSERT_TRUE(Create(table, Path("t"),
                     {{CString(u"NAME"), DBF_CHAR, 20},
                      {CString(u"PRICE"), DBF_NUMERIC, 5, 2},
                      {CString(u"OK"), DBF_LOGICAL, 9},
                      {CString(u"DAY"), DBF_DATE, 1},
                      {CString(u"RATE"), DBF_FLOAT, 7, 4},
                      {CString(u"OTHER"), DBF_UNKNOWN, 3}}));
  const auto descriptor = [](const std::string& name, char type, int length, int decimals) {
    return Padded(name, 11, '\0') + type + std::string(4, '\0') + static_cast<char>(length) +
           static_cast<char>(decimals) + std::string(14, '\0');
  };
  const std::string fields = descriptor("NAME", 'C', 20, 0) + descriptor("PRICE", 'N', 18, 2) +
                             descriptor("OK", 'L', 1, 0) + descriptor("DAY", 'D', 8, 0) +
                             descriptor("RATE", 'F', 20, 4) + descriptor("OTHER", '\0', 3, 0);
  const auto header = [&fields](std::uint32_t records) {
    return "\x03" + DateBytes() + LittleEndian(records, 4) + LittleEndian(32 * 6 + 33, 2) +
           LittleEndian(20 + 18 + 1 + 8 + 20 + 3 + 1, 2) + std::string(20, '\0') + fields + "\x0D";
  };
  EXPECT_EQ(Bytes(), header(0));
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes(), header(0) + "\x1A");
}

TEST_F(DbfTest, the_year_byte_is_the_year_modulo_100) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  const int year = 1900 + local.tm_year;
  EXPECT_EQ(static_cast<unsigned char>(Bytes()[1]), year % 100);
  EXPECT_NE(static_cast<unsigned char>(Bytes()[1]), year - 1900);
}

TEST_F(DbfTest, a_closed_table_is_header_records_and_end_marker_byte_for_byte) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  ASSERT_TRUE(table.AppendRecord(Values({"bolt", "12.3456"}), true));
  ASSERT_TRUE(table.AppendRecord(Values({"nut", "7"}), true));
  ASSERT_TRUE(table.Close());
  const RawTable expected{.fields = {{"NAME", 'C', 10}, {"PRICE", 'N', 18, 2}},
                          .records = {Price("bolt", "12.34"), Price("nut", "7")},
                          .date = DateBytes()};
  EXPECT_EQ(Bytes(), expected.Bytes());
}

TEST_F(DbfTest, field_lengths_follow_the_type) {
  struct Row {
    DBF_FIELD_TYPE type;
    int asked;
    int given;
  };
  for (const Row& row : {Row{DBF_LOGICAL, 0, 1},   Row{DBF_LOGICAL, 77, 1},
                         Row{DBF_CHAR, -5, 1},     Row{DBF_CHAR, 0, 1},
                         Row{DBF_CHAR, 1, 1},      Row{DBF_CHAR, 2, 2},
                         Row{DBF_CHAR, 253, 253},  Row{DBF_CHAR, 254, 253},
                         Row{DBF_CHAR, 300, 253},  Row{DBF_NUMERIC, 1, 18},
                         Row{DBF_NUMERIC, 18, 18}, Row{DBF_NUMERIC, 200, 18},
                         Row{DBF_DATE, 0, 8},      Row{DBF_DATE, 10, 8},
                         Row{DBF_FLOAT, 3, 20},    Row{DBF_FLOAT, 99, 20},
                         Row{DBF_UNKNOWN, 0, 0},   Row{DBF_UNKNOWN, 300, 300},
                         Row{DBF_UNKNOWN, -1, -1}, Row{static_cast<DBF_FIELD_TYPE>(9), 12, 12}})
    EXPECT_EQ(CDbf::VerifyFieldLength(row.asked, row.type), row.given) << row.type << " of " << row.asked;
}

TEST_F(DbfTest, words_name_field_types_in_any_case) {
  struct Row {
    const char16_t* word;
    DBF_FIELD_TYPE type;
  };
  for (const Row& row :
       {Row{u"L", DBF_LOGICAL}, Row{u"BOOL", DBF_LOGICAL}, Row{u"bool", DBF_LOGICAL}, Row{u"C", DBF_CHAR},
        Row{u"Char", DBF_CHAR}, Row{u"N", DBF_NUMERIC}, Row{u"n", DBF_NUMERIC}, Row{u"Numeric", DBF_NUMERIC},
        Row{u"INTEGER", DBF_NUMERIC}, Row{u"D", DBF_DATE}, Row{u"date", DBF_DATE}, Row{u"F", DBF_FLOAT},
        Row{u"FLOAT", DBF_FLOAT}, Row{u"", DBF_UNKNOWN}, Row{u"INT", DBF_UNKNOWN}, Row{u"LOGICAL", DBF_UNKNOWN},
        Row{u"M", DBF_UNKNOWN}, Row{u" C", DBF_UNKNOWN}, Row{u"I", DBF_UNKNOWN}})
    EXPECT_EQ(CDbf::StringToDBFFieldType(CString(row.word)), row.type) << CString(row.word).ToUtf8();
}

TEST_F(DbfTest, offsets_of_a_new_table_follow_the_lengths_asked_for_until_it_is_reopened) {
  CDbf table;
  ASSERT_TRUE(Create(table, Path("t"),
                     {{CString(u"A"), DBF_CHAR, 300},
                      {CString(u"B"), DBF_NUMERIC, 5},
                      {CString(u"C"), DBF_LOGICAL, 4},
                      {CString(u"D"), DBF_DATE, 0}}));
  const auto offsets = [&table] {
    std::vector<std::uint32_t> all;
    for (int i = 0; i < table.GetNumFields(); ++i)
      all.push_back(table.GetFieldDescriptor(i)->GetOffset());
    return all;
  };
  EXPECT_EQ(offsets(), (std::vector<std::uint32_t>{0, 300, 305, 309}));
  ASSERT_TRUE(table.Close());
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(offsets(), (std::vector<std::uint32_t>{0, 253, 271, 272}));
}

TEST_F(DbfTest, descriptors_are_read_back) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  ASSERT_TRUE(table.Close());
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_EQ(table.GetNumFields(), 2);
  const CDbfFieldDescriptorEx& price = *table.GetFieldDescriptor(1);
  EXPECT_EQ(price.GetName(), u"PRICE");
  EXPECT_EQ(price.GetType(), DBF_NUMERIC);
  EXPECT_EQ(price.GetLength(), 18U);
  EXPECT_EQ(price.GetDecimalCount(), 2U);
  EXPECT_EQ(price.GetOffset(), 10U);

  CString name(u"kept");
  DBF_FIELD_TYPE type = DBF_UNKNOWN;
  EXPECT_TRUE(table.GetFieldName(0, name));
  EXPECT_EQ(name, u"NAME");
  EXPECT_TRUE(table.GetFieldType(0, type));
  EXPECT_EQ(type, DBF_CHAR);
  for (const int missing : {-1, 2, 1000}) {
    EXPECT_EQ(table.GetFieldDescriptor(missing), nullptr) << missing;
    EXPECT_FALSE(table.GetFieldName(missing, name)) << missing;
    EXPECT_FALSE(table.GetFieldType(missing, type)) << missing;
  }
  EXPECT_EQ(name, u"NAME");
  EXPECT_EQ(type, DBF_CHAR);
  CStringArray names;
  table.GetAttributes(names);
  ASSERT_EQ(names.GetSize(), 2);
  EXPECT_EQ(names[1], u"PRICE");
}

TEST_F(DbfTest, letters_are_field_types_only_as_capitals) {
  Put({.fields = {{"A", 'L', 1},
                  {"B", 'C', 1},
                  {"C", 'N', 1},
                  {"D", 'D', 1},
                  {"E", 'F', 1},
                  {"F", 'M', 1},
                  {"G", 'c', 1},
                  {"H", '\0', 1}}});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  const DBF_FIELD_TYPE expected[] = {DBF_LOGICAL, DBF_CHAR,    DBF_NUMERIC, DBF_DATE,
                                     DBF_FLOAT,   DBF_UNKNOWN, DBF_UNKNOWN, DBF_UNKNOWN};
  for (int i = 0; i < 8; ++i)
    EXPECT_EQ(table.GetFieldDescriptor(i)->GetType(), expected[i]) << i;
}

TEST_F(DbfTest, a_field_name_is_cut_to_ten_bytes_and_never_within_a_character) {
  m_folder.Write("t.cpg", "UTF-8");
  CDbf table;
  ASSERT_TRUE(Create(table, Path("t"),
                     {{CString(u"ABCDEFGHIJKLM"), DBF_CHAR, 1},
                      {CString(u"123456789ü"), DBF_CHAR, 1},
                      {CString(u"12345678ü"), DBF_CHAR, 1},
                      {CString(), DBF_CHAR, 1}}));
  const std::string bytes = Bytes();
  EXPECT_EQ(bytes.substr(32, 11), std::string("ABCDEFGHIJ\0", 11));
  EXPECT_EQ(bytes.substr(64, 11), std::string("123456789\0\0", 11));
  EXPECT_EQ(bytes.substr(96, 11), "12345678\xC3\xBC" + std::string(1, '\0'));
  EXPECT_EQ(bytes.substr(128, 11), std::string(11, '\0'));
}

TEST_F(DbfTest, a_name_of_eleven_bytes_is_read_whole) {
  Put({.fields = {{"ABCDEFGHIJK", 'C', 1}}});
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(table.GetFieldDescriptor(0)->GetName(), u"ABCDEFGHIJK");
}

TEST_F(DbfTest, a_header_of_33_bytes_opens_a_table_without_fields) {
  Put({.fields = {}});
  OpenDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(table.GetNumFields(), 0);
  EXPECT_EQ(table.FilteredRecordSize(), 0);
  CStringArray values = Values({"left over"});
  table.GetRecordFields(values);
  EXPECT_EQ(values.GetSize(), 0);
}

TEST_F(DbfTest, a_header_length_below_33_does_not_open) {
  for (int length = 0; length < 33; ++length) {
    Put({.fields = {{"A", 'C', 4}}, .records = {" aaaa"}, .headerLength = length});
    CDbf table;
    EXPECT_FALSE(table.Open(Path("t"), DBF_READ)) << length;
    EXPECT_FALSE(table.IsOpen()) << length;
    EXPECT_EQ(table.GetNumFields(), 0) << length;
  }
}

TEST_F(DbfTest, a_field_count_comes_from_the_header_length) {
  // The remainder of a division by 32 belongs to no field.
  RawTable raw{.fields = {{"A", 'C', 1}, {"B", 'C', 2}}, .behindTerminator = std::string(31, 'x')};
  Put(raw);
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(table.GetNumFields(), 2);
}

TEST_F(DbfTest, the_list_of_fields_ends_where_the_terminator_stands) {
  RawTable raw{.fields = {{"A", 'C', 1}, {"B", 'C', 2}}, .records = {" abb"}};
  raw.behindTerminator = std::string(263, '\0');
  raw.version = 0x30;
  Put(raw);
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(table.GetNumFields(), 2);
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), (Texts{"a", "bb"}));
}

TEST_F(DbfTest, any_byte_serves_as_terminator_where_the_header_ends) {
  for (const char* terminator : {"\x0D", "x", " "}) {
    Put({.fields = {{"A", 'C', 1}}, .records = {" a"}, .terminator = terminator});
    CDbf table;
    EXPECT_TRUE(table.Open(Path("t"), DBF_READ)) << terminator;
    EXPECT_TRUE(table.ReadRecord());
    EXPECT_EQ(ValuesOf(table), Texts{"a"});
  }
}

TEST_F(DbfTest, a_header_cut_short_does_not_open) {
  const std::string header = RawTable{.fields = {{"A", 'C', 1}, {"B", 'N', 2}}}.Header();
  for (std::size_t length = 0; length < header.size(); ++length) {
    m_folder.Write("t.dbf", header.substr(0, length));
    for (const ReadWrite mode : {DBF_READ, DBF_READ_WRITE}) {
      CDbf table;
      EXPECT_FALSE(table.Open(Path("t"), mode)) << length;
    }
    EXPECT_EQ(Bytes(), header.substr(0, length)) << "a table that does not open stays as it is";
  }
  m_folder.Write("t.dbf", header);
  CDbf table;
  EXPECT_TRUE(table.Open(Path("t"), DBF_READ));
}

TEST_F(DbfTest, tables_that_no_header_can_describe_are_not_created) {
  const auto create = [this](int fields, DBF_FIELD_TYPE type, std::uint32_t length) {
    std::vector<CDbfFieldDescriptorEx> copies(static_cast<std::size_t>(fields), {CString(u"A"), type, length});
    CArray<CDbfFieldDescriptorEx*, CDbfFieldDescriptorEx*> pointers;
    for (CDbfFieldDescriptorEx& field : copies)
      pointers.Add(&field);
    CDbf table;
    const bool created = table.Create(Path("t"), pointers, copies.size());
    EXPECT_EQ(std::filesystem::exists(m_folder.Path("t.dbf")), created);
    std::filesystem::remove(m_folder.Path("t.dbf"));
    return created;
  };
  EXPECT_TRUE(create(0, DBF_CHAR, 1));
  EXPECT_TRUE(create(2046, DBF_CHAR, 1));
  EXPECT_FALSE(create(2047, DBF_CHAR, 1));
  EXPECT_TRUE(create(257, DBF_UNKNOWN, 254));  // 65,278 + 1
  EXPECT_FALSE(create(257, DBF_UNKNOWN, 255)); // 65,535 + 1
  EXPECT_TRUE(create(1, DBF_UNKNOWN, 255));
  EXPECT_FALSE(create(1, DBF_UNKNOWN, 256));
  EXPECT_FALSE(create(1, DBF_UNKNOWN, 0xFFFFFFFF));
  EXPECT_TRUE(create(1, DBF_CHAR, 0xFFFFFFFF)); // below 1, read as a signed number
}

TEST_F(DbfTest, create_takes_as_many_fields_as_it_is_told) {
  CDbfFieldDescriptorEx a(CString(u"A"), DBF_CHAR, 1);
  CDbfFieldDescriptorEx b(CString(u"B"), DBF_CHAR, 1);
  CArray<CDbfFieldDescriptorEx*, CDbfFieldDescriptorEx*> pointers;
  pointers.Add(&a);
  pointers.Add(&b);
  CDbf table;
  ASSERT_TRUE(table.Create(Path("t"), pointers, 1));
  EXPECT_EQ(table.GetNumFields(), 1);
  EXPECT_FALSE(table.Create(Path("u"), pointers, 3));
  pointers.Add(nullptr);
  EXPECT_FALSE(table.Create(Path("u"), pointers, 3));
  EXPECT_TRUE(table.IsOpen()) << "a refused description leaves the table alone";
  EXPECT_FALSE(std::filesystem::exists(m_folder.Path("u.dbf")));
}

TEST_F(DbfTest, a_new_table_keeps_copies_of_its_fields) {
  CDbf table;
  {
    CDbfFieldDescriptorEx field(CString(u"A"), DBF_CHAR, 5);
    CArray<CDbfFieldDescriptorEx*, CDbfFieldDescriptorEx*> pointers;
    pointers.Add(&field);
    ASSERT_TRUE(table.Create(Path("t"), pointers, 1));
    EXPECT_NE(table.GetFieldDescriptor(0), &field);
    EXPECT_EQ(field.GetLength(), 5U);
  }
  EXPECT_EQ(table.GetFieldDescriptor(0)->GetName(), u"A");
}

TEST_F(DbfTest, a_table_can_be_made_anew_from_its_own_descriptors) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  CArray<CDbfFieldDescriptorEx*, CDbfFieldDescriptorEx*> pointers;
  pointers.Add(table.GetFieldDescriptor(1));
  ASSERT_TRUE(table.Create(Path("u"), pointers, 1));
  EXPECT_EQ(table.GetFieldDescriptor(0)->GetName(), u"PRICE");
  EXPECT_EQ(table.GetFieldDescriptor(0)->GetDecimalCount(), 2U);
}

TEST_F(DbfTest, a_header_is_as_long_as_write_header_says) {
  OpenDbf table;
  EXPECT_EQ(table.WriteHeader(), -1);
  ASSERT_TRUE(CreatePrices(table));
  EXPECT_EQ(table.WriteHeader(), 32 + 2 * 32 + 1);
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(table.WriteHeader(), -1);
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ_WRITE));
  EXPECT_EQ(table.WriteHeader(), 32 + 2 * 32 + 1);
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(table.WriteHeader(), -1) << "a table that is only read";
}

} // namespace
