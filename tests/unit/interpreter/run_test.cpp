// ExecuteProgram: what it returns, which events it throws, and runs inside runs.
#include "support/script_test.h"

#include <functional>
#include <stdexcept>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// What the registered host function does; the value is what the script sees.
std::function<CBasicVariable(CBrindle&, CBasicVariableArray&)> hostAction;

CBasicVariable Host(CBrindle* interpreter, CBasicVariableArray& arguments, int) {
  return hostAction ? hostAction(*interpreter, arguments) : CBasicVariable();
}

class RunTest : public ScriptTest {
protected:
  RunTest() { Interpreter().AddCustomFunction(u"host", &Host, 0, nullptr); }
  ~RunTest() override { hostAction = nullptr; }

  // The script's events and prints in one list.
  void AttachStartAndStop() {
    Access::EventAdd(Interpreter(), u"OnStart", u"started");
    Access::EventAdd(Interpreter(), u"OnStop", u"stopped");
  }
  static constexpr const char* kHandlers =
      "end\nsub started(file)\nprint \"start \"; getname(replace(file, \"/\", \"\\\"))\n"
      "endsub\nsub stopped(file)\nprint \"stop \"; getname(replace(file, \"/\", "
      "\"\\\"))\nendsub\n";
};

TEST_F(RunTest, an_empty_file_runs) {
  AttachStartAndStop();
  EXPECT_TRUE(Run(kHandlers));
  m_ui.Forget();
  EXPECT_TRUE(Run("", "empty.bas"));
  EXPECT_EQ(m_ui.Output(), "start empty.bas\nstop empty.bas\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(RunTest, start_and_stop_stand_around_the_run_with_the_file_name) {
  AttachStartAndStop();
  EXPECT_TRUE(Run("print \"run\"\n" + std::string(kHandlers), "Some Script.bas"));
  EXPECT_EQ(m_ui.Output(), "start Some Script.bas\nrun\nstop Some Script.bas\n");
}

TEST_F(RunTest, start_and_stop_get_the_name_as_it_was_given) {
  std::vector<std::string> names;
  hostAction = [&names](CBrindle&, CBasicVariableArray& arguments) {
    EXPECT_EQ(arguments.GetSize(), 1);
    EXPECT_EQ(arguments[0].GetType(), BVT_STRING);
    names.push_back(arguments[0].GetStringValue().ToUtf8());
    return CBasicVariable();
  };
  Access::EventAdd(Interpreter(), u"onSTART", u"Host");
  Access::EventAdd(Interpreter(), u"ONstop", u"HOST");
  const CString path = m_folder.Write("x.bas", "a = 1\n");
  EXPECT_TRUE(Interpreter().ExecuteProgram(path));
  EXPECT_EQ(names, (std::vector<std::string>{path.ToUtf8(), path.ToUtf8()}));
}

TEST_F(RunTest, the_last_line_needs_no_line_break) {
  EXPECT_TRUE(Run("print \"a\"\nprint \"b\""));
  EXPECT_EQ(m_ui.Output(), "a\nb\n");
  EXPECT_EQ(State().program->Length(), 20U) << "a line feed is appended";
}

TEST_F(RunTest, what_cannot_be_loaded_reports_17_and_throws_no_event) {
  AttachStartAndStop();
  Run(kHandlers);
  m_folder.Write("secret.bas", "print 1\n");
  chmod(m_folder.Path("secret.bas").c_str(), 0);
  mkfifo(m_folder.Path("pipe.bas").c_str(), 0600);
  std::vector<std::string> paths = {m_folder.Path("missing.bas").string(), m_folder.Path("").string(), "",
                                    m_folder.Path("no/such/folder.bas").string()};
  if (geteuid() != 0) // nothing is unreadable to the superuser
    paths.push_back(m_folder.Path("secret.bas").string());
  for (const std::string& path : paths) {
    SCOPED_TRACE(path);
    for (const auto answer : {CUserInterface::ErrorAnswer::Ok, CUserInterface::ErrorAnswer::Cancel}) {
      m_ui.Forget();
      m_ui.errorAnswers.push_back(answer);
      EXPECT_FALSE(Interpreter().ExecuteProgram(CString::FromUtf8(path)));
      EXPECT_EQ(m_ui.errors, std::vector<std::string>{"Not enough memory to load source file\n"});
      EXPECT_EQ(m_ui.Output(), "");
      EXPECT_EQ(State().runDepth, 0);
    }
  }
}

TEST_F(RunTest, a_program_text_above_the_limit_reports_17) {
  m_folder.Write("large.bas", "print 1\n");
  std::filesystem::resize_file(m_folder.Path("large.bas"), 64ULL * 1024 * 1024 + 1);
  EXPECT_FALSE(Interpreter().ExecuteProgram(CString::FromUtf8(m_folder.Path("large.bas").string())));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{17});
}

