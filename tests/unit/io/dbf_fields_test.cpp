#include "io/dbf_fixture.h"

#include "platform/code_page.h"

namespace {

TEST_F(DbfTest, values_are_brought_into_their_fields_form) {
  struct Row {
    DBF_FIELD_TYPE type;
    std::uint32_t decimals;
    const char16_t* value;
    const char16_t* stored;
  };
  OpenDbf table;
  for (const Row& row : {Row{DBF_LOGICAL, 0, u"yes", u"y"},
                         Row{DBF_LOGICAL, 0, u"Yes", u"Y"},
                         Row{DBF_LOGICAL, 0, u"no", u"n"},
                         Row{DBF_LOGICAL, 0, u"N", u"N"},
                         Row{DBF_LOGICAL, 0, u"true", u"t"},
                         Row{DBF_LOGICAL, 0, u"True", u"T"},
                         Row{DBF_LOGICAL, 0, u"false", u"f"},
                         Row{DBF_LOGICAL, 0, u"F", u"F"},
                         Row{DBF_LOGICAL, 0, u"maybe", u"?"},
                         Row{DBF_LOGICAL, 0, u"", u"?"},
                         Row{DBF_LOGICAL, 0, u" y", u"?"},
                         Row{DBF_LOGICAL, 0, u"1", u"?"},
                         Row{DBF_LOGICAL, 0, u"?", u"?"},
                         Row{DBF_NUMERIC, 3, u"12.5", u"12.500"},
                         Row{DBF_NUMERIC, 2, u"12.3456", u"12.34"},
                         Row{DBF_NUMERIC, 2, u"7", u"7"},
                         Row{DBF_NUMERIC, 2, u"7.", u"7.00"},
                         Row{DBF_NUMERIC, 0, u"7.9", u"7."},
                         Row{DBF_NUMERIC, 0, u"7.", u"7."},
                         Row{DBF_NUMERIC, 2, u"1.99", u"1.99"},
                         Row{DBF_NUMERIC, 2, u"1.999", u"1.99"},
                         Row{DBF_NUMERIC, 2, u".5", u".5"},
                         Row{DBF_NUMERIC, 2, u"-.5", u"-.50"},
                         Row{DBF_NUMERIC, 1, u"-1.25", u"-1.2"},
                         Row{DBF_NUMERIC, 2, u"", u""},
                         Row{DBF_NUMERIC, 2, u"a.b", u"a.b0"},
                         Row{DBF_NUMERIC, 1, u"1.2.3", u"1.2"},
                         Row{DBF_NUMERIC, 2, u"12.500   ", u"12.50"},
                         Row{DBF_NUMERIC, 255, u"1.", nullptr},
                         Row{DBF_FLOAT, 3, u"12.5", u"12.500"},
                         Row{DBF_FLOAT, 1, u"12.55", u"12.5"},
                         Row{DBF_FLOAT, 4, u"3", u"3"},
                         Row{DBF_CHAR, 2, u"1.23456", u"1.23456"},
                         Row{DBF_DATE, 2, u"not a date", u"not a date"},
                         Row{DBF_UNKNOWN, 2, u"1.23456", u"1.23456"}}) {
    const CDbfFieldDescriptorEx field(CString(u"A"), row.type, 20, row.decimals);
    const CString expected = row.stored == nullptr ? CString(u"1.") + CString(u'0', 255) : CString(row.stored);
    EXPECT_EQ(table.CheckFieldFormat(CString(row.value), &field), expected)
        << row.type << " with " << row.decimals << ": " << CString(row.value).ToUtf8();
  }
}

TEST_F(DbfTest, values_are_checked_only_when_asked) {
  CDbf table;
  ASSERT_TRUE(Create(table, Path("t"), {{CString(u"N"), DBF_NUMERIC, 18, 3}, {CString(u"L"), DBF_LOGICAL, 1}}));
  ASSERT_TRUE(table.AppendRecord(Values({"12.5", "maybe"}), true));
  ASSERT_TRUE(table.AppendRecord(Values({"12.5", "maybe"}), false));
  EXPECT_EQ(Bytes().substr(97), " " + Padded("12.500", 18) + "? " + Padded("12.5", 18) + "m");
  EXPECT_EQ(ValuesOf(table), (Texts{"12.5", "maybe"})) << "the current value is what was given";
}

TEST_F(DbfTest, a_value_read_back_is_stored_unchanged) {
  CDbf table;
  ASSERT_TRUE(Create(table, Path("t"), {{CString(u"N"), DBF_NUMERIC, 18, 3}, {CString(u"L"), DBF_LOGICAL, 1}}));
  ASSERT_TRUE(table.AppendRecord(Values({"12.5", "yes"}), true));
  const std::string before = Bytes();
  ASSERT_TRUE(table.ReadRecord(0));
  ASSERT_TRUE(table.WriteRecord(0, true));
  EXPECT_EQ(Bytes(), before);
}

TEST_F(DbfTest, descriptors_and_pairs_are_plain_data) {
  CDbfFieldDescriptorEx field(CString(u"A"), DBF_FLOAT, 20, 4);
  const CDbfFieldDescriptorEx copy = field;
  field = CDbfFieldDescriptorEx();
  EXPECT_EQ(copy.GetName(), u"A");
  EXPECT_EQ(copy.GetType(), DBF_FLOAT);
  EXPECT_EQ(copy.GetLength(), 20U);
  EXPECT_EQ(copy.GetDecimalCount(), 4U);
  EXPECT_EQ(copy.GetOffset(), 0U);
  EXPECT_EQ(field.GetType(), DBF_UNKNOWN);
  CAttributePair pair(CString(u"A"), CString(u"1"));
  const CAttributePair pairCopy = pair;
  pair.SetValue(CString(u"2"));
  EXPECT_EQ(pair.GetName(), u"A");
  EXPECT_EQ(pair.GetValue(), u"2");
  EXPECT_EQ(pairCopy.GetValue(), u"1");
}

// The ANSI page of the process, set back at the end.
class AnsiPage {
public:
  explicit AnsiPage(const char* name) { EXPECT_TRUE(brindle::CodePage::SetAnsi(name)); }
  AnsiPage(const AnsiPage&) = delete;
  AnsiPage& operator=(const AnsiPage&) = delete;
  ~AnsiPage() { EXPECT_TRUE(brindle::CodePage::SetAnsi("UTF-8")); }
};

TEST_F(DbfTest, every_byte_but_zero_is_a_character_and_comes_back) {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte)
    bytes.push_back(static_cast<char>(byte));
  for (const char* page : {"UTF-8", "windows-1251", "ISO-8859-1", "CP932"}) {
    const AnsiPage set(page);
    Put({.fields = {{"A", 'C', 255}}, .records = {" " + bytes, " " + std::string(255, 'x')}});
    CDbf table;
    ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
    ASSERT_TRUE(table.ReadRecord(0));
    CStringArray values;
    table.GetRecordFields(values);
    EXPECT_EQ(values[0].GetLength(), 255) << page;
    ASSERT_TRUE(table.WriteRecord(1, true));
    EXPECT_EQ(Bytes().substr(65 + 256 + 1, 255), bytes) << page;
  }
}

