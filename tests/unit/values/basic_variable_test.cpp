#include "brindle/variable.h"

#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

static_assert(sizeof(CVarBase) < 24, "an element of a 16,000-item array of numbers");

// The items' texts, current index left as it was.
std::vector<std::string> TextsOf(const CBasicVariable& variable) {
  CBasicVariable copy(variable);
  std::vector<std::string> texts;
  for (int i = 0; i < copy.GetNumItems(); ++i) {
    copy.SetCurIndex(i);
    texts.push_back(copy.GetStringValue().ToUtf8());
  }
  return texts;
}

using Texts = std::vector<std::string>;

TEST(BasicVariable, new_one_holds_one_item_that_is_not_set) {
  const CBasicVariable variable;
  EXPECT_EQ(variable.GetNumItems(), 1);
  EXPECT_FALSE(variable.IsArray());
  EXPECT_EQ(variable.GetCurIndex(), 0);
  EXPECT_EQ(variable.GetType(), BVT_NONE);
  EXPECT_EQ(variable.GetStringValue(), u"");
  EXPECT_EQ(variable.GetNumberValue(), 0.0);
  EXPECT_EQ(variable.GetObjectValue(), nullptr);
}

TEST(BasicVariable, constructors_store_the_kind_of_their_argument) {
  EXPECT_EQ(CBasicVariable(5).GetStringValue(), u"5");
  EXPECT_EQ(CBasicVariable(-5).GetStringValue(), u"-5");
  EXPECT_EQ(CBasicVariable(5.0).GetStringValue(), u"5.000000");
  EXPECT_EQ(CBasicVariable(5UL).GetStringValue(), u"5");
  EXPECT_EQ(CBasicVariable(0xFFFFFFFFUL).GetStringValue(), u"-1");
  EXPECT_EQ(CBasicVariable(true).GetStringValue(), u"True");
  EXPECT_EQ(CBasicVariable(false).GetType(), BVT_NUMBER);
  EXPECT_EQ(CBasicVariable(u"text").GetStringValue(), u"text");
  EXPECT_EQ(CBasicVariable("text").GetStringValue(), u"text");
  EXPECT_EQ(CBasicVariable(CString(u"text")).GetStringValue(), u"text");
  EXPECT_EQ(CBasicVariable(CString(u"text").GetString()).GetStringValue(), u"text");
}

TEST(BasicVariable, assignments_store_the_kind_of_their_argument) {
  CBasicVariable variable;
  EXPECT_EQ(&(variable = 5), &variable);
  EXPECT_EQ(variable.GetStringValue(), u"5");
  variable = 2.5;
  EXPECT_EQ(variable.GetStringValue(), u"2.500000");
  variable = 0x80000000UL;
  EXPECT_EQ(variable.GetStringValue(), u"-2147483648");
  variable = true;
  EXPECT_EQ(variable.GetStringValue(), u"True");
  variable = u"text";
  EXPECT_EQ(variable.GetStringValue(), u"text");
  variable = CString(u"more");
  EXPECT_EQ(variable.GetStringValue(), u"more");
  const unsigned short unit = 0xFFFE;
  variable = unit;
  EXPECT_EQ(variable.GetStringValue(), u"65534");
  const char byte = static_cast<char>(0xFE);
  variable = byte;
  EXPECT_EQ(variable.GetStringValue(), u"-2");
  const float single = 0.1F;
  variable = single;
  EXPECT_EQ(variable.GetNumberValue(), static_cast<double>(single));
  EXPECT_EQ(variable.GetNumItems(), 1);
}

TEST(BasicVariable, plus_plus_increments_in_place) {
  CBasicVariable variable(5);
  EXPECT_EQ(&++variable, &variable);
  EXPECT_EQ(variable.GetStringValue(), u"6");
  CBasicVariable truth(true);
  EXPECT_FALSE(truth.Increment());
  EXPECT_EQ(truth.GetStringValue(), u"True");
}

