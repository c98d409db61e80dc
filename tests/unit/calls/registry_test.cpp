// Several interpreters alive: the broadcast, the question whether one lives, and what they share.
#include "support/script_test.h"

#include <functional>

namespace {

std::function<void(CBrindle&)> hostAction;

CBasicVariable Host(CBrindle* interpreter, CBasicVariableArray&, int) {
  if (hostAction)
    hostAction(*interpreter);
  return CBasicVariable();
}

class RegistryTest : public ScriptTest {
protected:
  RegistryTest() { Interpreter().AddCustomFunction(u"host", &Host, 0, nullptr); }
  ~RegistryTest() override { hostAction = nullptr; }

  // An interpreter whose procedure "tell" prints a word at the event "ping".
  std::unique_ptr<CBrindle> Teller(const std::string& word) {
    auto interpreter = std::make_unique<CBrindle>();
    interpreter->SetUserInterface(&m_ui);
    interpreter->ExecuteProgram(
        m_folder.Write(word + ".bas", "end\nsub tell(x)\nprint \"" + word + " \"; x\nendsub\n"));
    Access::EventAdd(*interpreter, u"ping", u"tell");
    return interpreter;
  }
  static void Send(const char16_t* text = u"x") {
    CBasicVariable value(text);
    CBrindle::SendEvent(u"Ping", &value);
  }
};

TEST_F(RegistryTest, a_live_interpreter_is_valid_and_nothing_else_is) {
  EXPECT_TRUE(CBrindle::IsValidInterpreter(&Interpreter()));
  EXPECT_FALSE(CBrindle::IsValidInterpreter(nullptr));
  EXPECT_FALSE(CBrindle::IsValidInterpreter(reinterpret_cast<const CBrindle*>(this)));
  const CBrindle* gone = nullptr;
  {
    CBrindle second;
    gone = &second;
    EXPECT_TRUE(CBrindle::IsValidInterpreter(gone));
  }
  EXPECT_FALSE(CBrindle::IsValidInterpreter(gone));
}

TEST_F(RegistryTest, the_broadcast_goes_from_the_oldest_to_the_newest) {
  const auto a = Teller("a");
  const auto b = Teller("b");
  const auto c = Teller("c");
  Send(u"1");
  EXPECT_EQ(m_ui.Output(), "a 1\nb 1\nc 1\n");
}

TEST_F(RegistryTest, the_order_is_that_of_construction_whatever_ended_in_between) {
  auto a = Teller("a");
  auto b = Teller("b");
  const auto c = Teller("c");
  b.reset();
  const auto d = Teller("d");
  a.reset();
  const auto e = Teller("e");
  Send();
  EXPECT_EQ(m_ui.Output(), "c x\nd x\ne x\n");
}

TEST_F(RegistryTest, both_forms_of_the_broadcast_reach_everyone) {
  const auto a = Teller("a");
  const auto b = Teller("b");
  CBasicVariableArray arguments;
  arguments.Add(CBasicVariable(u"list"));
  CBrindle::SendEvent(u"PING", arguments);
  CBrindle::SendEvent(u"ping", static_cast<CBasicVariable*>(nullptr));
  CBrindle::SendEvent(u"nobody knows this", arguments);
  EXPECT_EQ(m_ui.Output(), "a list\nb list\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(RegistryTest, a_broadcast_to_nobody_does_nothing) {
  m_pInterpreter.reset();
  ASSERT_EQ(Access::NumberOfCopies(), 0);
  Send();
  CBasicVariableArray none;
  CBrindle::SendEvent(u"ping", none);
  EXPECT_EQ(m_ui.Output(), "");
}

TEST_F(RegistryTest, an_abort_in_one_interpreter_does_not_keep_the_others_from_the_event) {
  const auto a = Teller("a");
  a->ExecuteProgram(m_folder.Write("bad.bas", "end\nsub tell(x)\nnext\nendsub\n"));
  const auto b = Teller("b");
  m_ui.CancelErrors();
  Send();
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{55});
  EXPECT_EQ(m_ui.Output(), "b x\n");
}

TEST_F(RegistryTest, a_handler_may_destroy_interpreters_that_have_yet_to_hear) {
  Access::EventAdd(Interpreter(), u"ping", u"host");
  auto a = Teller("a");
  auto b = Teller("b");
  const auto c = Teller("c");
  hostAction = [&](CBrindle&) {
    a.reset();
    b.reset();
  };
  Send();
  EXPECT_EQ(m_ui.Output(), "c x\n");
}

TEST_F(RegistryTest, a_handler_may_destroy_interpreters_that_have_heard) {
  auto a = Teller("a");
  CBrindle middle;
  middle.SetUserInterface(&m_ui);
  Access::EventAdd(middle, u"ping", u"host");
  const auto b = Teller("b");
  hostAction = [&](CBrindle&) { a.reset(); };
  Send();
  EXPECT_EQ(m_ui.Output(), "a x\nb x\n");
}

TEST_F(RegistryTest, a_handler_may_create_interpreters) {
  Access::EventAdd(Interpreter(), u"ping", u"host");
  const auto a = Teller("a");
  std::vector<std::unique_ptr<CBrindle>> created;
  hostAction = [&](CBrindle&) {
    created.push_back(std::make_unique<CBrindle>());
    { CBrindle shortLived; }
    created.push_back(std::make_unique<CBrindle>());
  };
  Send();
  EXPECT_EQ(m_ui.Output(), "a x\n");
  EXPECT_EQ(created.size(), 2U);
  for (const auto& interpreter : created)
    EXPECT_TRUE(CBrindle::IsValidInterpreter(interpreter.get()));
}

TEST_F(RegistryTest, a_handler_may_broadcast_itself) {
  Access::EventAdd(Interpreter(), u"ping", u"host");
  const auto a = Teller("a");
  int depth = 0;
  hostAction = [&](CBrindle&) {
    if (++depth < 3)
      Send(u"inner");
  };
  Send(u"outer");
  EXPECT_EQ(m_ui.Output(), "a inner\na inner\na outer\n");
}

TEST_F(RegistryTest, a_broadcast_reaches_the_interpreter_that_is_running) {
  Access::EventAdd(Interpreter(), u"ping", u"tell");
  hostAction = [](CBrindle&) { Send(); };
  Run("x = \"main\"\nfor i = 1 to 2\ny = host()\nnext\nprint x\nend\nsub tell(v)\nx = v\nprint \"told\"\nendsub\n");
  EXPECT_EQ(m_ui.Output(), "told\ntold\nmain\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(RegistryTest, a_host_function_may_destroy_another_interpreter_in_the_middle_of_a_run) {
  auto other = Teller("other");
  hostAction = [&](CBrindle&) { other.reset(); };
  Run("x = host()\nprint \"goes on\"\n");
  EXPECT_EQ(m_ui.Output(), "goes on\n");
}

TEST_F(RegistryTest, interpreters_share_no_variables_and_no_procedures) {
  Run("global shared\nshared = 1\nend\nsub own()\nendsub\n");
  CBrindle other;
  other.SetUserInterface(&m_ui);
  CString name(u"shared");
  EXPECT_EQ(Access::FindVariable(other, name), nullptr);
  EXPECT_EQ(Access::LookupFunction(other, u"own"), FUNCTION_NONE);
  EXPECT_EQ(other.EventFind(u"ping"), nullptr);
}

TEST_F(RegistryTest, every_interpreter_has_its_own_user_interface_or_the_default) {
  RecordingUserInterface standard;
  RecordingUserInterface own;
  CUserInterface::SetDefault(&standard);
  CBrindle first;
  CBrindle second;
  second.SetUserInterface(&own);
  EXPECT_EQ(&first.GetUserInterface(), &standard);
  EXPECT_EQ(&second.GetUserInterface(), &own);
  const CString path = m_folder.Write("hello.bas", "print \"hello\"\nnext\n");
  first.ExecuteProgram(path);
  second.ExecuteProgram(path);
  EXPECT_EQ(standard.Output(), "hello\n");
  EXPECT_EQ(own.Output(), "hello\n");
  EXPECT_EQ(standard.errors.size(), 1U);
  EXPECT_EQ(own.errors.size(), 1U);
  second.SetUserInterface(nullptr);
  EXPECT_EQ(&second.GetUserInterface(), &standard);
  second.ExecuteProgram(path);
  EXPECT_EQ(standard.messages.size(), 2U);
  CUserInterface::SetDefault(nullptr);
  EXPECT_NE(&first.GetUserInterface(), &standard);
}

TEST_F(RegistryTest, a_child_script_uses_the_user_interface_of_its_parent) {
  m_folder.Write("child.bas", "print \"child\"\n");
  Run("run \"" + m_folder.Path("child.bas").string() + "\"\nprint \"parent\"\n");
  EXPECT_EQ(m_ui.Output(), "child\nparent\n");
}

TEST_F(RegistryTest, the_interface_that_shows_nothing_cancels_errors) {
  CUserInterface silent;
  EXPECT_EQ(silent.ShowError(u"x"), CUserInterface::ErrorAnswer::Cancel);
  EXPECT_FALSE(silent.AskYesNo(u"q", u"t"));
  EXPECT_FALSE(silent.ChooseFile({}).has_value());
  EXPECT_EQ(silent.ShowPopupMenu({}), -1);
  EXPECT_EQ(silent.StartTimer(10, [] {}), 0U);
  Interpreter().SetUserInterface(&silent);
  EXPECT_TRUE(Run("x = 1\nnext\nx = 2\n"));
  EXPECT_EQ(TextOf(u"x"), "1.000000");
  EXPECT_EQ(Interpreter().GetLastError().ToUtf8(), "Illegal NEXT statement.\n\nnext");
}

} // namespace
