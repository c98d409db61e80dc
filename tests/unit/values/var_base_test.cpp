#include "brindle/variable.h"

#include "support/counting_dispatch.h"
#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

static_assert(sizeof(CVarBase) <= 16, "arrays of 16,000 numbers are kept on small devices");
static_assert(!std::is_polymorphic_v<CVarBase> && !std::is_polymorphic_v<CBasicVariable>);
static_assert(std::is_nothrow_move_constructible_v<CVarBase> && std::is_nothrow_move_assignable_v<CVarBase>);
static_assert(sizeof(BASICVARTYPE) == 4);
static_assert(BVT_NONE == 0 && BVT_NUMBER == 1 && BVT_STRING == 2 && BVT_OBJECT == 3);

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

struct ReadingRow {
  std::string name;
  CVarBase item;
  BASICVARTYPE type;
  const char16_t* text;
  double number;
  long integer;
};

void ExpectReading(const ReadingRow& row) {
  EXPECT_EQ(row.item.GetType(), row.type) << row.name;
  EXPECT_EQ(row.item.IsSet(), row.type != BVT_NONE) << row.name;
  EXPECT_EQ(row.item.GetStringValue(), CString(row.text)) << row.name;
  if (std::isnan(row.number))
    EXPECT_TRUE(std::isnan(row.item.GetDoubleValue())) << row.name;
  else
    EXPECT_EQ(row.item.GetDoubleValue(), row.number) << row.name;
  EXPECT_EQ(row.item.GetLongValue(), row.integer) << row.name;
  EXPECT_EQ(row.item.GetObjectValue(), nullptr) << row.name;
}

TEST(VarBase, scalars_read_as_text_number_and_integer) {
  const ReadingRow rows[] = {
      {"not set", CVarBase(), BVT_NONE, u"", 0.0, 0},
      {"integer", CVarBase(7L), BVT_NUMBER, u"7", 7.0, 7},
      {"negative integer", CVarBase(-7L), BVT_NUMBER, u"-7", -7.0, -7},
      {"largest integer", CVarBase(2147483647L), BVT_NUMBER, u"2147483647", 2147483647.0, 2147483647L},
      {"smallest integer", CVarBase(-2147483648L), BVT_NUMBER, u"-2147483648", -2147483648.0, -2147483648L},
      {"double", CVarBase(1.5), BVT_NUMBER, u"1.500000", 1.5, 1},
      {"whole double", CVarBase(3.0), BVT_NUMBER, u"3.000000", 3.0, 3},
      {"negative fraction", CVarBase(-0.25), BVT_NUMBER, u"-0.250000", -0.25, 0},
      {"negative double", CVarBase(-2.9), BVT_NUMBER, u"-2.900000", -2.9, -2},
      {"negative zero", CVarBase(-0.0), BVT_NUMBER, u"-0.000000", -0.0, 0},
      {"two and a half", CVarBase(2.5), BVT_NUMBER, u"2.500000", 2.5, 2},
      {"seventh decimal", CVarBase(0.0000005), BVT_NUMBER, u"0.000000", 0.0000005, 0},
      {"rounded up", CVarBase(0.0000007), BVT_NUMBER, u"0.000001", 0.0000007, 0},
      {"no exponent", CVarBase(1e20), BVT_NUMBER, u"100000000000000000000.000000", 1e20, 2147483647L},
      {"saturated below", CVarBase(-1e20), BVT_NUMBER, u"-100000000000000000000.000000", -1e20, -2147483648L},
      {"infinity", CVarBase(kInfinity), BVT_NUMBER, u"inf", kInfinity, 2147483647L},
      {"negative infinity", CVarBase(-kInfinity), BVT_NUMBER, u"-inf", -kInfinity, -2147483648L},
      {"not a number", CVarBase(kNotANumber), BVT_NUMBER, u"nan", kNotANumber, 0},
      {"negative not a number", CVarBase(-kNotANumber), BVT_NUMBER, u"nan", kNotANumber, 0},
      {"true", CVarBase(true), BVT_NUMBER, u"True", 1.0, 1},
      {"false", CVarBase(false), BVT_NUMBER, u"False", 0.0, 0},
      {"empty text", CVarBase(u""), BVT_STRING, u"", 0.0, 0},
      {"digits with a tail", CVarBase(u"12abc"), BVT_STRING, u"12abc", 12.0, 12},
      {"no digits", CVarBase(u"abc"), BVT_STRING, u"abc", 0.0, 0},
      {"blank and exponent", CVarBase(u" 3.5e2"), BVT_STRING, u" 3.5e2", 350.0, 3},
      {"hexadecimal", CVarBase(u"0x10"), BVT_STRING, u"0x10", 0.0, 0},
      {"word inf", CVarBase(u"inf"), BVT_STRING, u"inf", 0.0, 0},
      {"word nan", CVarBase(u"nan"), BVT_STRING, u"nan", 0.0, 0},
      {"comma", CVarBase(u"1,5"), BVT_STRING, u"1,5", 1.0, 1},
      {"signed text", CVarBase(u"\t-12.75x"), BVT_STRING, u"\t-12.75x", -12.75, -12},
      {"large text", CVarBase(u"99999999999"), BVT_STRING, u"99999999999", 99999999999.0, 2147483647L},
      {"unsigned short text", CVarBase(CString(u"é").GetString()), BVT_STRING, u"é", 0.0, 0},
      {"8-bit text", CVarBase("5 m"), BVT_STRING, u"5 m", 5.0, 5},
  };
  for (const ReadingRow& row : rows)
    ExpectReading(row);
}

