#include "calls/automation_bridge_fixture.h"

namespace {

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

TEST_F(AutomationBridge, references_to_every_kind_are_read) {
  alignas(VARIANT) unsigned char bytes[sizeof(VARIANT)] = {};
  const auto store = [&](auto number) { std::memcpy(bytes, &number, sizeof number); };
  const auto shown = [&](unsigned kind) {
    VARIANT value;
    VariantInit(&value);
    value.vt = static_cast<VARTYPE>(kind | VT_BYREF);
    value.byref = bytes;
    return Shown(value);
  };
  store(SHORT{-7});
  EXPECT_EQ(shown(VT_I2), "[-7]");
  store(USHORT{60000});
  EXPECT_EQ(shown(VT_UI2), "[60000]");
  store(BYTE{200});
  EXPECT_EQ(shown(VT_UI1), "[200]");
  store(VARIANT_BOOL{VARIANT_TRUE});
  EXPECT_EQ(shown(VT_BOOL), "[True]");
  store(FLOAT{2.5F});
  EXPECT_EQ(shown(VT_R4), "[2.500000]");
  store(DOUBLE{0.25});
  EXPECT_EQ(shown(VT_R8), "[0.250000]");
  store(LONGLONG{-5000000000});
  EXPECT_EQ(shown(VT_I8), "[-5000000000]");
  store(DOUBLE{2.5});
  EXPECT_EQ(shown(VT_DATE), "[1900-01-01 12:00:00]");
  VARIANT decimal{};
  decimal.wReserved1 = 2; // digits behind the point
  decimal.ullVal = 12345;
  store(decimal);
  EXPECT_EQ(shown(VT_DECIMAL), "[123.45]");
  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 1);
  LONG index = 0;
  LONG number = 9;
  SafeArrayPutElement(array, &index, &number);
  store(array);
  EXPECT_EQ(shown(VT_ARRAY | VT_I4), "[9]");
  SafeArrayDestroy(array);
  EXPECT_EQ(shown(VT_NULL), "[]") << "a reference to nothing";
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

} // namespace
