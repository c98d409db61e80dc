#include "brindle/environment.h"

#include "platform/code_page.h"

#include <gtest/gtest.h>

namespace {

TEST(EnvironmentTest, an_unknown_code_page_changes_nothing) {
  const brindle::CodePage* before = &brindle::CodePage::Ansi();
  EXPECT_FALSE(CEnvironment::SetAnsiCodePage("no such page"));
  EXPECT_EQ(&brindle::CodePage::Ansi(), before);
  EXPECT_TRUE(CEnvironment::SetAnsiCodePage("WINDOWS-1252"));
  EXPECT_NE(&brindle::CodePage::Ansi(), before);
  EXPECT_TRUE(CEnvironment::SetAnsiCodePage("utf-8"));
}

TEST(EnvironmentTest, paths_are_read_as_text) {
  EXPECT_EQ(CEnvironment::PathFromNative("data/h\xC3\xB6he.bas"), CString(u"data/h\u00F6he.bas"));
  EXPECT_EQ(CEnvironment::PathFromNative(""), CString());
}

TEST(EnvironmentTest, what_is_taken_for_an_enciphered_script) {
  const std::pair<const char*, bool> rows[] = {
      {"encrypt\r\n1,2", true}, {"  \n\tEncrypt 5", true},    {"ENCRYPT", true}, {"encrypt:", false},
      {"encrypted", false},     {"print \"encrypt\"", false}, {"", false},       {"encryp", false},
  };
  for (const auto& [script, expected] : rows)
    EXPECT_EQ(CEnvironment::IsEncipheredScript(script), expected) << script;
}

TEST(EnvironmentTest, what_it_enciphers_it_takes_for_enciphered) {
  std::string reason;
  const auto script = CEnvironment::EncipherScript("print \"a\"\n", reason);
  ASSERT_TRUE(script);
  EXPECT_TRUE(CEnvironment::IsEncipheredScript(*script));
  EXPECT_EQ(script->find("print"), std::string::npos);
  EXPECT_FALSE(CEnvironment::EncipherScript(std::string_view("a\0b", 3), reason));
  EXPECT_FALSE(reason.empty());
}

} // namespace
