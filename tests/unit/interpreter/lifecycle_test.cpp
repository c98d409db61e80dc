// What a new interpreter is like, what a run leaves behind, and what ends with the interpreter.
#include "support/script_test.h"

namespace {

using LifecycleTest = ScriptTest;

TEST_F(LifecycleTest, a_new_interpreter_is_at_the_main_program) {
  EXPECT_EQ(State().m_nScopeLevel, 1);
  EXPECT_EQ(State().token.kind, TOKEN_NONE);
  EXPECT_EQ(State().token.function, FUNCTION_NONE);
  EXPECT_EQ(State().runDepth, 0);
  EXPECT_FALSE(State().stop);
  EXPECT_TRUE(State().control.empty());
  EXPECT_TRUE(State().positions.empty());
  EXPECT_TRUE(State().m_arrTemporaries.IsEmpty());
  EXPECT_TRUE(State().fileName.IsEmpty());
  EXPECT_FALSE(Interpreter().IsResident());
  EXPECT_TRUE(Interpreter().GetLastError().IsEmpty());
}

TEST_F(LifecycleTest, three_constants_are_global) {
  EXPECT_EQ(TextOf(u"Nothing"), "");
  EXPECT_EQ(TextOf(u"True"), "1");
  EXPECT_EQ(TextOf(u"False"), "0");
  CString nothing(u"Nothing");
  EXPECT_EQ(Access::FindVariable(Interpreter(), nothing)->GetType(), BVT_NONE);
  for (const char16_t* name : {u"nothing", u"true", u"FALSE", u"true__#1"})
    EXPECT_EQ(TextOf(name), "(none)") << "a global is found as spelt only";
}

TEST_F(LifecycleTest, constants_are_seen_inside_procedures) {
  Run("print f();\nend\nfunction f()\nf = True\nendfunction\n");
  EXPECT_EQ(m_ui.Output(), "1");
}

TEST_F(LifecycleTest, live_interpreters_are_counted) {
  const int before = Access::NumberOfCopies();
  {
    CBrindle second;
    EXPECT_EQ(Access::NumberOfCopies(), before + 1);
    EXPECT_EQ(Access::List().GetCount(), before + 1);
  }
  EXPECT_EQ(Access::NumberOfCopies(), before);
  EXPECT_EQ(Access::List().GetCount(), before);
}

TEST_F(LifecycleTest, the_resident_flag_outlives_the_run) {
  EXPECT_TRUE(Run("stayresident\n"));
  EXPECT_TRUE(Interpreter().IsResident());
  EXPECT_TRUE(Run("print 1\n"));
  EXPECT_TRUE(Interpreter().IsResident());
}

TEST_F(LifecycleTest, variables_stay_for_the_next_run) {
  Run("total = 5\nglobal Shared\nShared = \"s\"\ndim list[3]\nlist[2] = 7\n");
  Run("print int(total); \" \"; Shared; \" \"; int(list[2]); \" \"; ubound(\"list\")\n");
  EXPECT_EQ(m_ui.Output(), "5 s 7 3\n");
}

TEST_F(LifecycleTest, open_files_stay_for_the_next_run) {
  const CString path = m_folder.Write("lines.txt", "one\ntwo\n");
  Run("open \"" + path.ToUtf8() + "\" as 4 text\nprint readline(4)\n");
  Run("print readline(4)\n");
  EXPECT_EQ(m_ui.Output(), "one\ntwo\n");
}

TEST_F(LifecycleTest, handlers_stay_for_the_next_run) {
  Access::EventAdd(Interpreter(), u"OnStop", u"bye");
  Run("end\nsub bye(x)\nprint \"bye\"\nendsub\n");
  Run("print 2\n");
  EXPECT_EQ(m_ui.Output(), "bye\n2.000000\nbye\n");
}

TEST_F(LifecycleTest, labels_of_an_earlier_run_are_gone) {
  Run("goto there\nthere: print \"first\"\n");
  Run("goto there\nprint \"second\"\n");
  EXPECT_EQ(m_ui.Output(), "first\nsecond\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{7});
}

TEST_F(LifecycleTest, the_same_script_runs_twice_without_error_27) {
  const std::string program = "print twice(\"a\")\nend\nfunction twice(x)\ntwice = x + x\nendfunction\n";
  EXPECT_TRUE(Run(program));
  EXPECT_TRUE(Run(program));
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.Output(), "aa\naa\n");
}

TEST_F(LifecycleTest, a_definition_found_again_takes_its_new_place_and_body) {
  Run("print f()\nend\nfunction f()\nf = \"old\"\nendfunction\n");
  Run("# moved\nx = 1\nprint f()\nend\nsub other()\nendsub\nfunction F()\nF = \"new\"\nendfunction\n");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.Output(), "old\nnew\n");
}

