#include "io/dbf_fixture.h"

#include "platform/file.h"

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace {

TEST_F(DbfTest, the_extension_is_always_dbf) {
  std::filesystem::create_directories(m_folder.Path("sub.dir"));
  struct Row {
    const char* given;
    const char* made;
  };
  for (const Row& row :
       {Row{"a", "a.dbf"}, Row{"b.txt", "b.dbf"}, Row{"c.dbf", "c.dbf"}, Row{"d.", "d.dbf"}, Row{"e.f.g", "e.f.dbf"},
        Row{"sub.dir/h", "sub.dir/h.dbf"}, Row{"sub.dir\\i.x", "sub.dir/i.dbf"}, Row{"j k.l", "j k.dbf"},
        Row{"m:n.o", "m:n.dbf"}, Row{"p.q:r", "p.q:r.dbf"}}) {
    CDbf table;
    EXPECT_TRUE(CreatePrices(table, row.given)) << row.given;
    EXPECT_TRUE(std::filesystem::exists(m_folder.Path(row.made))) << row.made;
    EXPECT_TRUE(table.Close());
    EXPECT_TRUE(table.Open(Path(row.given), DBF_READ)) << row.given;
  }
}

TEST_F(DbfTest, a_name_without_a_title_is_refused) {
  for (const char* name : {"", ".dbf", ".", "a:", "sub/", "sub\\.x"}) {
    CDbf table;
    EXPECT_FALSE(Create(table, CString::FromUtf8(name), {{CString(u"A"), DBF_CHAR, 1}})) << name;
    EXPECT_FALSE(table.Open(CString::FromUtf8(name), DBF_READ)) << name;
    EXPECT_FALSE(table.IsOpen());
  }
}

TEST_F(DbfTest, a_table_is_found_without_regard_to_case) {
  PutLetters("LETTERS.DBF");
  CDbf table;
  EXPECT_TRUE(table.Open(Path("letters.txt"), DBF_READ));
}

TEST_F(DbfTest, what_is_no_table_does_not_open) {
  std::filesystem::create_directories(m_folder.Path("folder.dbf"));
  m_folder.Write("empty.dbf", "");
  ASSERT_EQ(mkfifo(m_folder.Path("pipe.dbf").c_str(), 0600), 0);
  for (const char* name : {"missing", "folder", "empty", "pipe", "no/such/folder"}) {
    for (const ReadWrite mode : {DBF_READ, DBF_READ_WRITE}) {
      CDbf table;
      EXPECT_FALSE(table.Open(Path(name), mode)) << name;
      EXPECT_FALSE(table.IsOpen()) << name;
    }
  }
}

TEST_F(DbfTest, other_modes_do_not_open) {
  PutLetters();
  for (const int mode : {-1, 3, 100}) {
    CDbf table;
    EXPECT_FALSE(table.Open(Path("t"), static_cast<ReadWrite>(mode))) << mode;
  }
}

TEST_F(DbfTest, a_failed_open_closes_the_table_that_was_open) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_FALSE(table.Open(Path("missing"), DBF_READ));
  EXPECT_FALSE(table.IsOpen());
  EXPECT_EQ(table.GetNumFields(), 0);
  EXPECT_EQ(table.GetNumRecords(), 0U);
  EXPECT_FALSE(table.ReadRecord());
}

TEST_F(DbfTest, an_object_that_is_not_open_answers_false_and_nothing) {
  OpenDbf table;
  CString text(u"left over");
  CStringArray values = Values({"left over"});
  EXPECT_FALSE(table.IsOpen());
  EXPECT_EQ(table.GetNumFields(), 0);
  EXPECT_EQ(table.GetNumRecords(), 0U);
  EXPECT_EQ(table.FilteredRecordSize(), 0);
  EXPECT_EQ(table.OffsetToEnd(), 0U);
  EXPECT_FALSE(table.IsRecordDeleted());
  EXPECT_FALSE(table.ReadRecord());
  EXPECT_FALSE(table.ReadRecord(0));
  EXPECT_FALSE(table.ReadRecord(0, values));
  EXPECT_FALSE(table.IsValidRecord(0));
  EXPECT_FALSE(table.SeekToRecord(0));
  EXPECT_FALSE(table.WriteRecord(true));
  EXPECT_FALSE(table.WriteRecord(0, true));
  EXPECT_FALSE(table.WriteRecord(0, values, true));
  EXPECT_FALSE(table.AppendRecord(true));
  EXPECT_FALSE(table.AppendRecord(values, true));
  EXPECT_FALSE(table.MarkRecordAsDeleted(0));
  EXPECT_FALSE(table.DeleteLastRecord(1));
  EXPECT_FALSE(table.GetAttributeStr(text, 1, 0));
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_FALSE(table.SwitchToWriteMode());
  EXPECT_FALSE(table.OpenRead());
  EXPECT_FALSE(table.OpenWrite());
  EXPECT_FALSE(table.Rewind());
  EXPECT_FALSE(table.Flush());
  EXPECT_FALSE(table.Delete());
  EXPECT_TRUE(table.Close());
}

