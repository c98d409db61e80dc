// "library" and "include" put together before the run, "run", and scripts that name themselves tools.
#include "support/script_test.h"

#include <sys/stat.h>

namespace {

class CompositionTest : public ScriptTest {
protected:
  // The whole text that a script becomes, with what it needs beside it.
  std::u16string Composed(std::string_view program) {
    Run(std::string(program), "main.bas");
    return std::u16string(State().program->Text());
  }
};

TEST_F(CompositionTest, a_library_is_appended_with_a_line_end) {
  m_folder.Write("lib.bas", "x = 2");
  EXPECT_EQ(Composed("library \"lib.bas\"\nx = 1"), u"library \"lib.bas\"\nx = 1\nx = 2\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(CompositionTest, a_library_named_twice_is_appended_once) {
  m_folder.Write("lib.bas", "x = 2");
  EXPECT_EQ(Composed("library \"lib.bas\"\nlibrary \"lib.bas\""), u"library \"lib.bas\"\nlibrary \"lib.bas\"\nx = 2\n");
}

TEST_F(CompositionTest, an_include_is_appended_once_and_inserted_behind_its_line) {
  m_folder.Write("inc.bas", "x = 2");
  EXPECT_EQ(Composed("include \"inc.bas\"\ny = 1"), u"include \"inc.bas\"\n\nx = 2\n\ny = 1\nx = 2\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(CompositionTest, an_include_named_twice_is_inserted_twice_and_appended_once) {
  m_folder.Write("inc.bas", "a = 1");
  EXPECT_EQ(Composed("include \"inc.bas\"\ninclude \"inc.bas\"\n"),
            u"include \"inc.bas\"\n\na = 1\n\ninclude \"inc.bas\"\n\na = 1\n\n\na = 1\n");
}

TEST_F(CompositionTest, a_program_that_names_itself_reports_1_and_runs) {
  Run("include \"main.bas\"\nprint \"once\"\nend\n", "main.bas");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{1});
  EXPECT_EQ(m_ui.Output(), "once\n");
}

TEST_F(CompositionTest, files_that_include_each_other_report_1) {
  m_folder.Write("a.bas", "include \"b.bas\"\nprint \"a\"\n");
  m_folder.Write("b.bas", "include \"a.bas\"\nprint \"b\"\n");
  Run("include \"a.bas\"\nend\n", "main.bas");
  ASSERT_FALSE(m_ui.errors.empty());
  for (const int number : m_ui.ErrorNumbers())
    EXPECT_EQ(number, 1);
  EXPECT_NE(m_ui.Output().find("a\n"), std::string::npos);
  EXPECT_NE(m_ui.Output().find("b\n"), std::string::npos);
}

TEST_F(CompositionTest, a_program_of_more_than_4000_composition_lines_reports_17) {
  m_folder.Write("lib.bas", "sub greet()\nprint \"greet\"\nendsub\n");
  std::string lines;
  for (int i = 0; i < 4000; ++i)
    lines += "library \"lib.bas\"\n";
  Run(lines + "call greet()\nend\n", "main.bas");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.Output(), "greet\n");
  m_ui.Forget();
  Run("library \"lib.bas\"\n" + lines + "print \"on\"\nend\n", "main.bas");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{17});
  EXPECT_EQ(m_ui.Output(), "on\n");
}

TEST_F(CompositionTest, libraries_that_name_each_other_are_appended_once_each) {
  m_folder.Write("a.bas", "library \"b.bas\"\nsub fa()\nprint \"a\"\nendsub\n");
  m_folder.Write("b.bas", "library \"a.bas\"\nsub fb()\nprint \"b\"\nendsub\n");
  Run("library \"a.bas\"\ncall fa()\ncall fb()\nend\n", "main.bas");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.Output(), "a\nb\n");
}

TEST_F(CompositionTest, what_cannot_be_loaded_reports_1_and_the_run_goes_on) {
  std::filesystem::create_directory(m_folder.Path("folder.bas"));
  for (const char* name : {"missing.bas", "folder.bas", ""}) {
    SCOPED_TRACE(name);
    m_ui.Forget();
    Run("library \"" + std::string(name) + "\"\nprint \"on\"\n", "main.bas");
    EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{1});
    EXPECT_EQ(m_ui.Output(), "on\n");
  }
}

TEST_F(CompositionTest, a_pipe_that_nobody_writes_to_is_not_waited_for) {
  mkfifo(m_folder.Path("pipe.bas").c_str(), 0600);
  Run("library \"pipe.bas\"\nprint \"on\"\n", "main.bas");
  EXPECT_EQ(m_ui.Output(), "on\n");
}

