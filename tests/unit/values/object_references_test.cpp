// Every path on which a value takes or gives back a reference to an object.
#include "brindle/variable.h"

#include "support/counting_dispatch.h"
#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <utility>

namespace {

TEST(ObjectReferences, item_holds_one_reference_from_construction_to_end) {
  CountingDispatch object;
  {
    const CVarBase item(&object);
    EXPECT_EQ(object.Held(), 1);
    EXPECT_EQ(object.Taken(), 1);
    EXPECT_EQ(item.GetObjectValue(), &object); // borrowed
    EXPECT_EQ(object.Held(), 1);
  }
  EXPECT_EQ(object.Held(), 0);
  EXPECT_EQ(object.Released(), 1);
}

TEST(ObjectReferences, copies_take_one_each_and_moves_none) {
  CountingDispatch object;
  {
    CVarBase item(&object);
    CVarBase copy(item);
    EXPECT_EQ(object.Held(), 2);
    CVarBase assigned(u"text");
    assigned = item;
    EXPECT_EQ(object.Held(), 3);
    CVarBase set;
    set.SetValue(item);
    EXPECT_EQ(object.Held(), 4);
    CVarBase moved(std::move(copy));
    EXPECT_EQ(object.Held(), 4);
    EXPECT_FALSE(copy.IsSet());
    set = std::move(moved); // gives its own back
    EXPECT_EQ(object.Held(), 3);
    item = static_cast<const CVarBase&>(item);
    EXPECT_EQ(object.Held(), 3);
    CVarBase& same = item;
    item = std::move(same);
    EXPECT_EQ(object.Held(), 3);
    EXPECT_EQ(item.GetObjectValue(), &object);
  }
  EXPECT_EQ(object.Held(), 0);
}

TEST(ObjectReferences, every_other_setter_of_an_item_releases_once) {
  VARIANT number;
  VariantInit(&number);
  number.vt = VT_I4;
  struct Row {
    const char* name;
    std::function<void(CVarBase&)> write;
  };
  const Row rows[] = {
      {"text", [](CVarBase& item) { item.SetValue(CString(u"x")); }},
      {"units", [](CVarBase& item) { item.SetValue(CString(u"x").GetString()); }},
      {"double", [](CVarBase& item) { item.SetValue(1.5); }},
      {"integer", [](CVarBase& item) { item.SetValue(1L); }},
      {"boolean", [](CVarBase& item) { item.SetValue(false); }},
      {"null object", [](CVarBase& item) { item.SetValue(static_cast<IDispatch*>(nullptr)); }},
      {"item", [](CVarBase& item) { item.SetValue(CVarBase(2L)); }},
      {"item that is not set", [](CVarBase& item) { item.SetValue(CVarBase()); }},
      {"variant", [&](CVarBase& item) { EXPECT_TRUE(item.SetValue(number)); }},
      {"assigned double", [](CVarBase& item) { item = 1.5; }},
      {"assigned integer", [](CVarBase& item) { item = 1L; }},
      {"assigned boolean", [](CVarBase& item) { item = true; }},
      {"assigned text", [](CVarBase& item) { item = CString(u"x"); }},
      {"assigned item", [](CVarBase& item) { item = CVarBase(); }},
      {"released buffer",
       [](CVarBase& item) {
         EXPECT_NE(item.GetStringBuffer(10), nullptr);
         item.ReleaseStringBuffer();
       }},
  };
  for (const Row& row : rows) {
    CountingDispatch object;
    CVarBase item(&object);
    row.write(item);
    EXPECT_EQ(object.Held(), 0) << row.name;
    EXPECT_EQ(object.Released(), 1) << row.name;
  }
}

TEST(ObjectReferences, every_other_setter_of_a_variable_releases_once) {
  VARIANT number;
  VariantInit(&number);
  number.vt = VT_R8;
  const CBasicVariable source(5);
  struct Row {
    const char* name;
    std::function<void(CBasicVariable&)> write;
  };
  const Row rows[] = {
      {"text", [](CBasicVariable& variable) { variable.SetValue(CString(u"x")); }},
      {"units", [](CBasicVariable& variable) { variable.SetValue(CString(u"x").GetString()); }},
      {"double", [](CBasicVariable& variable) { variable.SetValue(1.5); }},
      {"integer", [](CBasicVariable& variable) { variable.SetValue(1); }},
      {"boolean", [](CBasicVariable& variable) { variable.SetValue(true); }},
      {"null object", [](CBasicVariable& variable) { variable.SetValue(static_cast<IDispatch*>(nullptr)); }},
      {"variable", [&](CBasicVariable& variable) { variable.SetValue(source); }},
      {"variant", [&](CBasicVariable& variable) { EXPECT_TRUE(variable.SetValue(number)); }},
      {"indexed text", [](CBasicVariable& variable) { variable.SetValue(CString(u"x"), 0); }},
      {"indexed double", [](CBasicVariable& variable) { variable.SetValue(1.5, 0); }},
      {"indexed integer", [](CBasicVariable& variable) { variable.SetValue(1, 0); }},
      {"indexed null object", [](CBasicVariable& variable) { variable.SetValue(static_cast<IDispatch*>(nullptr), 0); }},
      {"whole", [&](CBasicVariable& variable) { variable.Set(source); }},
      {"whole item", [](CBasicVariable& variable) { variable.Set(CVarBase(1L)); }},
      {"assigned", [&](CBasicVariable& variable) { variable = source; }},
      {"assigned character", [](CBasicVariable& variable) { variable = static_cast<unsigned short>(u'x'); }},
      {"assigned float", [](CBasicVariable& variable) { variable = 1.5F; }},
      {"released buffer",
       [](CBasicVariable& variable) {
         EXPECT_NE(variable.GetStringBuffer(10), nullptr);
         variable.ReleaseStringBuffer();
       }},
  };
  for (const Row& row : rows) {
    CountingDispatch object;
    CBasicVariable variable;
    variable.SetValue(&object);
    EXPECT_EQ(object.Held(), 1) << row.name;
    row.write(variable);
    EXPECT_EQ(object.Held(), 0) << row.name;
    EXPECT_EQ(object.Released(), 1) << row.name;
  }
}

TEST(ObjectReferences, storing_the_same_object_again_never_drops_to_none) {
  CountingDispatch object;
  CVarBase item(&object);
  object.Release(); // the item's is the only one left: a release first would end the object
  long lowest = 1;
  CountingDispatch watched([&] { lowest = std::min(lowest, watched.References()); });
  CVarBase other(&watched);
  watched.Release();
  lowest = 1;
  other.SetValue(&watched);
  EXPECT_EQ(lowest, 1);
  EXPECT_EQ(watched.References(), 1);
  item.SetValue(&object);
  EXPECT_EQ(object.References(), 1);
  object.AddRef();
  watched.AddRef();
}

TEST(ObjectReferences, replacing_one_object_by_another_moves_the_reference) {
  CountingDispatch first;
  CountingDispatch second;
  CBasicVariable variable;
  variable = &first;
  variable = &second;
  EXPECT_EQ(first.Held(), 0);
  EXPECT_EQ(second.Held(), 1);
}

TEST(ObjectReferences, added_objects_are_held_once_whatever_the_array_does) {
  CountingDispatch object;
  {
    CBasicVariable variable;
    EXPECT_EQ(variable.AddItem(&object), 0); // fills the placeholder
    EXPECT_EQ(object.Held(), 1);
    for (int i = 1; i < 100; ++i)
      EXPECT_EQ(variable.AddItem(&object), i);
    EXPECT_EQ(object.Held(), 100);
    for (int i = 0; i < 200; ++i)
      variable.AddItem();
    EXPECT_EQ(object.Held(), 100);
    variable.SetArraySize(1000);
    EXPECT_EQ(object.Held(), 100);
    EXPECT_EQ(variable.AddItem(variable), 1000);
    EXPECT_EQ(object.Held(), 101);
  }
  EXPECT_EQ(object.Held(), 0);
}

TEST(ObjectReferences, redim_releases_what_it_removes_and_nothing_else) {
  CountingDispatch object;
  CBasicVariable variable;
  for (int i = 0; i < 10; ++i)
    variable.AddItem(&object);
  variable.Redim(16000);
  variable.Redim(0);
  EXPECT_EQ(object.Held(), 10);
  variable.Redim(15999);
  EXPECT_EQ(object.Held(), 10);
  variable.Redim(4);
  EXPECT_EQ(object.Held(), 4);
  variable.Redim(1);
  EXPECT_EQ(object.Held(), 1);
}

TEST(ObjectReferences, whole_copies_hold_one_reference_an_item) {
  CountingDispatch object;
  CountingDispatch old;
  {
    CBasicVariable source;
    source.AddItem(&object);
    source.AddItem(&object);
    source.AddItem(&object);
    CBasicVariable constructed(source);
    EXPECT_EQ(object.Held(), 6);
    CBasicVariable assigned;
    for (int i = 0; i < 5; ++i)
      assigned.AddItem(&old);
    EXPECT_EQ(old.Held(), 5);
    assigned = source;
    EXPECT_EQ(old.Held(), 0);
    EXPECT_EQ(object.Held(), 9);
    assigned.Set(assigned);
    EXPECT_EQ(object.Held(), 9);
    CBasicVariable moved(std::move(constructed));
    EXPECT_EQ(object.Held(), 9);
    assigned.SetValue(moved); // one item over one item
    EXPECT_EQ(object.Held(), 9);
    moved.Set(CBasicVariable());
    EXPECT_EQ(object.Held(), 6);
  }
  EXPECT_EQ(object.Held(), 0);
}

TEST(ObjectReferences, indexed_write_stores_the_address_as_an_integer) {
  CountingDispatch object;
  CBasicVariable variable(1);
  variable.AddItem(2);
  variable.SetValue(&object, 1);
  EXPECT_EQ(object.Taken(), 0);
  variable.SetCurIndex(1);
  EXPECT_EQ(variable.GetType(), BVT_NUMBER);
  EXPECT_EQ(variable.GetObjectValue(), nullptr);
  EXPECT_EQ(variable.GetStringValue(), CVarBase(&object).GetStringValue());
}

TEST(ObjectReferences, end_of_an_object_finds_the_item_changed_or_not_set) {
  CVarBase item;
  BASICVARTYPE seen = BVT_NUMBER;
  CountingDispatch object([&] { seen = item.GetType(); });
  item.SetValue(&object);
  item.SetValue(5L);
  EXPECT_NE(seen, BVT_OBJECT);
  EXPECT_EQ(item.GetStringValue(), u"5");
}

TEST(ObjectReferences, many_random_operations_leave_no_reference_behind) {
  CountingDispatch object;
  unsigned state = 1;
  const auto next = [&state](unsigned limit) {
    state = state * 1664525U + 1013904223U;
    return (state >> 16) % limit;
  };
  {
    CBasicVariable variables[4];
    for (int step = 0; step < 20000; ++step) {
      CBasicVariable& target = variables[next(4)];
      const CBasicVariable& source = variables[next(4)];
      switch (next(9)) {
      case 0: target.SetValue(&object); break;
      case 1: target = source; break;
      case 2: target.SetValue(source); break;
      case 3: target.AddItem(&object); break;
      case 4: target.AddItem(source); break;
      case 5: target.Redim(static_cast<int>(next(12))); break;
      case 6: target.SetCurIndex(static_cast<int>(next(12))); break;
      case 7: target.SetValue(1); break;
      case 8: {
        CBasicVariable moved(std::move(target));
        target = moved;
        break;
      }
      }
      long expected = 0;
      for (const CBasicVariable& variable : variables) {
        CBasicVariable probe(variable);
        for (int i = 0; i < probe.GetNumItems(); ++i) {
          probe.SetCurIndex(i);
          expected += probe.GetObjectValue() != nullptr ? 1 : 0;
        }
      }
      ASSERT_EQ(object.Held(), expected) << "step " << step;
    }
  }
  EXPECT_EQ(object.Held(), 0);
}

} // namespace
