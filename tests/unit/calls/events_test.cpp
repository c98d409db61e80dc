// Events: attaching and removing handlers, throwing, and change events of variables.
#include "support/script_test.h"

#include <functional>

namespace {

std::function<CBasicVariable(CBrindle&, CBasicVariableArray&)> hostAction;

CBasicVariable Host(CBrindle* interpreter, CBasicVariableArray& arguments, int) {
  return hostAction ? hostAction(*interpreter, arguments) : CBasicVariable();
}

class EventsTest : public ScriptTest {
protected:
  EventsTest() { Interpreter().AddCustomFunction(u"host", &Host, 0, nullptr); }
  ~EventsTest() override { hostAction = nullptr; }

  [[nodiscard]] std::vector<std::string> Handlers(const char16_t* event) {
    std::vector<std::string> names;
    if (const CStringArray* handlers = Interpreter().EventFind(event))
      for (const CString& handler : *handlers)
        names.push_back(handler.ToUtf8());
    return names;
  }
  bool Throw(const char16_t* event) {
    CBasicVariableArray none;
    return Interpreter().EventThrow(event, none);
  }
};

using Names = std::vector<std::string>;

TEST_F(EventsTest, handlers_are_kept_in_order_of_attachment_each_once_in_lower_case) {
  EXPECT_EQ(Interpreter().EventFind(u"ping"), nullptr);
  EXPECT_TRUE(Access::EventAdd(Interpreter(), u"Ping", u"Second"));
  EXPECT_TRUE(Access::EventAdd(Interpreter(), u"PING", u"first"));
  EXPECT_TRUE(Access::EventAdd(Interpreter(), u"ping", u"SECOND"));
  EXPECT_EQ(Handlers(u"pING"), (Names{"second", "first"}));
}

TEST_F(EventsTest, removing_a_handler_leaves_the_event) {
  EXPECT_FALSE(Access::EventRemove(Interpreter(), u"ping", u"a"));
  Access::EventAdd(Interpreter(), u"ping", u"a");
  Access::EventAdd(Interpreter(), u"ping", u"b");
  EXPECT_TRUE(Access::EventRemove(Interpreter(), u"Ping", u"A"));
  EXPECT_EQ(Handlers(u"ping"), Names{"b"});
  EXPECT_TRUE(Access::EventRemove(Interpreter(), u"ping", u"nobody"));
  EXPECT_TRUE(Access::EventRemove(Interpreter(), u"ping", u"b"));
  EXPECT_NE(Interpreter().EventFind(u"ping"), nullptr);
  EXPECT_TRUE(Throw(u"ping")) << "known, though nobody listens";
}

TEST_F(EventsTest, removing_a_whole_event_leaves_an_empty_list) {
  EXPECT_FALSE(Access::EventRemove(Interpreter(), u"ping"));
  Access::EventAdd(Interpreter(), u"ping", u"a");
  EXPECT_TRUE(Access::EventRemove(Interpreter(), u"PING"));
  ASSERT_NE(Interpreter().EventFind(u"ping"), nullptr);
  EXPECT_TRUE(Handlers(u"ping").empty());
  EXPECT_TRUE(Access::EventRemove(Interpreter(), u"ping"));
}

TEST_F(EventsTest, an_unknown_event_is_not_thrown) {
  CBasicVariable value(1);
  EXPECT_FALSE(Throw(u"ping"));
  EXPECT_FALSE(Interpreter().EventThrow(u"ping", &value));
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(EventsTest, a_null_value_is_not_thrown) {
  Access::EventAdd(Interpreter(), u"ping", u"host");
  hostAction = [](CBrindle&, CBasicVariableArray&) -> CBasicVariable {
    ADD_FAILURE() << "called";
    return {};
  };
  EXPECT_FALSE(Interpreter().EventThrow(u"ping", static_cast<CBasicVariable*>(nullptr)));
}

TEST_F(EventsTest, handlers_run_in_order_with_the_arguments) {
  Run("end\nsub one(a, b)\nprint \"one \"; a; b\na = \"changed\"\nendsub\nsub two(a)\nprint \"two \"; a\nendsub\n");
  for (const char16_t* handler : {u"one", u"host", u"two"})
    Access::EventAdd(Interpreter(), u"ping", handler);
  int counts = 0;
  hostAction = [&counts](CBrindle&, CBasicVariableArray& arguments) {
    counts = arguments.GetSize();
    return CBasicVariable();
  };
  CBasicVariableArray arguments;
  arguments.Add(CBasicVariable(u"x"));
  arguments.Add(CBasicVariable(u"y"));
  EXPECT_TRUE(Interpreter().EventThrow(u"Ping", arguments));
  EXPECT_EQ(m_ui.Output(), "one xy\ntwo x\n");
  EXPECT_EQ(counts, 2);
}

TEST_F(EventsTest, a_value_is_handed_over_as_a_copy) {
  Access::EventAdd(Interpreter(), u"ping", u"host");
  CBasicVariable value(u"original");
  hostAction = [&value](CBrindle&, CBasicVariableArray& arguments) {
    EXPECT_EQ(arguments.GetSize(), 1);
    EXPECT_NE(&arguments[0], &value);
    EXPECT_EQ(arguments[0].GetStringValue().ToUtf8(), "original");
    arguments[0].SetValue(u"changed");
    return CBasicVariable();
  };
  EXPECT_TRUE(Interpreter().EventThrow(u"ping", &value));
  EXPECT_EQ(value.GetStringValue().ToUtf8(), "original");
}

TEST_F(EventsTest, a_failing_handler_does_not_stop_the_others) {
  Run("end\nsub fails(a)\nnext\nendsub\nsub fine(a)\nprint \"fine\"\nendsub\n");
  for (const char16_t* handler : {u"nobody", u"fails", u"fine"})
    Access::EventAdd(Interpreter(), u"ping", handler);
  CBasicVariable value(1);
  EXPECT_TRUE(Interpreter().EventThrow(u"ping", &value));
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{21, 55}));
  EXPECT_EQ(m_ui.Output(), "fine\n");
}

