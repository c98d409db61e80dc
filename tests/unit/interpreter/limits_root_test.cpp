// The folder that no path of a script leads out of.
#include "platform/file.h"
#include "platform/file_root.h"
#include "support/dialog_user_interface.h"
#include "support/script_test.h"

namespace {

namespace fs = std::filesystem;

class LimitsRootTest : public ScriptTest, public testing::WithParamInterface<bool> {
protected:
  LimitsRootTest() {
    brindle::FileRoot::SetAlwaysWalks(GetParam());
    m_folder.Write("root/in.txt", "inside\n");
    m_folder.Write("root/Sub/Deep.txt", "deep\n");
    m_folder.Write("outside.txt", "secret\n");
    m_folder.Write("outside/more.txt", "secret\n");
    m_folder.Write("rootlike/x.txt", "secret\n");
    fs::create_symlink("../outside.txt", m_folder.Path("root/link.txt"));
    fs::create_symlink(m_folder.Path("outside.txt"), m_folder.Path("root/absolute.txt"));
    fs::create_symlink("../outside", m_folder.Path("root/linked"));
    fs::create_symlink("Sub/Deep.txt", m_folder.Path("root/good.txt"));
    fs::create_symlink("../nowhere", m_folder.Path("root/dangling"));
    fs::create_symlink("round", m_folder.Path("root/round"));
    CExecutionLimits limits;
    limits.root = CString::FromUtf8(m_folder.Path("root").string());
    EXPECT_TRUE(Interpreter().SetLimits(limits));
  }
  ~LimitsRootTest() override { brindle::FileRoot::SetAlwaysWalks(false); }