TEST_F(DbfTest, a_closed_table_does_not_come_back_by_a_write) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.Close());
  EXPECT_FALSE(table.AppendRecord(true));
  EXPECT_FALSE(table.MarkRecordAsDeleted(0));
  EXPECT_FALSE(table.IsOpen());
}

TEST_F(DbfTest, a_table_opened_for_reading_is_closed_without_a_change) {
  PutLetters();
  const std::string before = Bytes();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_TRUE(table.Flush());
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes(), before);
}

TEST_F(DbfTest, a_table_opened_for_updating_gets_todays_date_when_it_closes) {
  PutLetters();
  const std::string before = Bytes();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ_WRITE));
  EXPECT_TRUE(table.Flush());
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes(), before.substr(0, 1) + DateBytes() + before.substr(4));
}

TEST_F(DbfTest, the_destructor_closes_the_table) {
  {
    CDbf table;
    ASSERT_TRUE(CreatePrices(table));
    ASSERT_TRUE(table.AppendRecord(Values({"a", "1"}), false));
  }
  EXPECT_EQ(Bytes().substr(4, 4), LittleEndian(1, 4));
  EXPECT_EQ(Bytes().back(), '\x1A');
}

TEST_F(DbfTest, creating_replaces_an_existing_file) {
  m_folder.Write("t.dbf", std::string(5000, 'x'));
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes().size(), 32 + 2 * 32 + 1 + 1U);
}

TEST_F(DbfTest, a_table_being_created_cannot_be_created_again_meanwhile) {
  CDbf first;
  ASSERT_TRUE(CreatePrices(first));
  ASSERT_TRUE(first.AppendRecord(Values({"a", "1"}), false));
  const std::string before = Bytes();
  CDbf second;
  EXPECT_FALSE(CreatePrices(second));
  EXPECT_FALSE(second.IsOpen());
  EXPECT_EQ(Bytes(), before);
  ASSERT_TRUE(first.Close());
  EXPECT_TRUE(CreatePrices(second));
}

TEST_F(DbfTest, a_table_may_be_open_several_times_for_reading_and_updating) {
  PutLetters();
  CDbf first;
  CDbf second;
  CDbf third;
  EXPECT_TRUE(first.Open(Path("t"), DBF_READ));
  EXPECT_TRUE(second.Open(Path("t"), DBF_READ_WRITE));
  EXPECT_TRUE(third.Open(Path("t"), DBF_READ_WRITE));
}

TEST_F(DbfTest, delete_removes_the_file) {
  CDbf table;
  ASSERT_TRUE(CreatePrices(table));
  EXPECT_TRUE(table.Delete());
  EXPECT_FALSE(table.IsOpen());
  EXPECT_FALSE(std::filesystem::exists(m_folder.Path("t.dbf")));
  EXPECT_TRUE(table.Delete()) << "nothing is left to remove";

  ASSERT_TRUE(CreatePrices(table, "u"));
  ASSERT_TRUE(table.Close());
  EXPECT_TRUE(table.Delete()) << "a closed table's file as well";
  EXPECT_FALSE(std::filesystem::exists(m_folder.Path("u.dbf")));
}