TEST_F(EventsTest, built_in_functions_are_handlers_as_well) {
  Access::EventAdd(Interpreter(), u"ping", u"writeline");
  Run("open \"" + m_folder.Path("log.txt").string() + "\" for output as 1 text\n");
  CBasicVariableArray arguments;
  arguments.Add(CBasicVariable(1));
  arguments.Add(CBasicVariable(u"logged"));
  EXPECT_TRUE(Interpreter().EventThrow(u"ping", arguments));
  EXPECT_EQ(m_folder.Read("log.txt"), "logged");
}

TEST_F(EventsTest, the_list_is_live_while_it_is_thrown) {
  for (const char16_t* handler : {u"host", u"gone"})
    Access::EventAdd(Interpreter(), u"ping", handler);
  Run("end\nsub gone()\nprint \"gone\"\nendsub\nsub added()\nprint \"added\"\nendsub\n");
  hostAction = [](CBrindle& interpreter, CBasicVariableArray&) {
    BrindleTestAccess::EventRemove(interpreter, u"ping", u"gone");
    BrindleTestAccess::EventAdd(interpreter, u"ping", u"added");
    return CBasicVariable();
  };
  EXPECT_TRUE(Throw(u"ping"));
  EXPECT_EQ(m_ui.Output(), "added\n");
}

TEST_F(EventsTest, a_handler_may_remove_the_whole_event) {
  for (const char16_t* handler : {u"host", u"never"})
    Access::EventAdd(Interpreter(), u"ping", handler);
  Run("end\nsub never()\nprint \"never\"\nendsub\n");
  hostAction = [](CBrindle& interpreter, CBasicVariableArray&) {
    BrindleTestAccess::EventRemove(interpreter, u"ping");
    return CBasicVariable();
  };
  EXPECT_TRUE(Throw(u"ping"));
  EXPECT_EQ(m_ui.Output(), "");
}

