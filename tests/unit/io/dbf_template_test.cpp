#include "io/dbf_fixture.h"

#include <filesystem>

namespace {

CArray<bool, bool> Flags(std::initializer_list<bool> flags) {
  CArray<bool, bool> filter;
  for (const bool flag : flags)
    filter.Add(flag);
  return filter;
}

class DbfTemplateTest : public DbfTest {
protected:
  DbfTemplateTest() {
    const RawTable raw{.fields = {{"A", 'C', 3}, {"B", 'N', 5, 2}, {"C", 'L', 1}},
                       .records = {" aaa 1.50T", " bbb 2.50F"}};
    Put(raw, "template.dbf");
    EXPECT_TRUE(m_template.Open(Path("template"), DBF_READ));
  }
  static Texts NamesOf(const CDbf& table) {
    CStringArray names;
    table.GetAttributes(names);
    Texts texts;
    for (const CString& name : names)
      texts.push_back(name.ToUtf8());
    return texts;
  }

  OpenDbf m_template;
};

TEST_F(DbfTemplateTest, a_template_gives_its_fields_to_a_new_table) {
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t.txt"), DBF_WRITE, &m_template));
  EXPECT_EQ(NamesOf(table), (Texts{"A", "B", "C"}));
  EXPECT_EQ(table.GetNumRecords(), 0U);
  const CDbfFieldDescriptorEx& b = *table.GetFieldDescriptor(1);
  EXPECT_EQ(b.GetLength(), 5U) << "the template's length, not that of a new field";
  EXPECT_EQ(b.GetDecimalCount(), 2U);
  EXPECT_EQ(b.GetOffset(), 3U);
  ASSERT_TRUE(table.Close());
  const RawTable expected{.fields = {{"A", 'C', 3}, {"B", 'N', 5, 2}, {"C", 'L', 1}}, .date = DateBytes()};
  EXPECT_EQ(Bytes(), expected.Bytes());
}

TEST_F(DbfTemplateTest, a_new_table_needs_a_template_with_fields) {
  CDbf table;
  EXPECT_FALSE(table.Open(Path("t"), DBF_WRITE));
  EXPECT_FALSE(table.Open(Path("t"), DBF_WRITE, nullptr));
  CDbf closed;
  EXPECT_FALSE(table.Open(Path("t"), DBF_WRITE, &closed));
  Put({.fields = {}}, "nofields.dbf");
  CDbf empty;
  ASSERT_TRUE(empty.Open(Path("nofields"), DBF_READ));
  EXPECT_FALSE(table.Open(Path("t"), DBF_WRITE, &empty));
  EXPECT_FALSE(std::filesystem::exists(m_folder.Path("t.dbf")));
  EXPECT_FALSE(table.Open(CString(), DBF_WRITE, &m_template));
}

TEST_F(DbfTemplateTest, a_table_is_no_template_of_itself) {
  CDbf table;
  ASSERT_TRUE(table.Open(Path("template"), DBF_READ));
  EXPECT_FALSE(table.Open(Path("t"), DBF_WRITE, &table)) << "it is closed before";
}

TEST_F(DbfTemplateTest, a_filter_set_before_selects_the_templates_fields) {
  CDbf table;
  table.SetAttributeFilter(Flags({true, false, true}));
  ASSERT_TRUE(table.Open(Path("t"), DBF_WRITE, &m_template));
  EXPECT_EQ(NamesOf(table), (Texts{"A", "C"}));
  EXPECT_EQ(table.GetFieldDescriptor(0)->GetOffset(), 0U);
  EXPECT_EQ(table.GetFieldDescriptor(1)->GetOffset(), 3U) << "offsets are counted anew";

  table.SetAttributeFilter(Flags({false, false, false}));
  ASSERT_TRUE(table.Open(Path("t"), DBF_WRITE, &m_template));
  EXPECT_EQ(table.GetNumFields(), 0);
}

TEST_F(DbfTemplateTest, a_filter_of_another_size_selects_everything) {
  for (const auto& flags : {Flags({}), Flags({false}), Flags({false, false}), Flags({false, false, false, false})}) {
    CDbf table;
    table.SetAttributeFilter(flags);
    ASSERT_TRUE(table.Open(Path("t"), DBF_WRITE, &m_template));
    EXPECT_EQ(NamesOf(table), (Texts{"A", "B", "C"})) << flags.GetSize();
    EXPECT_EQ(table.FilteredRecordSize(), 9);
  }
}

TEST_F(DbfTemplateTest, records_are_copied_through_the_filter) {
  CDbf table;
  table.SetAttributeFilter(Flags({false, true, true}));
  ASSERT_TRUE(table.Open(Path("t"), DBF_WRITE, &m_template));
  while (m_template.ReadRecord()) {
    ASSERT_TRUE(table.CopyRecord(&m_template));
    ASSERT_TRUE(table.AppendRecord(false));
  }
  ASSERT_TRUE(table.Close());
  const RawTable expected{
      .fields = {{"B", 'N', 5, 2}, {"C", 'L', 1}}, .records = {"  1.50T", "  2.50F"}, .date = DateBytes()};
  EXPECT_EQ(Bytes(), expected.Bytes());
}

TEST_F(DbfTemplateTest, a_table_without_a_filter_copies_every_value) {
  CDbf table;
  ASSERT_TRUE(Create(table, Path("t"),
                     {{CString(u"X"), DBF_CHAR, 3},
                      {CString(u"Y"), DBF_CHAR, 5},
                      {CString(u"Z"), DBF_CHAR, 1},
                      {CString(u"REST"), DBF_CHAR, 4}}));
  ASSERT_TRUE(table.SetRecordFields(Values({"1", "2", "3", "4"})));
  ASSERT_TRUE(m_template.ReadRecord(1));
  EXPECT_TRUE(table.CopyRecord(&m_template));
  EXPECT_EQ(ValuesOf(table), (Texts{"bbb", " 2.50", "F", "4"}));
}

TEST_F(DbfTemplateTest, copying_more_than_there_is_room_for_fails) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  ASSERT_TRUE(m_template.ReadRecord(0));
  EXPECT_FALSE(table.CopyRecord(&m_template));
  EXPECT_FALSE(table.CopyRecord(nullptr));
  table.SetAttributeFilter(Flags({false, true}));
  EXPECT_TRUE(table.CopyRecord(&m_template)) << "fields beyond the filter are not selected";
  EXPECT_EQ(ValuesOf(table)[0], " 1.50");
  EXPECT_TRUE(table.CopyRecord(&table));
}

