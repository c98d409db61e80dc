// Procedures as the calls room sees them: argument lists, frames, results, and objects that a call lets go.
#include "support/script_test.h"

namespace {

// Counts its references; nobody else looks at it.
class CountedObject final : public IDispatch {
public:
  ~CountedObject() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  ULONG references = 1;
};

CountedObject* object = nullptr;

CBasicVariable GiveObject(CBrindle*, CBasicVariableArray&, int) {
  CBasicVariable value;
  value.SetValue(static_cast<IDispatch*>(object));
  return value;
}

std::vector<ULONG> counts;

CBasicVariable NoteReferences(CBrindle*, CBasicVariableArray&, int) {
  counts.push_back(object->references);
  return CBasicVariable();
}

class ProceduresTest : public ScriptTest {};

TEST_F(ProceduresTest, a_parameter_list_is_read_up_to_its_parenthesis) {
  struct Row {
    const char16_t* text;
    int count;
    std::vector<std::string> values;
    std::vector<int> errors;
  };
  const Row rows[] = {
      {u"() x", 0, {}, {}},
      {u"( ) x", 0, {}, {}},
      {u"(1) x", 1, {"1.000000"}, {}},
      {u"(1, \"b\", 2 + 3) x", 3, {"1.000000", "b", "5.000000"}, {}},
      {u"((1), (2)) x", 2, {"1.000000", "2.000000"}, {}},
      {u"(len(\"abc\"), \")\") x", 2, {"3", ")"}, {}},
      {u"1) x", 0, {}, {22}},
      {u"", 0, {}, {22}},
      {u"(1 2)", 0, {"1.000000"}, {22}},
      {u"(1", 0, {"1.000000"}, {22}},
      {u"(1;2)", 0, {"1.000000"}, {22}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(CString(row.text).ToUtf8());
    m_ui.Forget();
    SetText(row.text);
    CBasicVariableArray arguments;
    arguments.Add(CBasicVariable(u"left over"));
    EXPECT_EQ(Access::GetParamList(Interpreter(), arguments), row.count);
    EXPECT_EQ(m_ui.ErrorNumbers(), row.errors);
    if (row.errors.empty()) {
      ASSERT_EQ(arguments.GetSize(), row.count);
      for (int i = 0; i < row.count; ++i)
        EXPECT_EQ(arguments[i].GetStringValue().ToUtf8(), row.values[static_cast<std::size_t>(i)]);
      Access::get_token(Interpreter());
      EXPECT_EQ(State().token.Text().ToUtf8(), ")") << "left for the caller";
    }
  }
}

TEST_F(ProceduresTest, every_argument_records_one_name) {
  SetText(u"(a, A, 1, a + 1, (a), \"a\", b[0], Total, True, len(a))");
  Access::SetVariable(Interpreter(), u"a", CBasicVariable(1), 0);
  Access::SetVariable(Interpreter(), u"b", CBasicVariable(1), 0);
  Access::SetVariable(Interpreter(), u"total", CBasicVariable(1), 0);
  CBasicVariableArray arguments;
  EXPECT_EQ(Access::GetParamList(Interpreter(), arguments), 10);
  std::vector<std::string> names;
  for (const CString& name : State().m_arrTemporaries)
    names.push_back(name.ToUtf8());
  EXPECT_EQ(names, (std::vector<std::string>{"a", "A", "", "", "", "", "", "Total", "True", ""}));
}

TEST_F(ProceduresTest, a_parameter_group_stops_at_the_first_token_that_is_no_comma) {
  SetText(u"1, \"b\", 2 + 3 rest");
  CBasicVariableArray arguments;
  EXPECT_EQ(Access::GetParamGroup(Interpreter(), arguments), 3);
  EXPECT_EQ(State().token.Text().ToUtf8(), "rest");
  EXPECT_EQ(arguments[1].GetStringValue().ToUtf8(), "b");
  EXPECT_EQ(arguments[2].GetNumberValue(), 5);
}

TEST_F(ProceduresTest, a_call_by_name_takes_evaluated_arguments) {
  Run("end\nfunction add(a, b)\nadd = a + b\nendfunction\nsub silent(a)\nendsub\n");
  CBasicVariableArray arguments;
  arguments.Add(CBasicVariable(2));
  arguments.Add(CBasicVariable(3));
  arguments.Add(CBasicVariable(u"ignored"));
  CBasicVariable result(u"as before");
  EXPECT_TRUE(Access::ExecUserFunction(Interpreter(), u"ADD", result, arguments, false));
  EXPECT_EQ(result.GetNumberValue(), 5);
  EXPECT_EQ(arguments.GetSize(), 3);

  result.SetValue(u"as before");
  EXPECT_TRUE(Access::ExecUserFunction(Interpreter(), u"silent", result, arguments, true));
  EXPECT_EQ(result.GetStringValue().ToUtf8(), "as before") << "a call looks for no result";
  EXPECT_FALSE(Access::ExecUserFunction(Interpreter(), u"silent", result, arguments, false));
  EXPECT_FALSE(Access::ExecUserFunction(Interpreter(), u"nobody", result, arguments, false));
  CBasicVariableArray few;
  EXPECT_FALSE(Access::ExecUserFunction(Interpreter(), u"add", result, few, false));
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{19, 21, 24}));
  EXPECT_EQ(State().m_nScopeLevel, 1);
  EXPECT_TRUE(State().positions.empty());
}

