// The check as a host or an editor calls it.
#include "brindle/check.h"
#include "brindle/interpreter.h"
#include "support/script_test.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace {

using Place = std::tuple<std::string, int, int, std::string>; // file, line, column, code

std::vector<Place> PlacesOf(const CScriptCheck& check) {
  std::vector<Place> places;
  for (const CProblem& problem : check.GetProblems())
    places.emplace_back(problem.file.ToUtf8(), problem.line, problem.column, problem.code);
  return places;
}

std::vector<std::string> CodesOf(std::u16string_view text) {
  CScriptCheck check;
  check.CheckText(CString(u"text.bas"), CString(text));
  std::vector<std::string> codes;
  for (const CProblem& problem : check.GetProblems())
    codes.push_back(problem.code);
  return codes;
}

class ScriptCheckTest : public ScriptTest {};

TEST_F(ScriptCheckTest, a_file_that_cannot_be_read_is_the_one_problem) {
  CScriptCheck check;
  const CString file = CString::FromUtf8(m_folder.Path("nowhere.bas").string());
  EXPECT_FALSE(check.CheckFile(file));
  EXPECT_EQ(std::vector<Place>({{file.ToUtf8(), 1, 1, "unreadable-file"}}), PlacesOf(check));
  EXPECT_EQ(1, check.GetNumberOfErrors());
}

TEST_F(ScriptCheckTest, a_file_is_checked_under_the_name_it_was_given) {
  CScriptCheck check;
  const CString file = m_folder.Write("script.bas", "x = 1\nx = nope\n");
  EXPECT_TRUE(check.CheckFile(file));
  EXPECT_EQ(std::vector<Place>({{file.ToUtf8(), 2, 5, "undefined-variable"}}), PlacesOf(check));
}

TEST_F(ScriptCheckTest, a_text_needs_no_file_but_finds_those_beside_it) {
  m_folder.Write("tools.bas", "sub greet(who)\n  print who\nendsub\n");
  CScriptCheck check;
  const CString file = CString::FromUtf8(m_folder.Path("unsaved.bas").string());
  check.CheckText(file, CString(u"library \"tools.bas\"\ncall greet()\nend"));
  EXPECT_EQ(std::vector<Place>({{file.ToUtf8(), 2, 6, "procedure-arguments"}}), PlacesOf(check));
}

TEST_F(ScriptCheckTest, every_check_begins_anew) {
  CScriptCheck check;
  check.CheckText(CString(u"a.bas"), CString(u"sub f()\nendsub\nx = nope"));
  EXPECT_FALSE(check.GetProblems().empty());
  check.CheckText(CString(u"b.bas"), CString(u"sub f()\nendsub\n"));
  EXPECT_EQ(0, check.GetNumberOfErrors());
  check.CheckText(CString(u"c.bas"), CString(u"call f()"));
  EXPECT_EQ(1, check.GetNumberOfErrors());
}

TEST_F(ScriptCheckTest, a_host_names_its_functions_in_any_letters) {
  CScriptCheck check;
  check.AddHostFunction(CString(u"BatteryLevel"));
  check.CheckText(CString(u"a.bas"), CString(u"print batterylevel(1, 2)\nevent create low BATTERYLEVEL\n"));
  EXPECT_TRUE(check.GetProblems().empty());
  check.CheckText(CString(u"a.bas"), CString(u"print other()"));
  EXPECT_EQ(1, check.GetNumberOfErrors());
}

CBasicVariable NoResult(CBrindle*, CBasicVariableArray&, int) {
  return {};
}

TEST_F(ScriptCheckTest, functions_that_other_interpreters_registered_are_known) {
  ASSERT_TRUE(Interpreter().AddCustomFunction(CString(u"hostfunction"), &NoResult, 0, nullptr));
  EXPECT_TRUE(CodesOf(u"print hostfunction(1)").empty());
}

TEST_F(ScriptCheckTest, nothing_is_run_or_shown) {
  CUserInterface::SetDefault(&m_ui);
  CScriptCheck check;
  const std::string made = m_folder.Path("made").string();
  check.CheckText(CString(u"a.bas"), CString::FromUtf8("print \"shown\"\nopen \"" + made +
                                                       "\" for output as 1\nx = nope\nlibrary \"none\"\n"));
  CUserInterface::SetDefault(nullptr);
  EXPECT_TRUE(m_ui.messages.empty());
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_FALSE(std::filesystem::exists(made));
  EXPECT_EQ(2, check.GetNumberOfErrors());
}

TEST_F(ScriptCheckTest, problems_come_by_file_line_and_column) {
  m_folder.Write("inner.bas", "\n\nx = nope\n");
  CScriptCheck check;
  const CString file = CString::FromUtf8(m_folder.Path("outer.bas").string());
  check.CheckText(file, CString(u"include \"inner.bas\"\ny = nope\nz = nope\nend\n"));
  const std::string inner = m_folder.Path("inner.bas").string();
  EXPECT_EQ(std::vector<Place>({{file.ToUtf8(), 2, 5, "undefined-variable"},
                                {file.ToUtf8(), 3, 5, "undefined-variable"},
                                {inner, 3, 5, "undefined-variable"}}),
            PlacesOf(check));
}