TEST_F(CompositionTest, a_missing_include_is_reported_by_both_its_steps) {
  Run("include \"missing.bas\"\nprint \"on\"\n", "main.bas");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{1, 1}));
  EXPECT_EQ(m_ui.Output(), "on\n");
}

TEST_F(CompositionTest, a_name_that_is_no_literal_ends_the_pass) {
  m_folder.Write("lib.bas", "sub fa()\nendsub\n");
  SetText(u"library name\nlibrary \"lib.bas\"\n");
  State().fileName = CString::FromUtf8(m_folder.Path("main.bas").string());
  EXPECT_FALSE(Access::LoadLibraries(Interpreter()));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{1});
  EXPECT_EQ(State().program->Text(), u"library name\nlibrary \"lib.bas\"\n");
}

TEST_F(CompositionTest, the_pass_goes_back_to_the_start) {
  m_folder.Write("lib.bas", "sub fa()\nendsub\n");
  SetText(u"library \"lib.bas\"\nx = 1\n");
  State().fileName = CString::FromUtf8(m_folder.Path("main.bas").string());
  EXPECT_TRUE(Access::LoadLibraries(Interpreter()));
  EXPECT_EQ(State().position, 0U);
}

TEST_F(CompositionTest, a_text_above_the_limit_is_not_put_together) {
  const std::string comment(40U * 1024 * 1024, '#');
  m_folder.Write("large.bas", comment);
  m_folder.Write("second.bas", comment);
  Run("library \"large.bas\"\nlibrary \"second.bas\"\nprint \"on\"\nend\n", "main.bas");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{17});
  EXPECT_LE(State().program->Length(), 64U * 1024 * 1024);
}

TEST_F(CompositionTest, a_run_gives_back_what_stands_behind_it) {
  m_folder.Write("child.bas", "print \"child\"\n");
  const std::string path = m_folder.Path("child.bas").string();
  Run("if 1 = 1 then run \"" + path + "\" endif\nrun \"" + path + "\" : print \"behind\"\n");
  EXPECT_EQ(m_ui.Output(), "child\nchild\nbehind\n");
  EXPECT_EQ(Access::NumberOfCopies(), 1);
}

TEST_F(CompositionTest, an_extension_script_names_its_menu_entry_in_its_first_line) {
  struct Row {
    const char* name;
    std::string text;
    bool expected;
    const char* caption;
  };
  const Row rows[] = {
      {"plain", "# TOOLMENU=My Tools\n", true, "My Tools"},
      {"lower case", "rem toolmenu=My Tools\n", true, "My Tools"},
      {"without a comment", "TOOLMENU=x", true, "x"},
      {"words between", "# TOOLMENU of the city = Roads\n", true, " Roads"},
      {"the first equal sign behind the word counts", "# a=b TOOLMENU=c=d\n", true, "c=d"},
      {"case of the file", "# ToolMenu=mIxEd\n", true, "mIxEd"},
      {"windows line end", "# TOOLMENU=x\r\n", true, "x"},
      {"one blank is a caption", "# TOOLMENU= \n", true, " "},
      {"letters beyond ASCII", "# TOOLMENU=Höhe ß\n", true, "Höhe ß"},
      {"text in UTF-16", std::string("\xFF\xFET\0O\0O\0L\0M\0E\0N\0U\0=\0x\0\n\0", 24), true, "x"},
      {"nothing behind the sign", "# TOOLMENU=\n", false, "as before"},
      {"nothing behind the sign at the end", "# TOOLMENU=", false, "as before"},
      {"no sign", "# TOOLMENU x\n", false, "as before"},
      {"sign in front only", "# = TOOLMENU\n", false, "as before"},
      {"second line", "\n# TOOLMENU=x\n", false, "as before"},
      {"another word", "# TOOL MENU=x\n", false, "as before"},
      {"empty file", "", false, "as before"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    CString caption(u"as before");
    EXPECT_EQ(CBrindle::IsExtensionScript(m_folder.Write("tool.bas", row.text), caption), row.expected);
    EXPECT_EQ(caption.ToUtf8(), row.caption);
  }
}

TEST_F(CompositionTest, what_cannot_be_read_is_no_extension_script) {
  mkfifo(m_folder.Path("pipe.bas").c_str(), 0600);
  for (const auto& path : {m_folder.Path("missing.bas"), m_folder.Path(""), m_folder.Path("pipe.bas")}) {
    CString caption(u"as before");
    EXPECT_FALSE(CBrindle::IsExtensionScript(CString::FromUtf8(path.string()), caption)) << path;
    EXPECT_EQ(caption.ToUtf8(), "as before");
  }
}

} // namespace