TEST(BasicVariable, first_value_added_fills_the_placeholder) {
  CBasicVariable variable;
  EXPECT_EQ(variable.AddItem(5), 0);
  EXPECT_EQ(variable.GetNumItems(), 1);
  EXPECT_EQ(variable.AddItem(6), 1);
  EXPECT_EQ(variable.GetNumItems(), 2);
  EXPECT_TRUE(variable.IsArray());
  EXPECT_EQ(TextsOf(variable), (Texts{"5", "6"}));
  EXPECT_EQ(variable.GetCurIndex(), 0);
}

TEST(BasicVariable, item_added_without_a_value_keeps_the_placeholder) {
  CBasicVariable variable;
  EXPECT_EQ(variable.AddItem(), 1);
  EXPECT_EQ(variable.GetNumItems(), 2);
  EXPECT_EQ(variable.AddItem(5), 2); // two items and more count as set
  EXPECT_EQ(TextsOf(variable), (Texts{"", "", "5"}));
}

TEST(BasicVariable, every_kind_can_be_added) {
  CBasicVariable variable(1);
  EXPECT_EQ(variable.AddItem(2.5), 1);
  EXPECT_EQ(variable.AddItem(0xFFFFFFFFUL), 2);
  EXPECT_EQ(variable.AddItem(true), 3);
  EXPECT_EQ(variable.AddItem(u"a"), 4);
  EXPECT_EQ(variable.AddItem(CString(u"b")), 5);
  EXPECT_EQ(variable.AddItem(CString(u"c").GetString()), 6);
  EXPECT_EQ(variable.AddItem(static_cast<IDispatch*>(nullptr)), 7);
  EXPECT_EQ(variable.AddItem("d"), 8);
  EXPECT_EQ(TextsOf(variable), (Texts{"1", "2.500000", "-1", "True", "a", "b", "c", "0", "d"}));
}

TEST(BasicVariable, whether_it_is_set_depends_on_item_0_not_on_the_current_one) {
  CBasicVariable cleared(7);
  cleared.SetValue(CBasicVariable()); // item 0 is not set again
  EXPECT_EQ(cleared.AddItem(8), 0);
  EXPECT_EQ(cleared.GetNumItems(), 1);
  CBasicVariable falseValue(false);
  EXPECT_EQ(falseValue.AddItem(8), 1);
  CBasicVariable emptyText(u"");
  EXPECT_EQ(emptyText.AddItem(8), 1);
}

TEST(BasicVariable, adding_a_variable_takes_the_item_at_the_own_index) {
  CBasicVariable source(10);
  source.AddItem(11);
  source.AddItem(12);
  source.SetCurIndex(2);

  CBasicVariable target(1);
  target.AddItem(2);
  target.SetCurIndex(1);
  EXPECT_EQ(target.AddItem(source), 2);
  EXPECT_EQ(TextsOf(target), (Texts{"1", "2", "11"}));

  CBasicVariable unset;
  EXPECT_EQ(unset.AddItem(source), 0);
  EXPECT_EQ(TextsOf(unset), (Texts{"10"}));
}

TEST(BasicVariable, adding_a_variable_without_that_item_adds_one_that_is_not_set) {
  CBasicVariable target(1);
  target.AddItem(2);
  target.SetCurIndex(1);
  EXPECT_EQ(target.AddItem(CBasicVariable(9)), 2);
  target.SetCurIndex(2);
  EXPECT_EQ(target.GetType(), BVT_NONE);
}

TEST(BasicVariable, own_item_can_be_added_while_the_array_grows) {
  CBasicVariable variable(u"text that is long enough to be kept outside");
  for (int i = 1; i < 100; ++i)
    EXPECT_EQ(variable.AddItem(variable), i);
  for (const std::string& text : TextsOf(variable))
    EXPECT_EQ(text, "text that is long enough to be kept outside");
}

TEST(BasicVariable, set_cur_index_ignores_what_is_no_item) {
  CBasicVariable variable(1);
  variable.AddItem(2);
  variable.AddItem(3);
  variable.SetCurIndex(2);
  for (const int index : {3, 4, -1, -2147483647 - 1, 2147483647}) {
    variable.SetCurIndex(index);
    EXPECT_EQ(variable.GetCurIndex(), 2) << index;
  }
  variable.SetCurIndex(0);
  EXPECT_EQ(variable.GetCurIndex(), 0);
}

