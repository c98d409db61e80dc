#include "brindle/collections.h"
#include "platform/collections.h"

#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <limits>
#include <memory>
#include <new>
#include <set>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

// Counts the living, and throws at the n-th copy.
struct Element {
  static int living;
  static int copiesUntilThrow; // negative: never

  int value = 0;

  Element() { ++living; }
  explicit Element(int number) : value(number) { ++living; }
  Element(const Element& other) : value(other.value) {
    Count();
    ++living;
  }
  Element& operator=(const Element& other) {
    Count();
    value = other.value;
    return *this;
  }
  ~Element() { --living; }

private:
  static void Count() {
    if (copiesUntilThrow >= 0 && copiesUntilThrow-- == 0)
      throw std::runtime_error("copy");
  }
};
int Element::living = 0;
int Element::copiesUntilThrow = -1;

class ElementArray : public ::testing::Test {
protected:
  using Array = CArray<Element, const Element&>;
  ElementArray() {
    EXPECT_EQ(Element::living, 0);
    Element::copiesUntilThrow = -1;
  }
  ~ElementArray() override {
    Element::copiesUntilThrow = -1;
    EXPECT_EQ(Element::living, 0);
  }
  static Array Numbers(int count) {
    Array array;
    for (int i = 0; i < count; ++i)
      array.Add(Element(i));
    return array;
  }
  static std::vector<int> ValuesOf(const Array& array) {
    std::vector<int> values;
    for (const Element& element : array)
      values.push_back(element.value);
    return values;
  }
};

using Values = std::vector<int>;

TEST_F(ElementArray, new_one_is_empty) {
  const Array array;
  EXPECT_EQ(array.GetSize(), 0);
  EXPECT_EQ(array.GetCount(), 0);
  EXPECT_EQ(array.GetUpperBound(), -1);
  EXPECT_TRUE(array.IsEmpty());
  EXPECT_EQ(array.GetData(), nullptr);
  EXPECT_EQ(array.begin(), array.end());
}

TEST_F(ElementArray, add_appends_and_gives_the_index) {
  Array array;
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(array.Add(Element(i)), i);
    ASSERT_EQ(Element::living, i + 1);
  }
  for (int i = 0; i < 1000; ++i)
    ASSERT_EQ(array[i].value, i);
  EXPECT_EQ(array.GetUpperBound(), 999);
}

TEST_F(ElementArray, own_element_can_be_added_while_it_grows) {
  Array array = Numbers(1);
  array[0].value = 7;
  for (int i = 0; i < 100; ++i)
    array.Add(array[0]);
  for (const Element& element : array)
    EXPECT_EQ(element.value, 7);
  array.InsertAt(50, array[0], 100);
  EXPECT_EQ(array.GetSize(), 201);
  EXPECT_EQ(array[149].value, 7);
}

TEST_F(ElementArray, size_grows_with_fresh_elements_and_shrinks) {
  Array array = Numbers(3);
  array.SetSize(5);
  EXPECT_EQ(ValuesOf(array), (Values{0, 1, 2, 0, 0}));
  array.SetSize(2, 100);
  EXPECT_EQ(ValuesOf(array), (Values{0, 1}));
  EXPECT_EQ(Element::living, 2);
  array.SetSize(3);
  EXPECT_EQ(ValuesOf(array), (Values{0, 1, 0}));
  array.SetSize(0);
  EXPECT_EQ(Element::living, 0);
  EXPECT_TRUE(array.IsEmpty());
}

TEST_F(ElementArray, set_at_grow_fills_up) {
  Array array;
  array.SetAtGrow(3, Element(7));
  EXPECT_EQ(ValuesOf(array), (Values{0, 0, 0, 7}));
  array.SetAtGrow(1, Element(5));
  EXPECT_EQ(ValuesOf(array), (Values{0, 5, 0, 7}));
  array.SetAt(0, Element(9));
  EXPECT_EQ(array.GetAt(0).value, 9);
  array.ElementAt(0).value = 4;
  EXPECT_EQ(std::as_const(array).GetAt(0).value, 4);
}

TEST_F(ElementArray, elements_are_inserted_and_removed_anywhere) {
  Array array = Numbers(4);
  array.InsertAt(1, Element(9));
  EXPECT_EQ(ValuesOf(array), (Values{0, 9, 1, 2, 3}));
  array.InsertAt(5, Element(8), 2);
  EXPECT_EQ(ValuesOf(array), (Values{0, 9, 1, 2, 3, 8, 8}));
  array.InsertAt(9, Element(7)); // behind the end: the gap is filled with fresh ones
  EXPECT_EQ(ValuesOf(array), (Values{0, 9, 1, 2, 3, 8, 8, 0, 0, 7}));
  array.InsertAt(0, Element(6), 0);
  EXPECT_EQ(array.GetSize(), 10);
  array.RemoveAt(0);
  EXPECT_EQ(ValuesOf(array), (Values{9, 1, 2, 3, 8, 8, 0, 0, 7}));
  array.RemoveAt(4, 5);
  EXPECT_EQ(ValuesOf(array), (Values{9, 1, 2, 3}));
  array.RemoveAt(1, 0);
  array.RemoveAt(3);
  EXPECT_EQ(ValuesOf(array), (Values{9, 1, 2}));
  EXPECT_EQ(Element::living, 3);
}