TEST_F(RunTest, cancel_ends_the_run_without_on_stop_and_the_result_is_still_true) {
  AttachStartAndStop();
  m_ui.CancelErrors();
  EXPECT_TRUE(Run("print \"before\"\nnext\nprint \"behind\"\n" + std::string(kHandlers)));
  EXPECT_EQ(m_ui.Output(), "start script.bas\nbefore\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{55});
}

TEST_F(RunTest, ok_goes_on_behind_the_statement) {
  AttachStartAndStop();
  EXPECT_TRUE(Run("next\nprint \"behind\"\n" + std::string(kHandlers)));
  EXPECT_EQ(m_ui.Output(), "start script.bas\nbehind\nstop script.bas\n");
}

TEST_F(RunTest, a_token_that_starts_no_statement_ends_the_run_with_on_stop) {
  AttachStartAndStop();
  EXPECT_TRUE(Run("print \"before\"\n5\nprint \"behind\"\n" + std::string(kHandlers)));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{18});
  EXPECT_EQ(m_ui.Output(), "start script.bas\nbefore\nstop script.bas\n");
}

TEST_F(RunTest, an_interpreter_runs_again_after_an_abort) {
  m_ui.CancelErrors();
  Run("next\n");
  EXPECT_TRUE(Run("print \"again\"\n"));
  EXPECT_EQ(m_ui.Output(), "again\n");
}

TEST_F(RunTest, end_ends_the_run_and_stop_handlers_still_run_in_full) {
  Access::EventAdd(Interpreter(), u"OnStop", u"bye");
  Run("print \"a\"\nstop\nprint \"b\"\nsub bye(f)\nprint \"bye\"\nfor i = 1 to 2\nprint \"loop\"\nnext\nendsub\n");
  EXPECT_EQ(m_ui.Output(), "a\nbye\nloop\nloop\n");
}

TEST_F(RunTest, end_in_the_start_handler_lets_the_program_not_run) {
  Access::EventAdd(Interpreter(), u"OnStart", u"begin");
  Access::EventAdd(Interpreter(), u"OnStop", u"bye");
  Run("print \"main\"\nend\nsub begin(f)\nprint \"begin\"\nend\nprint \"no\"\nendsub\nsub bye(f)\nprint "
      "\"bye\"\nendsub\n");
  EXPECT_EQ(m_ui.Output(), "begin\nbye\n");
}

TEST_F(RunTest, an_abort_in_the_start_handler_ends_the_run) {
  m_ui.CancelErrors();
  Access::EventAdd(Interpreter(), u"OnStart", u"begin");
  EXPECT_TRUE(Run("print \"main\"\nend\nsub begin(f)\nnext\nendsub\n"));
  EXPECT_EQ(m_ui.Output(), "");
}

TEST_F(RunTest, a_callback_may_run_another_script_inside_the_running_one) {
  const CString inner = m_folder.Write("inner.bas", "here: print \"inner \"; shared\nx = \"set inside\"\n"
                                                    "if 1 = 1 then print helper()\nendif\nend\n"
                                                    "function helper()\nhelper = \"helped\"\nendfunction\n");
  hostAction = [&inner](CBrindle& interpreter, CBasicVariableArray&) {
    return CBasicVariable(interpreter.ExecuteProgram(inner) ? 1 : 0);
  };
  EXPECT_TRUE(Run("shared = \"text\"\nfor i = 1 to 2\nprint int(host()); \" \"; int(i) : print x\nnext\ngoto there\n"
                  "print \"no\"\nthere: print own(\"z\")\nend\nfunction own(a)\nown = a + str(host())\nendfunction\n",
                  "outer.bas"));
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.Output(), "inner text\nhelped\n1 1\nset inside\ninner text\nhelped\n1 2\nset inside\n"
                           "inner \nhelped\nz1\n");
}

TEST_F(RunTest, an_inner_run_leaves_name_and_labels_of_the_outer_alone) {
  const CString inner = m_folder.Write("inner.bas", "there: print \"inner\"\n");
  hostAction = [&inner](CBrindle& interpreter, CBasicVariableArray&) {
    return CBasicVariable(interpreter.ExecuteProgram(inner));
  };
  AttachStartAndStop();
  Run("x = host()\ngoto there\nprint \"no\"\nthere: print \"outer\"\n" + std::string(kHandlers), "outer.bas");
  EXPECT_EQ(m_ui.Output(), "start outer.bas\nstart inner.bas\ninner\nstop inner.bas\nouter\nstop outer.bas\n");
}

TEST_F(RunTest, end_in_an_inner_run_ends_only_that_one) {
  const CString inner = m_folder.Write("inner.bas", "print \"inner\"\nend\nprint \"no\"\n");
  hostAction = [&inner](CBrindle& interpreter, CBasicVariableArray&) {
    return CBasicVariable(interpreter.ExecuteProgram(inner));
  };
  Run("x = host()\nprint \"outer\"\n");
  EXPECT_EQ(m_ui.Output(), "inner\nouter\n");
}

