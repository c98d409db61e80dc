#include "data/variable_slot.h"

#include "support/counting_dispatch.h"
#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <utility>

namespace brindle {
namespace {

static_assert(sizeof(VariableSlot) == sizeof(CVarBase), "a scalar variable takes no more than its value");

CBasicVariable Array() {
  CBasicVariable array(1);
  array.AddItem(u"two");
  array.AddItem(3.0);
  array.SetCurIndex(1);
  return array;
}

TEST(VariableSlot, new_one_is_undefined) {
  const VariableSlot slot;
  EXPECT_FALSE(slot.IsDefined());
  EXPECT_FALSE(slot.HoldsObject());
}

TEST(VariableSlot, defined_empty_is_a_scalar_that_is_not_set) {
  VariableSlot slot;
  slot.DefineEmpty();
  EXPECT_TRUE(slot.IsDefined());
  EXPECT_EQ(slot.GetNumItems(), 1);
  EXPECT_EQ(slot.CurrentItem().GetType(), BVT_NONE);
  slot.SetWhole(Array());
  slot.DefineEmpty();
  EXPECT_EQ(slot.GetNumItems(), 1);
  EXPECT_EQ(slot.CurrentItem().GetType(), BVT_NONE);
}

TEST(VariableSlot, takes_and_gives_scalars_of_every_kind) {
  CountingDispatch object;
  CBasicVariable objectValue;
  objectValue.SetValue(&object);
  const CBasicVariable values[] = {CBasicVariable(), 5, 2.5, true, u"text", objectValue};
  for (const CBasicVariable& value : values) {
    VariableSlot slot;
    slot.SetWhole(value);
    EXPECT_TRUE(slot.IsDefined());
    CBasicVariable out(Array());
    slot.CopyTo(out);
    EXPECT_EQ(out.GetNumItems(), 1);
    EXPECT_EQ(out.GetCurIndex(), 0);
    EXPECT_EQ(out.GetType(), value.GetType());
    EXPECT_EQ(out.GetStringValue(), value.GetStringValue());
    VariableSlot byItem;
    byItem.SetItem(value);
    EXPECT_TRUE(byItem.IsDefined());
    EXPECT_EQ(byItem.CurrentItem().GetStringValue(), value.GetStringValue());
  }
  EXPECT_EQ(object.Held(), 2); // objectValue and its copy in the list
}

TEST(VariableSlot, takes_and_gives_whole_arrays) {
  VariableSlot slot;
  slot.SetWhole(Array());
  EXPECT_EQ(slot.GetNumItems(), 3);
  EXPECT_EQ(slot.CurrentItem().GetStringValue(), u"two");
  slot.SetCurIndex(2);
  EXPECT_EQ(slot.CurrentItem().GetStringValue(), u"3.000000");
  slot.SetCurIndex(3);
  EXPECT_EQ(slot.CurrentItem().GetStringValue(), u"3.000000");
  CBasicVariable out;
  slot.CopyTo(out);
  EXPECT_EQ(out.GetNumItems(), 3);
  EXPECT_EQ(out.GetCurIndex(), 2);
  slot.CopyItemTo(out);
  EXPECT_EQ(out.GetNumItems(), 1);
  EXPECT_EQ(out.GetStringValue(), u"3.000000");
}

TEST(VariableSlot, item_is_written_into_the_current_item) {
  VariableSlot slot;
  slot.SetWhole(Array());
  slot.SetItem(CBasicVariable(u"new"));
  slot.SetCurIndex(2);
  slot.SetNumber(7.5);
  EXPECT_TRUE(slot.Increment());
  CBasicVariable out;
  slot.CopyTo(out);
  EXPECT_EQ(out.GetStringValue(), u"8.500000");
  out.SetCurIndex(1);
  EXPECT_EQ(out.GetStringValue(), u"new");
  out.SetCurIndex(0);
  EXPECT_EQ(out.GetStringValue(), u"1");

  slot.SetWhole(CBasicVariable(4));
  EXPECT_EQ(slot.GetNumItems(), 1);
  EXPECT_TRUE(slot.Increment());
  EXPECT_EQ(slot.CurrentItem().GetStringValue(), u"5");
}

TEST(VariableSlot, only_numbers_are_incremented) {
  VariableSlot slot;
  slot.DefineEmpty();
  EXPECT_FALSE(slot.Increment());
  slot.SetItem(CBasicVariable(true));
  EXPECT_FALSE(slot.Increment());
  slot.SetNumber(1);
  EXPECT_TRUE(slot.Increment());
  EXPECT_EQ(slot.CurrentItem().GetStringValue(), u"2.000000");
}

TEST(VariableSlot, array_makes_room_for_the_current_item_of_another) {
  VariableSlot slot;
  slot.SetItem(Array()); // of an array, its current item only
  EXPECT_EQ(slot.GetNumItems(), 1);
  EXPECT_EQ(slot.CurrentItem().GetStringValue(), u"two");
}

TEST(VariableSlot, boxed_variable_keeps_its_address_and_its_value) {
  VariableSlot slot;
  slot.SetItem(CBasicVariable(u"text"));
  CBasicVariable* variable = slot.Box();
  ASSERT_NE(variable, nullptr);
  EXPECT_EQ(variable->GetStringValue(), u"text");
  EXPECT_EQ(slot.Box(), variable);
  variable->SetValue(5);
  EXPECT_EQ(slot.CurrentItem().GetStringValue(), u"5");
  slot.SetWhole(Array());
  EXPECT_EQ(slot.Box(), variable);
  EXPECT_EQ(variable->GetNumItems(), 3);
  slot.SetWhole(CBasicVariable(1));
  EXPECT_EQ(slot.Box(), variable);
  VariableSlot moved(std::move(slot));
  EXPECT_EQ(moved.Box(), variable);
  EXPECT_FALSE(slot.IsDefined());
}

TEST(VariableSlot, boxed_variable_may_be_stored_in_its_own_slot) {
  VariableSlot slot;
  slot.SetWhole(Array());
  slot.SetWhole(*slot.Box());
  EXPECT_EQ(slot.GetNumItems(), 3);
  slot.SetItem(*slot.Box());
  EXPECT_EQ(slot.CurrentItem().GetStringValue(), u"two");
}

TEST(VariableSlot, user_data_travels_with_the_whole_value) {
  CBasicVariable value(5);
  value.m_userData = 77;
  VariableSlot slot;
  slot.SetWhole(value);
  CBasicVariable out;
  slot.CopyTo(out);
  EXPECT_EQ(out.m_userData, 77U);
}

TEST(VariableSlot, undefining_forgets_the_value_and_may_be_repeated) {
  VariableSlot slot;
  slot.SetWhole(CBasicVariable(u"text"));
  slot.Undefine();
  EXPECT_FALSE(slot.IsDefined());
  slot.Undefine();
  slot.SetWhole(Array());
  slot.Undefine();
  EXPECT_FALSE(slot.IsDefined());
  slot.SetItem(CBasicVariable());
  EXPECT_TRUE(slot.IsDefined());
  EXPECT_EQ(slot.GetNumItems(), 1);
}

TEST(VariableSlot, objects_are_held_once_and_released_with_the_value) {
  CountingDispatch object;
  CBasicVariable value;
  value.SetValue(&object);
  {
    VariableSlot slot;
    slot.SetWhole(value);
    EXPECT_EQ(object.Held(), 2);
    EXPECT_TRUE(slot.HoldsObject());
    VariableSlot moved(std::move(slot));
    EXPECT_EQ(object.Held(), 2);
    EXPECT_NE(moved.Box(), nullptr);
    EXPECT_EQ(object.Held(), 2);
    moved.SetItem(CBasicVariable(1));
    EXPECT_EQ(object.Held(), 1);
    moved.SetItem(value);
    moved.Undefine();
    EXPECT_EQ(object.Held(), 1);
    CBasicVariable array;
    for (int i = 0; i < 10; ++i)
      array.AddItem(&object);
    EXPECT_EQ(object.Held(), 11);
    moved.SetWhole(array);
    EXPECT_EQ(object.Held(), 21);
    moved.DefineEmpty();
    EXPECT_EQ(object.Held(), 11);
    moved.SetWhole(value);
    EXPECT_EQ(object.Held(), 12);
    moved.SetNumber(1);
    EXPECT_EQ(object.Held(), 11);
    EXPECT_FALSE(moved.HoldsObject());
    moved.SetWhole(array);
  }
  EXPECT_EQ(object.Held(), 1);
}

TEST(VariableSlot, end_of_its_object_finds_the_slot_undefined) {
  for (const bool boxed : {false, true}) {
    VariableSlot slot;
    bool defined = true;
    BASICVARTYPE type = BVT_OBJECT;
    CountingDispatch object([&] {
      defined = slot.IsDefined();
      type = defined ? slot.CurrentItem().GetType() : BVT_NONE;
    });
    {
      CBasicVariable value;
      value.SetValue(&object);
      slot.SetWhole(value);
    }
    if (boxed) {
      EXPECT_NE(slot.Box(), nullptr);
    }
    slot.Undefine();
    EXPECT_TRUE(!defined || type == BVT_NONE) << boxed;
    EXPECT_EQ(object.Held(), 0) << boxed;
  }
}

} // namespace
} // namespace brindle
