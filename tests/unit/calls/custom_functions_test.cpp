// Functions that the host registers: who finds them, what they are given, how long they live.
#include "interpreter/func_desc.h"
#include "support/script_test.h"

#include <functional>
#include <stdexcept>

namespace {

struct Call {
  CBrindle* interpreter;
  std::vector<std::string> arguments;
  int value;
};
std::vector<Call> calls;
std::function<CBasicVariable(CBrindle&, CBasicVariableArray&)> action;

CBasicVariable Note(CBrindle* interpreter, CBasicVariableArray& arguments, int value) {
  Call call{interpreter, {}, value};
  for (int i = 0; i < arguments.GetSize(); ++i)
    call.arguments.push_back(arguments[i].GetStringValue().ToUtf8());
  calls.push_back(std::move(call));
  return CBasicVariable(value);
}

CBasicVariable Other(CBrindle*, CBasicVariableArray&, int) {
  return CBasicVariable(u"other");
}

CBasicVariable Act(CBrindle* interpreter, CBasicVariableArray& arguments, int) {
  return action ? action(*interpreter, arguments) : CBasicVariable();
}

class CustomFunctions : public ScriptTest {
protected:
  CustomFunctions() { calls.clear(); }
  ~CustomFunctions() override { action = nullptr; }
};

TEST_F(CustomFunctions, an_empty_name_or_a_null_callback_is_refused) {
  EXPECT_FALSE(Interpreter().AddCustomFunction(u"", &Note, 0, nullptr));
  EXPECT_FALSE(Interpreter().AddCustomFunction(u"note", nullptr, 0, nullptr));
  EXPECT_FALSE(Interpreter().AddCustomFunction(u"", nullptr, 0, nullptr));
  EXPECT_EQ(Access::ExtFunctionTable().GetCount(), 0);
  Run("x = note()\n");
  EXPECT_EQ(m_ui.ErrorNumbers().front(), 21);
}

TEST_F(CustomFunctions, the_first_registration_of_a_name_stays) {
  EXPECT_TRUE(Interpreter().AddCustomFunction(u"note", &Note, 1, nullptr));
  EXPECT_TRUE(Interpreter().AddCustomFunction(u"note", &Other, 2, nullptr));
  EXPECT_EQ(Access::ExtFunctionTable().GetCount(), 1);
  Run("print note()\n");
  EXPECT_EQ(m_ui.Output(), "1\n");
}

TEST_F(CustomFunctions, a_name_with_a_capital_letter_is_stored_but_unknown) {
  EXPECT_TRUE(Interpreter().AddCustomFunction(u"Note", &Note, 1, nullptr));
  EXPECT_EQ(Access::ExtFunctionTable().GetCount(), 1);
  for (const char* name : {"Note", "note", "NOTE"}) {
    SCOPED_TRACE(name);
    m_ui.Forget();
    Run("call " + std::string(name) + "()\n");
    EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{21});
    EXPECT_EQ(m_ui.errors[0].find("Undefined function name\n"), 0U);
  }
  EXPECT_TRUE(calls.empty());
  // The name in lower case is free.
  EXPECT_TRUE(Interpreter().AddCustomFunction(u"note", &Note, 2, nullptr));
  m_ui.Forget();
  Run("print NOTE()\n");
  EXPECT_EQ(m_ui.Output(), "2\n");
}

TEST_F(CustomFunctions, the_callback_gets_interpreter_arguments_and_value) {
  int ignored = 0;
  Interpreter().AddCustomFunction(u"note", &Note, 7, &ignored);
  Run("x = note()\ny = note(1)\nx = note(\"a\", int(2), 3, \"\", 5)\ncall note(\"called\")\n");
  ASSERT_EQ(calls.size(), 4U);
  const std::vector<std::vector<std::string>> expected = {
      {}, {"1.000000"}, {"a", "2", "3.000000", "", "5.000000"}, {"called"}};
  for (std::size_t i = 0; i < calls.size(); ++i) {
    EXPECT_EQ(calls[i].interpreter, &Interpreter());
    EXPECT_EQ(calls[i].value, 7);
    EXPECT_EQ(calls[i].arguments, expected[i]);
  }
}

