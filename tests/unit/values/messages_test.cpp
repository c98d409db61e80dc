#include "values/messages.h"

#include "support/text_printing.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(Messages, numbers_1_to_65_have_a_text_and_no_others) {
  for (int number = 1; number <= 65; ++number) {
    const auto text = LoadMessage(number);
    ASSERT_TRUE(text.has_value()) << number;
    EXPECT_FALSE(text->IsEmpty()) << number;
  }
  for (const int number : {-2147483647 - 1, -1, 0, 66, 67, 65536, 2147483647})
    EXPECT_FALSE(LoadMessage(number).has_value()) << number;
}

TEST(Messages, texts_that_the_library_itself_uses) {
  EXPECT_EQ(LoadMessage(kMessageOk), CString(u"OK"));
  EXPECT_EQ(LoadMessage(kMessageTrue), CString(u"True"));
  EXPECT_EQ(LoadMessage(kMessageFalse), CString(u"False"));
}

TEST(Messages, odd_spellings_stay) {
  EXPECT_EQ(LoadMessage(6), CString(u"Lable table full"));
  EXPECT_EQ(LoadMessage(29), CString(u"Invalid keyword "));
  EXPECT_EQ(LoadMessage(34), CString(u"Field name does not exists in data structure"));
  EXPECT_EQ(LoadMessage(38), CString(u"Incorrect assignment operator. Can't assign array to a varaible."));
}

} // namespace
} // namespace brindle
