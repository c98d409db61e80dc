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

} // namespace