TEST_F(CustomFunctions, values_of_every_sign_are_kept) {
  const int values[] = {0, -1, 2147483647, -2147483647 - 1};
  int number = 0;
  for (const int value : values)
    Interpreter().AddCustomFunction(CString::FromUtf8("note" + std::string(1, static_cast<char>('a' + number++))),
                                    &Note, value, nullptr);
  Run("print notea(); \" \"; noteb(); \" \"; notec(); \" \"; noted()\n");
  EXPECT_EQ(m_ui.Output(), "0 -1 2147483647 -2147483648\n");
}

TEST_F(CustomFunctions, every_interpreter_calls_them_with_itself) {
  Interpreter().AddCustomFunction(u"note", &Note, 0, nullptr);
  CBrindle second;
  second.SetUserInterface(&m_ui);
  second.ExecuteProgram(m_folder.Write("second.bas", "call note(\"second\")\n"));
  Run("call note(\"first\")\n");
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[0].interpreter, &second);
  EXPECT_EQ(calls[1].interpreter, &Interpreter());
}

TEST_F(CustomFunctions, they_live_until_the_last_interpreter_ends) {
  Interpreter().AddCustomFunction(u"note", &Note, 5, nullptr);
  auto second = std::make_unique<CBrindle>();
  second->SetUserInterface(&m_ui);
  m_pInterpreter.reset(); // the one that registered it
  const CString path = m_folder.Write("note.bas", "print note()\n");
  second->ExecuteProgram(path);
  EXPECT_EQ(m_ui.Output(), "5\n");
  EXPECT_EQ(Access::ExtFunctionTable().GetCount(), 1);
  second.reset();
  EXPECT_EQ(Access::ExtFunctionTable().GetCount(), 0);
  m_ui.Forget();
  CBrindle third;
  third.SetUserInterface(&m_ui);
  third.ExecuteProgram(path);
  EXPECT_EQ(m_ui.ErrorNumbers().front(), 21);
}

TEST_F(CustomFunctions, a_script_procedure_of_the_same_name_is_never_called) {
  Interpreter().AddCustomFunction(u"area", &Note, 9, nullptr);
  Run("print area(2)\ncall AREA(3)\nend\nfunction area(x)\narea = \"script\"\nprint \"not met\"\nendfunction\n");
  EXPECT_TRUE(m_ui.errors.empty()) << "two tables: no duplicate";
  EXPECT_EQ(m_ui.Output(), "9\n");
  EXPECT_EQ(calls.size(), 2U);
}

TEST_F(CustomFunctions, a_built_in_of_the_same_name_is_replaced_everywhere) {
  CBrindle second;
  second.SetUserInterface(&m_ui);
  const CString path = m_folder.Write("len.bas", "print len(\"four\")\n");
  second.ExecuteProgram(path);
  Interpreter().AddCustomFunction(u"len", &Note, 99, nullptr);
  second.ExecuteProgram(path);
  Run("print LEN(\"four\")\n");
  EXPECT_EQ(m_ui.Output(), "4\n99\n99\n");
}

