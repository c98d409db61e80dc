// Function descriptors, adding functions, and looking a name up: the host's first, then the own ones.
#include "support/script_test.h"

namespace {

using FunctionTableTest = ScriptTest;

CBasicVariable HostFunction(CBrindle*, CBasicVariableArray&, int) {
  return CBasicVariable(u"from the host");
}

bool Add(CBrindle& interpreter, std::unique_ptr<CFuncDesc> function) {
  const bool added = BrindleTestAccess::AddFunction(interpreter, function.get());
  if (added)
    function.release();
  return added;
}

TEST_F(FunctionTableTest, a_fresh_descriptor_is_empty) {
  const CFuncDesc fresh;
  EXPECT_TRUE(fresh.m_strName.IsEmpty());
  EXPECT_TRUE(fresh.m_strLibrary.IsEmpty());
  EXPECT_TRUE(fresh.m_strEntryName.IsEmpty());
  EXPECT_EQ(fresh.m_nCode, FUNCTION_NONE);
  EXPECT_EQ(fresh.m_nKind, 0);
  EXPECT_EQ(fresh.m_nPosition, 0U);
  EXPECT_EQ(fresh.m_parameterTypes.GetSize(), 0);
  EXPECT_EQ(fresh.m_nReturnType, 0U);
  EXPECT_EQ(fresh.m_pCallback, nullptr);
  EXPECT_TRUE(fresh.m_pHandler == nullptr);
  EXPECT_EQ(fresh.m_nValue, 0);
}

TEST_F(FunctionTableTest, a_procedure_descriptor_has_code_89) {
  const CFuncDesc procedure(u"area", 12U);
  EXPECT_EQ(procedure.m_strName.ToUtf8(), "area");
  EXPECT_EQ(procedure.m_strEntryName.ToUtf8(), "area");
  EXPECT_EQ(procedure.m_nCode, 89);
  EXPECT_EQ(procedure.m_nKind, 2);
  EXPECT_EQ(procedure.m_nPosition, 12U);
  EXPECT_TRUE(procedure.m_pHandler == nullptr);
}

TEST_F(FunctionTableTest, a_descriptor_copies_every_field) {
  CFuncDesc original(u"area", 12U);
  original.m_strLibrary = u"lib";
  original.m_strEntryName = u"entry";
  original.m_parameterTypes.Add(3);
  original.m_parameterTypes.Add(5);
  original.m_nReturnType = 9;
  original.m_nValue = 7;
  original.m_pCallback = &HostFunction;
  const CFuncDesc copy(original);
  original.m_parameterTypes[0] = 4;
  EXPECT_EQ(copy.m_strLibrary.ToUtf8(), "lib");
  EXPECT_EQ(copy.m_strEntryName.ToUtf8(), "entry");
  ASSERT_EQ(copy.m_parameterTypes.GetSize(), 2);
  EXPECT_EQ(copy.m_parameterTypes[0], 3U);
  EXPECT_EQ(copy.m_parameterTypes[1], 5U);
  EXPECT_EQ(copy.m_nReturnType, 9U);
  EXPECT_EQ(copy.m_nValue, 7);
  EXPECT_EQ(copy.m_pCallback, &HostFunction);
}

TEST_F(FunctionTableTest, a_name_is_added_once) {
  EXPECT_TRUE(Add(Interpreter(), std::make_unique<CFuncDesc>(u"area", 5U)));
  EXPECT_FALSE(Add(Interpreter(), std::make_unique<CFuncDesc>(u"area", 9U)));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{27});
  CFuncDesc found;
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"area", found, true), FUNCTION_SCRIPT);
  EXPECT_EQ(found.m_nPosition, 5U) << "the first one stays";
}

TEST_F(FunctionTableTest, the_name_of_a_built_in_is_taken) {
  EXPECT_FALSE(Add(Interpreter(), std::make_unique<CFuncDesc>(u"sin", 5U)));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{27});
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"sin"), FUNCTION_SIN);
}

