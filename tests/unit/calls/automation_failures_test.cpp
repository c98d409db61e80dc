#include "calls/automation_bridge_fixture.h"

namespace {

// References, faulty servers, and servers that call back.
class AutomationFailures : public AutomationBridge {};

TEST_F(AutomationFailures, references_are_exact_on_every_path) {
  const struct {
    const char* name;
    const char* program;
    long held; // with o
  } rows[] = {
      {"store", "", 1},
      {"created and dropped", "call createobject(\"Test.Object\")\n", 1},
      {"created over itself", "o = createobject(\"Test.Object\")\n", 1},
      {"copy", "p = o\n", 2},
      {"overwrite", "p = o\np = 5\n", 1},
      {"array", "dim a[3]\na[0] = o\na[1] = o\na[2] = o\n", 4},
      {"array shrinks", "dim a[3]\na[0] = o\na[1] = o\na[2] = o\ndim a[1]\n", 2},
      {"element overwritten", "dim a[2]\na[0] = o\na[0] = 1\n", 1},
      {"scope exit", "call work()\nend\nsub work()\np = createobject(\"Test.Object\")\nendsub\n", 1},
      {"parameter", "call work(o)\nend\nsub work(p)\nx = p.nothing(p)\nendsub\n", 1},
      {"method argument", "x = o.nothing(o, o)\n", 1},
      {"method result", "p = o.self()\n", 2},
      {"method result dropped", "call o.self()\nx = len(o.self())\n", 1},
      {"method of a result", "p = o.self()\nq = p.self()\np = 1\n", 2},
      {"property", "p = o.self\n", 2},
      {"property dropped", "x = len(o.self)\n", 1},
      {"property written", "o.value = o\no.value = 1\n", 1},
      {"in place of its own holder", "o = o.self()\n", 1},
      {"map", "map create \"m\"\ncall mapset(\"m\", \"k\", o.self())\n", 2},
      {"event", "event create e work\nthrow e(o)\nend\nsub work(p)\nq = p\nendsub\n", 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    m_pInterpreter = std::make_unique<CBrindle>();
    m_pInterpreter->SetUserInterface(&m_ui);
    RunWithObject(row.program);
    EXPECT_EQ(m_object.Held(), row.held);
    m_pInterpreter.reset();
    EXPECT_EQ(m_object.Held(), 0);
  }
}

TEST_F(AutomationFailures, an_abort_lets_the_objects_of_locals_go_and_keeps_those_of_globals) {
  m_ui.CancelErrors();
  Run("global kept\nglobal other\nkept = createobject(\"Test.Object\")\nother = 5\ncall work()\nend\n"
      "sub work()\np = createobject(\"Test.Object\")\nnext\nendsub\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{55});
  EXPECT_EQ(m_object.Held(), 1);
  Run("x = kept.nothing()\nkept = 0\n");
  EXPECT_EQ(m_object.Held(), 0);
}

TEST_F(AutomationFailures, the_identifier_of_a_member_that_no_memory_is_there_for_is_a_notice) {
  class Forgetful final : public ScriptedObject {
  public:
    HRESULT GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_OUTOFMEMORY; }
  };
  static Forgetful forgetful;
  CAutomationClasses::Add(u"Test.Forgetful", [](IDispatch** object) {
    forgetful.AddRef();
    *object = &forgetful;
    return S_OK;
  });
  Run("o = createobject(\"Test.Forgetful\")\nx = o.size\n");
  EXPECT_EQ(m_ui.notices, std::vector<std::string>{"Not enough memory to complete this operation"});
  m_pInterpreter.reset();
  CAutomationClasses::Remove(u"Test.Forgetful");
}

TEST_F(AutomationFailures, failures_hold_no_reference) {
  m_object.Add("fails", [this](DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
    if (result != nullptr) { // a result in spite of the failure
      m_object.AddRef();
      result->vt = VT_DISPATCH;
      result->pdispVal = &m_object;
    }
    return E_FAIL;
  });
  m_object.Add("throws", [](DISPPARAMS&, VARIANT* result, EXCEPINFO* exception) -> HRESULT {
    if (result != nullptr) {
      result->vt = VT_BSTR;
      result->bstrVal = Text(u"left behind");
    }
    exception->bstrDescription = Text(u"left behind as well");
    throw std::runtime_error("broken");
  });
  Run("o = createobject(\"Test.Object\")\nx = o.fails(o)\nx = o.fails\no.fails = o\nx = o.throws(o, o)\nx = o.throws\n"
      "o.throws = o\nx = o.unknown(o)\n");
  EXPECT_EQ(m_object.Held(), 1);
  EXPECT_EQ(m_ui.notices, (std::vector<std::string>{"Unspecified error", "Unspecified error", "Unspecified error",
                                                    "The object failed: broken", "The object failed: broken",
                                                    "The object failed: broken"}));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{34});
}

TEST_F(AutomationFailures, a_failing_call_leaves_its_result_as_it_was) {
  m_object.Add("fails", [](DISPPARAMS&, VARIANT*, EXCEPINFO*) { return DISP_E_TYPEMISMATCH; });
  Run("o = createobject(\"Test.Object\")\nprint \"[\"; o.fails(); \"]\"; o.fails\n");
  EXPECT_EQ(m_ui.Output(), "[]\n");
  EXPECT_EQ(m_ui.notices, (std::vector<std::string>{"Type mismatch", "Type mismatch"}));
  EXPECT_TRUE(m_ui.errors.empty()) << "never an error of the language";
  EXPECT_TRUE(m_pInterpreter->GetLastError().IsEmpty());
}

TEST_F(AutomationFailures, codes_show_their_standard_message) {
  const struct {
    HRESULT code;
    const char* notice;
  } rows[] = {{DISP_E_MEMBERNOTFOUND, "Member not found"},
              {DISP_E_BADPARAMCOUNT, "Invalid number of parameters"},
              {E_OUTOFMEMORY, "Not enough memory to complete this operation"},
              {static_cast<HRESULT>(0x8123ABCDU), "Error 0x8123ABCD"},
              {S_FALSE, "The member had no effect"}}; // any code but 0 is a failure
  HRESULT code = S_OK;
  m_object.Add("fails", [&](DISPPARAMS&, VARIANT*, EXCEPINFO*) { return code; });
  for (const auto& row : rows) {
    code = row.code;
    m_ui.Forget();
    Run("o = createobject(\"Test.Object\")\nx = o.fails()\n");
    EXPECT_EQ(m_ui.notices, std::vector<std::string>{row.notice});
  }
}

HRESULT FillIn(EXCEPINFO* info) {
  info->bstrDescription = Text(u"filled in\r\nlater");
  info->bstrSource = Text(u"source");
  return S_OK;
}

TEST_F(AutomationFailures, an_exception_shows_its_description) {
  m_object.Add("described", [](DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
    exception->bstrSource = Text(u"source");
    exception->bstrDescription = Text(u"The gauge is not connected");
    exception->bstrHelpFile = Text(u"help");
    exception->scode = E_FAIL;
    return DISP_E_EXCEPTION;
  });
  m_object.Add("deferred", [](DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
    exception->pfnDeferredFillIn = &FillIn;
    return DISP_E_EXCEPTION;
  });
  m_object.Add("coded", [](DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
    exception->scode = E_ACCESSDENIED;
    return DISP_E_EXCEPTION;
  });
  m_object.Add("bare", [](DISPPARAMS&, VARIANT*, EXCEPINFO*) { return DISP_E_EXCEPTION; });
  m_object.Add("chatty", [](DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
    exception->bstrDescription = Text(u"nothing happened");
    return S_OK;
  });
  Run("o = createobject(\"Test.Object\")\nx = o.described()\nx = o.deferred()\nx = o.coded()\nx = o.bare()\n"
      "o.described = 1\nx = o.chatty()\n");
  EXPECT_EQ(m_ui.notices,
            (std::vector<std::string>{"The gauge is not connected", "filled in  later", "Access is denied",
                                      "Exception occurred", "The gauge is not connected"}));
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(AutomationFailures, exceptions_of_the_servers_language_stay_outside) {
  int kind = 0;
  m_object.Add("throws", [&](DISPPARAMS&, VARIANT*, EXCEPINFO*) -> HRESULT {
    if (kind == 0)
      throw std::runtime_error("what happened");
    if (kind == 1)
      throw std::bad_alloc();
    throw 7;
  });
  const char* const notices[] = {"The object failed: what happened", "Not enough memory to complete this operation",
                                 "The object failed with an exception of an unknown kind"};
  for (kind = 0; kind < 3; ++kind) {
    m_ui.Forget();
    Run("o = createobject(\"Test.Object\")\nx = o.throws()\nprint \"on\"\n");
    EXPECT_EQ(m_ui.notices, std::vector<std::string>{notices[kind]});
    EXPECT_EQ(m_ui.Output(), "on\n");
  }
  m_ui.Forget();
  m_object.onLookup = [] { throw std::runtime_error("no names today"); };
  Run("x = o.nothing()\np = o.nothing\n");
  EXPECT_EQ(m_ui.notices,
            (std::vector<std::string>{"The object failed: no names today", "The object failed: no names today"}));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{34});
}

TEST_F(AutomationFailures, a_server_may_call_back_into_the_interpreter) {
  m_object.Add("callback", [this](DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
    CBasicVariable value(3);
    Interpreter().EventThrow(u"poked", &value);
    result->vt = VT_I4;
    result->lVal = 5;
    return S_OK;
  });
  RunWithObject("global Sum\nSum = int(0)\nevent create poked poke\nprint o.callback(o) + o.callback(); Sum\nend\n"
                "sub poke(n)\nSum = Sum + n\np = createobject(\"Test.Object\")\nx = p.nothing(p)\nendsub\n");
  EXPECT_EQ(m_ui.Output(), "10.0000006.000000\n");
  EXPECT_EQ(m_object.Held(), 1);
}

TEST_F(AutomationFailures, a_server_that_drops_the_variable_in_use_is_kept_until_it_is_back) {
  long heldInside = -1;
  m_object.Add("drop", [&](DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
    CBasicVariable value(1);
    Interpreter().EventThrow(u"drop", &value);
    heldInside = m_object.Held();
    if (result != nullptr)
      result->vt = VT_EMPTY;
    return S_OK;
  });
  for (const char* use : {"x = O.drop()\n", "x = O.drop\n", "O.drop = 1\n", "call O.drop()\n"}) {
    SCOPED_TRACE(use);
    Run(std::string("global O\nO = createobject(\"Test.Object\")\nevent create drop forget\n") + use +
        "end\nsub forget(n)\nO = 0\nendsub\n");
    EXPECT_EQ(heldInside, 1) << "the call's own reference";
    EXPECT_EQ(m_object.Held(), 0);
  }
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(AutomationFailures, an_abort_passes_through_a_server) {
  bool unwound = false;
  m_object.Add("callback", [&](DISPPARAMS&, VARIANT*, EXCEPINFO*) {
    struct Guard {
      bool& flag;
      ~Guard() { flag = true; }
    };
    const Guard guard{unwound};
    CBasicVariable value(1);
    Interpreter().EventThrow(u"fail", &value);
    return S_OK;
  });
  m_ui.CancelErrors();
  Run("o = createobject(\"Test.Object\")\nevent create fail faulty\nx = o.callback(o)\nprint \"not reached\"\nend\n"
      "sub faulty(n)\nx = nope(1)\nendsub\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{21});
  EXPECT_EQ(m_ui.Output(), "");
  EXPECT_TRUE(m_ui.notices.empty());
  EXPECT_TRUE(unwound);
  EXPECT_EQ(m_object.Held(), 1) << "the variable's";
}

TEST_F(AutomationFailures, endless_mutual_calls_report_50) {
  m_object.Add("callback", [this](DISPPARAMS&, VARIANT*, EXCEPINFO*) {
    CBasicVariable value(1);
    Interpreter().EventThrow(u"again", &value);
    return S_OK;
  });
  m_ui.CancelErrors();
  Run("global O\nO = createobject(\"Test.Object\")\nevent create again callit\ncall O.callback()\nend\n"
      "sub callit(n)\ncall O.callback()\nendsub\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{50});
  EXPECT_EQ(m_object.Held(), 1);
}

TEST_F(AutomationFailures, a_server_that_frees_its_arguments_does_no_harm) {
  m_object.Add("frees", [](DISPPARAMS& arguments, VARIANT*, EXCEPINFO*) {
    for (UINT i = 0; i < arguments.cArgs; ++i)
      VariantClear(&arguments.rgvarg[i]);
    return S_OK;
  });
  RunWithObject("x = o.frees(\"text\", o, 5)\no.frees = \"text\"\no.frees = o\n");
  EXPECT_EQ(m_object.Held(), 1);
}

TEST_F(AutomationFailures, an_object_outlives_its_interpreter) {
  CBasicVariable kept;
  Run("o = createobject(\"Test.Object\")\n");
  CString name(u"o");
  kept.Set(*Access::FindVariable(Interpreter(), name));
  m_pInterpreter.reset();
  EXPECT_EQ(m_object.Held(), 1);
  EXPECT_EQ(kept.GetObjectValue(), &m_object);
  kept.SetValue(1);
  EXPECT_EQ(m_object.Held(), 0);
}

TEST_F(AutomationFailures, the_current_item_of_an_array_is_the_object) {
  RunWithObject("dim a[2]\na[0] = 5\na[1] = o\nx = a.nothing()\n");
  EXPECT_EQ(m_object.calls.size(), 1U);
}

TEST_F(AutomationFailures, an_event_reaches_a_method) {
  RunWithObject("event create e \"o.nothing\"\nthrow e(1, 2)\n");
  ASSERT_EQ(m_object.calls.size(), 1U);
  EXPECT_EQ(m_object.calls[0].arguments, (Kinds{{VT_I4, "2"}, {VT_I4, "1"}}));
}

} // namespace