TEST_F(ProceduresTest, a_return_outside_a_procedure_reports_14) {
  SetText(u"abc");
  EXPECT_FALSE(Access::ExecReturn(Interpreter()));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{14});
  EXPECT_EQ(State().m_nScopeLevel, 1);
}

TEST_F(ProceduresTest, a_return_pops_level_and_position) {
  SetText(u"abcdef");
  State().m_nScopeLevel = 3;
  Access::PushPosition(Interpreter(), 4);
  Access::PushPosition(Interpreter(), 6);
  EXPECT_TRUE(Access::ExecReturn(Interpreter()));
  EXPECT_EQ(State().m_nScopeLevel, 2);
  EXPECT_EQ(State().position, 0U) << "a position at the length is not gone to";
  EXPECT_TRUE(Access::ExecReturn(Interpreter()));
  EXPECT_EQ(State().m_nScopeLevel, 1);
  EXPECT_EQ(State().position, 4U);
}

TEST_F(ProceduresTest, stop_inside_a_procedure_finishes_the_statement_and_ends_the_run) {
  struct Row {
    const char* name;
    const char* program;
    const char* output;
  };
  const Row rows[] = {
      {"call", "call f() : print \"no\"\nend\nsub f()\nprint \"f\"\nstop\nprint \"no\"\nendsub\n", "f\n"},
      {"print",
       "print \"a\"; f() + \"x\"; \"b\"\nprint \"no\"\nend\nfunction f()\nf = \"f\"\nend\nprint \"no\"\nendfunction\n",
       "afxb\n"},
      {"a result that was never given", "print \"a\"; f(); \"b\"\nprint \"no\"\nend\nfunction f()\nend\nendfunction\n",
       "ab\n"},
      {"a second call in the statement",
       "print f() + g()\nend\nfunction f()\nf = \"f\"\nend\nendfunction\n"
       "function g()\nfor i = 1 to 3\ng = \"g\" + str(int(i))\nnext\nendfunction\n",
       "fg3\n"},
      {"nested",
       "x = \"x\"\nx = f()\nprint \"no\"\nend\nfunction f()\nf = g()\nprint \"no\"\nendfunction\n"
       "function g()\ng = \"g\"\nstop\nendfunction\n",
       ""},
      {"inside a loop",
       "for i = 1 to 3\nprint \"once\"\ncall f()\nnext\nprint \"no\"\nend\nsub f()\ndo while 1 = 1\n"
       "end\nloop\nendsub\n",
       "once\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    m_ui.Forget();
    State().control.shrink(0);
    EXPECT_TRUE(Run(row.program));
    EXPECT_EQ(m_ui.Output(), row.output);
    EXPECT_TRUE(m_ui.errors.empty());
    EXPECT_EQ(State().m_nScopeLevel, 1);
    EXPECT_TRUE(State().positions.empty());
  }
}

class ObjectsTest : public ScriptTest {
protected:
  ObjectsTest() {
    object = &m_object;
    counts.clear();
    Interpreter().AddCustomFunction(u"give", &GiveObject, 0, nullptr);
    Interpreter().AddCustomFunction(u"note", &NoteReferences, 0, nullptr);
  }
  CountedObject m_object;
};

TEST_F(ObjectsTest, locals_let_their_objects_go_at_the_return_to_the_main_program) {
  Run("call f()\nx = note()\nend\nsub f()\na = give()\nb = a\nx = note()\nendsub\n");
  ASSERT_EQ(counts.size(), 2U);
  EXPECT_EQ(counts[0], 3U);
  EXPECT_EQ(counts[1], 1U);
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ObjectsTest, deeper_locals_wait_for_the_return_to_the_main_program) {
  Run("call f()\nx = note()\nend\nsub f()\ncall g()\nx = note()\nendsub\nsub g()\na = give()\nendsub\n");
  EXPECT_EQ(counts, (std::vector<ULONG>{2, 1}));
}

TEST_F(ObjectsTest, every_item_of_an_array_is_let_go) {
  Run("call f()\nx = note()\nend\nsub f()\ndim a[3]\na[0] = give()\na[1] = 5\na[2] = give()\nx = note()\nendsub\n");
  EXPECT_EQ(counts, (std::vector<ULONG>{3, 1}));
}

TEST_F(ObjectsTest, parameters_and_results_are_let_go_as_well) {
  Run("o = give()\nx = note()\np = f(o)\nx = note()\nend\nfunction f(a)\nx = note()\nf = a\nendfunction\n");
  ASSERT_EQ(counts.size(), 3U);
  EXPECT_EQ(counts[0], 2U);
  EXPECT_GE(counts[1], 3U);
  EXPECT_EQ(counts[2], 3U) << "the variables o and p";
}

TEST_F(ObjectsTest, variables_of_the_main_program_and_globals_keep_theirs) {
  Run("global G\nG = give()\no = give()\ncall f()\nx = note()\nend\nsub f()\nG = give()\nendsub\n");
  EXPECT_EQ(counts, std::vector<ULONG>{3});
}

TEST_F(ObjectsTest, an_abort_lets_objects_go_at_any_depth) {
  m_ui.CancelErrors();
  Run("call f(3)\nend\nsub f(n)\na = give()\nif n > 1 then call f(n - 1)\nendif\nb = f(a, give(), next(\nendsub\n");
  EXPECT_EQ(m_ui.errors.size(), 1U);
  EXPECT_EQ(m_object.references, 1U);
}

TEST_F(ObjectsTest, an_abort_in_an_event_outside_a_run_lets_objects_go_too) {
  Run("end\nsub f(n)\na = give()\nnext\nendsub\n");
  m_ui.CancelErrors();
  Access::EventAdd(Interpreter(), u"ping", u"f");
  CBasicVariable value(1);
  Interpreter().EventThrow(u"ping", &value);
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{55});
  EXPECT_EQ(m_object.references, 1U);
}