TEST_F(FunctionTableTest, a_look_up_copies_the_descriptor_only_when_asked) {
  Add(Interpreter(), std::make_unique<CFuncDesc>(u"area", 5U));
  CFuncDesc out;
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"AREA", out, false), FUNCTION_SCRIPT);
  EXPECT_TRUE(out.m_strName.IsEmpty());
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"AREA", out, true), FUNCTION_SCRIPT);
  EXPECT_EQ(out.m_strName.ToUtf8(), "area");
  EXPECT_EQ(out.m_nPosition, 5U);
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"Sin", out, true), FUNCTION_SIN);
  EXPECT_EQ(out.m_strName.ToUtf8(), "sin");
  EXPECT_EQ(out.m_nPosition, 0U);
}

TEST_F(FunctionTableTest, an_unknown_name_copies_nothing) {
  Access::LookupFunction(Interpreter(), u"sin");
  CFuncDesc out;
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"nope", out, true), FUNCTION_NONE);
  EXPECT_TRUE(out.m_strName.IsEmpty());
}

TEST_F(FunctionTableTest, a_dotted_name_is_a_method_whatever_the_tables_hold) {
  for (const char16_t* name : {u"a.b", u"A.B.C", u".", u"sin.", u".sin", u"nope.nope"}) {
    CFuncDesc out;
    EXPECT_EQ(Access::LookupFunction(Interpreter(), name, out, true), 92) << CString(name).ToUtf8();
    EXPECT_TRUE(out.m_strName.IsEmpty()) << "no table was asked";
  }
  Interpreter().AddCustomFunction(u"a.b", &HostFunction, 0, nullptr);
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"a.b"), 92);
}

TEST_F(FunctionTableTest, the_host_wins_over_built_ins_and_procedures) {
  Interpreter().AddCustomFunction(u"len", &HostFunction, 3, nullptr);
  Interpreter().AddCustomFunction(u"area", &HostFunction, 4, nullptr);
  Add(Interpreter(), std::make_unique<CFuncDesc>(u"area", 5U));
  CFuncDesc found;
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"LEN", found, true), 90);
  EXPECT_EQ(found.m_nCode, 90);
  EXPECT_EQ(found.m_nKind, 1);
  EXPECT_EQ(found.m_nValue, 3);
  EXPECT_EQ(found.m_pCallback, &HostFunction);
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"area", found, true), 90);
  EXPECT_EQ(found.m_nValue, 4);

  CBrindle other;
  EXPECT_EQ(Access::LookupFunction(other, u"len"), 90) << "in every interpreter";
}

TEST_F(FunctionTableTest, the_scan_registers_the_heads_of_procedures) {
  SetText(u"function First(a)\nendfunction\nprint function Inner()\n  SUB third()\nendsub\n"
          u"x = \"function Fourth()\" : sub Fifth()\nrem function Sixth()\n# sub Seventh()\n");
  EXPECT_TRUE(Access::LabelsScan(Interpreter()));
  EXPECT_TRUE(m_ui.errors.empty());
  const std::u16string_view text = State().program->Text();
  CFuncDesc found;
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"first", found, true), FUNCTION_SCRIPT);
  EXPECT_EQ(text.substr(found.m_nPosition, 3), u"(a)");
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"THIRD", found, true), FUNCTION_SCRIPT);
  EXPECT_EQ(text.substr(found.m_nPosition, 2), u"()");
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"fifth"), FUNCTION_SCRIPT) << "behind a delimiter";
  for (const char16_t* name : {u"inner", u"fourth", u"sixth", u"seventh"})
    EXPECT_EQ(Access::LookupFunction(Interpreter(), name), FUNCTION_NONE) << CString(name).ToUtf8();
}

TEST_F(FunctionTableTest, two_definitions_in_one_text_report_27_and_the_scan_goes_on) {
  SetText(u"function F()\nsub f()\nfunction g()\nend:\n");
  EXPECT_TRUE(Access::LabelsScan(Interpreter()));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{27});
  CFuncDesc found;
  Access::LookupFunction(Interpreter(), u"f", found, true);
  EXPECT_EQ(found.m_nPosition, 10U) << "the first one stays";
  EXPECT_EQ(Access::LookupFunction(Interpreter(), u"g"), FUNCTION_SCRIPT);
  unsigned long position = 0;
  EXPECT_TRUE(Access::LabelGet(Interpreter(), u"end", position));
}

} // namespace
