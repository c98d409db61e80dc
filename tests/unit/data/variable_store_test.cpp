#include "data/variable_store.h"

#include "support/counting_dispatch.h"
#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace brindle {
namespace {

class Store : public ::testing::Test {
protected:
  NameRef Name(const char16_t* spelling) { return m_store.Ref(CString(spelling)); }
  void SetLocal(const char16_t* name, int level, const CBasicVariable& value) {
    m_store.Make(Name(name), level, false).SetWhole(value);
  }
  void SetGlobal(const char16_t* name, const CBasicVariable& value) {
    m_store.Make(Name(name), 1, true).SetWhole(value);
  }
  // The text of what a name finds, "-" for nothing.
  std::string Text(const char16_t* name, int level) {
    const VariableSlot* slot = m_store.Find(Name(name), level);
    return slot == nullptr ? "-" : slot->CurrentItem().GetStringValue().ToUtf8();
  }
  std::string Key(const char16_t* name, int level) { return m_store.KeyOf(Name(name), level).ToUtf8(); }

  VariableStore m_store;
};

TEST_F(Store, scoped_key_is_lower_case_with_the_level) {
  EXPECT_EQ(VariableStore::ScopedKey(CString(u"Total"), 1), u"total__#1");
  EXPECT_EQ(VariableStore::ScopedKey(CString(u"ÄX"), 12), u"äx__#12");
}

TEST_F(Store, name_has_one_number_whatever_its_letter_case) {
  EXPECT_EQ(Name(u"Total").number, Name(u"TOTAL").number);
  EXPECT_NE(Name(u"total").number, Name(u"total2").number);
  EXPECT_EQ(Name(u"Total").spelling, u"Total");
  EXPECT_EQ(m_store.NumberOf(CString(u"total")), Name(u"total").number);
}

TEST_F(Store, asking_for_an_unknown_name_makes_none) {
  EXPECT_FALSE(m_store.KnownRef(CString(u"nope")).has_value());
  EXPECT_FALSE(m_store.KnownRef(CString(u"nope")).has_value());
  const NameRef made = Name(u"Nope");
  const auto known = m_store.KnownRef(CString(u"NOPE"));
  ASSERT_TRUE(known.has_value());
  EXPECT_EQ(known->number, made.number);
  EXPECT_EQ(known->spelling, u"NOPE");
  EXPECT_EQ(Text(u"nope", 1), "-");
}

TEST_F(Store, locals_are_found_in_any_letter_case_on_their_level_only) {
  SetLocal(u"Total", 1, 5);
  SetLocal(u"total", 2, 6);
  EXPECT_EQ(Text(u"TOTAL", 1), "5");
  EXPECT_EQ(Text(u"total", 2), "6");
  EXPECT_EQ(Text(u"total", 3), "-");
  EXPECT_EQ(Text(u"total", 1000), "-");
  EXPECT_EQ(m_store.Count(), 2);
}

TEST_F(Store, globals_are_found_on_every_level_by_their_exact_spelling) {
  SetGlobal(u"Count", 7);
  for (const int level : {1, 2, 50})
    EXPECT_EQ(Text(u"Count", level), "7");
  EXPECT_EQ(Text(u"count", 1), "-");
  SetGlobal(u"COUNT", 8);
  EXPECT_EQ(Text(u"Count", 1), "7");
  EXPECT_EQ(Text(u"COUNT", 1), "8");
  EXPECT_EQ(m_store.Count(), 2);
}

TEST_F(Store, global_hides_the_local_of_the_same_spelling) {
  SetLocal(u"x", 1, 1);
  SetGlobal(u"x", 2);
  EXPECT_EQ(Text(u"x", 1), "2");
  EXPECT_EQ(Text(u"X", 1), "1");
  EXPECT_EQ(m_store.Count(), 2);
}

TEST_F(Store, key_is_the_spelling_for_globals_and_the_scoped_one_otherwise) {
  SetGlobal(u"Count", 1);
  SetLocal(u"Total", 2, 1);
  EXPECT_EQ(Key(u"Count", 3), "Count");
  EXPECT_EQ(Key(u"count", 3), "count__#3");
  EXPECT_EQ(Key(u"TOTAL", 2), "total__#2");
  EXPECT_EQ(Key(u"Unknown", 4), "unknown__#4");
}

TEST_F(Store, name_that_spells_a_scoped_key_is_that_local) {
  SetLocal(u"x", 1, 1);
  EXPECT_EQ(Text(u"x__#1", 1), "1");
  EXPECT_EQ(Text(u"x__#1", 5), "1");
  EXPECT_EQ(Text(u"X__#1", 5), "-"); // keys of locals are in lower case
  EXPECT_EQ(Key(u"x__#1", 5), "x__#1");
  EXPECT_EQ(Text(u"x__#2", 1), "-");
  m_store.Find(Name(u"x__#1"), 5)->SetWhole(CBasicVariable(9));
  EXPECT_EQ(Text(u"x", 1), "9");
  EXPECT_EQ(m_store.Count(), 1);
}

TEST_F(Store, global_that_spells_a_scoped_key_is_that_local) {
  SetGlobal(u"y__#3", 4);
  EXPECT_EQ(Text(u"y", 3), "4");
  EXPECT_EQ(Text(u"y", 1), "-");
  EXPECT_EQ(m_store.Count(), 1);
}

TEST_F(Store, local_whose_name_looks_like_a_key_is_one_of_its_own) {
  SetLocal(u"z__#2", 1, 5); // its key is z__#2__#1
  EXPECT_EQ(Text(u"z__#2", 1), "5");
  EXPECT_EQ(Text(u"z", 2), "-");
  SetLocal(u"z", 2, 6);
  EXPECT_EQ(Text(u"z__#2", 1), "6"); // the exact key comes first
  EXPECT_EQ(Text(u"z__#2__#1", 7), "5");
  EXPECT_EQ(m_store.Count(), 2);
}

TEST_F(Store, marks_that_no_key_would_have_name_no_level) {
  SetLocal(u"x", 1, 1);
  for (const char16_t* name : {u"x__#01", u"x__#", u"x__#1a", u"x__#-1", u"x__#99999999999", u"__#1"})
    EXPECT_EQ(Text(name, 1), "-") << CString(name).ToUtf8();
}

TEST_F(Store, undefining_takes_the_local_and_never_a_global) {
  SetLocal(u"x", 2, 1);
  SetGlobal(u"x", 2);
  EXPECT_FALSE(m_store.Undefine(Name(u"x"), 1));
  EXPECT_TRUE(m_store.Undefine(Name(u"X"), 2));
  EXPECT_FALSE(m_store.Undefine(Name(u"x"), 2));
  EXPECT_EQ(Text(u"x", 2), "2");
  EXPECT_FALSE(m_store.Undefine(Name(u"never"), 99));
  EXPECT_EQ(m_store.Count(), 1);
}

TEST_F(Store, undefined_variable_can_be_made_again) {
  SetLocal(u"x", 1, 1);
  EXPECT_TRUE(m_store.Undefine(Name(u"x"), 1));
  EXPECT_EQ(Text(u"x", 1), "-");
  SetLocal(u"x", 1, 2);
  EXPECT_EQ(Text(u"x", 1), "2");
}

TEST_F(Store, variable_that_is_only_made_does_not_exist_yet) {
  EXPECT_FALSE(m_store.Make(Name(u"x"), 1, false).IsDefined());
  EXPECT_FALSE(m_store.Make(Name(u"g"), 1, true).IsDefined());
  EXPECT_EQ(m_store.Count(), 0);
  EXPECT_EQ(Text(u"x", 1), "-");
  EXPECT_EQ(Text(u"g", 1), "-");
  m_store.Make(Name(u"x"), 1, false).DefineEmpty();
  EXPECT_EQ(m_store.Count(), 1);
}

TEST_F(Store, level_is_removed_with_everything_whose_key_ends_like_it) {
  SetLocal(u"a", 1, 1);
  SetLocal(u"a", 2, 1);
  SetLocal(u"b", 2, 1);
  SetLocal(u"a", 3, 1);
  SetLocal(u"a", 12, 1);
  SetGlobal(u"Free", 1);
  SetGlobal(u"G__#2", 1); // ends like a key of level 2
  SetGlobal(u"__#2", 1);  // is no longer than the suffix
  EXPECT_EQ(m_store.RemoveLevel(2), 3);
  EXPECT_EQ(m_store.RemoveLevel(2), 0);
  EXPECT_EQ(Text(u"a", 1), "1");
  EXPECT_EQ(Text(u"a", 2), "-");
  EXPECT_EQ(Text(u"a", 3), "1");
  EXPECT_EQ(Text(u"a", 12), "1");
  EXPECT_EQ(Text(u"Free", 1), "1");
  EXPECT_EQ(Text(u"G__#2", 1), "-");
  EXPECT_EQ(Text(u"__#2", 1), "1");
  EXPECT_EQ(m_store.RemoveLevel(1000), 0);
}

TEST_F(Store, count_sees_what_is_defined) {
  EXPECT_EQ(m_store.Count(), 0);
  for (int i = 0; i < 1000; ++i) {
    CString name;
    name.Format(u"v%d", i);
    m_store.Make(m_store.Ref(name), 1 + i % 3, false).SetWhole(CBasicVariable(i));
  }
  EXPECT_EQ(m_store.Count(), 1000);
  EXPECT_EQ(m_store.RemoveLevel(2), 333);
  EXPECT_EQ(m_store.Count(), 667);
  EXPECT_EQ(Text(u"v0", 1), "0");
  EXPECT_EQ(Text(u"v999", 1), "999");
}

TEST_F(Store, cleared_store_is_empty_and_keeps_the_numbers) {
  SetLocal(u"x", 1, 1);
  SetGlobal(u"Y", 2);
  const int number = Name(u"x").number;
  m_store.Clear();
  EXPECT_EQ(m_store.Count(), 0);
  EXPECT_EQ(Text(u"x", 1), "-");
  EXPECT_EQ(Text(u"Y", 1), "-");
  EXPECT_EQ(Name(u"x").number, number);
  SetLocal(u"x", 1, 3);
  EXPECT_EQ(Text(u"x", 1), "3");
}

TEST_F(Store, places_of_objects_are_those_of_the_level_and_deeper) {
  CountingDispatch object;
  CBasicVariable value;
  value.SetValue(&object);
  SetLocal(u"a", 1, value);
  SetLocal(u"b", 2, value);
  SetLocal(u"c", 3, value);
  SetLocal(u"number", 3, 5);
  SetGlobal(u"g", value);
  SetGlobal(u"h__#7", value);
  EXPECT_FALSE(m_store.MayHoldObjects()); // nobody has said that there are any
  m_store.NoteObjects();
  EXPECT_TRUE(m_store.MayHoldObjects());
  const auto holders = [this](int level) {
    std::vector<const VariableSlot*> found;
    for (VariableStore::Place place; m_store.FindObject(level, place); ++place.inner)
      found.push_back(m_store.At(place));
    return found;
  };
  const auto has = [&](int level, const char16_t* name, int nameLevel) {
    const auto found = holders(level);
    return std::find(found.begin(), found.end(), m_store.Find(Name(name), nameLevel)) != found.end();
  };
  EXPECT_EQ(holders(2).size(), 3U);
  EXPECT_FALSE(has(2, u"a", 1));
  EXPECT_TRUE(has(2, u"b", 2));
  EXPECT_TRUE(has(2, u"c", 3));
  EXPECT_TRUE(has(2, u"h__#7", 1));
  EXPECT_FALSE(has(2, u"g", 1));
  EXPECT_TRUE(has(1, u"a", 1));
  EXPECT_FALSE(has(8, u"h__#7", 1));
  m_store.Clear();
  EXPECT_EQ(object.Held(), 1);
}

TEST_F(Store, end_of_the_store_releases_objects) {
  CountingDispatch object;
  {
    VariableStore store;
    CBasicVariable value;
    value.SetValue(&object);
    value.AddItem(&object);
    store.Make(store.Ref(CString(u"x")), 4, false).SetWhole(value);
    store.Make(store.Ref(CString(u"X")), 1, true).SetWhole(value);
  }
  EXPECT_EQ(object.Held(), 0);
}

TEST_F(Store, place_of_a_slot_stays_while_none_is_created) {
  SetLocal(u"a", 1, 1);
  SetLocal(u"b", 1, 2);
  const VariableSlot* place = m_store.Find(Name(u"a"), 1);
  EXPECT_EQ(Text(u"unknown", 1), "-");
  m_store.Find(Name(u"b"), 1)->SetWhole(CBasicVariable(u"text"));
  m_store.Undefine(Name(u"b"), 1);
  EXPECT_EQ(m_store.Find(Name(u"a"), 1), place);
}

TEST_F(Store, boxed_variable_stays_where_it_is_while_others_are_created) {
  SetLocal(u"a", 1, 1);
  SetGlobal(u"g", 1);
  CBasicVariable* const local = m_store.Find(Name(u"a"), 1)->Box();
  CBasicVariable* const global = m_store.Find(Name(u"g"), 1)->Box();
  for (int i = 0; i < 500; ++i) {
    CString name;
    name.Format(u"other%d", i);
    m_store.Make(m_store.Ref(name), 1 + i, i % 2 == 0).SetWhole(CBasicVariable(i));
  }
  EXPECT_EQ(m_store.Find(Name(u"a"), 1)->Box(), local);
  EXPECT_EQ(m_store.Find(Name(u"g"), 1)->Box(), global);
  EXPECT_EQ(local->GetStringValue(), u"1");
}

} // namespace
} // namespace brindle