TEST_F(ElementArray, copies_are_their_own_and_moves_leave_an_empty_one) {
  Array array = Numbers(3);
  Array copy(array);
  EXPECT_EQ(Element::living, 6);
  copy[0].value = 9;
  EXPECT_EQ(ValuesOf(array), (Values{0, 1, 2}));
  Array assigned = Numbers(10);
  assigned = array;
  EXPECT_EQ(ValuesOf(assigned), (Values{0, 1, 2}));
  assigned = static_cast<const Array&>(assigned);
  EXPECT_EQ(ValuesOf(assigned), (Values{0, 1, 2}));
  const Array moved(std::move(assigned));
  EXPECT_EQ(ValuesOf(moved), (Values{0, 1, 2}));
  EXPECT_EQ(assigned.GetSize(), 0);
  assigned.Add(Element(5));
  EXPECT_EQ(ValuesOf(assigned), Values{5});
}

TEST_F(ElementArray, arrays_can_be_appended_also_to_themselves) {
  Array array = Numbers(3);
  EXPECT_EQ(array.Append(Numbers(2)), 3);
  EXPECT_EQ(ValuesOf(array), (Values{0, 1, 2, 0, 1}));
  EXPECT_EQ(array.Append(array), 5);
  EXPECT_EQ(ValuesOf(array), (Values{0, 1, 2, 0, 1, 0, 1, 2, 0, 1}));
  array.Copy(Array());
  EXPECT_TRUE(array.IsEmpty());
}

TEST_F(ElementArray, room_is_taken_and_given_back) {
  Array array;
  array.Reserve(100);
  EXPECT_EQ(array.GetSize(), 0);
  array.Add(Element(1));
  const Element* data = array.GetData();
  for (int i = 0; i < 99; ++i)
    array.Add(Element(i));
  EXPECT_EQ(array.GetData(), data);
  array.SetSize(1);
  array.FreeExtra();
  EXPECT_EQ(ValuesOf(array), Values{1});
  array.SetSize(0);
  array.FreeExtra();
  EXPECT_EQ(array.GetData(), nullptr);
  array.RemoveAll();
  array.RemoveAll();
  EXPECT_EQ(array.GetSize(), 0);
}

// Whatever copy fails, nothing is counted twice or left behind.
TEST_F(ElementArray, element_that_throws_leaves_the_array_as_it_was) {
  struct Row {
    const char* name;
    void (*change)(Array&, const Array&);
  };
  const Row rows[] = {
      {"add", [](Array& array, const Array&) { array.Add(Element(9)); }},
      {"append", [](Array& array, const Array& other) { array.Append(other); }},
      {"reserve", [](Array& array, const Array&) { array.Reserve(1000); }},
      {"size", [](Array& array, const Array&) { array.SetSize(1000); }},
  };
  for (const Row& row : rows) {
    for (int failing = 0; failing < 30; ++failing) {
      Element::copiesUntilThrow = -1;
      Array array = Numbers(10); // 10 fills the room exactly
      array.FreeExtra();
      const Array other = Numbers(5);
      Element::copiesUntilThrow = failing;
      bool thrown = false;
      try {
        row.change(array, other);
      } catch (const std::runtime_error&) {
        thrown = true;
      }
      Element::copiesUntilThrow = -1;
      if (!thrown)
        break;
      EXPECT_EQ(ValuesOf(array), (Values{0, 1, 2, 3, 4, 5, 6, 7, 8, 9})) << row.name << " " << failing;
      EXPECT_EQ(Element::living, 15) << row.name << " " << failing;
    }
  }
}

TEST(Array, growth_beyond_memory_leaves_it_as_it_was) {
  struct Huge {
    char bytes[(1LL << 40)];
  };
  CArray<Huge, const Huge&> array;
  EXPECT_THROW(array.Reserve(std::numeric_limits<int>::max()), std::bad_alloc);
  EXPECT_EQ(array.GetSize(), 0);
}

TEST(Array, booleans_are_addressable_elements) {
  static_assert(std::is_same_v<decltype(std::declval<CArray<bool, bool>&>()[0]), bool&>);
  CArray<bool, bool> array;
  for (int i = 0; i < 100; ++i)
    array.Add(i % 3 == 0);
  bool* third = &array[3];
  EXPECT_TRUE(*third);
  *third = false;
  EXPECT_FALSE(array.GetAt(3));
  EXPECT_EQ(array.GetData() + 3, third);
  array.SetSize(200);
  EXPECT_FALSE(array[199]);
}