TEST(BasicVariable, members_without_index_work_on_the_current_item) {
  CBasicVariable variable;
  variable.SetArraySize(3);
  variable.SetCurIndex(1);
  variable.SetValue(5);
  EXPECT_TRUE(variable.Increment());
  EXPECT_EQ(variable.GetNumberValue(), 6.0);
  EXPECT_EQ(variable.GetType(), BVT_NUMBER);
  EXPECT_EQ(TextsOf(variable), (Texts{"", "6", ""}));
  EXPECT_EQ(variable.GetCurIndex(), 1);
}

TEST(BasicVariable, set_value_copies_current_item_to_current_item) {
  CBasicVariable source(1);
  source.AddItem(2);
  source.SetCurIndex(1);
  CBasicVariable target(u"a");
  target.AddItem(u"b");
  target.AddItem(u"c");
  target.SetCurIndex(2);
  target.SetValue(source);
  EXPECT_EQ(TextsOf(target), (Texts{"a", "b", "2"}));
  target.SetValue(target);
  EXPECT_EQ(TextsOf(target), (Texts{"a", "b", "2"}));
}

TEST(BasicVariable, indexed_writes_leave_the_current_index) {
  CBasicVariable variable;
  variable.SetArraySize(5);
  variable.SetCurIndex(4);
  variable.SetValue(CString(u"a"), 0);
  variable.SetValue(CString(u"b").GetString(), 1);
  variable.SetValue(2.5, 2);
  variable.SetValue(7, 3);
  EXPECT_EQ(TextsOf(variable), (Texts{"a", "b", "2.500000", "7", ""}));
  EXPECT_EQ(variable.GetCurIndex(), 4);
}

TEST(BasicVariable, indexed_write_outside_the_items_is_ignored) {
  CBasicVariable variable(1);
  variable.SetValue(2, 1);
  variable.SetValue(2.0, -1);
  variable.SetValue(CString(u"x"), 16000);
  EXPECT_EQ(TextsOf(variable), (Texts{"1"}));
}

TEST(BasicVariable, set_array_size_never_shrinks_and_keeps_the_index) {
  CBasicVariable variable(1);
  variable.SetArraySize(4);
  EXPECT_EQ(variable.GetNumItems(), 4);
  variable.SetCurIndex(3);
  variable.SetArraySize(2);
  variable.SetArraySize(0);
  variable.SetArraySize(-5);
  EXPECT_EQ(variable.GetNumItems(), 4);
  EXPECT_EQ(variable.GetCurIndex(), 3);
  EXPECT_EQ(TextsOf(variable), (Texts{"1", "", "", ""}));
  variable.SetArraySize(20000);
  EXPECT_EQ(variable.GetNumItems(), 20000);
}

TEST(BasicVariable, redim_takes_1_to_15999_and_rewinds_in_any_case) {
  struct Row {
    int size;
    int expected;
  };
  const Row rows[] = {{1, 1},     {2, 2},     {15999, 15999},  {0, 3},          {-1, 3},
                      {16000, 3}, {16001, 3}, {2147483647, 3}, {-2147483647, 3}};
  for (const Row& row : rows) {
    CBasicVariable variable(u"first");
    variable.AddItem(2);
    variable.AddItem(3);
    variable.SetCurIndex(2);
    variable.Redim(row.size);
    EXPECT_EQ(variable.GetNumItems(), row.expected) << row.size;
    EXPECT_EQ(variable.GetCurIndex(), 0) << row.size;
    EXPECT_EQ(variable.GetStringValue(), u"first") << row.size;
  }
}