TEST_F(DbfTest, text_is_windows_1252_unless_the_ansi_page_has_single_bytes) {
  struct Row {
    const char* ansi;
    const char* text;
    const char* bytes;
  };
  for (const Row& row :
       {Row{"UTF-8", "M\xC3\xBCller \xE2\x82\xAC", "M\xFCller \x80"}, Row{"CP932", "M\xC3\xBCller", "M\xFCller"},
        Row{"windows-1251", "\xD0\x94\xD0\xB0", "\xC4\xE0"}, Row{"UTF-8", "\xD0\x94 \xF0\x9F\x98\x80", "? ?"}}) {
    const AnsiPage set(row.ansi);
    CDbf table;
    ASSERT_TRUE(CreatePrices(table));
    ASSERT_TRUE(table.AppendRecord(Values({row.text, ""}), true));
    EXPECT_EQ(Bytes().substr(98, 10), Padded(row.bytes, 10)) << row.ansi;
  }
}

TEST_F(DbfTest, a_file_beside_the_table_names_its_page) {
  struct Row {
    const char* file;
    const char* contents;
    const char* bytes; // of "ü" in four bytes
  };
  for (const Row& row :
       {Row{"t.cpg", "UTF-8", "\xC3\xBC  "}, Row{"t.cpg", "utf-8\r\n", "\xC3\xBC  "},
        Row{"t.cpg", "\xEF\xBB\xBFUTF8", "\xC3\xBC  "}, Row{"T.CPG", "UTF-8", "\xC3\xBC  "},
        Row{"t.cpg", "65001", "\xC3\xBC  "}, Row{"t.cpg", "ISO 8859-1", "\xFC   "}, Row{"t.cpg", "1252", "\xFC   "},
        Row{"t.cpg", "ANSI 1252", "\xFC   "}, Row{"t.cpg", " 850 ", "\x81   "}, Row{"t.cpg", "CP437\nUTF-8", "\x81   "},
        Row{"t.cpg", "", "\xFC   "}, Row{"t.cpg", "no such page", "\xFC   "}, Row{"t.cpg", "../../etc", "\xFC   "},
        Row{"u.cpg", "UTF-8", "\xFC   "}, Row{"t.dbf.cpg", "UTF-8", "\xFC   "}}) {
    const TemporaryFolder folder;
    folder.Write(row.file, row.contents);
    const CString path = CString::FromUtf8(folder.Path("t").string());
    CDbf table;
    ASSERT_TRUE(Create(table, path, {{CString(u"A"), DBF_CHAR, 4}}));
    ASSERT_TRUE(table.AppendRecord(Values({"\xC3\xBC"}), true));
    EXPECT_EQ(folder.Read("t.dbf").substr(66), row.bytes) << row.file << ": " << row.contents;
    ASSERT_TRUE(table.Close());
    ASSERT_TRUE(table.Open(path, DBF_READ));
    ASSERT_TRUE(table.ReadRecord());
    EXPECT_EQ(ValuesOf(table)[0].substr(0, 2), "\xC3\xBC") << row.file << ": " << row.contents;
  }
}

