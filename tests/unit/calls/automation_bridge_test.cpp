// Objects in scripts, against a server written by COM's interfaces: what reaches it, what comes back, and how many
// references are held at every step.
#include "brindle/automation_classes.h"
#include "support/script_test.h"
#include "support/scripted_object.h"

#include <cmath>
#include <limits>
#include <stdexcept>

namespace {

using Kinds = std::vector<std::pair<VARTYPE, std::string>>;

ScriptedObject* served = nullptr;

BSTR Text(const char16_t* text) {
  return SysAllocString(reinterpret_cast<const OLECHAR*>(text));
}

class AutomationBridge : public ScriptTest {
protected:
  AutomationBridge() {
    served = &m_object;
    CAutomationClasses::Add(u"Test.Object", [](IDispatch** object) {
      served->AddRef();
      *object = served;
      return S_OK;
    });
    m_object.Add("nothing", nullptr);
    m_object.Add("self", [this](DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
      if (result != nullptr) {
        m_object.AddRef();
        result->vt = VT_DISPATCH;
        result->pdispVal = &m_object;
      }
      return S_OK;
    });
    m_object.Add("give", [this](DISPPARAMS&, VARIANT* result, EXCEPINFO*) { return VariantCopy(result, &m_given); });
    m_object.Add("value", [this](DISPPARAMS& arguments, VARIANT* result, EXCEPINFO*) {
      return arguments.cArgs == 1 ? VariantCopy(&m_given, &arguments.rgvarg[0]) : VariantCopy(result, &m_given);
    });
    VariantInit(&m_given);
  }
  ~AutomationBridge() override {
    m_pInterpreter.reset();
    VariantClear(&m_given);
    EXPECT_EQ(m_object.Held(), 0) << "nothing is held beyond the interpreter's end";
    CAutomationClasses::Remove(u"Test.Object");
  }

  // Runs a program that starts with an object in o, and expects it to report nothing.
  void RunWithObject(const std::string& program) {
    Run("o = createobject(\"Test.Object\")\n" + program);
    EXPECT_TRUE(m_ui.errors.empty()) << m_ui.errors[0];
    EXPECT_TRUE(m_ui.notices.empty()) << m_ui.notices[0];
  }
  // The text, between brackets, that a result of this kind shows as.
  std::string Shown(const VARIANT& value) {
    VariantClear(&m_given);
    VariantCopy(&m_given, &value);
    m_ui.Forget();
    RunWithObject("r = o.give()\np = o.give\nprint \"[\"; r; \"]\"; p\n");
    std::string output = m_ui.Output();
    const std::size_t end = output.find(']');
    EXPECT_EQ(output.substr(1, end - 1) + "\n", output.substr(end + 1)) << "a property reads as a result does";
    return output.substr(0, end + 1);
  }

