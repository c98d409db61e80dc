// "event", "throw" and "watch" from the outside, and the members behind them.
#include "support/script_test.h"

#include <functional>

namespace {

std::function<void(CBrindle&, CBasicVariableArray&)> hostAction;

CBasicVariable Host(CBrindle* interpreter, CBasicVariableArray& arguments, int) {
  if (hostAction)
    hostAction(*interpreter, arguments);
  return {};
}

class EventStatements : public ScriptTest {
protected:
  EventStatements() { Interpreter().AddCustomFunction(u"host", &Host, 0, nullptr); }
  ~EventStatements() override { hostAction = nullptr; }

  [[nodiscard]] std::vector<std::string> Handlers(const char16_t* event) {
    std::vector<std::string> names;
    if (const CStringArray* handlers = Interpreter().EventFind(event))
      for (int i = 0; i < handlers->GetSize(); ++i)
        names.push_back((*handlers)[i].ToUtf8());
    return names;
  }
  bool Throw(const char16_t* event, CBasicVariable value = CBasicVariable(u"x")) {
    return Interpreter().EventThrow(event, &value);
  }
  static constexpr const char* kProcedures = "end\nsub a(v)\nprint \"a \"; v\nendsub\nsub b(v)\nprint \"b \"; v\n"
                                             "endsub\nsub c(v)\nprint \"c \"; v\nendsub\n";
  bool RunWith(const std::string& program) { return Run(program + kProcedures); }
};

using Names = std::vector<std::string>;

TEST_F(EventStatements, handlers_are_kept_in_lower_case_in_the_order_of_attachment) {
  RunWith("event create Alarm B\nevent create ALARM \"A\"\nevent create alarm b\nevent create other C\n");
  EXPECT_EQ(Handlers(u"aLARm"), (Names{"b", "a"}));
  EXPECT_EQ(Handlers(u"Other"), Names{"c"});
  EXPECT_EQ(Interpreter().EventFind(u"none"), nullptr);
}

TEST_F(EventStatements, an_event_whose_list_became_empty_stays) {
  RunWith("event create alarm a\nevent remove alarm A\n");
  ASSERT_NE(Interpreter().EventFind(u"alarm"), nullptr);
  EXPECT_EQ(Handlers(u"alarm"), Names{});
  EXPECT_TRUE(Throw(u"alarm")) << "known, though nobody listens";
  EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(EventStatements, removing_a_whole_event_leaves_an_empty_list) {
  RunWith("event create alarm a\nevent create alarm b\n");
  EXPECT_TRUE(Access::EventRemove(Interpreter(), u"ALARM"));
  ASSERT_NE(Interpreter().EventFind(u"alarm"), nullptr);
  EXPECT_EQ(Handlers(u"alarm"), Names{});
  EXPECT_TRUE(Access::EventRemove(Interpreter(), u"alarm"));
  EXPECT_FALSE(Access::EventRemove(Interpreter(), u"none"));
  Run("event create alarm b\nthrow alarm(\"y\")\n");
  EXPECT_EQ(m_ui.Output(), "b y\n");
}

TEST_F(EventStatements, results_of_adding_and_removing) {
  EXPECT_FALSE(Access::EventRemove(Interpreter(), u"alarm", u"a"));
  EXPECT_TRUE(Access::EventAdd(Interpreter(), u"alarm", u"a"));
  EXPECT_TRUE(Access::EventAdd(Interpreter(), u"ALARM", u"A"));
  EXPECT_EQ(Handlers(u"alarm"), Names{"a"});
  EXPECT_TRUE(Access::EventRemove(Interpreter(), u"alarm", u"not there"));
  EXPECT_EQ(Handlers(u"alarm"), Names{"a"});
  EXPECT_TRUE(Access::EventRemove(Interpreter(), u"Alarm", u"A"));
  EXPECT_EQ(Handlers(u"alarm"), Names{});
}

TEST_F(EventStatements, throwing_from_the_host) {
  RunWith("event create alarm a\nevent create alarm b\n");
  EXPECT_TRUE(Throw(u"ALARM", CBasicVariable(5)));
  EXPECT_EQ(m_ui.Output(), "a 5\nb 5\n");
  EXPECT_FALSE(Throw(u"none"));
  EXPECT_FALSE(Interpreter().EventThrow(u"alarm", nullptr));
  m_ui.Forget();
  CBasicVariableArray arguments;
  EXPECT_FALSE(Interpreter().EventThrow(u"none", arguments));
  arguments.Add(CBasicVariable(u"first"));
  arguments.Add(CBasicVariable(u"ignored"));
  EXPECT_TRUE(Interpreter().EventThrow(u"alarm", arguments));
  EXPECT_EQ(m_ui.Output(), "a first\nb first\n");
}

TEST_F(EventStatements, the_value_is_copied) {
  hostAction = [](CBrindle&, CBasicVariableArray& arguments) {
    ASSERT_EQ(arguments.GetSize(), 1);
    arguments[0].SetValue(u"changed");
  };
  Run("event create alarm host\n");
  CBasicVariable value(u"mine");
  EXPECT_TRUE(Interpreter().EventThrow(u"alarm", &value));
  EXPECT_EQ(value.GetStringValue().ToUtf8(), "mine");
}

TEST_F(EventStatements, a_whole_array_is_passed) {
  hostAction = [](CBrindle&, CBasicVariableArray& arguments) {
    ASSERT_EQ(arguments.GetSize(), 1);
    EXPECT_EQ(arguments[0].GetNumItems(), 3);
    EXPECT_EQ(arguments[0].GetCurIndex(), 1);
    EXPECT_EQ(arguments[0].GetStringValue().ToUtf8(), "20");
  };
  Run("event create alarm host\n");
  CBasicVariable value(10);
  value.AddItem(20);
  value.AddItem(30);
  value.SetCurIndex(1);
  EXPECT_TRUE(Interpreter().EventThrow(u"alarm", &value));
}

TEST_F(EventStatements, the_arguments_of_throw_reach_a_host_function) {
  std::vector<std::string> seen;
  hostAction = [&seen](CBrindle&, CBasicVariableArray& arguments) {
    for (int i = 0; i < arguments.GetSize(); ++i)
      seen.push_back(arguments[i].GetStringValue().ToUtf8());
  };
  Run("event create alarm host\nthrow alarm(\"one\", int(2), 3)\nthrow alarm()\n");
  EXPECT_EQ(seen, (Names{"one", "2", "3.000000"}));
  EXPECT_TRUE(State().m_arrTemporaries.IsEmpty());
}

TEST_F(EventStatements, a_thrown_event_leaves_no_recorded_names) {
  RunWith("x = 1\ny = 2\nevent create alarm a\nfor i = 1 to 100\nthrow alarm(x, y, i)\nthrow none(x, y)\nnext\n");
  EXPECT_TRUE(State().m_arrTemporaries.IsEmpty());
  EXPECT_TRUE(State().positions.empty());
}

TEST_F(EventStatements, a_host_function_may_attach_and_remove_while_the_event_is_thrown) {
  hostAction = [](CBrindle& interpreter, CBasicVariableArray&) {
    Access::EventAdd(interpreter, u"alarm", u"c");
    Access::EventRemove(interpreter, u"alarm", u"b");
  };
  RunWith("event create alarm host\nevent create alarm a\nevent create alarm b\n");
  Throw(u"alarm");
  EXPECT_EQ(m_ui.Output(), "a x\nc x\n");
}

TEST_F(EventStatements, removing_the_whole_event_ends_a_throw_in_progress) {
  hostAction = [](CBrindle& interpreter, CBasicVariableArray&) { Access::EventRemove(interpreter, u"alarm"); };
  RunWith("event create alarm host\nevent create alarm a\n");
  EXPECT_TRUE(Throw(u"alarm"));
  EXPECT_EQ(m_ui.Output(), "");
}

TEST_F(EventStatements, many_events_made_while_one_is_thrown) {
  hostAction = [](CBrindle& interpreter, CBasicVariableArray&) {
    for (int i = 0; i < 2000; ++i)
      Access::EventAdd(interpreter, CString::FromUtf8("event" + std::to_string(i)), u"a");
    for (int i = 0; i < 100; ++i)
      Access::EventAdd(interpreter, u"alarm", CString::FromUtf8("nobody" + std::to_string(i)));
    Access::EventRemove(interpreter, u"alarm");
    Access::EventAdd(interpreter, u"alarm", u"host");
    Access::EventAdd(interpreter, u"alarm", u"b");
  };
  RunWith("event create alarm host\nevent create alarm a\n");
  EXPECT_TRUE(Throw(u"alarm"));
  EXPECT_EQ(m_ui.Output(), "b x\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(EventStatements, a_handler_that_is_gone_reports_21_and_the_others_follow) {
  RunWith("event create alarm a\n");
  Access::EventAdd(Interpreter(), u"alarm", u"nobody");
  Access::EventAdd(Interpreter(), u"alarm", u"b");
  EXPECT_TRUE(Throw(u"alarm"));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{21});
  EXPECT_EQ(m_ui.Output(), "a x\nb x\n");
}

TEST_F(EventStatements, an_abort_outside_a_run_ends_at_the_throw) {
  m_ui.CancelErrors();
  RunWith("event create alarm a\n");
  Access::EventAdd(Interpreter(), u"alarm", u"nobody");
  Access::EventAdd(Interpreter(), u"alarm", u"b");
  bool thrown = false;
  EXPECT_NO_THROW(thrown = Throw(u"alarm"));
  EXPECT_TRUE(thrown);
  EXPECT_EQ(m_ui.Output(), "a x\n");
  EXPECT_EQ(State().runDepth, 0);
  EXPECT_EQ(State().m_nScopeLevel, 1);
}

TEST_F(EventStatements, an_abort_in_a_handler_thrown_by_a_callback_ends_the_run) {
  m_ui.CancelErrors();
  hostAction = [](CBrindle& interpreter, CBasicVariableArray&) {
    CBasicVariable value(1);
    interpreter.EventThrow(u"alarm", &value);
    ADD_FAILURE() << "the abort passes through the callback";
  };
  Run("event create alarm bad\ncall host()\nprint \"not met\"\nend\nsub bad(v)\nnext\nendsub\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{55});
  EXPECT_EQ(m_ui.Output(), "");
  EXPECT_EQ(State().runDepth, 0);
}

TEST_F(EventStatements, handlers_run_after_end_and_after_an_aborted_run) {
  RunWith("event create alarm a\n");
  m_ui.CancelErrors();
  Run("next\n");
  m_ui.Forget();
  EXPECT_TRUE(Throw(u"alarm"));
  EXPECT_EQ(m_ui.Output(), "a x\n");
}

TEST_F(EventStatements, end_in_a_handler_outside_a_run_ends_that_handler_only) {
  RunWith("event create alarm stops\nevent create alarm a\nend\nsub stops(v)\nprint \"stops\"\nend\nprint \"no\"\n"
          "endsub\n");
  Throw(u"alarm");
  Throw(u"alarm");
  EXPECT_EQ(m_ui.Output(), "stops\na x\nstops\na x\n");
  Run("print \"next run\"\n");
  EXPECT_EQ(m_ui.messages.back(), "next run\n");
}

// ---- watches

TEST_F(EventStatements, a_watch_stays_for_later_runs_and_for_the_host) {
  RunWith("global g\ng = 1\nevent create changed a\nwatch create g changed\n");
  Run("g = 2\n");
  EXPECT_EQ(m_ui.Output(), "a 2.000000\n");
  CString name(u"g");
  Access::FindVariable(Interpreter(), name)->SetValue(u"by the host");
  EXPECT_EQ(m_ui.Output(), "a 2.000000\na by the host\n");
}

TEST_F(EventStatements, the_event_of_a_watch_is_kept_as_written_and_found_in_any_case) {
  RunWith("x = 1\nwatch create x ChanGED\nevent create CHANGED a\nx = 2\n");
  EXPECT_EQ(m_ui.Output(), "a 2.000000\n");
}

TEST_F(EventStatements, a_watch_gets_exactly_one_argument) {
  int calls = 0;
  hostAction = [&calls](CBrindle&, CBasicVariableArray& arguments) {
    ++calls;
    EXPECT_EQ(arguments.GetSize(), 1);
  };
  Run("x = 1\nevent create changed host\nwatch create x changed\nx = 2\nx = \"t\"\ndim y[3]\nx = y\nx[1] = 5\n");
  EXPECT_EQ(calls, 4);
}

TEST_F(EventStatements, a_watch_that_retriggers_itself_ends_in_error_50_and_the_interpreter_goes_on) {
  Run("global g\ng = 0\nevent create changed again\nwatch create g changed\nend\nsub again(v)\ng = v + 1\nendsub\n");
  Run("g = 1\nprint \"not met\"\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{50});
  EXPECT_EQ(m_ui.Output(), "");
  EXPECT_EQ(State().m_nScopeLevel, 1);
  EXPECT_EQ(State().runDepth, 0);
  m_ui.Forget();
  Run("watch remove g\ng = 5\nprint \"fine\"\n");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.Output(), "fine\n");
}

TEST_F(EventStatements, a_host_function_that_retriggers_its_watch_ends_in_error_50) {
  hostAction = [](CBrindle& interpreter, CBasicVariableArray&) {
    CString name(u"g");
    ++*Access::FindVariable(interpreter, name);
  };
  Run("global g\ng = 0\nevent create changed host\nwatch create g changed\ng = 1\nprint \"not met\"\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{50});
  EXPECT_EQ(m_ui.Output(), "");
}

TEST_F(EventStatements, the_same_outside_a_run_ends_at_the_throw) {
  Run("global g\ng = 0\nevent create changed again\nwatch create g changed\nend\nsub again(v)\ng = v + 1\nendsub\n");
  CString name(u"g");
  CBasicVariable* variable = Access::FindVariable(Interpreter(), name);
  ASSERT_NE(variable, nullptr);
  EXPECT_NO_THROW(variable->SetValue(1.0));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{50});
  EXPECT_EQ(State().m_nScopeLevel, 1);
  EXPECT_EQ(State().runDepth, 0);
}

TEST_F(EventStatements, a_variable_may_end_in_the_handler_of_its_own_change) {
  Run("event create changed drop\ncall work()\nprint \"behind\"\nend\nsub work()\ncall watched()\nendsub\n"
      "sub watched()\nmine = 1\nwatch create mine changed\nmine = 2\nendsub\n"
      "sub drop(v)\nprint \"changed \"; int(v)\nendsub\n");
  EXPECT_EQ(m_ui.Output(), "changed 2\nbehind\n");
  // The watched variable is left on level 3; collecting it throws nothing.
  Run("call level2()\nend\nsub level2()\nn = garbagecollection()\nprint \"collected\"\nendsub\n");
  EXPECT_EQ(m_ui.messages.back(), "collected\n");
}

TEST_F(EventStatements, a_handler_that_sends_its_own_event_to_all_ends_in_error_50) {
  hostAction = [](CBrindle&, CBasicVariableArray&) {
    CBasicVariable value(1);
    CBrindle::SendEvent(u"pong", &value);
  };
  Run("event create pong host\n");
  CBasicVariable value(1);
  CBrindle::SendEvent(u"pong", &value);
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{50});
  EXPECT_EQ(State().m_nScopeLevel, 1);
  EXPECT_EQ(State().runDepth, 0);
}

TEST_F(EventStatements, interpreters_made_and_destroyed_by_a_handler_of_a_broadcast) {
  const CString path = m_folder.Write("passing.bas", "event create ping shown\nend\nsub shown(v)\nprint \"passing\"\n"
                                                     "endsub\n");
  hostAction = [&](CBrindle&, CBasicVariableArray&) {
    for (int i = 0; i < 10; ++i) {
      CBrindle passing;
      passing.SetUserInterface(&m_ui);
      passing.ExecuteProgram(path);
      CBasicVariable value(i);
      passing.EventThrow(u"ping", &value);
    }
  };
  Run("event create ping host\n");
  CBrindle second;
  second.SetUserInterface(&m_ui);
  second.ExecuteProgram(path);
  CBasicVariable value(1);
  CBrindle::SendEvent(u"ping", &value);
  EXPECT_EQ(m_ui.messages.size(), 11U);
  EXPECT_EQ(Access::NumberOfCopies(), 2);
}

// ---- errors: number and quoted line

TEST_F(EventStatements, errors_quote_their_line) {
  struct Row {
    const char* statement;
    Numbers errors;
  };
  const Row rows[] = {
      {"event create alarm nobody", {21}},
      {"event remove alarm nobody", {21}},
      {"event clear alarm a", {40}},
      {"event while alarm a", {40}},
      {"event clear alarm nobody", {21}},
      {"event 5", {1}},
      {"event create 5", {1}},
      {"event create alarm 5", {1}},
      {"event create alarm text", {1}},
      {"event create alarm print", {1}},
      {"throw alarm", {1}},
      {"throw 5", {1}},
      {"throw \"alarm\"", {1}},
      {"throw create", {1}},
      {"watch 5", {1}},
      {"watch x", {1}},
      {"watch create 5", {1}},
      {"watch create \"x\"", {1}},
      {"watch create x 5", {1}},
      {"watch create x text", {1}},
      {"watch create nope alarm", {37}},
      {"watch create nope \"alarm\"", {37}},
      {"watch remove nope", {37}},
      {"watch clear nope", {37}},
      {"watch clear x", {40}},
      {"watch as x", {40}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.statement);
    m_ui.Forget();
    RunWith("x = 1\n" + std::string(row.statement) + "\nprint \"behind\"\n");
    EXPECT_EQ(m_ui.ErrorNumbers(), row.errors);
    ASSERT_FALSE(m_ui.errors.empty());
    EXPECT_TRUE(m_ui.errors[0].ends_with("\n\n" + std::string(row.statement))) << m_ui.errors[0];
    EXPECT_EQ(m_ui.Output(), "behind\n");
  }
}

} // namespace