TEST_F(DbfTest, each_table_has_its_own_page) {
  m_folder.Write("u.cpg", "UTF-8");
  CDbf plain;
  CDbf unicode;
  ASSERT_TRUE(CreatePrices(plain, "t"));
  ASSERT_TRUE(CreatePrices(unicode, "u"));
  ASSERT_TRUE(plain.AppendRecord(Values({"\xC3\xBC", ""}), true));
  ASSERT_TRUE(unicode.AppendRecord(Values({"\xC3\xBC", ""}), true));
  EXPECT_EQ(Bytes("t.dbf").substr(98, 3), "\xFC  ");
  EXPECT_EQ(Bytes("u.dbf").substr(98, 3), "\xC3\xBC ");
  // The same object, and so the same memory of a page, for the other table.
  ASSERT_TRUE(plain.Open(Path("u"), DBF_READ));
  ASSERT_TRUE(plain.ReadRecord());
  EXPECT_EQ(ValuesOf(plain)[0], Padded("\xC3\xBC", 10));
}

TEST_F(DbfTest, a_character_is_never_cut_in_half_at_the_end_of_a_field) {
  m_folder.Write("t.cpg", "UTF-8");
  struct Row {
    const char* text;
    const char* bytes; // in a field of four
  };
  for (const Row& row : {Row{"abcd", "abcd"}, Row{"ab\xC3\xBC", "ab\xC3\xBC"}, Row{"abc\xC3\xBC", "abc "},
                         Row{"ab\xE2\x82\xAC", "ab  "}, Row{"a\xE2\x82\xAC", "a\xE2\x82\xAC"},
                         Row{"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"}, Row{"x\xF0\x9F\x98\x80", "x   "},
                         Row{"\xC3\xBC\xC3\xBC\xC3\xBC", "\xC3\xBC\xC3\xBC"}, Row{"abc\xC3\xBCx", "abc "}}) {
    CDbf table;
    ASSERT_TRUE(Create(table, Path("t"), {{CString(u"A"), DBF_CHAR, 4}, {CString(u"B"), DBF_CHAR, 1}}));
    ASSERT_TRUE(table.AppendRecord(Values({row.text, "|"}), true));
    EXPECT_EQ(Bytes().substr(98), std::string(row.bytes) + "|") << row.text;
  }
}

TEST_F(DbfTest, a_double_byte_page_keeps_its_characters_whole) {
  m_folder.Write("t.cpg", "932");
  CDbf table;
  ASSERT_TRUE(Create(table, Path("t"), {{CString(u"A"), DBF_CHAR, 5}}));
  ASSERT_TRUE(table.AppendRecord(Values({"\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E"}), true)); // three characters
  EXPECT_EQ(Bytes().substr(66), "\x93\xFA\x96\x7B ");
  ASSERT_TRUE(table.ReadRecord(0));
  EXPECT_EQ(ValuesOf(table), Texts{"\xE6\x97\xA5\xE6\x9C\xAC "});
}

} // namespace