TEST_F(DbfTemplateTest, the_size_of_the_selected_fields_is_worked_out_once_a_filter) {
  EXPECT_EQ(m_template.FilteredRecordSize(), 9) << "without a filter";
  m_template.CDbf::SetAttributeFilter(Flags({true, false, true}));
  EXPECT_EQ(m_template.FilteredRecordSize(), 4);
  EXPECT_EQ(m_template.CalcFilteredRecordSize(), 4);
  m_template.CDbf::SetAttributeFilter(Flags({false, true}));
  EXPECT_EQ(m_template.FilteredRecordSize(), 5);
  m_template.CDbf::SetAttributeFilter(Flags({false, false, false}));
  EXPECT_EQ(m_template.FilteredRecordSize(), 0);
  m_template.SetAttributeFilter(2);
  EXPECT_EQ(m_template.FilteredRecordSize(), 8);
  m_template.SetAttributeFilter(-1);
  EXPECT_EQ(m_template.FilteredRecordSize(), 9);
  ASSERT_TRUE(m_template.Close());
  EXPECT_EQ(m_template.FilteredRecordSize(), 0) << "not open";
}

TEST_F(DbfTemplateTest, an_object_takes_over_fields_without_a_file) {
  OpenDbf table;
  EXPECT_FALSE(table.InitFromTemplate(nullptr));
  ASSERT_TRUE(table.InitFromTemplate(&m_template));
  EXPECT_EQ(table.GetNumFields(), 3);
  EXPECT_FALSE(table.IsOpen());
  EXPECT_EQ(ValuesOf(table), (Texts{"", "", ""}));
}

} // namespace