TEST_F(ObjectsTest, a_failed_call_that_goes_on_lets_objects_go) {
  Run("x = f(1)\nx = note()\nend\nfunction f(n)\na = give()\nendfunction\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{19}));
  EXPECT_EQ(counts, std::vector<ULONG>{1});
}

TEST_F(ObjectsTest, an_end_in_a_procedure_lets_objects_go) {
  Run("call f(1)\nend\nsub f(n)\na = give()\nend\nendsub\n");
  EXPECT_EQ(m_object.references, 1U);
}

TEST_F(ObjectsTest, the_variable_itself_stays_until_it_is_collected) {
  Run("call f()\nend\nsub f()\na = give()\nendsub\n");
  CBasicVariableArray none;
  CBasicVariable count;
  Access::ExecUserFunction(Interpreter(), u"garbagecollection", count, none, true);
  EXPECT_EQ(count.GetNumberValue(), 1);
}

TEST_F(ObjectsTest, overwriting_lets_an_object_go) {
  Run("o = give()\nx = note()\no = 5\nx = note()\n");
  EXPECT_EQ(counts, (std::vector<ULONG>{2, 1}));
}

TEST_F(ObjectsTest, the_interpreter_lets_everything_go_at_its_end) {
  Run("global G\nG = give()\no = give()\ndim a[2]\na[1] = give()\n");
  EXPECT_EQ(m_object.references, 4U);
  m_pInterpreter.reset();
  EXPECT_EQ(m_object.references, 1U);
}

TEST_F(ObjectsTest, a_handler_outside_a_run_lets_objects_go_when_it_returns) {
  Run("end\nsub f(n)\na = give()\nendsub\n");
  Access::EventAdd(Interpreter(), u"ping", u"f");
  CBasicVariable value(1);
  Interpreter().EventThrow(u"ping", &value);
  EXPECT_EQ(m_object.references, 1U);
}

} // namespace