TEST_F(RunTest, an_abort_in_an_inner_run_ends_only_that_one) {
  const CString inner = m_folder.Write("inner.bas", "for k = 1 to 9\ncall deep()\nnext\nend\n"
                                                    "sub deep()\nnext\nendsub\n");
  hostAction = [&inner](CBrindle& interpreter, CBasicVariableArray&) {
    return CBasicVariable(interpreter.ExecuteProgram(inner));
  };
  m_ui.errorAnswers = {CUserInterface::ErrorAnswer::Cancel};
  Run("for i = 1 to 1\nx = host()\nprint \"outer \"; int(x)\nnext\nprint \"done\"\n");
  EXPECT_EQ(m_ui.Output(), "outer 1\ndone\n");
}

// The outer loops must not meet what the inner script has left on the control stack.
TEST_F(RunTest, a_loop_left_open_by_an_inner_run_does_not_disturb_the_loops_of_the_outer) {
  const CString inner = m_folder.Write("inner.bas", "for k = 1 to 9\nend\nnext\n");
  int calls = 0;
  hostAction = [&](CBrindle& interpreter, CBasicVariableArray&) {
    if (++calls > 10)
      throw std::runtime_error("the outer loop never ends");
    return CBasicVariable(interpreter.ExecuteProgram(inner));
  };
  ASSERT_NO_THROW(Run("for i = 1 to 3\nx = host()\nprint int(i)\nnext\nprint \"done\"\n"));
  EXPECT_EQ(m_ui.Output(), "1\n2\n3\ndone\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(RunTest, an_inner_run_does_not_take_the_loops_of_the_outer) {
  const CString inner = m_folder.Write("inner.bas", "next\nloop\n");
  hostAction = [&inner](CBrindle& interpreter, CBasicVariableArray&) {
    return CBasicVariable(interpreter.ExecuteProgram(inner));
  };
  Run("for i = 1 to 2\nx = host()\nprint int(i)\nnext\nprint \"done\"\n");
  EXPECT_EQ(m_ui.Output(), "1\n2\ndone\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{55, 55})) << "the inner script's own next, once a round";
}

TEST_F(RunTest, an_inner_run_that_cannot_be_loaded_leaves_the_outer_running) {
  hostAction = [](CBrindle& interpreter, CBasicVariableArray&) {
    return CBasicVariable(interpreter.ExecuteProgram(u"/nowhere/at/all.bas") ? 1 : 0);
  };
  m_ui.errorAnswers = {CUserInterface::ErrorAnswer::Cancel};
  Run("print int(host()) : print \"outer\"\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{17});
  EXPECT_EQ(m_ui.Output(), "0\nouter\n");
}

TEST_F(RunTest, an_inner_run_may_redefine_the_procedure_that_called_it) {
  const CString inner = m_folder.Write("inner.bas", "end\nfunction own()\nown = \"new\"\nendfunction\n");
  hostAction = [&inner](CBrindle& interpreter, CBasicVariableArray&) {
    return CBasicVariable(interpreter.ExecuteProgram(inner));
  };
  Run("print own()\nprint own()\nend\nfunction own()\nx = host()\nown = \"old\"\nendfunction\n");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.Output(), "old\nnew\n");
}

TEST_F(RunTest, a_script_that_runs_itself_through_the_host_ends_in_50) {
  const CString path = m_folder.Write("self.bas", "depth = depth + 1\nx = host()\n");
  hostAction = [&path](CBrindle& interpreter, CBasicVariableArray&) {
    return CBasicVariable(interpreter.ExecuteProgram(path));
  };
  m_ui.CancelErrors();
  Run("depth = 0\n");
  EXPECT_TRUE(Interpreter().ExecuteProgram(path));
  ASSERT_FALSE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.ErrorNumbers()[0], 50);
  EXPECT_EQ(State().runDepth, 0);
  EXPECT_EQ(State().m_nScopeLevel, 1);
}

TEST_F(RunTest, what_a_callback_throws_reaches_the_caller_and_leaves_the_interpreter_usable) {
  hostAction = [](CBrindle&, CBasicVariableArray&) -> CBasicVariable { throw std::runtime_error("from the host"); };
  AttachStartAndStop();
  EXPECT_THROW(Run("call deep(1)\n" + std::string(kHandlers) + "sub deep(n)\nx = host(n)\nendsub\n"),
               std::runtime_error);
  EXPECT_EQ(m_ui.Output(), "start script.bas\n");
  EXPECT_EQ(State().runDepth, 0);
  EXPECT_EQ(State().m_nScopeLevel, 1);
  EXPECT_TRUE(State().positions.empty());
  EXPECT_TRUE(State().m_arrTemporaries.IsEmpty());
  m_ui.Forget();
  EXPECT_TRUE(Run("print \"again\"\nend\n"));
  EXPECT_EQ(m_ui.Output(), "start script.bas\nagain\nstop script.bas\n");
}

TEST_F(RunTest, memory_that_runs_out_reports_50) {
  hostAction = [](CBrindle&, CBasicVariableArray&) -> CBasicVariable { throw std::bad_alloc(); };
  EXPECT_TRUE(Run("x = host()\nprint \"behind\"\n"));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{50});
  EXPECT_EQ(m_ui.Output(), "");
  EXPECT_EQ(State().runDepth, 0);
}

} // namespace