TEST_F(CustomFunctions, a_function_registered_while_a_loop_runs_is_found_in_its_next_round) {
  action = [](CBrindle& interpreter, CBasicVariableArray&) {
    interpreter.AddCustomFunction(u"late", &Note, 3, nullptr);
    interpreter.AddCustomFunction(u"area", &Note, 4, nullptr);
    interpreter.AddCustomFunction(u"len", &Note, 5, nullptr);
    return CBasicVariable();
  };
  Interpreter().AddCustomFunction(u"act", &Act, 0, nullptr);
  Run("for i = 1 to 2\ncall late()\nprint area(); \" \"; len(\"ab\")\ncall act()\nnext\nend\nfunction area()\n"
      "area = \"script\"\nendfunction\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{21});
  EXPECT_EQ(m_ui.Output(), "script 2\n4 5\n");
  EXPECT_EQ(calls.size(), 3U);
}

TEST_F(CustomFunctions, the_result_is_copied_whole) {
  action = [](CBrindle&, CBasicVariableArray&) {
    CBasicVariable result(1);
    result.AddItem(u"two");
    result.AddItem(3.5);
    result.SetCurIndex(1);
    return result;
  };
  Interpreter().AddCustomFunction(u"act", &Act, 0, nullptr);
  Run("x = act()\nprint ubound(\"x\"); x\nprint x[0]; x[1]; x[2]; act()\n");
  EXPECT_EQ(m_ui.Output(), "3two\n1two3.500000two\n");
}

TEST_F(CustomFunctions, a_result_that_is_not_set_is_stored_as_such) {
  Interpreter().AddCustomFunction(u"act", &Act, 0, nullptr);
  Run("x = 5\nx = act()\nprint \"[\"; x; \"]\"; ubound(\"x\")\n");
  EXPECT_EQ(m_ui.Output(), "[]0\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(CustomFunctions, changed_arguments_do_not_change_the_variables) {
  action = [](CBrindle&, CBasicVariableArray& arguments) {
    for (int i = 0; i < arguments.GetSize(); ++i)
      arguments[i].SetValue(u"changed");
    arguments.RemoveAll();
    return CBasicVariable(1);
  };
  Interpreter().AddCustomFunction(u"act", &Act, 0, nullptr);
  Run("x = 1\ndim a[2]\na[1] = 2\ny = act(x, a, a[1])\nprint x; \" \"; a[1]; ubound(\"a\")\n");
  EXPECT_EQ(m_ui.Output(), "1.000000 2.0000002\n");
}

TEST_F(CustomFunctions, an_argument_list_that_is_wrong_reports_22) {
  Interpreter().AddCustomFunction(u"note", &Note, 1, nullptr);
  Run("x = note(nope)\n");
  ASSERT_FALSE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.ErrorNumbers().front(), 22);
  EXPECT_TRUE(m_ui.errors[0].ends_with("x = note(nope)"));
}

TEST_F(CustomFunctions, events_and_handlers_reach_them) {
  Interpreter().AddCustomFunction(u"note", &Note, 1, nullptr);
  Run("event create alarm NOTE\nthrow alarm(\"a\", \"b\")\nx = 1\nwatch create x alarm\nx = 2\n");
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[0].arguments, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(calls[1].arguments, std::vector<std::string>{"2.000000"});
}

TEST_F(CustomFunctions, a_callback_may_run_another_script_in_its_interpreter) {
  const CString inner = m_folder.Write("inner.bas", "y = x + 1\nprint \"inner \"; act(0)\nend\n");
  int depth = 0;
  action = [&](CBrindle& interpreter, CBasicVariableArray&) {
    if (++depth == 1) {
      EXPECT_TRUE(interpreter.ExecuteProgram(inner));
    }
    return CBasicVariable(depth);
  };
  Interpreter().AddCustomFunction(u"act", &Act, 0, nullptr);
  Run("x = 1\nfor i = 1 to 2\nprint \"outer \"; act(1)\nnext\nprint y\n");
  EXPECT_EQ(m_ui.Output(), "inner 2\nouter 2\nouter 3\n2.000000\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(CustomFunctions, a_callback_that_runs_its_own_script_for_ever_ends_in_error_50) {
  CString script;
  action = [&script](CBrindle& interpreter, CBasicVariableArray&) {
    interpreter.ExecuteProgram(script);
    return CBasicVariable();
  };
  Interpreter().AddCustomFunction(u"act", &Act, 0, nullptr);
  script = m_folder.Write("again.bas", "call act()\n");
  m_ui.CancelErrors();
  EXPECT_TRUE(Interpreter().ExecuteProgram(script));
  ASSERT_FALSE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.ErrorNumbers().front(), 50);
  EXPECT_EQ(State().m_nScopeLevel, 1);
  EXPECT_EQ(State().runDepth, 0);
}

TEST_F(CustomFunctions, a_callback_may_create_run_and_destroy_interpreters) {
  const CString child =
      m_folder.Write("child.bas", "global deep\ndeep = 1\nprint \"child \"; note(1)\nx = \"child\"\n");
  Interpreter().AddCustomFunction(u"note", &Note, 5, nullptr);
  std::unique_ptr<CBrindle> kept = std::make_unique<CBrindle>();
  action = [&](CBrindle& interpreter, CBasicVariableArray&) {
    kept.reset(); // an idle one
    CBrindle passing;
    passing.SetUserInterface(&m_ui);
    EXPECT_TRUE(passing.ExecuteProgram(child));
    EXPECT_TRUE(CBrindle::IsValidInterpreter(&interpreter));
    kept = std::make_unique<CBrindle>();
    return CBasicVariable(u"acted");
  };
  Interpreter().AddCustomFunction(u"act", &Act, 0, nullptr);
  Run("x = \"mine\"\nfor i = 1 to 2\nprint x; \" \"; act(i)\nnext\n");
  EXPECT_EQ(m_ui.Output(), "child 5\nmine acted\nchild 5\nmine acted\n");
  EXPECT_EQ(TextOf(u"deep"), "(none)");
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_NE(calls[0].interpreter, &Interpreter());
  EXPECT_EQ(Access::NumberOfCopies(), 2);
}

TEST_F(CustomFunctions, a_callback_may_report_an_error) {
  action = [](CBrindle& interpreter, CBasicVariableArray&) {
    interpreter.ReportError(45);
    return CBasicVariable(u"went on");
  };
  Interpreter().AddCustomFunction(u"act", &Act, 0, nullptr);
  Run("x = 1\nprint act()\nprint \"behind\"\n");
  EXPECT_EQ(m_ui.errors, std::vector<std::string>{"Incorrect parameter\n\nprint act()"});
  EXPECT_EQ(m_ui.Output(), "went on\nbehind\n");
  m_ui.Forget();
  m_ui.CancelErrors();
  Run("x = 1\nprint act()\nprint \"behind\"\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{45});
  EXPECT_EQ(m_ui.Output(), "");
  EXPECT_EQ(State().m_nScopeLevel, 1);
}

TEST_F(CustomFunctions, a_callback_of_a_procedure_sees_its_level_and_the_call_goes_on) {
  action = [](CBrindle& interpreter, CBasicVariableArray&) {
    CString name(u"mine");
    const CBasicVariable* variable = Access::FindVariable(interpreter, name);
    return variable == nullptr ? CBasicVariable(u"none") : *variable;
  };
  Interpreter().AddCustomFunction(u"act", &Act, 0, nullptr);
  Run("mine = \"main\"\nprint act()\ncall work()\nprint act()\nend\nsub work()\nmine = \"sub\"\nprint act()\nendsub\n");
  EXPECT_EQ(m_ui.Output(), "main\nsub\nmain\n");
}

TEST_F(CustomFunctions, a_dotted_name_is_never_looked_up) {
  Interpreter().AddCustomFunction(u"a.b", &Note, 1, nullptr);
  Run("x = a.b(1)\n");
  EXPECT_TRUE(calls.empty());
  EXPECT_FALSE(m_ui.errors.empty());
}

TEST_F(CustomFunctions, a_function_without_code_reports_21) {
  for (auto* hollow : {new CFuncDesc(CString(u"hollow"), FUNCTION_HOST, nullptr),
                       new CFuncDesc(CString(u"bare"), FUNCTION_ABS, nullptr)})
    EXPECT_TRUE(Access::AddFunction(Interpreter(), hollow));
  for (const char* call : {"call hollow()", "call bare()", "print hollow()", "print bare()"}) {
    m_ui.Forget();
    Run(std::string(call) + "\nprint \"on\"\n");
    EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{21}) << call;
    EXPECT_TRUE(m_ui.Output().ends_with("on\n")) << call;
  }
}

} // namespace