TEST_F(LifecycleTest, a_procedure_of_the_first_script_still_works_in_the_second) {
  Run("end\nfunction greet(name)\nif name = \"x\" then\ngreet = \"nobody\"\nelse\nt = \"\"\n"
      "for i = 1 to 2\nt = name + t\nnext\ngreet = \"hello \" + t\nendif\nendfunction\n",
      "first.bas");
  Run("print greet(\"x\")\nprint greet(\"y\")\nprint \"still here\"\n", "second.bas");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.Output(), "nobody\nhello yy\nstill here\n");
}

TEST_F(LifecycleTest, procedures_of_two_scripts_call_each_other) {
  Run("end\nfunction down(n)\nif n = 0 then\ndown = \"0\"\nelse\ndown = str(int(n)) + up(n - 1)\nendif\nendfunction\n");
  Run("print down(3)\nend\nfunction up(n)\nup = down(n)\nendfunction\n");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.Output(), "3210\n");
}

TEST_F(LifecycleTest, an_error_in_a_procedure_of_the_first_script_quotes_its_line) {
  Run("end\nsub faulty()\nnext # a line of the first script\nendsub\n", "first.bas");
  Run("call faulty()\n# a long comment so that positions of the first script mean something here\n", "second.bas");
  ASSERT_EQ(m_ui.ErrorNumbers(), Numbers{55});
  EXPECT_EQ(m_ui.errors[0], "Illegal NEXT statement.\n\nnext # a line of the first script");
}

TEST_F(LifecycleTest, two_definitions_in_the_second_text_still_report_27) {
  const std::string program = "end\nsub f()\nendsub\nsub F()\nendsub\n";
  Run(program);
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{27});
  Run(program);
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{27, 27}));
}

TEST_F(LifecycleTest, a_failed_load_leaves_earlier_procedures_callable) {
  Run("end\nsub hello()\nprint \"hello\"\nendsub\n");
  EXPECT_FALSE(Interpreter().ExecuteProgram(u"/nowhere/at/all.bas"));
  Access::EventAdd(Interpreter(), u"ping", u"hello");
  CBasicVariableArray none;
  EXPECT_TRUE(Interpreter().EventThrow(u"ping", none));
  EXPECT_EQ(m_ui.Output(), "hello\n");
}

// Not reset between runs, on purpose: a loop that "end" left is still there.
TEST_F(LifecycleTest, a_loop_left_by_end_is_popped_by_the_next_run) {
  Run("for i = 1 to 3\nend\nnext\n");
  EXPECT_EQ(State().control.size(), 1U);
  Run("end\n");
  EXPECT_EQ(State().control.size(), 1U);
}

TEST_F(LifecycleTest, the_texts_that_a_script_sees_end_with_the_interpreter) {
  Run("open \"" + m_folder.Path("out.txt").string() + "\" for output as 1 text\nx = writeline(1, \"kept\")\n");
  m_pInterpreter.reset();
  EXPECT_EQ(m_folder.Read("out.txt"), "kept");
}

} // namespace