TEST_F(EventsTest, a_handler_that_throws_its_own_event_for_ever_ends_in_50) {
  Access::EventAdd(Interpreter(), u"ping", u"host");
  Access::EventAdd(Interpreter(), u"ping", u"again");
  Run("end\nsub again()\nx = host()\nendsub\n");
  hostAction = [](CBrindle& interpreter, CBasicVariableArray&) {
    CBasicVariableArray none;
    interpreter.EventThrow(u"pong", none);
    return CBasicVariable();
  };
  Access::EventAdd(Interpreter(), u"pong", u"again");
  EXPECT_TRUE(Throw(u"ping"));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{50});
  EXPECT_EQ(State().m_nScopeLevel, 1);
  EXPECT_EQ(State().runDepth, 0);
}

TEST_F(EventsTest, a_stop_in_a_handler_outside_a_run_ends_only_the_handler) {
  Run("end\nsub one()\nprint \"one\"\nend\nprint \"no\"\nendsub\nsub two()\nprint \"two\"\nendsub\n");
  Access::EventAdd(Interpreter(), u"ping", u"one");
  Access::EventAdd(Interpreter(), u"ping", u"two");
  EXPECT_TRUE(Throw(u"ping"));
  EXPECT_TRUE(Throw(u"ping"));
  EXPECT_EQ(m_ui.Output(), "one\ntwo\none\ntwo\n");
}

class ChangeEventsTest : public EventsTest {
protected:
  ChangeEventsTest() {
    Access::EventAdd(Interpreter(), u"changed", u"host");
    hostAction = [this](CBrindle&, CBasicVariableArray& arguments) {
      EXPECT_EQ(arguments.GetSize(), 1);
      seen.push_back(arguments[0].GetStringValue().ToUtf8());
      return CBasicVariable();
    };
  }
  void Watch(const char16_t* name) {
    CString key(name);
    CBasicVariable* variable = Access::FindVariable(Interpreter(), key);
    ASSERT_NE(variable, nullptr);
    variable->SetChangeEvent(&Interpreter(), u"Changed");
  }
  Names seen;
};

TEST_F(ChangeEventsTest, every_write_of_a_watched_variable_throws_its_event) {
  Run("x = 1\n");
  Watch(u"x");
  Run("x = \"a\"\nx = 5\nfor x = 1 to 2\nnext\nprint x\n");
  EXPECT_EQ(seen, (Names{"a", "5.000000", "1.000000", "2.000000", "3.000000"}));
}

TEST_F(ChangeEventsTest, reading_throws_nothing) {
  Run("x = 1\n");
  Watch(u"x");
  Run("y = x + x : print x;\nif x = 1 then y = 2 endif\n");
  EXPECT_TRUE(seen.empty());
}

TEST_F(ChangeEventsTest, other_variables_throw_nothing) {
  Run("x = 1\n");
  Watch(u"x");
  Run("y = 2\ncall f(x)\nend\nsub f(x)\nx = 7\nendsub\n");
  EXPECT_TRUE(seen.empty()) << "a local of the same name is another variable";
}

TEST_F(ChangeEventsTest, an_element_of_a_watched_array_throws_as_well) {
  Run("dim a[3]\n");
  Watch(u"a");
  Run("a[1] = \"one\"\na = \"all\"\n");
  EXPECT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0], "one");
}

TEST_F(ChangeEventsTest, a_variable_no_longer_watched_throws_nothing) {
  Run("x = 1\n");
  Watch(u"x");
  CString key(u"x");
  Access::FindVariable(Interpreter(), key)->RemoveChangeEvent();
  Run("x = 2\n");
  EXPECT_TRUE(seen.empty());
}

TEST_F(ChangeEventsTest, a_variable_may_end_while_its_handlers_run) {
  Run("x = 1\n");
  Watch(u"x");
  auto& level = State().m_nScopeLevel;
  hostAction = [&](CBrindle& interpreter, CBasicVariableArray& arguments) {
    seen.push_back(arguments[0].GetStringValue().ToUtf8());
    CBasicVariableArray none;
    CBasicVariable count;
    --level; // as seen from one level up, the main program's variables are leftovers
    BrindleTestAccess::ExecUserFunction(interpreter, u"garbagecollection", count, none, true);
    ++level;
    return CBasicVariable();
  };
  Run("x = 2\n");
  EXPECT_EQ(seen, Names{"2.000000"});
  EXPECT_EQ(TextOf(u"x"), "(none)");
}

} // namespace