TEST(VarBase, setters_and_assignments_store_what_the_constructors_store) {
  const CVarBase starts[] = {CVarBase(), CVarBase(1L), CVarBase(1.5), CVarBase(true), CVarBase(u"text")};
  for (const CVarBase& start : starts) {
    CVarBase item(start);
    item.SetValue(5L);
    EXPECT_EQ(item.GetStringValue(), u"5");
    item = start;
    item.SetValue(5.0);
    EXPECT_EQ(item.GetStringValue(), u"5.000000");
    item = start;
    item.SetValue(true);
    EXPECT_EQ(item.GetStringValue(), u"True");
    item = start;
    item.SetValue(u"new");
    EXPECT_EQ(item.GetStringValue(), u"new");
    item = start;
    item.SetValue(CString(u"newer").GetString());
    EXPECT_EQ(item.GetStringValue(), u"newer");
    item = start;
    item = 6L;
    EXPECT_EQ(item.GetStringValue(), u"6");
    item = start;
    item = 6.25;
    EXPECT_EQ(item.GetStringValue(), u"6.250000");
    item = start;
    item = false;
    EXPECT_EQ(item.GetStringValue(), u"False");
    item = start;
    item = CString(u"text of a CString");
    EXPECT_EQ(item.GetStringValue(), u"text of a CString");
    item = start;
    EXPECT_EQ(&(item = CVarBase(8L)), &item);
    EXPECT_EQ(item.GetStringValue(), u"8");
  }
}

TEST(VarBase, null_text_is_the_empty_text) {
  const unsigned short* none = nullptr;
  CVarBase item(none);
  EXPECT_EQ(item.GetType(), BVT_STRING);
  EXPECT_EQ(item.GetStringValue(), u"");
}

TEST(VarBase, long_keeps_the_low_32_bits) {
  EXPECT_EQ(CVarBase(static_cast<long>(0x1FFFFFFFFLL)).GetLongValue(), -1L);
  EXPECT_EQ(CVarBase(static_cast<long>(0x80000000LL)).GetLongValue(), -2147483648L);
}

