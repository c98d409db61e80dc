// The interpreter's own members for variables, as its other rooms call them.
#include "support/script_test.h"

namespace {

class VariablesTest : public ScriptTest {};

TEST_F(VariablesTest, a_name_gets_the_mark_of_the_level) {
  CString name(u"Total");
  Access::AddScopeLevelExtension(Interpreter(), name);
  EXPECT_EQ(name, u"total__#1");
  State().m_nScopeLevel = 12;
  Access::AddScopeLevelExtension(Interpreter(), name);
  EXPECT_EQ(name, u"total__#1__#12");
  State().m_nScopeLevel = 1;
}

TEST_F(VariablesTest, a_text_is_stored_at_its_index) {
  EXPECT_TRUE(Access::SetVariable(Interpreter(), u"a", CString(u"one"), 0));
  EXPECT_EQ(TextOf(u"a"), "one");
  // Deliberate: what has been reported is no failure any more.
  EXPECT_TRUE(Access::SetVariable(Interpreter(), u"a", CString(u"two"), 1)) << "there is one element";
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{36});
  EXPECT_EQ(TextOf(u"a"), "one");
}

TEST_F(VariablesTest, a_copy_has_every_item_and_makes_the_variable) {
  CBasicVariable pair;
  pair.SetArraySize(2);
  pair.SetCurIndex(0);
  pair.SetValue(1);
  pair.SetCurIndex(1);
  pair.SetValue(2);
  EXPECT_TRUE(Access::CopyVariable(Interpreter(), u"Pair", pair, false));
  CString key(u"pair");
  const CBasicVariable* copy = Access::FindVariable(Interpreter(), key);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->GetNumItems(), 2);
  EXPECT_EQ(copy->GetStringValue(), u"2") << "the current item is copied as well";
  // One that is there takes all of it.
  CBasicVariable single;
  single.SetValue(CString(u"alone"));
  EXPECT_TRUE(Access::CopyVariable(Interpreter(), u"pair", single, false));
  EXPECT_EQ(TextOf(u"pair"), "alone");
  // A global is seen from every level.
  EXPECT_TRUE(Access::CopyVariable(Interpreter(), u"Shared", single, true));
  State().m_nScopeLevel = 2;
  EXPECT_EQ(TextOf(u"Shared"), "alone");
  EXPECT_EQ(TextOf(u"pair"), "(none)");
  State().m_nScopeLevel = 1;
}

} // namespace