TEST(BasicVariable, redim_keeps_what_survives_and_adds_items_that_are_not_set) {
  CBasicVariable variable(1);
  variable.AddItem(u"two");
  variable.AddItem(3.0);
  variable.Redim(2);
  EXPECT_EQ(TextsOf(variable), (Texts{"1", "two"}));
  variable.Redim(4);
  EXPECT_EQ(TextsOf(variable), (Texts{"1", "two", "", ""}));
  variable.SetCurIndex(2);
  EXPECT_EQ(variable.GetType(), BVT_NONE);
  variable.Redim(1);
  EXPECT_FALSE(variable.IsArray());
  EXPECT_EQ(TextsOf(variable), (Texts{"1"}));
  EXPECT_EQ(variable.AddItem(2), 1);
}

TEST(BasicVariable, whole_copy_takes_items_index_and_user_data) {
  CBasicVariable source(1);
  source.AddItem(u"two");
  source.AddItem();
  source.SetCurIndex(1);
  source.m_userData = 0x123456789ABCDEF0ULL;

  CBasicVariable assigned(u"old");
  assigned = source;
  CBasicVariable set;
  set.SetArraySize(10);
  set.Set(source);
  const CBasicVariable constructed(source);
  for (const CBasicVariable* copy : {&std::as_const(assigned), &std::as_const(set), &constructed}) {
    EXPECT_EQ(TextsOf(*copy), (Texts{"1", "two", ""}));
    EXPECT_EQ(copy->GetCurIndex(), 1);
    EXPECT_EQ(copy->m_userData, 0x123456789ABCDEF0ULL);
  }
  // Copies do not hang together.
  assigned.SetValue(u"changed");
  EXPECT_EQ(TextsOf(source), (Texts{"1", "two", ""}));
}

TEST(BasicVariable, whole_copy_of_itself_changes_nothing) {
  CBasicVariable variable(1);
  variable.AddItem(2);
  variable.SetCurIndex(1);
  variable.Set(variable);
  EXPECT_EQ(TextsOf(variable), (Texts{"1", "2"}));
  EXPECT_EQ(variable.GetCurIndex(), 1);
}

TEST(BasicVariable, whole_copy_of_a_scalar_makes_an_array_a_scalar) {
  CBasicVariable array(1);
  array.SetArraySize(100);
  array.SetCurIndex(99);
  array.Set(CBasicVariable(u"one"));
  EXPECT_EQ(TextsOf(array), (Texts{"one"}));
  EXPECT_EQ(array.GetCurIndex(), 0);
  array.SetArraySize(50);
  array.SetCurIndex(40);
  array.Set(CVarBase(7L));
  EXPECT_EQ(TextsOf(array), (Texts{"7"}));
  EXPECT_EQ(array.GetCurIndex(), 0);
}

TEST(BasicVariable, moved_from_variable_is_usable) {
  CBasicVariable array(1);
  array.AddItem(2);
  array.SetCurIndex(1);
  CBasicVariable moved(std::move(array));
  EXPECT_EQ(TextsOf(moved), (Texts{"1", "2"}));
  EXPECT_EQ(moved.GetCurIndex(), 1);
  EXPECT_EQ(array.GetNumItems(), 1);
  EXPECT_EQ(array.GetCurIndex(), 0);
  EXPECT_EQ(array.GetType(), BVT_NONE);
  array.SetValue(u"again");
  EXPECT_EQ(array.GetStringValue(), u"again");
}

TEST(BasicVariable, string_buffer_works_on_the_current_item) {
  CBasicVariable variable(1);
  variable.AddItem(2);
  variable.SetCurIndex(1);
  unsigned short* buffer = variable.GetStringBuffer(10);
  EXPECT_EQ(buffer[0], u'2');
  buffer[1] = u'!';
  buffer[2] = 0;
  variable.ReleaseStringBuffer();
  EXPECT_EQ(TextsOf(variable), (Texts{"1", "2!"}));
}

TEST(BasicVariable, set_value_and_set_copy_the_text_buffer) {
  CBasicVariable source(u"text");
  source.GetStringBuffer(10)[0] = u'T';
  CBasicVariable item;
  item.SetValue(source);
  EXPECT_EQ(item.GetStringValue(), u"text");
  item.ReleaseStringBuffer();
  EXPECT_EQ(item.GetStringValue(), u"Text");
  CBasicVariable whole;
  whole.Set(source);
  whole.ReleaseStringBuffer();
  EXPECT_EQ(whole.GetStringValue(), u"Text");
  CBasicVariable constructed(source);
  constructed.ReleaseStringBuffer();
  EXPECT_EQ(constructed.GetStringValue(), u"Text");
}