TEST(VarBase, copies_and_moves_keep_the_value) {
  const std::vector<CVarBase> originals = {CVarBase(), CVarBase(7L), CVarBase(2.5), CVarBase(true), CVarBase(u"text")};
  for (const CVarBase& original : originals) {
    CVarBase copy(original);
    EXPECT_EQ(copy.GetType(), original.GetType());
    EXPECT_EQ(copy.GetStringValue(), original.GetStringValue());
    CVarBase moved(std::move(copy));
    EXPECT_EQ(moved.GetStringValue(), original.GetStringValue());
    CVarBase assigned(u"old");
    assigned = std::move(moved);
    EXPECT_EQ(assigned.GetStringValue(), original.GetStringValue());
    const CVarBase& same = assigned;
    assigned = same;
    EXPECT_EQ(assigned.GetStringValue(), original.GetStringValue());
  }
}

TEST(VarBase, writing_to_a_copy_leaves_the_original) {
  CVarBase original(u"shared");
  CVarBase copy(original);
  unsigned short* buffer = copy.GetStringBuffer(10);
  buffer[0] = u'S';
  copy.ReleaseStringBuffer();
  EXPECT_EQ(copy.GetStringValue(), u"Shared");
  EXPECT_EQ(original.GetStringValue(), u"shared");
}

TEST(VarBase, increment_counts_integers_and_doubles_only) {
  CVarBase integer(41L);
  EXPECT_TRUE(integer.Increment());
  EXPECT_EQ(integer.GetStringValue(), u"42");

  CVarBase wrapping(2147483647L);
  EXPECT_TRUE(wrapping.Increment());
  EXPECT_EQ(wrapping.GetLongValue(), -2147483648L);

  CVarBase number(0.5);
  EXPECT_TRUE(number.Increment());
  EXPECT_EQ(number.GetStringValue(), u"1.500000");

  CountingDispatch object;
  CVarBase others[] = {CVarBase(), CVarBase(true), CVarBase(false), CVarBase(u"5"), CVarBase(&object)};
  for (CVarBase& other : others) {
    const CString before = other.GetStringValue();
    const BASICVARTYPE type = other.GetType();
    EXPECT_FALSE(other.Increment());
    EXPECT_EQ(other.GetStringValue(), before);
    EXPECT_EQ(other.GetType(), type);
  }
}

TEST(VarBase, increment_works_beside_a_string_buffer) {
  CVarBase integer(5L);
  EXPECT_NE(integer.GetStringBuffer(4), nullptr);
  EXPECT_TRUE(integer.Increment());
  EXPECT_EQ(integer.GetStringValue(), u"6");
}

TEST(VarBase, object_reads_as_the_low_32_bits_of_its_address) {
  CountingDispatch object;
  const auto low = static_cast<std::int32_t>(
      static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(static_cast<IDispatch*>(&object))));
  const CVarBase item(&object);
  EXPECT_EQ(item.GetType(), BVT_OBJECT);
  EXPECT_EQ(item.GetObjectValue(), &object);
  EXPECT_EQ(item.GetLongValue(), low);
  EXPECT_EQ(item.GetDoubleValue(), static_cast<double>(low));
  EXPECT_EQ(item.GetStringValue().ToUtf8(), std::to_string(low));
}

TEST(VarBase, null_object_is_an_object) {
  IDispatch* const none = nullptr;
  const CVarBase item(none);
  EXPECT_EQ(item.GetType(), BVT_OBJECT);
  EXPECT_EQ(item.GetObjectValue(), nullptr);
  EXPECT_EQ(item.GetStringValue(), u"0");
  EXPECT_EQ(item.GetLongValue(), 0);
  const CVarBase copy(item);
  EXPECT_EQ(copy.GetType(), BVT_OBJECT);
}

