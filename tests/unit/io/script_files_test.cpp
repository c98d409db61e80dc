// "open" and "close" as the system sees them: descriptors, numbers, and what an interpreter leaves open.
#include "support/script_test.h"

#include <sys/stat.h>

namespace {

class ScriptFilesTest : public ScriptTest {
protected:
  static std::ptrdiff_t OpenDescriptors() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
  }
  [[nodiscard]] std::string Quoted(std::string_view name) const { return "\"" + m_folder.Path(name).string() + "\""; }
};

TEST_F(ScriptFilesTest, close_frees_the_descriptor) {
  m_folder.Write("a.txt", "one\n");
  const auto before = OpenDescriptors();
  for (const char* mode : {"", " text"}) {
    Run("for i = 1 to 5000\nopen " + Quoted("a.txt") + " as 1" + mode + "\nclose 1\nnext\nprint int(i)\n");
    EXPECT_EQ(OpenDescriptors(), before) << mode;
  }
  EXPECT_EQ(m_ui.Output(), "5001\n5001\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ScriptFilesTest, a_second_file_under_a_number_frees_the_first) {
  m_folder.Write("a.txt", "one\n");
  const auto before = OpenDescriptors();
  Run("for i = 1 to 5000\nopen " + Quoted("a.txt") + " as 1 text\nx = readline(1)\nnext\nprint x\n");
  EXPECT_EQ(m_ui.Output(), "one\n");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_LE(OpenDescriptors(), before + 1);
}

TEST_F(ScriptFilesTest, what_fails_to_open_leaves_no_descriptor) {
  m_folder.Write("a.txt", "one\n");
  const auto before = OpenDescriptors();
  Run("for i = 1 to 100\nopen " + Quoted("missing") + " as 1\nopen " + Quoted("") + " as 1 text\nopen " +
      Quoted("a.txt") + " as 0\nopen " + Quoted("a.txt") + " as 257 text\nnext\n");
  EXPECT_EQ(m_ui.errors.size(), 400U);
  EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(ScriptFilesTest, the_interpreter_closes_everything_at_its_end) {
  m_folder.Write("a.txt", "one\n");
  const auto before = OpenDescriptors();
  Run("for i = 1 to 256\nif i <= 128 then open " + Quoted("a.txt") + " as i text else open " + Quoted("a.txt") +
      " as i endif\nnext\n");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(OpenDescriptors(), before + 256);
  m_pInterpreter.reset();
  EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(ScriptFilesTest, close_writes_everything_out) {
  Run("open " + Quoted("out.txt") +
      " for output as 1 text\nfor i = 1 to 1000\nx = writeline(1, str(int(i)))\nnext\n"
      "close 1\n");
  std::string expected;
  for (int i = 1; i <= 1000; ++i)
    expected += std::to_string(i);
  EXPECT_EQ(m_folder.Read("out.txt"), expected);
}

TEST_F(ScriptFilesTest, each_interpreter_has_its_own_numbers) {
  m_folder.Write("a.txt", "from a\n");
  m_folder.Write("b.txt", "from b\n");
  CBrindle other;
  other.SetUserInterface(&m_ui);
  Run("open " + Quoted("a.txt") + " as 1 text\n");
  other.ExecuteProgram(
      m_folder.Write("other.bas", "open " + Quoted("b.txt") + " as 1 text\nprint readline(1)\nclose 1\n"));
  Run("print readline(1)\n");
  EXPECT_EQ(m_ui.Output(), "from b\nfrom a\n");
}

TEST_F(ScriptFilesTest, a_count_that_no_file_holds_takes_no_memory) {
  m_folder.Write("a.bin", "12345678");
  Run("open " + Quoted("a.bin") + " as 1\nx = read(1, 60000000, 8)\nprint int(getfilepos(1))\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{51});
}

TEST_F(ScriptFilesTest, an_abort_leaves_files_open_for_the_next_run) {
  m_folder.Write("a.txt", "one\ntwo\n");
  m_ui.CancelErrors();
  Run("open " + Quoted("a.txt") + " as 1 text\nprint readline(1)\nnext\nclose 1\n");
  Run("print readline(1)\n");
  EXPECT_EQ(m_ui.Output(), "one\ntwo\n");
}

TEST_F(ScriptFilesTest, what_has_no_end_to_append_to_is_not_found) {
  ASSERT_EQ(mkfifo(m_folder.Path("pipe").c_str(), 0600), 0);
  const auto before = OpenDescriptors();
  Run("open " + Quoted("pipe") + " for append as 1\nprint \"on\"\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{47});
  EXPECT_EQ(m_ui.Output(), "on\n");
  EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(ScriptFilesTest, sizes_and_positions_beyond_31_bits_are_numbers) {
  m_folder.Write("large", "");
  std::filesystem::resize_file(m_folder.Path("large"), 3000000000U);
  Run("open " + Quoted("large") +
      " for input as 1\nprint filesize(1)\nx = seek(1, 2999999999)\nprint x\n"
      "print getfilepos(1)\nx = seek(1, 5)\nprint x\nclose 1\n");
  EXPECT_EQ(m_ui.Output(), "3000000000.000000\n2999999999.000000\n2999999999.000000\n5\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ScriptFilesTest, a_line_beyond_64_mi_characters_reports_50) {
  m_folder.Write("long", "");
  std::filesystem::resize_file(m_folder.Path("long"), (64U << 20) + 100);
  Run("open " + Quoted("long") + " for input as 1 text\nx = readline(1)\nprint \"behind\"\n");
  Run("open " + Quoted("long") + " for input as 2 text\nx = readlist(2, \",\")\nprint \"behind\"\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{50, 50}));
}

} // namespace
