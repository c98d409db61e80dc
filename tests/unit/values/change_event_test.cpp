// Change events, counted by a function of the host that is attached as the handler.
#include "brindle/interpreter.h"
#include "brindle/variable.h"

#include "support/counting_dispatch.h"
#include "support/test_access.h"
#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

namespace {

struct Seen {
  int count = 0;
  int arguments = 0;
  CString text;
  int items = 0;
  std::function<void()> also;
};
Seen seen;

CBasicVariable NoteChange(CBrindle*, CBasicVariableArray& arguments, int) {
  ++seen.count;
  seen.arguments = arguments.GetSize();
  if (arguments.GetSize() > 0) {
    seen.text = arguments[0].GetStringValue();
    seen.items = arguments[0].GetNumItems();
  }
  if (seen.also)
    seen.also();
  return {};
}

class ChangeEvent : public ::testing::Test {
protected:
  ChangeEvent() {
    seen = Seen();
    m_interpreter.SetUserInterface(&m_silent);
    EXPECT_TRUE(m_interpreter.AddCustomFunction(CString(u"notechange"), NoteChange, 0, nullptr));
    EXPECT_TRUE(BrindleTestAccess::EventAdd(m_interpreter, CString(u"OnTest"), CString(u"NoteChange")));
    m_variable.SetChangeEvent(&m_interpreter, CString(u"onTEST"));
  }
  // How often the event was thrown meanwhile.
  template <class Change> int Thrown(Change change) {
    const int before = seen.count;
    change();
    return seen.count - before;
  }
  CUserInterface m_silent;
  CBrindle m_interpreter;
  CBasicVariable m_variable;
};

TEST_F(ChangeEvent, attaching_throws_nothing) {
  EXPECT_EQ(seen.count, 0);
  m_variable.SetChangeEvent(&m_interpreter, CString(u"OnTest"));
  m_variable.RemoveChangeEvent();
  EXPECT_EQ(seen.count, 0);
}

TEST_F(ChangeEvent, handler_gets_the_changed_variable) {
  m_variable.AddItem(5);
  m_variable.AddItem(6);
  m_variable.SetCurIndex(1);
  m_variable.SetValue(u"new");
  EXPECT_EQ(seen.arguments, 1);
  EXPECT_EQ(seen.text, u"new");
  EXPECT_EQ(seen.items, 2);
}

TEST_F(ChangeEvent, every_member_that_writes_throws_once) {
  CountingDispatch object;
  CBasicVariable source(5);
  source.AddItem(6);
  VARIANT number;
  VariantInit(&number);
  number.vt = VT_I4;
  m_variable.SetArraySize(2);
  seen = Seen();
  struct Row {
    const char* name;
    std::function<void()> change;
  };
  CBasicVariable& variable = m_variable;
  const Row rows[] = {
      {"text", [&] { variable.SetValue(CString(u"x")); }},
      {"units", [&] { variable.SetValue(CString(u"x").GetString()); }},
      {"literal", [&] { variable.SetValue(u"x"); }},
      {"double", [&] { variable.SetValue(1.5); }},
      {"integer", [&] { variable.SetValue(1); }},
      {"boolean", [&] { variable.SetValue(true); }},
      {"object", [&] { variable.SetValue(&object); }},
      {"item of a variable", [&] { variable.SetValue(source); }},
      {"variant", [&] { EXPECT_TRUE(variable.SetValue(number)); }},
      {"increment", [&] { EXPECT_TRUE(variable.Increment()); }},
      {"plus plus", [&] { ++variable; }},
      {"assigned text", [&] { variable = CString(u"x"); }},
      {"assigned units", [&] { variable = CString(u"x").GetString(); }},
      {"assigned double", [&] { variable = 1.5; }},
      {"assigned integer", [&] { variable = 1; }},
      {"assigned unsigned", [&] { variable = 1UL; }},
      {"assigned boolean", [&] { variable = false; }},
      {"assigned object", [&] { variable = &object; }},
      {"assigned character", [&] { variable = static_cast<unsigned short>(65); }},
      {"assigned byte", [&] { variable = static_cast<char>(65); }},
      {"assigned float", [&] { variable = 1.5F; }},
      {"indexed text", [&] { variable.SetValue(CString(u"x"), 1); }},
      {"indexed units", [&] { variable.SetValue(CString(u"x").GetString(), 1); }},
      {"indexed double", [&] { variable.SetValue(1.5, 1); }},
      {"indexed integer", [&] { variable.SetValue(1, 1); }},
      {"indexed object", [&] { variable.SetValue(&object, 1); }},
      {"added placeholder", [&] { variable.AddItem(); }},
      {"added double", [&] { variable.AddItem(1.5); }},
      {"added integer", [&] { variable.AddItem(1); }},
      {"added unsigned", [&] { variable.AddItem(1UL); }},
      {"added boolean", [&] { variable.AddItem(true); }},
      {"added text", [&] { variable.AddItem(CString(u"x")); }},
      {"added units", [&] { variable.AddItem(CString(u"x").GetString()); }},
      {"added object", [&] { variable.AddItem(&object); }},
      {"added variable", [&] { variable.AddItem(source); }},
      {"redim", [&] { variable.Redim(5); }},
      {"redim to 0", [&] { variable.Redim(0); }},
      {"redim to 16000", [&] { variable.Redim(16000); }},
      {"whole", [&] { variable.Set(source); }},
      {"whole assigned", [&] { variable = source; }},
      {"whole item", [&] { variable.Set(CVarBase(1L)); }},
  };
  for (const Row& row : rows)
    EXPECT_EQ(Thrown(row.change), 1) << row.name;
}

TEST_F(ChangeEvent, first_value_added_throws_once) {
  EXPECT_EQ(Thrown([&] { m_variable.AddItem(5); }), 1);
}

TEST_F(ChangeEvent, set_array_size_throws_for_every_item_it_adds) {
  EXPECT_EQ(Thrown([&] { m_variable.SetArraySize(5); }), 4);
  EXPECT_EQ(Thrown([&] { m_variable.SetArraySize(5); }), 0);
  EXPECT_EQ(Thrown([&] { m_variable.SetArraySize(2); }), 0);
}

TEST_F(ChangeEvent, release_of_a_string_buffer_throws_and_getting_it_does_not) {
  EXPECT_EQ(Thrown([&] { EXPECT_NE(m_variable.GetStringBuffer(10), nullptr); }), 0);
  EXPECT_EQ(Thrown([&] { m_variable.ReleaseStringBuffer(); }), 1);
}

TEST_F(ChangeEvent, reading_and_selecting_throw_nothing) {
  m_variable.SetArraySize(3);
  EXPECT_EQ(Thrown([&] {
              m_variable.SetFieldName(CString(u"name"));
              EXPECT_TRUE(m_variable.SetCurField(CString(u"NAME")));
              m_variable.SetCurIndex(1);
              EXPECT_EQ(m_variable.GetStringValue(), u"");
              EXPECT_EQ(m_variable.GetNumberValue(), 0.0);
              EXPECT_EQ(m_variable.GetObjectValue(), nullptr);
              EXPECT_EQ(m_variable.GetType(), BVT_NONE);
              EXPECT_EQ(m_variable.GetNumItems(), 3);
              const CBasicVariable copy(m_variable);
              EXPECT_EQ(copy.GetNumItems(), 3);
            }),
            0);
}

TEST_F(ChangeEvent, what_changes_nothing_throws_nothing) {
  VARIANT refused;
  VariantInit(&refused);
  for (const VARTYPE kind : {VT_EMPTY, VT_UI1, VT_DATE, VT_I8}) {
    refused.vt = kind;
    EXPECT_EQ(Thrown([&] { EXPECT_FALSE(m_variable.SetValue(refused)); }), 0) << kind;
  }
  refused.vt = static_cast<VARTYPE>(VT_I4 | VT_BYREF);
  EXPECT_EQ(Thrown([&] { EXPECT_FALSE(m_variable.SetValue(refused)); }), 0);
  EXPECT_EQ(Thrown([&] { EXPECT_FALSE(m_variable.Increment()); }), 0);
  m_variable.SetValue(true);
  EXPECT_EQ(Thrown([&] { ++m_variable; }), 0);
}

TEST_F(ChangeEvent, removed_binding_throws_no_more) {
  m_variable.RemoveChangeEvent();
  m_variable.SetValue(1);
  m_variable.AddItem(2);
  EXPECT_EQ(seen.count, 0);
  m_variable.SetChangeEvent(&m_interpreter, CString(u"OnTest"));
  m_variable.SetValue(3);
  EXPECT_EQ(seen.count, 1);
}

TEST_F(ChangeEvent, event_without_handlers_is_harmless) {
  m_variable.SetChangeEvent(&m_interpreter, CString(u"OnNothing"));
  m_variable.SetValue(1);
  EXPECT_EQ(seen.count, 0);
  EXPECT_EQ(m_variable.GetStringValue(), u"1");
}

TEST_F(ChangeEvent, copies_are_not_bound) {
  CBasicVariable constructed(m_variable);
  CBasicVariable assigned;
  assigned = m_variable;
  constructed.SetValue(1);
  assigned.SetValue(1);
  EXPECT_EQ(seen.count, 0);
}

TEST_F(ChangeEvent, whole_copy_keeps_the_targets_binding) {
  m_variable.Set(CBasicVariable(7));
  EXPECT_EQ(seen.count, 1);
  EXPECT_EQ(seen.text, u"7");
  m_variable.SetValue(8);
  EXPECT_EQ(seen.count, 2);
}

TEST_F(ChangeEvent, moved_variable_takes_its_binding_along) {
  CBasicVariable moved(std::move(m_variable));
  moved.SetValue(1);
  EXPECT_EQ(seen.count, 1);
}

TEST_F(ChangeEvent, handler_sees_the_value_already_changed) {
  m_variable.SetValue(u"before");
  CString seenInVariable;
  seen.also = [&] { seenInVariable = m_variable.GetStringValue(); };
  m_variable.SetValue(u"after");
  EXPECT_EQ(seenInVariable, u"after");
}

TEST_F(ChangeEvent, handler_may_remove_the_binding) {
  seen.also = [&] { m_variable.RemoveChangeEvent(); };
  m_variable.SetArraySize(4);
  EXPECT_EQ(seen.count, 1);
  EXPECT_EQ(m_variable.GetNumItems(), 4);
}

TEST_F(ChangeEvent, handler_may_end_the_variable) {
  auto variable = std::make_unique<CBasicVariable>(1);
  variable->SetChangeEvent(&m_interpreter, CString(u"OnTest"));
  seen.also = [&] { variable.reset(); };
  variable->SetValue(2);
  EXPECT_EQ(variable, nullptr);
  EXPECT_EQ(seen.text, u"2");
}

} // namespace
