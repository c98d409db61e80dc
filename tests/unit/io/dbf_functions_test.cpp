// What scripts cannot show of the dBase functions: handles that outlive a run, and the interpreter's end.
#include "io/dbf_fixture.h"

namespace {

class DbfFunctionsTest : public ScriptTest {
protected:
  // A program that works in this test's folder.
  bool RunHere(std::string program) {
    const std::string folder = m_folder.Path("").string();
    for (std::size_t at = program.find('$'); at != std::string::npos; at = program.find('$'))
      program.replace(at, 1, folder);
    return Run(program);
  }
  static constexpr const char* kCreate = "dim f[3]\n"
                                         "f[0] = \"A\"\n"
                                         "f[1] = \"C\"\n"
                                         "f[2] = 4\n"
                                         "h = dbfcreate(\"$t\", f)\n";
};

TEST_F(DbfFunctionsTest, handles_outlive_the_run) {
  ASSERT_TRUE(RunHere(std::string(kCreate) + "x = dbfappend(h, \"one\")\n"));
  ASSERT_TRUE(RunHere("x = dbfappend(0, \"two\")\nprint dbfnumrecords(0)\n"));
  EXPECT_EQ(m_ui.Output(), "2\n");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_folder.Read("t.dbf").substr(65), " one  two ");
}

TEST_F(DbfFunctionsTest, the_end_of_the_interpreter_closes_every_table) {
  ASSERT_TRUE(RunHere(std::string(kCreate) + "x = dbfappend(h, \"one\")\nh = dbfcreate(\"$u\", f)\n"));
  m_pInterpreter.reset();
  EXPECT_EQ(m_folder.Read("t.dbf").substr(65), " one \x1A");
  EXPECT_EQ(m_folder.Read("t.dbf").substr(4, 4), LittleEndian(1, 4));
  EXPECT_EQ(m_folder.Read("u.dbf").substr(65), "\x1A");
}

TEST_F(DbfFunctionsTest, a_record_count_beyond_31_bits_is_a_number) {
  const RawTable table{.fields = {{"A", 'C', 4}}, .recordCount = -1};
  std::string bytes = table.Bytes();
  bytes.replace(4, 4, "\xFF\xFF\xFF\xFF");
  m_folder.Write("t.dbf", bytes);
  ASSERT_TRUE(RunHere("h = dbfopen(\"$t\")\nprint dbfnumrecords(h)\n"));
  EXPECT_EQ(m_ui.Output(), "4294967295.000000\n");
}

TEST_F(DbfFunctionsTest, an_aborted_run_keeps_its_tables_open) {
  m_ui.CancelErrors();
  ASSERT_TRUE(
      RunHere(std::string(kCreate) + "x = dbfappend(h, \"one\")\nx = dbfappend(h)\nx = dbfappend(h, \"no\")\n"));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{24});
  ASSERT_TRUE(RunHere("print dbfnumrecords(0)\n"));
  EXPECT_EQ(m_ui.Output(), "1\n");
}

} // namespace