class RecordVariable : public ::testing::Test {
protected:
  RecordVariable() {
    m_record.SetArraySize(3);
    const char16_t* const names[] = {u"id", u"name", u"größe"};
    for (int i = 0; i < 3; ++i) {
      m_record.SetCurIndex(i);
      m_record.SetValue(i);
      m_record.SetFieldName(CString(names[i]));
    }
    m_record.SetCurIndex(0);
  }
  CBasicVariable m_record;
};

TEST_F(RecordVariable, field_is_found_whatever_its_letter_case) {
  EXPECT_TRUE(m_record.SetCurField(CString(u"NAME")));
  EXPECT_EQ(m_record.GetCurIndex(), 1);
  EXPECT_TRUE(m_record.SetCurField(CString(u"GRÖßE")));
  EXPECT_EQ(m_record.GetCurIndex(), 2);
  EXPECT_TRUE(m_record.SetCurField(CString(u"Id")));
  EXPECT_EQ(m_record.GetCurIndex(), 0);
}

TEST_F(RecordVariable, unknown_field_leaves_the_current_index) {
  m_record.SetCurIndex(2);
  for (const char16_t* name : {u"", u"nam", u"names", u"other"}) {
    EXPECT_FALSE(m_record.SetCurField(CString(name)));
    EXPECT_EQ(m_record.GetCurIndex(), 2);
  }
}

TEST_F(RecordVariable, first_of_two_equal_names_is_found) {
  m_record.SetCurIndex(2);
  m_record.SetFieldName(CString(u"ID"));
  EXPECT_TRUE(m_record.SetCurField(CString(u"id")));
  EXPECT_EQ(m_record.GetCurIndex(), 0);
}

TEST_F(RecordVariable, field_name_reads_as_the_empty_text) {
  EXPECT_EQ(m_record.GetFieldName(), u"");
}

TEST_F(RecordVariable, writing_values_keeps_the_names) {
  m_record.SetCurIndex(1);
  m_record.SetValue(CBasicVariable(u"text"));
  m_record.SetValue(5);
  m_record.SetValue(2.5, 0);
  EXPECT_TRUE(m_record.SetCurField(CString(u"name")));
  EXPECT_TRUE(m_record.SetCurField(CString(u"id")));
  m_record.AddItem(u"more");
  EXPECT_TRUE(m_record.SetCurField(CString(u"größe")));
}

TEST_F(RecordVariable, copies_have_no_names) {
  CBasicVariable constructed(m_record);
  CBasicVariable assigned;
  assigned = m_record;
  EXPECT_FALSE(constructed.SetCurField(CString(u"name")));
  EXPECT_FALSE(assigned.SetCurField(CString(u"name")));
  EXPECT_EQ(constructed.GetNumItems(), 3);
  EXPECT_TRUE(m_record.SetCurField(CString(u"name")));
}

TEST_F(RecordVariable, copy_into_a_record_drops_its_names) {
  CBasicVariable plain;
  plain.SetArraySize(3);
  m_record.Set(plain);
  EXPECT_FALSE(m_record.SetCurField(CString(u"name")));
}

TEST_F(RecordVariable, redim_drops_the_names_of_the_items_it_removes) {
  m_record.Redim(1);
  m_record.Redim(3);
  EXPECT_TRUE(m_record.SetCurField(CString(u"id")));
  EXPECT_FALSE(m_record.SetCurField(CString(u"name")));
}

TEST_F(RecordVariable, items_without_a_name_have_the_empty_one) {
  CBasicVariable plain(1);
  EXPECT_TRUE(plain.SetCurField(CString()));
  m_record.AddItem(4);
  EXPECT_TRUE(m_record.SetCurField(CString()));
  EXPECT_EQ(m_record.GetCurIndex(), 3);
}

} // namespace