  ScriptedObject m_object;
  VARIANT m_given;
};

TEST_F(AutomationBridge, createobject_takes_exactly_one_argument) {
  Run("o = createobject()\no = createobject(\"a\", \"b\")\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{24, 24}));
  EXPECT_TRUE(m_ui.notices.empty());
}

TEST_F(AutomationBridge, identifiers_compare_without_regard_to_case) {
  Run("o = createobject(\"TEST.oBJECT\")\nx = o.nothing()\n");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_object.calls.size(), 1U);
}

TEST_F(AutomationBridge, an_unknown_class_is_a_notice_and_a_null_object) {
  Run("o = createobject(\"No.Such.Class\")\nprint \"[\"; o; \"]\"\np = o.x\nprint \"[\"; p; \"]\"\n"
      "x = o.method()\no.x = 1\n");
  EXPECT_EQ(m_ui.notices, std::vector<std::string>{"Invalid class string (No.Such.Class)"});
  EXPECT_EQ(m_ui.Output(), "[0]\n[]\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{34, 34})) << "a null object knows no member";
  EXPECT_EQ(TextOf(u"o"), "0");
}

TEST_F(AutomationBridge, odd_identifiers_are_no_classes) {
  for (const char* identifier : {"", ".", "/", "../../etc/passwd", "%n%s", "Test.Object ", "\xC3\xA4"}) {
    SCOPED_TRACE(identifier);
    m_ui.Forget();
    Run("o = createobject(\"" + std::string(identifier) + "\")\n");
    EXPECT_EQ(m_ui.notices.size(), 1U);
    EXPECT_TRUE(m_ui.errors.empty());
  }
}

TEST_F(AutomationBridge, a_factory_that_fails_shows_the_message_of_its_code) {
  const struct {
    HRESULT code;
    const char* notice;
  } rows[] = {{E_ACCESSDENIED, "Access is denied (Test.Failing)"},
              {S_OK, "No such interface supported (Test.Failing)"}, // but no object
              {static_cast<HRESULT>(0x80991234U), "Error 0x80991234 (Test.Failing)"}};
  for (const auto& row : rows) {
    m_ui.Forget();
    CAutomationClasses::Add(u"Test.Failing", [&](IDispatch**) { return row.code; });
    Run("o = createobject(\"Test.Failing\")\n");
    EXPECT_EQ(m_ui.notices, std::vector<std::string>{row.notice});
  }
  m_ui.Forget();
  CAutomationClasses::Add(u"Test.Failing", [](IDispatch**) -> HRESULT { throw std::runtime_error("no licence"); });
  Run("o = createobject(\"Test.Failing\")\nprint \"on\"\n");
  EXPECT_EQ(m_ui.notices, std::vector<std::string>{"The object failed: no licence"});
  EXPECT_EQ(m_ui.Output(), "on\n");
  CAutomationClasses::Add(u"Test.Failing", [this](IDispatch** object) {
    m_object.AddRef();
    *object = &m_object; // in spite of the failure
    return E_FAIL;
  });
  Run("o = createobject(\"Test.Failing\")\n");
  EXPECT_EQ(m_object.Held(), 0);
  EXPECT_TRUE(CAutomationClasses::Remove(u"TEST.failing"));
  EXPECT_FALSE(CAutomationClasses::Remove(u"Test.Failing"));
  EXPECT_FALSE(CAutomationClasses::Add(u"", [](IDispatch**) { return S_OK; }));
  EXPECT_FALSE(CAutomationClasses::Add(u"Test.Null", nullptr));
}

TEST_F(AutomationBridge, arguments_lie_reversed_and_are_converted) {
  RunWithObject("x = o.nothing(1, 2.5, \"text\", True, nothing1(), int(-7), 1e20, -1e20)\nend\n"
                "function nothing1()\ndim n\nnothing1 = n\nendfunction\n");
  ASSERT_EQ(m_object.calls.size(), 1U);
  const SeenCall& seen = m_object.calls[0];
  EXPECT_EQ(seen.flags, DISPATCH_METHOD);
  EXPECT_EQ(seen.locale, 2048U);
  EXPECT_TRUE(seen.named.empty());
  EXPECT_TRUE(seen.hasResult);
  EXPECT_EQ(seen.arguments, (Kinds{{VT_I4, "-2147483648"},
                                   {VT_I4, "2147483647"},
                                   {VT_I4, "-7"},
                                   {VT_BSTR, ""},
                                   {VT_I4, "1"},
                                   {VT_BSTR, "text"},
                                   {VT_BSTR, "2.500000"},
                                   {VT_I4, "1"}}));
}

TEST_F(AutomationBridge, numbers_that_are_no_numbers_are_integers_too) {
  RunWithObject("x = o.nothing(0 / 0, 1 / 0, -1 / 0)\n");
  EXPECT_EQ(m_object.calls[0].arguments, (Kinds{{VT_I4, "-2147483648"}, {VT_I4, "2147483647"}, {VT_I4, "0"}}));
}

TEST_F(AutomationBridge, texts_reach_the_server_whole) {
  RunWithObject("x = o.nothing(\"\", \"Grüße 😀\", repeat(\"x\", 5000))\n");
  EXPECT_EQ(m_object.calls[0].arguments,
            (Kinds{{VT_BSTR, std::string(5000, 'x')}, {VT_BSTR, "Grüße 😀"}, {VT_BSTR, ""}}));
}

TEST_F(AutomationBridge, every_kind_of_result_has_its_value) {
  VARIANT value;
  const auto make = [&](VARTYPE kind) -> VARIANT& {
    VariantInit(&value);
    value.vt = kind;
    return value;
  };
  EXPECT_EQ(Shown(make(VT_EMPTY)), "[]");
  EXPECT_EQ(Shown(make(VT_NULL)), "[]");
  make(VT_I2).iVal = -3;
  EXPECT_EQ(Shown(value), "[-3]");
  make(VT_I4).lVal = 70000;
  EXPECT_EQ(Shown(value), "[70000]");
  make(VT_R4).fltVal = 0.5F;
  EXPECT_EQ(Shown(value), "[0.500000]");
  make(VT_R8).dblVal = -2.25;
  EXPECT_EQ(Shown(value), "[-2.250000]");
  make(VT_BOOL).boolVal = VARIANT_TRUE;
  EXPECT_EQ(Shown(value), "[True]");
  make(VT_BOOL).boolVal = VARIANT_FALSE;
  EXPECT_EQ(Shown(value), "[False]");
  make(VT_UI2).uiVal = 65535;
  EXPECT_EQ(Shown(value), "[65535]");
  make(VT_UI4).ulVal = 0xFFFFFFFF;
  EXPECT_EQ(Shown(value), "[-1]");
  make(VT_I1).cVal = static_cast<CHAR>(-5);
  EXPECT_EQ(Shown(value), "[-5]");
  make(VT_UI1).bVal = 200;
  EXPECT_EQ(Shown(value), "[200]");
  make(VT_I8).llVal = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(Shown(value), "[-9223372036854775808]");
  make(VT_UI8).ullVal = std::numeric_limits<std::uint64_t>::max();
  EXPECT_EQ(Shown(value), "[18446744073709551615]");
  make(VT_CY).cyVal.int64 = -12500;
  EXPECT_EQ(Shown(value), "[-1.25]");
  make(VT_DATE).date = 36526.75;
  EXPECT_EQ(Shown(value), "[2000-01-01 18:00:00]");
  make(VT_ERROR).scode = DISP_E_PARAMNOTFOUND;
  EXPECT_EQ(Shown(value), "[Parameter not found]");
  make(VT_DISPATCH).pdispVal = nullptr;
  EXPECT_EQ(Shown(value), "[0]");
  make(VT_BSTR).bstrVal = Text(u"ä text");
  EXPECT_EQ(Shown(value), "[ä text]");
  VariantClear(&value);
  make(VT_BSTR).bstrVal = nullptr;
  EXPECT_EQ(Shown(value), "[]");
  // 123456789012345678901234.5678
  make(VT_DECIMAL);
  value.wReserved1 = 4 | 0x8000;
  value.wReserved2 = 0xFB3F;
  value.wReserved3 = 0x03FD;
  value.ullVal = 0;
  EXPECT_EQ(Shown(value).substr(0, 2), "[-");
}

TEST_F(AutomationBridge, results_by_reference_are_read) {
  LONG number = 5;
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_I4 | VT_BYREF;
  value.plVal = &number;
  EXPECT_EQ(Shown(value), "[5]");
  BSTR text = Text(u"there");
  value.vt = VT_BSTR | VT_BYREF;
  value.pbstrVal = &text;
  EXPECT_EQ(Shown(value), "[there]");
  VARIANT inner;
  VariantInit(&inner);
  inner.vt = VT_BSTR;
  inner.bstrVal = text;
  value.vt = VT_VARIANT | VT_BYREF;
  value.pvarVal = &inner;
  EXPECT_EQ(Shown(value), "[there]");
  value.pvarVal = &value; // a reference to itself
  EXPECT_EQ(Shown(value), "[]");
  value.byref = nullptr;
  EXPECT_EQ(Shown(value), "[]");
  SysFreeString(text);
}

TEST_F(AutomationBridge, arrays_become_items) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_ARRAY | VT_I4;
  value.parray = SafeArrayCreateVector(VT_I4, 1, 3);
  for (LONG i = 1; i <= 3; ++i) {
    LONG number = i * 10;
    SafeArrayPutElement(value.parray, &i, &number);
  }
  EXPECT_EQ(Shown(value), "[10]");
  RunWithObject("a = o.give()\nprint ubound(\"a\"); a[0]; a[1]; a[2]\n");
  EXPECT_EQ(m_ui.messages.back(), "3102030\n");
  VariantClear(&value);

  value.vt = VT_ARRAY | VT_VARIANT;
  value.parray = SafeArrayCreateVector(VT_VARIANT, 0, 3);
  VARIANT element;
  VariantInit(&element);
  element.vt = VT_BSTR;
  element.bstrVal = Text(u"one");
  LONG index = 0;
  SafeArrayPutElement(value.parray, &index, &element);
  VariantClear(&element);
  element.vt = VT_DISPATCH;
  element.pdispVal = &m_object;
  index = 2;
  SafeArrayPutElement(value.parray, &index, &element);
  EXPECT_EQ(m_object.Held(), 2) << "the variable and the array";
  VariantClear(&m_given);
  VariantCopy(&m_given, &value);
  VariantClear(&value);
  RunWithObject("a = o.give()\nb = a[2]\nprint ubound(\"a\"); a[0]; \"[\"; a[1]; \"]\"\nx = b.nothing()\n");
  EXPECT_EQ(m_ui.messages.back(), "3one[]\n");
  EXPECT_EQ(m_object.Held(), 4) << "o, what is given, a[2] and b";
  VariantClear(&m_given);
  RunWithObject("a = 1\nb = 1\no = 1\n");
  EXPECT_EQ(m_object.Held(), 0);

  value.vt = VT_ARRAY | VT_BSTR;
  value.parray = SafeArrayCreateVector(VT_BSTR, 0, 0);
  EXPECT_EQ(Shown(value), "[]") << "no items is not set";
  VariantClear(&value);
  VariantInit(&value);
  value.vt = VT_ARRAY | VT_BSTR;
  EXPECT_EQ(Shown(value), "[]") << "and so is no array";
}

TEST_F(AutomationBridge, an_array_of_two_dimensions_and_one_inside_another_are_flat) {
  VARIANT value;
  VariantInit(&value);
  SAFEARRAYBOUND bounds[] = {{2, 0}, {3, 5}};
  value.vt = VT_ARRAY | VT_UI1;
  value.parray = SafeArrayCreate(VT_UI1, 2, bounds);
  for (LONG column = 5; column < 8; ++column)
    for (LONG row = 0; row < 2; ++row) {
      LONG indices[] = {row, column};
      BYTE byte = static_cast<BYTE>(row * 10 + column);
      ASSERT_EQ(SafeArrayPutElement(value.parray, indices, &byte), S_OK);
    }
  VariantCopy(&m_given, &value);
  VariantClear(&value);
  RunWithObject("a = o.give()\nprint ubound(\"a\"); \" \"; a[0]; a[1]; a[2]; a[3]; a[4]; a[5]\n");
  EXPECT_EQ(m_ui.messages.back(), "6 515616717\n");

  value.vt = VT_ARRAY | VT_VARIANT;
  value.parray = SafeArrayCreateVector(VT_VARIANT, 0, 2);
  LONG index = 1;
  SafeArrayPutElement(value.parray, &index, &m_given);
  VariantClear(&m_given);
  VariantCopy(&m_given, &value);
  VariantClear(&value);
  RunWithObject("a = o.give()\nprint ubound(\"a\"); \"[\"; a[0]; \"]\"; a[1]; a[6]\n");
  EXPECT_EQ(m_ui.messages.back(), "7[]517\n");
}

TEST_F(AutomationBridge, more_items_than_dim_allows_come_through) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_ARRAY | VT_I4;
  value.parray = SafeArrayCreateVector(VT_I4, 0, 20000);
  LONG index = 19999;
  LONG number = 7;
  SafeArrayPutElement(value.parray, &index, &number);
  VariantCopy(&m_given, &value);
  VariantClear(&value);
  RunWithObject("a = o.give()\nprint ubound(\"a\"); \" \"; a[19999]\n");
  EXPECT_EQ(m_ui.messages.back(), "20000 7\n");
}