  // The first line that "open" and "readline" give, or the number of the error.
  std::string LineOf(const std::string& path) {
    m_ui.Forget();
    Run("open \"" + path + "\" for input as 1 text\nprint readline(1);\nclose 1\n", "root/script.bas");
    const Numbers errors = m_ui.ErrorNumbers();
    return errors.empty() ? m_ui.Output() : std::to_string(errors.front());
  }
};

INSTANTIATE_TEST_SUITE_P(ByTheSystemAndByWalking, LimitsRootTest, testing::Bool());

TEST_P(LimitsRootTest, paths_are_opened_below_the_root_only) {
  const std::string folder = m_folder.Path("").string();
  const struct {
    std::string path;
    std::string expected;
  } rows[] = {
      {"in.txt", "inside"},
      {"\\in.txt", "inside"},
      {"/in.txt", "inside"},
      {"\\\\in.txt", "inside"},
      {".\\in.txt", "inside"},
      {"sub\\deep.TXT", "deep"},
      {"SUB/../in.txt", "inside"},
      {"good.txt", "deep"},
      {"..\\outside.txt", "65"},
      {"../nothing.txt", "65"},
      {"\\..\\outside.txt", "65"},
      {"sub\\..\\..\\outside.txt", "65"},
      {"sub\\..\\..\\root\\in.txt", "65"},
      {"..", "65"},
      {"link.txt", "65"},
      {"absolute.txt", "65"},
      {"linked\\more.txt", "65"},
      {"linked\\nothing.txt", "65"},
      {"dangling", "65"},
      {"round", "47"},
      {folder + "outside.txt", "47"},
      {folder + "nothing.txt", "47"},
      {"/etc/passwd", "47"},
      {"nothing.txt", "47"},
      {"nothing/more.txt", "47"},
      {"in.txt/more", "47"},
      {"in.txt/", "47"},
      {"", "47"},
      {"sub", "47"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(LineOf(row.path), row.expected) << row.path;
}

TEST_P(LimitsRootTest, files_are_made_below_the_root_only) {
  Run("open \"new.txt\" for output as 1 text\ncall writeline(1, \"a\")\nclose 1\n"
      "open \"\\sub\\NEW.txt\" for output as 1 text\nclose 1\n"
      "open \"..\\made.txt\" for output as 1\nopen \"dangling\" for output as 1\n"
      "open \"link.txt\" for output as 1\nopen \"linked\\made.txt\" for output as 1\nprint \"end\"\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{65, 65, 65, 65}));
  EXPECT_EQ(m_folder.Read("root/new.txt"), "a");
  EXPECT_TRUE(fs::exists(m_folder.Path("root/Sub/NEW.txt")));
  EXPECT_FALSE(fs::exists(m_folder.Path("made.txt")));
  EXPECT_FALSE(fs::exists(m_folder.Path("nowhere")));
  EXPECT_FALSE(fs::exists(m_folder.Path("outside/made.txt")));
  EXPECT_EQ(m_folder.Read("outside.txt"), "secret\n");
}

TEST_P(LimitsRootTest, findfiles_looks_below_the_root_only) {
  Run("f = findfiles(\"\\sub\\*.txt\", 0)\nprint f\nf = findfiles(\"*.TXT\", 0)\nprint ubound(f)\n"
      "f = findfiles(\"IN.txt\", 0)\nprint f\n"
      "f = findfiles(\"..\\*\", 0)\nf = findfiles(\"linked\\*\", 0)\nf = findfiles(\"..\\outside.txt\", 0)\n"
      "f = findfiles(\"/etc/*\", 0)\nprint \"end\"\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{65, 65, 65}));
  EXPECT_TRUE(m_ui.Output().starts_with("Deep.txt\n")) << m_ui.Output();
  EXPECT_NE(m_ui.Output().find("in.txt\n"), std::string::npos) << m_ui.Output();
}

TEST_P(LimitsRootTest, parts_of_a_program_come_from_below_the_root) {
  m_folder.Write("root/part.bas", "print \"part\"\n");
  m_folder.Write("part.bas", "print \"outside\"\n");
  m_folder.Write("root/run.bas", "print \"run\"\n");
  Run("include \"part.bas\"\ninclude \"..\\part.bas\"\nrun \"run.bas\"\nrun \"\\run.bas\"\nrun \"..\\part.bas\"\n"
      "print \"end\"\nend\n",
      "root/main.bas");
  EXPECT_EQ(m_ui.Output(), "part\nrun\nrun\nend\n");
  for (const int number : m_ui.ErrorNumbers())
    EXPECT_EQ(number, 65);
  EXPECT_FALSE(m_ui.errors.empty());
}

TEST_P(LimitsRootTest, a_program_from_outside_stands_in_the_root_for_its_own_paths) {
  m_folder.Write("root/part.bas", "print \"part\"\n");
  Run("include \"part.bas\"\nevent create onstart begin\nprint \"main\"\nend\nsub begin(path)\nendsub\n", "main.bas");
  EXPECT_EQ(m_ui.Output(), "part\nmain\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_P(LimitsRootTest, tables_and_what_stands_beside_them_are_below_the_root) {
  Run("h = dbfcreate(\"t\", field(\"NAME\"))\nprint h\nh = dbfcreate(\"..\\t\", field(\"NAME\"))\n"
      "h = dbfopen(\"..\\outside\")\nh = dbfopen(\"linked\\t\")\nprint \"end\"\nend\n"
      "function field(n)\ndim f[3]\nf[0] = n\nf[1] = \"Character\"\nf[2] = 5\nfield = f\nendfunction\n");
  EXPECT_FALSE(fs::exists(m_folder.Path("t.dbf")));
  EXPECT_TRUE(fs::exists(m_folder.Path("root/t.dbf"))) << m_ui.Output();
  Numbers refused;
  for (const int number : m_ui.ErrorNumbers())
    if (number == 65)
      refused.push_back(number);
  EXPECT_EQ(refused, (Numbers{65, 65, 65}));
}

TEST_P(LimitsRootTest, what_a_file_dialog_gives_is_named_from_the_root) {
  m_ui.fileAnswers = {CString::FromUtf8(m_folder.Path("root/Sub/Deep.txt").string()),
                      CString::FromUtf8(m_folder.Path("root/Sub/new.txt").string()),
                      CString::FromUtf8(m_folder.Path("outside.txt").string()),
                      CString::FromUtf8(m_folder.Path("rootlike/x.txt").string())};
  Run("f = fileopendlg(\"\", \"\", \"\")\nprint f\nprint filesaveasdlg(\"\", \"\", \"\")\n"
      "open f for input as 1 text\nprint readline(1)\n"
      "print fileopendlg(\"\", \"\", \"\")\nprint fileopendlg(\"\", \"\", \"\")\n");
  EXPECT_EQ(m_ui.Output(), "\\Sub\\Deep.txt\n\\Sub\\new.txt\ndeep\n\n\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{65, 65}));
}

TEST_P(LimitsRootTest, sounds_and_programs_come_from_below_the_root) {
  Run("playsound \"..\\outside.txt\"\nrunexe \"..\\outside.txt\"\nplaysound \"in.txt\"\nplaysound \"nothing.wav\"\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{65, 65}));
  ASSERT_EQ(m_ui.sounds.size(), 1U);
  EXPECT_EQ(m_ui.sounds[0], fs::canonical(m_folder.Path("root/in.txt")).string());
}

// The names that a window system is given; what it does not get it cannot open.
TEST_P(LimitsRootTest, pictures_of_dialogs_come_from_below_the_root) {
  DialogUserInterface dialogs;
  Interpreter().SetUserInterface(&dialogs);
  const std::string outside = m_folder.Path("outside.txt").string();
  const std::string inside = fs::canonical(m_folder.Path("root/in.txt")).string();
  const std::string deep = fs::canonical(m_folder.Path("root/Sub/Deep.txt")).string();
  const struct {
    std::string path;
    std::string shown;
    bool isRefused;
  } rows[] = {{"IN.txt", inside, false},      {"\\sub\\deep.txt", deep, false},
              {"good.txt", deep, false},      {"..\\outside.txt", "", true},
              {"link.txt", "", true},         {"absolute.txt", "", true},
              {"linked\\more.txt", "", true}, {outside, "", false},
              {"nothing.bmp", "", false},     {"sub\\..\\..\\outside.txt", "", true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    const std::string control = "control bitmap \"" + row.path + "\", 10, 0, 0, 9, 9\n";
    for (const bool isSheet : {false, true}) {
      dialogs.Forget();
      std::string shown = "no dialog";
      dialogs.plays.push_back([&shown](PlayedDialog& dialog) { shown = dialog.At(10).text.ToUtf8(); });
      Run(isSheet ? "propertysheet \"S\"\npage \"P\"\n" + control + "endpage\nenddialog\n"
                  : "dialog \"D\", 0, 0, 9, 9\n" + control + "enddialog\n",
          "root/script.bas");
      EXPECT_EQ(dialogs.ErrorNumbers(), row.isRefused ? Numbers{65} : Numbers{});
      EXPECT_EQ(shown, row.isRefused ? "no dialog" : row.shown);
      dialogs.plays.clear();
    }
    dialogs.Forget();
    dialogs.calls.clear();
    Run("dialog \"D\", 0, 0, 9, 9\ncontrol bitmap \"\", 10, 0, 0, 9, 9\noninit change\nenddialog\nend\n"
        "sub change(v)\nalter 10\ntitle \"" +
            row.path + "\"\nendalter\nendsub\n",
        "root/script.bas");
    EXPECT_EQ(dialogs.ErrorNumbers(), row.isRefused ? Numbers{65} : Numbers{});
    EXPECT_EQ(std::count(dialogs.calls.begin(), dialogs.calls.end(), "text 10 " + row.shown), row.isRefused ? 0 : 1);
  }
  m_pInterpreter.reset(); // before the interface that it borrows
}

TEST_P(LimitsRootTest, a_root_that_is_no_folder_is_refused_and_the_old_one_stays) {
  CExecutionLimits limits;
  for (const char* name : {"nowhere", "outside.txt"}) {
    limits.root = CString::FromUtf8(m_folder.Path(name).string());
    EXPECT_FALSE(Interpreter().SetLimits(limits)) << name;
  }
  EXPECT_EQ(LineOf("..\\outside.txt"), "65");
}

TEST_P(LimitsRootTest, a_root_that_is_moved_meanwhile_stays_the_folder_that_it_was) {
  fs::rename(m_folder.Path("root"), m_folder.Path("moved"));
  m_folder.Write("root/in.txt", "another\n");
  EXPECT_EQ(LineOf("in.txt"), "inside");
}

TEST_P(LimitsRootTest, files_are_removed_below_the_root_only) {
  const auto root = brindle::FileRoot::Open(m_folder.Path("root").string());
  ASSERT_NE(root, nullptr);
  const brindle::FileRoot::Scope scope(root.get());
  for (const char16_t* path : {u"..\\outside.txt", u"/linked/more.txt", u"missing.txt", u"sub", u""}) {
    EXPECT_FALSE(CFile::Remove(path)) << CString(path).ToUtf8();
  }
  EXPECT_FALSE(CFile::Remove(std::u16string_view(u"in.txt\0x", 8)));
  EXPECT_TRUE(fs::exists(m_folder.Path("outside.txt")));
  EXPECT_TRUE(fs::exists(m_folder.Path("outside/more.txt")));
  EXPECT_TRUE(CFile::Remove(u"\\SUB\\deep.txt"));
  EXPECT_FALSE(fs::exists(m_folder.Path("root/Sub/Deep.txt")));
  EXPECT_FALSE(CFile::Remove(u"/link.txt")) << "it leads outside";
  EXPECT_TRUE(fs::is_symlink(m_folder.Path("root/link.txt")));
  EXPECT_TRUE(fs::exists(m_folder.Path("outside.txt")));
}

TEST_P(LimitsRootTest, a_name_without_wildcards_finds_the_exact_one_first) {
  const auto root = brindle::FileRoot::Open(m_folder.Path("root").string());
  ASSERT_NE(root, nullptr);
  using Names = std::vector<std::u16string>;
  m_folder.Write("root/IN.TXT", "upper\n");
  EXPECT_EQ(root->FindFiles(u"/in.txt"), Names{u"in.txt"});
  EXPECT_EQ(root->FindFiles(u"/IN.TXT"), Names{u"IN.TXT"});
  EXPECT_EQ(root->FindFiles(u"/In.Txt"), Names{u"IN.TXT"}) << "else the first in order";
  EXPECT_EQ(root->FindFiles(u"/in.txt/x"), Names{}) << "a file is no folder";
}

TEST_P(LimitsRootTest, what_lies_in_a_folder_that_is_not_there_has_no_name) {
  const auto root = brindle::FileRoot::Open(m_folder.Path("root").string());
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root->NameOf(m_folder.Path("root/nowhere/x.txt").string()), std::nullopt);
  EXPECT_EQ(root->NameOf(m_folder.Path("root/new.txt").string()), u"\\new.txt");
  EXPECT_EQ(root->PathOf(u"/sub/deep.txt"), m_folder.Path("root/Sub/Deep.txt").string());
  EXPECT_EQ(root->PathOf(u"/sub/other.txt"), std::nullopt);
  EXPECT_EQ(brindle::FileRoot::Open(m_folder.Path("root").string() + std::string("\0x", 2)), nullptr);
}

TEST_P(LimitsRootTest, a_relative_path_starts_at_the_current_folder_below_the_root) {
  const auto root = brindle::FileRoot::Open(m_folder.Path("root").string());
  ASSERT_NE(root, nullptr);
  const fs::path before = fs::current_path();
  fs::current_path(m_folder.Path("root/Sub"));
  EXPECT_EQ(root->PathOf(u"deep.txt"), m_folder.Path("root/Sub/Deep.txt").string());
  fs::current_path(m_folder.Path(""));
  EXPECT_EQ(root->PathOf(u"in.txt"), m_folder.Path("root/in.txt").string());
  fs::current_path(before);
}

} // namespace