TEST_F(DbfTest, rewind_goes_back_to_the_first_record) {
  PutLetters();
  for (const ReadWrite mode : {DBF_READ, DBF_READ_WRITE}) {
    CDbf table;
    ASSERT_TRUE(table.Open(Path("t"), mode));
    ASSERT_TRUE(table.ReadRecord(2));
    ASSERT_TRUE(table.Rewind()) << mode;
    EXPECT_EQ(ValuesOf(table), Texts{""});
    ASSERT_TRUE(table.ReadRecord());
    EXPECT_EQ(ValuesOf(table), Texts{"aaaa"});
    EXPECT_EQ(table.AppendRecord(true), true);
  }
  CDbf created;
  ASSERT_TRUE(CreatePrices(created, "new"));
  EXPECT_FALSE(created.Rewind()) << "a table that was created here";
  EXPECT_TRUE(created.IsOpen());
}

TEST_F(DbfTest, rewind_reads_the_header_anew) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  Overwrite("t.dbf", 4, LittleEndian(77, 4));
  EXPECT_EQ(table.GetNumRecords(), 3U);
  ASSERT_TRUE(table.Rewind());
  EXPECT_EQ(table.GetNumRecords(), 77U);
  std::filesystem::remove(m_folder.Path("t.dbf"));
  EXPECT_FALSE(table.Rewind());
  EXPECT_FALSE(table.IsOpen());
}

TEST_F(DbfTest, the_first_write_makes_a_table_writable_and_keeps_its_values_and_place) {
  PutLetters();
  OpenDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord(1));
  ASSERT_TRUE(table.SwitchToWriteMode());
  EXPECT_EQ(ValuesOf(table), Texts{"bbbb"});
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), Texts{"cccc"});
  EXPECT_TRUE(table.SwitchToWriteMode());
  ASSERT_TRUE(table.Close());
  EXPECT_EQ(Bytes().substr(1, 3), DateBytes());
}

// Nothing is forbidden to root: gives that up until the test ends.
class OrdinaryUser {
public:
  OrdinaryUser() { (void)!seteuid(m_before == 0 ? 65534 : m_before); }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() { (void)!seteuid(m_before); }

private:
  uid_t m_before = geteuid();
};

TEST_F(DbfTest, a_table_that_may_not_be_written_to_stays_readable) {
  PutLetters();
  std::filesystem::permissions(m_folder.Path("t.dbf"), std::filesystem::perms(0444));
  std::filesystem::permissions(m_folder.Path(""), std::filesystem::perms(0755));
  const OrdinaryUser user;
  ASSERT_NE(geteuid(), 0U);
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_FALSE(table.AppendRecord(true));
  EXPECT_FALSE(table.WriteRecord(0, true));
  EXPECT_FALSE(table.MarkRecordAsDeleted(0));
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), Texts{"bbbb"});
  EXPECT_FALSE(table.Open(Path("t"), DBF_READ_WRITE));
}

TEST_F(DbfTest, a_table_whose_file_is_gone_stays_readable_and_refuses_writes) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  ASSERT_TRUE(table.ReadRecord());
  std::filesystem::remove(m_folder.Path("t.dbf"));
  EXPECT_FALSE(table.AppendRecord(true));
  EXPECT_TRUE(table.IsOpen());
  ASSERT_TRUE(table.ReadRecord());
  EXPECT_EQ(ValuesOf(table), Texts{"bbbb"});
}

TEST_F(DbfTest, a_table_that_was_damaged_meanwhile_is_closed_by_its_first_write) {
  PutLetters();
  CDbf table;
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  m_folder.Write("t.dbf", "short");
  EXPECT_FALSE(table.AppendRecord(true));
  EXPECT_FALSE(table.IsOpen());
  EXPECT_EQ(table.GetNumFields(), 0);
  EXPECT_EQ(Bytes(), "short");
}

TEST_F(DbfTest, clean_up_forgets_the_table_but_not_the_filter) {
  PutLetters();
  OpenDbf table;
  CArray<bool, bool> filter;
  filter.Add(false);
  table.CDbf::SetAttributeFilter(filter);
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(table.FilteredRecordSize(), 0);
  table.CleanUp();
  EXPECT_EQ(table.GetNumFields(), 0);
  EXPECT_EQ(table.GetNumRecords(), 0U);
  EXPECT_TRUE(table.IsOpen());
  ASSERT_TRUE(table.Close());
  ASSERT_TRUE(table.Open(Path("t"), DBF_READ));
  EXPECT_EQ(table.FilteredRecordSize(), 0);
}

} // namespace