TEST(Array, elements_that_only_move_pointers_keep_their_place_on_the_heap) {
  CArray<std::shared_ptr<int>, const std::shared_ptr<int>&> array;
  const auto number = std::make_shared<int>(5);
  for (int i = 0; i < 100; ++i)
    array.Add(number);
  EXPECT_EQ(number.use_count(), 101);
  array.RemoveAt(10, 50);
  EXPECT_EQ(number.use_count(), 51);
  array.RemoveAll();
  EXPECT_EQ(number.use_count(), 1);
}

TEST(StringArray, holds_texts) {
  CStringArray texts;
  EXPECT_EQ(texts.Add(CString(u"a")), 0);
  EXPECT_EQ(texts.Add(texts[0]), 1);
  texts.SetSize(3);
  EXPECT_TRUE(texts[2].IsEmpty());
  CStringArray copy(texts);
  copy[0] += u'b';
  EXPECT_EQ(texts[0], u"a");
  EXPECT_EQ(copy[0], u"ab");
}

TEST(MapStringToPtr, keys_differ_by_letter_case) {
  CMapStringToPtr map;
  int first = 1;
  int second = 2;
  map.SetAt(CString(u"key"), &first);
  map.SetAt(CString(u"Key"), &second);
  EXPECT_EQ(map.GetCount(), 2);
  EXPECT_EQ(map.Find<int>(CString(u"key")), &first);
  EXPECT_EQ(map.Find<int>(CString(u"Key")), &second);
  EXPECT_EQ(map.Find<int>(CString(u"KEY")), nullptr);
  void* found = &first;
  EXPECT_FALSE(map.Lookup(CString(u"other"), found));
  EXPECT_EQ(found, &first);
  EXPECT_TRUE(map.Lookup(CString(u"Key"), found));
  EXPECT_EQ(found, &second);
}

TEST(MapStringToPtr, entries_are_replaced_and_removed) {
  CMapStringToPtr map;
  int first = 1;
  int second = 2;
  EXPECT_TRUE(map.IsEmpty());
  map.SetAt(CString(u"key"), &first);
  map.SetAt(CString(u"key"), &second);
  EXPECT_EQ(map.GetCount(), 1);
  EXPECT_EQ(map.Find<int>(CString(u"key")), &second);
  EXPECT_TRUE(map.RemoveKey(CString(u"key")));
  EXPECT_FALSE(map.RemoveKey(CString(u"key")));
  for (int i = 0; i < 1000; ++i) {
    CString key;
    key.Format(u"key%d", i);
    map.SetAt(key, &first);
  }
  std::set<CString> keys;
  for (const auto& entry : map)
    keys.insert(entry.first);
  EXPECT_EQ(keys.size(), 1000U);
  map.RemoveAll();
  EXPECT_TRUE(map.IsEmpty());
}

TEST(PtrList, keeps_the_order_and_removes_the_last_of_equals) {
  CPtrList list;
  int values[3] = {};
  list.AddTail(&values[1]);
  list.AddTail(&values[2]);
  list.AddHead(&values[0]);
  list.AddTail(&values[0]);
  EXPECT_EQ(list.GetCount(), 4);
  EXPECT_TRUE(list.Contains(&values[2]));
  EXPECT_TRUE(list.RemoveLast(&values[0]));
  EXPECT_EQ(std::vector<void*>(list.begin(), list.end()), (std::vector<void*>{&values[0], &values[1], &values[2]}));
  EXPECT_TRUE(list.RemoveLast(&values[0]));
  EXPECT_FALSE(list.RemoveLast(&values[0]));
  EXPECT_FALSE(list.Contains(&values[0]));
  list.RemoveAll();
  EXPECT_TRUE(list.IsEmpty());
}

// Whether another thread waits for the section, asked without waiting for long.
bool IsFree(CCriticalSection& section) {
  auto taken = std::async(std::launch::async, [&section] { const CSingleLock lock(section, true); });
  return taken.wait_for(std::chrono::milliseconds(50)) == std::future_status::ready;
}

TEST(CriticalSection, lock_object_takes_it_only_when_told_to) {
  CCriticalSection section;
  const CSingleLock untaken(section, false);
  EXPECT_TRUE(IsFree(section));
}

TEST(CriticalSection, owner_may_take_it_again_and_it_is_free_after_the_last_unlock) {
  CCriticalSection section;
  {
    const CSingleLock outer(section, true);
    const CSingleLock inner(section, true);
    CSingleLock later(section, false);
    later.Lock();
    section.Lock();
    section.Unlock();
  }
  EXPECT_TRUE(IsFree(section));
}

} // namespace
