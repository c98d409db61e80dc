#include "platform/automation_text.h"

#include <gtest/gtest.h>

namespace {

TEST(AutomationText, dates_count_from_the_last_days_of_1899) {
  const struct {
    double date;
    const char* text;
  } rows[] = {{0.0, "1899-12-30 00:00:00"},
              {1.0, "1899-12-31 00:00:00"},
              {2.5, "1900-01-01 12:00:00"},
              {-1.25, "1899-12-29 06:00:00"},
              {36526.0, "2000-01-01 00:00:00"},
              {36584.0, "2000-02-28 00:00:00"},
              {36585.0, "2000-02-29 00:00:00"},
              {36586.0, "2000-03-01 00:00:00"},
              {0.9999999, "1899-12-31 00:00:00"},
              {-657434.0, "0100-01-01 00:00:00"},
              {2958465.0, "9999-12-31 00:00:00"},
              {2958466.0, ""},
              {-700000.0, ""},
              {1e300, ""}};
  for (const auto& row : rows)
    EXPECT_EQ(brindle::DateText(row.date).ToUtf8(), row.text) << row.date;
}

TEST(AutomationText, decimals_keep_every_digit) {
  const auto decimal = [](std::uint32_t high, std::uint64_t low, unsigned scale, bool negative) {
    VARIANT value{};
    value.vt = VT_DECIMAL;
    value.wReserved1 = static_cast<WORD>(scale | (negative ? 0x8000U : 0U));
    value.wReserved2 = static_cast<WORD>(high);
    value.wReserved3 = static_cast<WORD>(high >> 16);
    value.ullVal = low;
    return brindle::VariantText(value).ToUtf8();
  };
  EXPECT_EQ(decimal(0, 0, 0, false), "0");
  EXPECT_EQ(decimal(0, 0, 4, true), "0");
  EXPECT_EQ(decimal(0, 12345, 2, false), "123.45");
  EXPECT_EQ(decimal(0, 5, 3, true), "-0.005");
  EXPECT_EQ(decimal(0, 1500, 3, false), "1.5");
  EXPECT_EQ(decimal(0, 1000000000, 0, false), "1000000000");
  EXPECT_EQ(decimal(0xFFFFFFFF, 0xFFFFFFFFFFFFFFFF, 0, false), "79228162514264337593543950335");
  EXPECT_EQ(decimal(0xFFFFFFFF, 0xFFFFFFFFFFFFFFFF, 28, true), "-7.9228162514264337593543950335");
}

TEST(AutomationText, codes_without_a_message_are_named_by_their_number) {
  EXPECT_EQ(brindle::ResultText(DISP_E_UNKNOWNNAME).ToUtf8(), "Unknown name");
  EXPECT_EQ(brindle::ResultText(static_cast<HRESULT>(0x80FFFFFF)).ToUtf8(), "Error 0x80FFFFFF");
  EXPECT_EQ(brindle::ResultText(5).ToUtf8(), "Error 0x00000005");
}

TEST(AutomationText, every_kind_of_value_has_its_text) {
  const auto valueOf = [](VARTYPE kind, auto VARIANT::*member, auto number) {
    VARIANT value{};
    value.vt = kind;
    value.*member = number;
    return value;
  };
  const struct {
    VARIANT value;
    const char* text;
  } rows[] = {
      {valueOf(VT_I1, &VARIANT::cVal, static_cast<CHAR>(-5)), "-5"},
      {valueOf(VT_UI1, &VARIANT::bVal, BYTE{200}), "200"},
      {valueOf(VT_I2, &VARIANT::iVal, SHORT{-300}), "-300"},
      {valueOf(VT_UI2, &VARIANT::uiVal, USHORT{60000}), "60000"},
      {valueOf(VT_I4, &VARIANT::lVal, LONG{-70000}), "-70000"},
      {valueOf(VT_INT, &VARIANT::intVal, INT{-70001}), "-70001"},
      {valueOf(VT_UI4, &VARIANT::ulVal, ULONG{4000000000U}), "4000000000"},
      {valueOf(VT_UINT, &VARIANT::uintVal, UINT{4000000001U}), "4000000001"},
      {valueOf(VT_I8, &VARIANT::llVal, LONGLONG{-5000000000}), "-5000000000"},
      {valueOf(VT_UI8, &VARIANT::ullVal, ULONGLONG{18446744073709551615U}), "18446744073709551615"},
      {valueOf(VT_R4, &VARIANT::fltVal, FLOAT{2.5F}), "2.500000"},
      {valueOf(VT_R8, &VARIANT::dblVal, DOUBLE{-0.125}), "-0.125000"},
      {valueOf(VT_BOOL, &VARIANT::boolVal, VARIANT_TRUE), "True"},
      {valueOf(VT_BOOL, &VARIANT::boolVal, VARIANT_FALSE), "False"},
      {valueOf(VT_EMPTY, &VARIANT::lVal, LONG{5}), ""},
      {valueOf(VT_UNKNOWN, &VARIANT::lVal, LONG{0}), ""},
  };
  for (const auto& row : rows)
    EXPECT_EQ(brindle::VariantText(row.value).ToUtf8(), row.text) << row.value.vt;
  VARIANT text{};
  text.vt = VT_BSTR;
  text.bstrVal = SysAllocString(reinterpret_cast<const OLECHAR*>(u"there"));
  EXPECT_EQ(brindle::VariantText(text).ToUtf8(), "there");
  VariantClear(&text);
}

} // namespace
