#include "brindle/variable.h"

#include "support/counting_dispatch.h"
#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

// A VARIANT whose payload bits are all ones would crash whoever followed it as a pointer.
VARIANT Marked(unsigned kind) {
  VARIANT value;
  VariantInit(&value);
  value.ullVal = 0xFFFFFFFFFFFFFFFFULL;
  value.vt = static_cast<VARTYPE>(kind);
  return value;
}

bool IsStored(unsigned kind) {
  switch (kind) {
  case VT_I2:
  case VT_I4:
  case VT_R4:
  case VT_R8:
  case VT_BSTR:
  case VT_DISPATCH:
  case VT_BOOL:
  case VT_UI2:
  case VT_UI4:
  case VT_INT:
  case VT_UINT: return true;
  default: return false;
  }
}

CVarBase Stored(const VARIANT& value) {
  CVarBase item(u"before");
  EXPECT_TRUE(item.SetValue(value));
  return item;
}

TEST(VariantConversion, every_other_kind_is_refused_and_leaves_the_value) {
  for (unsigned kind = 0; kind < 64; ++kind) {
    if (IsStored(kind))
      continue;
    CVarBase item(u"before");
    EXPECT_FALSE(item.SetValue(Marked(kind))) << kind;
    EXPECT_EQ(item.GetStringValue(), u"before") << kind;
    EXPECT_EQ(item.GetType(), BVT_STRING) << kind;
  }
}

TEST(VariantConversion, arrays_and_references_of_every_kind_are_refused) {
  for (const unsigned flags : {0x2000U, 0x4000U, 0x6000U}) {
    for (unsigned kind = 0; kind < 64; ++kind) {
      CVarBase item(7L);
      EXPECT_FALSE(item.SetValue(Marked(kind | flags))) << kind << " with " << flags;
      EXPECT_EQ(item.GetStringValue(), u"7") << kind << " with " << flags;
    }
  }
}

TEST(VariantConversion, refused_value_releases_nothing) {
  CountingDispatch object;
  CVarBase item(&object);
  EXPECT_FALSE(item.SetValue(Marked(VT_UI1)));
  EXPECT_FALSE(item.SetValue(Marked(VT_EMPTY)));
  EXPECT_FALSE(item.SetValue(Marked(VT_NULL)));
  EXPECT_FALSE(item.SetValue(Marked(VT_BYREF | VT_DISPATCH)));
  EXPECT_EQ(object.Held(), 1);
  EXPECT_EQ(item.GetObjectValue(), &object);
}

TEST(VariantConversion, sixteen_bit_integers_are_widened_by_their_sign) {
  struct Row {
    unsigned kind;
    std::uint16_t bits;
    long expected;
  };
  const Row rows[] = {{VT_I2, 0, 0},  {VT_I2, 0x7FFF, 32767},  {VT_I2, 0x8000, -32768}, {VT_I2, 0xFFFD, -3},
                      {VT_UI2, 0, 0}, {VT_UI2, 0x7FFF, 32767}, {VT_UI2, 0x8000, 32768}, {VT_UI2, 0xFFFF, 65535L}};
  for (const Row& row : rows) {
    VARIANT value = Marked(row.kind); // the bytes beside the 16 bits are not zero
    value.uiVal = row.bits;
    const CVarBase item = Stored(value);
    EXPECT_EQ(item.GetLongValue(), row.expected) << row.kind << " " << row.bits;
    EXPECT_EQ(item.GetStringValue().ToUtf8(), std::to_string(row.expected));
    EXPECT_EQ(item.GetType(), BVT_NUMBER);
  }
}

TEST(VariantConversion, thirty_two_bits_are_kept_as_they_are) {
  const std::uint32_t patterns[] = {0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
  for (const VARTYPE kind : {VT_I4, VT_UI4, VT_INT, VT_UINT}) {
    for (const std::uint32_t bits : patterns) {
      VARIANT value = Marked(kind);
      value.ulVal = bits;
      EXPECT_EQ(Stored(value).GetStringValue().ToUtf8(), std::to_string(static_cast<std::int32_t>(bits))) << kind;
    }
  }
}

TEST(VariantConversion, floating_point_numbers_become_doubles) {
  VARIANT single = Marked(VT_R4);
  single.fltVal = 0.1F;
  EXPECT_EQ(Stored(single).GetDoubleValue(), static_cast<double>(0.1F));
  EXPECT_EQ(Stored(single).GetStringValue(), u"0.100000");
  VARIANT number = Marked(VT_R8);
  number.dblVal = -2.5;
  EXPECT_EQ(Stored(number).GetStringValue(), u"-2.500000");
}

TEST(VariantConversion, any_boolean_that_is_not_zero_is_true) {
  for (const VARIANT_BOOL bits : {VARIANT_BOOL{-1}, VARIANT_BOOL{1}, VARIANT_BOOL{0x100}}) {
    VARIANT value = Marked(VT_BOOL);
    value.boolVal = bits;
    EXPECT_EQ(Stored(value).GetStringValue(), u"True") << bits;
    EXPECT_EQ(Stored(value).GetLongValue(), 1) << bits;
  }
  VARIANT value = Marked(VT_BOOL); // the bytes beside the 16 bits are not zero
  value.boolVal = VARIANT_FALSE;
  EXPECT_EQ(Stored(value).GetStringValue(), u"False");
}

TEST(VariantConversion, text_is_copied) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_BSTR;
  const CString text(u"text of a server");
  value.bstrVal = SysAllocString(text);
  CVarBase item = Stored(value);
  value.bstrVal[0] = u'X';
  EXPECT_EQ(item.GetStringValue(), text);
  VariantClear(&value);
  EXPECT_EQ(item.GetStringValue(), text);
  EXPECT_EQ(item.GetType(), BVT_STRING);
}

TEST(VariantConversion, null_text_is_the_empty_text) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_BSTR;
  const CVarBase item = Stored(value);
  EXPECT_EQ(item.GetType(), BVT_STRING);
  EXPECT_EQ(item.GetStringValue(), u"");
}

TEST(VariantConversion, object_gets_a_reference_of_its_own) {
  CountingDispatch object;
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_DISPATCH;
  value.pdispVal = &object;
  {
    const CVarBase item = Stored(value);
    EXPECT_EQ(item.GetObjectValue(), &object);
    EXPECT_EQ(object.Held(), 1);
  }
  EXPECT_EQ(object.Held(), 0);
  value.pdispVal = nullptr;
  EXPECT_EQ(Stored(value).GetType(), BVT_OBJECT);
}

TEST(VariantConversion, same_object_survives_being_stored_over_itself) {
  CountingDispatch object;
  CVarBase item(&object);
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_DISPATCH;
  value.pdispVal = &object;
  EXPECT_TRUE(item.SetValue(value));
  EXPECT_EQ(object.Held(), 1);
  EXPECT_GE(object.References(), 1);
}

TEST(VariantConversion, variable_passes_the_result_on) {
  CBasicVariable variable(u"before");
  EXPECT_FALSE(variable.SetValue(Marked(VT_DATE)));
  EXPECT_EQ(variable.GetStringValue(), u"before");
  VARIANT value = Marked(VT_I2);
  value.iVal = -3;
  EXPECT_TRUE(variable.SetValue(value));
  EXPECT_EQ(variable.GetStringValue(), u"-3");
}

} // namespace