TEST(VarBase, string_buffer_starts_with_the_text_of_any_kind) {
  struct Row {
    CVarBase item;
    const char16_t* text;
  };
  const Row rows[] = {{CVarBase(), u""},
                      {CVarBase(-7L), u"-7"},
                      {CVarBase(2.5), u"2.500000"},
                      {CVarBase(true), u"True"},
                      {CVarBase(u"some text"), u"some text"}};
  for (const Row& row : rows) {
    CVarBase item(row.item);
    const unsigned short* buffer = item.GetStringBuffer(2);
    EXPECT_EQ(CString(buffer), CString(row.text));
    // Until it is released, the value is what it was.
    EXPECT_EQ(item.GetType(), row.item.GetType());
    EXPECT_EQ(item.GetStringValue(), CString(row.text));
  }
}

TEST(VarBase, released_string_buffer_becomes_the_value_up_to_the_first_zero) {
  CVarBase item(12L);
  unsigned short* buffer = item.GetStringBuffer(100);
  const char16_t* written = u"written by a caller";
  for (int i = 0; i <= 19; ++i)
    buffer[i] = written[i];
  buffer[99] = u'x';
  item.ReleaseStringBuffer();
  EXPECT_EQ(item.GetType(), BVT_STRING);
  EXPECT_EQ(item.GetStringValue(), u"written by a caller");

  buffer = item.GetStringBuffer(0);
  buffer[7] = 0;
  item.ReleaseStringBuffer();
  EXPECT_EQ(item.GetStringValue(), u"written");

  item.SetValue(3.0);
  EXPECT_EQ(item.GetStringValue(), u"3.000000");
}

TEST(VarBase, whole_string_buffer_may_be_filled) {
  CVarBase item(u"a");
  unsigned short* buffer = item.GetStringBuffer(500);
  for (int i = 0; i < 500; ++i)
    buffer[i] = u'z';
  buffer[500] = 0;
  item.ReleaseStringBuffer();
  EXPECT_EQ(item.GetStringValue(), CString(u'z', 500));
}

TEST(VarBase, release_without_a_buffer_gives_the_empty_text) {
  CVarBase item(12L);
  item.ReleaseStringBuffer();
  EXPECT_EQ(item.GetType(), BVT_STRING);
  EXPECT_EQ(item.GetStringValue(), u"");
}

TEST(VarBase, copy_constructor_leaves_the_buffer_and_assignment_takes_it) {
  CVarBase item(u"value");
  item.GetStringBuffer(20)[0] = u'V';

  CVarBase constructed(item);
  EXPECT_EQ(constructed.GetStringValue(), u"value");
  constructed.ReleaseStringBuffer();
  EXPECT_EQ(constructed.GetStringValue(), u"");

  CVarBase assigned;
  assigned = item;
  EXPECT_EQ(assigned.GetStringValue(), u"value");
  assigned.ReleaseStringBuffer();
  EXPECT_EQ(assigned.GetStringValue(), u"Value");

  // The other direction: the buffer of the target goes when the source has none.
  const CVarBase plain(1L);
  item = plain;
  EXPECT_EQ(item.GetStringValue(), u"1");
  item.ReleaseStringBuffer();
  EXPECT_EQ(item.GetStringValue(), u"");
}

TEST(VarBase, buffered_item_takes_every_kind_and_is_released_once) {
  CountingDispatch object;
  {
    CVarBase item(&object);
    EXPECT_NE(item.GetStringBuffer(30), nullptr);
    EXPECT_EQ(object.Held(), 1);
    EXPECT_EQ(item.GetObjectValue(), &object);
    CVarBase copy(item);
    EXPECT_EQ(object.Held(), 2);
    CVarBase moved(std::move(item));
    EXPECT_EQ(object.Held(), 2);
    moved.SetValue(true);
    EXPECT_EQ(object.Held(), 1);
    EXPECT_EQ(moved.GetStringValue(), u"True");
    moved.SetValue(&object);
    EXPECT_EQ(object.Held(), 2);
    moved.ReleaseStringBuffer();
    EXPECT_EQ(object.Held(), 1);
    EXPECT_EQ(moved.GetType(), BVT_STRING);
  }
  EXPECT_EQ(object.Held(), 0);
}

} // namespace