TEST_F(AutomationBridge, a_method_call_needs_an_object_and_a_known_name) {
  Run("n = 5\nt = \"text\"\nx = n.method()\nx = t.method()\nx = nope.method()\n"
      "o = createobject(\"Test.Object\")\nx = o.unknown(1)\nx = o.nothing.more()\ncall n.method()\ncall nope.method()\n"
      "call o.unknown()\nprint \"on\"\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{31, 31, 37, 34, 34, 31, 37, 34}));
  EXPECT_TRUE(m_ui.notices.empty());
  EXPECT_EQ(m_ui.Output(), "on\n");
  EXPECT_TRUE(m_object.calls.empty());
}

TEST_F(AutomationBridge, properties_are_read) {
  m_given.vt = VT_I4;
  m_given.lVal = 42;
  RunWithObject("print o.Value + 1\n");
  EXPECT_EQ(m_ui.Output(), "43.000000\n");
  ASSERT_EQ(m_object.calls.size(), 1U);
  EXPECT_EQ(m_object.calls[0].flags, DISPATCH_PROPERTYGET);
  EXPECT_TRUE(m_object.calls[0].arguments.empty());
  EXPECT_TRUE(m_object.calls[0].hasResult);
}

TEST_F(AutomationBridge, an_unknown_property_reads_as_not_set) {
  RunWithObject("p = o.unknown\nprint \"[\"; p; \"]\"; o.unknown\n");
  EXPECT_EQ(m_ui.Output(), "[]\n");
  EXPECT_TRUE(m_object.calls.empty());
  m_ui.Forget();
  Run("x = nope.p\nn = 1\nx = n.p\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{37, 31}));
}

TEST_F(AutomationBridge, properties_are_written_as_a_named_argument) {
  RunWithObject("o.value = 5\no.VALUE = 2.5\no.value = \"text\"\no.value = o\n");
  ASSERT_EQ(m_object.calls.size(), 4U);
  const Kinds expected = {{VT_I4, "5"}, {VT_BSTR, "2.500000"}, {VT_BSTR, "text"}, {VT_DISPATCH, "object"}};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(m_object.calls[i].flags, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(m_object.calls[i].named, std::vector<DISPID>{DISPID_PROPERTYPUT});
    EXPECT_EQ(m_object.calls[i].arguments, Kinds{expected[i]});
    EXPECT_FALSE(m_object.calls[i].hasResult);
  }
  EXPECT_EQ(m_object.Held(), 2) << "o, and what the server keeps";
  m_ui.Forget();
  Run("o.unknown = 1\nnope.x = 1\nn = 1\nn.x = 1\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{34, 37, 31}));
}

TEST_F(AutomationBridge, call_drops_a_methods_result) {
  RunWithObject("call o.self()\nbefore = 1\ncall o.nothing(1, 2)\n");
  EXPECT_EQ(m_object.Held(), 1);
  EXPECT_EQ(m_object.calls.size(), 2U);
  EXPECT_EQ(m_object.calls[1].arguments, (Kinds{{VT_I4, "2"}, {VT_I4, "1"}}));
}

TEST_F(AutomationBridge, references_are_exact_on_every_path) {
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

TEST_F(AutomationBridge, failures_hold_no_reference) {
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

TEST_F(AutomationBridge, a_failing_call_leaves_its_result_as_it_was) {
  m_object.Add("fails", [](DISPPARAMS&, VARIANT*, EXCEPINFO*) { return DISP_E_TYPEMISMATCH; });
  Run("o = createobject(\"Test.Object\")\nprint \"[\"; o.fails(); \"]\"; o.fails\n");
  EXPECT_EQ(m_ui.Output(), "[]\n");
  EXPECT_EQ(m_ui.notices, (std::vector<std::string>{"Type mismatch", "Type mismatch"}));
  EXPECT_TRUE(m_ui.errors.empty()) << "never an error of the language";
  EXPECT_TRUE(m_pInterpreter->GetLastError().IsEmpty());
}

TEST_F(AutomationBridge, codes_show_their_standard_message) {
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

TEST_F(AutomationBridge, an_exception_shows_its_description) {
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

TEST_F(AutomationBridge, exceptions_of_the_servers_language_stay_outside) {
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

TEST_F(AutomationBridge, a_server_may_call_back_into_the_interpreter) {
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

TEST_F(AutomationBridge, a_server_that_drops_the_variable_in_use_is_kept_until_it_is_back) {
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

TEST_F(AutomationBridge, an_abort_passes_through_a_server) {
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

TEST_F(AutomationBridge, endless_mutual_calls_report_50) {
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

TEST_F(AutomationBridge, a_server_that_frees_its_arguments_does_no_harm) {
  m_object.Add("frees", [](DISPPARAMS& arguments, VARIANT*, EXCEPINFO*) {
    for (UINT i = 0; i < arguments.cArgs; ++i)
      VariantClear(&arguments.rgvarg[i]);
    return S_OK;
  });
  RunWithObject("x = o.frees(\"text\", o, 5)\no.frees = \"text\"\no.frees = o\n");
  EXPECT_EQ(m_object.Held(), 1);
}

TEST_F(AutomationBridge, an_object_outlives_its_interpreter) {
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

TEST_F(AutomationBridge, the_current_item_of_an_array_is_the_object) {
  RunWithObject("dim a[2]\na[0] = 5\na[1] = o\nx = a.nothing()\n");
  EXPECT_EQ(m_object.calls.size(), 1U);
}

TEST_F(AutomationBridge, an_event_reaches_a_method) {
  RunWithObject("event create e \"o.nothing\"\nthrow e(1, 2)\n");
  ASSERT_EQ(m_object.calls.size(), 1U);
  EXPECT_EQ(m_object.calls[0].arguments, (Kinds{{VT_I4, "2"}, {VT_I4, "1"}}));
}

} // namespace