TEST_F(ScriptCheckTest, codes_are_in_order_and_told_apart) {
  const std::vector<CProblemCode> codes = CScriptCheck::GetCodes();
  EXPECT_GT(codes.size(), 70U);
  EXPECT_TRUE(std::is_sorted(codes.begin(), codes.end(),
                             [](const CProblemCode& a, const CProblemCode& b) { return a.code < b.code; }));
  std::set<std::string> names;
  for (const CProblemCode& code : codes) {
    EXPECT_TRUE(names.insert(code.code).second) << code.code;
    EXPECT_FALSE(code.summary.empty()) << code.code;
  }
}

struct FlowRow {
  const char* name;
  std::u16string_view text;
  std::vector<std::string> codes;
};

// What is certain depends on every way that leads to a statement.
TEST_F(ScriptCheckTest, variables_are_followed_along_every_way) {
  const FlowRow rows[] = {
      {"never assigned", u"x = a + 1", {"undefined-variable"}},
      {"assigned before", u"a = 1\nx = a + 1", {}},
      {"assigned in one branch", u"b = rand(9)\nif b = 1 then\na = 1\nendif\nx = a + 1", {}},
      {"assigned in the other branch only",
       u"b = rand(9)\nif b = 1 then\nx = a + 1\nelse\na = 1\nendif",
       {"undefined-variable"}},
      {"assigned in a branch that is never taken", u"if 1 = 2 then\na = 1\nendif\nx = a + 1", {"undefined-variable"}},
      {"assigned later in a loop", u"for i = 1 to 9\nif i > 1 then x = a + 1 endif\na = 1\nnext", {}},
      {"assigned later in a do", u"i = 0\ndo while i < 9\nif i > 1 then x = a + 1 endif\na = 1\ni = i + 1\nloop", {}},
      {"assigned behind a loop", u"for i = 1 to 9\nx = a + 1\nnext\na = 1", {"undefined-variable"}},
      {"assigned in a loop that may not run", u"n = rand(9)\nfor i = 1 to n\na = 1\nnext\nx = a + 1", {}},
      {"assigned in a loop that never runs", u"for i = 2 to 1\na = 1\nnext\nx = a + 1", {"undefined-variable"}},
      {"assigned on the way back", u"goto b\na:\nx = c + 1\nend\nb:\nc = 1\ngoto a", {}},
      {"assigned behind end",
       u"goto a\nb:\nc = 1\nend\na:\nx = c + 1\nend\ngoto b",
       {"undefined-variable", "unreachable-code"}},
      {"a parameter", u"print f(1)\nend\nfunction f(a)\nf = a + 1\nendfunction", {}},
      {"a variable of the main program",
       u"a = 1\nprint f()\nend\nfunction f()\nf = a + 1\nendfunction",
       {"undefined-variable"}},
      {"a global", u"global a\na = 1\nprint f()\nend\nfunction f()\nf = a + 1\nendfunction", {}},
      {"a global in other letters",
       u"global A\nA = 1\nprint f()\nend\nfunction f()\nf = a + 1\nendfunction",
       {"undefined-variable"}},
      {"its own name", u"print f()\nend\nfunction f()\nf = f + 1\nendfunction", {"undefined-variable"}},
      {"letters do not count", u"Count = 1\nx = COUNT + 1", {}},
      {"a level's name", u"a__#1 = 1\nx = a + 1", {}},
      {"declared and not set", u"dim a\nx = a + 1", {"unset-value"}},
      {"declared, then set in a branch", u"dim a\nb = rand(9)\nif b = 1 then a = 1 endif\nx = a + 1", {}},
      {"an element that is set", u"dim a[3]\na[1] = 1\nx = a[0] + 1", {}},
      {"elements none of which is set", u"dim a[3]\nx = a[0] + 1", {"unset-value"}},
      {"a routine's argument",
       u"declare function r lib \"x\" (b as string) as integer\ndim a\ny = r(a)\nx = a + 1",
       {}},
  };
  for (const FlowRow& row : rows)
    EXPECT_EQ(row.codes, CodesOf(row.text)) << row.name;
}

// Which loop a word closes depends on what was begun last, not on what stands above it.
TEST_F(ScriptCheckTest, loops_are_followed_along_every_way) {
  const FlowRow rows[] = {
      {"nested", u"for i = 1 to 2\nfor j = 1 to 2\nnext\nnext", {}},
      {"one next too many", u"for i = 1 to 2\nnext\nnext", {"next-without-for"}},
      {"a for in a do", u"a = 1\ndo while a < 3\na = a + 1\nfor i = 1 to 2\nnext\nloop", {}},
      {"left by goto", u"for i = 1 to 2\nif i = 2 then goto a endif\nnext\na:\nnext", {}},
      {"in a procedure", u"for i = 1 to 2\ncall f()\nnext\nend\nsub f()\nnext\nendsub", {}},
      {"next in two branches", u"for i = 1 to 9\nif i = 2 then\nnext\nelse\nnext\nendif", {}},
  };
  for (const FlowRow& row : rows)
    EXPECT_EQ(row.codes, CodesOf(row.text)) << row.name;
}

} // namespace
