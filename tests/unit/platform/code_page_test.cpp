#include "platform/code_page.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace brindle {
namespace {

// Puts the process-wide page back, so that the order of tests does not matter.
class AnsiPage : public ::testing::Test {
protected:
  void TearDown() override { EXPECT_TRUE(CodePage::SetAnsi("UTF-8")); }
};

std::string EveryByte() {
  std::string bytes;
  for (unsigned byte = 0; byte < 256; ++byte) {
    bytes.push_back(static_cast<char>(static_cast<unsigned char>(byte)));
  }
  return bytes;
}

// Null on a system without conversion modules, where every such page must be missing.
std::shared_ptr<const CodePage> FromSystem(std::string_view name) {
  std::shared_ptr<const CodePage> page = CodePage::Find(name);
  EXPECT_EQ(CodePage::Find("koi8-r") == nullptr, page == nullptr) << name << " is missing, others are not";
  return page;
}

TEST(CodePage, utf8_reads_invalid_bytes_as_windows_1252) {
  struct Row {
    const char* name;
    std::string_view bytes;
    std::u16string_view text;
  };
  const Row rows[] = {
      {"empty", "", u""},
      {"ascii", "abc", u"abc"},
      {"ascii of many words", "The quick brown fox jumps over", u"The quick brown fox jumps over"},
      {"nul inside", std::string_view("a\0b", 3), std::u16string_view(u"a\0b", 3)},
      {"two bytes", "caf\xC3\xA9", u"caf\u00E9"},
      {"three bytes", "\xE2\x82\xAC", u"\u20AC"},
      {"four bytes", "\xF0\x9F\x98\x80", u"\U0001F600"},
      {"byte-order mark is a character",
       "\xEF\xBB\xBF"
       "a",
       u"\uFEFFa"},
      {"windows-1252 text", "caf\xE9 10\x80", u"caf\u00E9 10\u20AC"},
      {"quotes", "\x93q\x94", u"\u201Cq\u201D"},
      {"undefined bytes", "\x81\x8D\x8F\x90\x9D", u"\u0081\u008D\u008F\u0090\u009D"},
      {"overlong", "\xC0\xAF", u"\u00C0\u00AF"},
      {"overlong of three", "\xE0\x80\xAF", u"\u00E0\u20AC\u00AF"},
      {"surrogate", "\xED\xA0\x80", u"\u00ED\u00A0\u20AC"},
      {"too high", "\xF4\x90\x80\x80", u"\u00F4\u0090\u20AC\u20AC"},
      {"cut short at the end", "a\xE2\x82", u"a\u00E2\u201A"},
      {"cut short by ascii", "\xE2\x82z", u"\u00E2\u201Az"},
      {"good behind bad", "\xE2\xC3\xA9", u"\u00E2\u00E9"},
      {"FF FE", "\xFF\xFE", u"\u00FF\u00FE"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(CodePage::Utf8().Decode(row.bytes), row.text);
  }
}

TEST(CodePage, utf8_finds_invalid_bytes_at_every_offset) {
  for (std::size_t offset = 0; offset < 40; ++offset) {
    std::string bytes(40, 'x');
    bytes[offset] = '\xE4';
    std::u16string text(40, u'x');
    text[offset] = 0xE4;
    EXPECT_EQ(CodePage::Utf8().Decode(bytes), text) << offset;
  }
}

TEST(CodePage, utf8_encodes_lone_surrogates_as_the_replacement_character) {
  struct Row {
    const char* name;
    std::u16string text;
    std::string_view bytes;
  };
  const Row rows[] = {
      {"empty", u"", ""},
      {"ascii", u"abc", "abc"},
      {"mixed", u"a\u00E9\u20AC\U0001F600z", "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z"},
      {"high alone",
       {u'a', 0xD83D, u'b'},
       "a\xEF\xBF\xBD"
       "b"},
      {"low alone", {0xDE00}, "\xEF\xBF\xBD"},
      {"wrong order", {0xDE00, 0xD83D}, "\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"high at the end", {u'a', 0xD83D}, "a\xEF\xBF\xBD"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(CodePage::Utf8().Encode(row.text), row.bytes);
  }
}

TEST(CodePage, decode_to_appends) {
  std::u16string text = u"<";
  CodePage::Utf8().DecodeTo("\xC3\xA9", text);
  CodePage::Windows1252().DecodeTo("\xE9", text);
  EXPECT_EQ(text, u"<\u00E9\u00E9");
}

TEST(CodePage, windows_1252_gives_every_byte_back) {
  const CodePage& page = CodePage::Windows1252();
  const std::string bytes = EveryByte();
  const std::u16string text = page.Decode(bytes);
  ASSERT_EQ(text.size(), 256U);
  EXPECT_EQ(page.Encode(text), bytes);
  EXPECT_EQ(text[0x41], u'A');
  EXPECT_EQ(text[0x80], 0x20AC);
  EXPECT_EQ(text[0x81], 0x0081);
  EXPECT_EQ(text[0x8D], 0x008D);
  EXPECT_EQ(text[0x8F], 0x008F);
  EXPECT_EQ(text[0x90], 0x0090);
  EXPECT_EQ(text[0x9D], 0x009D);
  EXPECT_EQ(text[0x9F], 0x0178);
  EXPECT_EQ(text[0xFF], 0x00FF);
}

TEST(CodePage, a_character_the_page_lacks_becomes_one_question_mark) {
  const CodePage& page = CodePage::Windows1252();
  EXPECT_EQ(page.Encode(u"a\u0416b"), "a?b");
  EXPECT_EQ(page.Encode(u"\U0001F600"), "?");
  EXPECT_EQ(page.Encode(std::u16string{0xD83D, u'x'}), "?x");
  EXPECT_EQ(page.Encode(u"\u0080"), "?"); // byte 80 is the euro sign
  EXPECT_EQ(page.Encode(u"\u20AC"), "\x80");
}

TEST(CodePage, names_are_found_without_case_and_by_number) {
  struct Row {
    const char* name;
    const char* page;
  };
  const Row rows[] = {
      {"UTF-8", "UTF-8"},
      {"utf8", "UTF-8"},
      {"Utf_8", "UTF-8"},
      {"65001", "UTF-8"},
      {"cp65001", "UTF-8"},
      {"windows-1252", "windows-1252"},
      {"Windows1252", "windows-1252"},
      {"CP1252", "windows-1252"},
      {"cp-1252", "windows-1252"},
      {"1252", "windows-1252"},
      {"ISO-8859-1", "ISO-8859-1"},
      {"iso8859-1", "ISO-8859-1"},
      {"latin1", "ISO-8859-1"},
      {"28591", "ISO-8859-1"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const auto page = CodePage::Find(row.name);
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->Name(), row.page);
  }
}

TEST(CodePage, unknown_names_and_wide_encodings_are_no_pages) {
  for (const char* const name :
       {"", " ", "-", "no-such-page", "99999", "UTF-16", "UTF-16LE", "UTF-32", "UCS-2", "UCS-4", "WCHAR_T", "char",
        "windows-", "UTF-8//IGNORE", "cp1251//TRANSLIT", "cp1251,", "../cp1251", "cp1251\xE9"}) {
    EXPECT_EQ(CodePage::Find(name), nullptr) << name;
  }
  EXPECT_EQ(CodePage::Find(std::string(100000, '1')), nullptr);
  EXPECT_EQ(CodePage::Find(std::string_view("cp1251\0x", 8)), nullptr);
}

TEST(CodePage, latin_1_is_the_first_256_characters) {
  const auto page = CodePage::Find("ISO-8859-1");
  ASSERT_NE(page, nullptr);
  EXPECT_TRUE(page->IsSingleByte());
  EXPECT_EQ(page->Decode("\x80\xFF"), u"\u0080\u00FF");
  EXPECT_EQ(page->Encode(u"\u20AC\u00FF"), "?\xFF");
}

TEST(CodePage, every_single_byte_page_gives_every_byte_back) {
  const std::string bytes = EveryByte();
  for (const char* const name :
       {"437",         "850",    "852",        "855",        "857",        "858",        "862",        "864",
        "866",         "874",    "1250",       "1251",       "1253",       "1254",       "1255",       "1256",
        "1257",        "1258",   "iso-8859-2", "iso-8859-3", "iso-8859-5", "iso-8859-7", "iso-8859-8", "iso-8859-9",
        "iso-8859-15", "koi8-r", "koi8-u",     "macintosh",  "tis-620",    "ibm037",     "ibm500",     "ibm1047"}) {
    const auto page = FromSystem(name);
    if (page == nullptr) {
      continue;
    }
    SCOPED_TRACE(name);
    EXPECT_TRUE(page->IsSingleByte());
    const std::u16string text = page->Decode(bytes);
    EXPECT_EQ(text.size(), 256U);
    EXPECT_EQ(page->Encode(text), bytes);
    EXPECT_EQ(page->IncompleteTail(bytes), 0U);
  }
}

TEST(CodePage, pages_of_the_system_read_and_write) {
  struct Row {
    const char* page;
    std::string_view bytes;
    std::u16string_view text;
  };
  const Row rows[] = {
      {"1251", "\xCF\xF0\xE8", u"\u041F\u0440\u0438"},
      {"windows-1251", "\x98", u"\u0098"},
      {"koi8-r", "\xF0", u"\u041F"},
      {"cp437", "\x81", u"\u00FC"},
      {"iso_8859-15", "\xA4", u"\u20AC"},
      {"28605", "\xA4", u"\u20AC"},
      {"1253", "\xE1\xAA", u"\u03B1\u00AA"},
      {"ibm037", "\xC1\xF1", u"A1"},
  };
  for (const Row& row : rows) {
    const auto page = FromSystem(row.page);
    if (page == nullptr) {
      continue;
    }
    SCOPED_TRACE(row.page);
    EXPECT_EQ(page->Decode(row.bytes), row.text);
    EXPECT_EQ(page->Encode(row.text), row.bytes);
  }
  if (const auto page = FromSystem("ibm037")) {
    EXPECT_EQ(page->Encode(u"\u0416"), "\x6F"); // the question mark of that page
  }
}

TEST(CodePage, multi_byte_pages_read_and_write) {
  const auto page = FromSystem("shift_jis");
  if (page == nullptr) {
    GTEST_SKIP() << "no conversion modules";
  }
  EXPECT_FALSE(page->IsSingleByte());
  const std::string bytes = "ab\x93\xFA\x96{x\xB1";
  const std::u16string text = u"ab\u65E5\u672Cx\uFF71";
  EXPECT_EQ(page->Decode(bytes), text);
  EXPECT_EQ(page->Encode(text), bytes);
  EXPECT_EQ(page->Encode(u"\u65E5\U0001F600\u672C"), "\x93\xFA?\x96{");
  EXPECT_EQ(page->Encode(std::u16string{u'a', 0xD83D, u'b'}), "a?b");

  EXPECT_EQ(page->Decode("a\\b~"), u"a\\b~"); // paths keep their backslash
  EXPECT_EQ(page->Encode(u"a\\b~"), "a\\b~");
  EXPECT_EQ(page->Name(), CodePage::Find("932")->Name());

  // A byte that is no part of a character, and a character cut short, as windows-1252.
  EXPECT_EQ(page->Decode("a\xFF"
                         "b"),
            u"a\u00FFb");
  EXPECT_EQ(page->Decode("a\x93"), u"a\u201C");
  EXPECT_EQ(page->Decode("\x93"), u"\u201C");

  // Long enough for several portions of the conversion.
  std::string longBytes;
  std::u16string longText;
  for (int count = 0; count < 1000; ++count) {
    longBytes += bytes;
    longText += text;
  }
  EXPECT_EQ(page->Decode(longBytes), longText);
  EXPECT_EQ(page->Encode(longText), longBytes);
}

TEST(CodePage, shift_states_start_afresh_in_every_call) {
  const auto page = FromSystem("ISO-2022-JP");
  if (page == nullptr) {
    GTEST_SKIP() << "no conversion modules";
  }
  EXPECT_FALSE(page->IsSingleByte());
  const std::string bytes = "\x1B$BF|\x1B(B";
  for (int repetition = 0; repetition < 2; ++repetition) {
    EXPECT_EQ(page->Encode(u"\u65E5"), bytes);
    EXPECT_EQ(page->Decode(bytes), u"\u65E5");
    EXPECT_EQ(page->Decode("\x1B$BF|"), u"\u65E5");
  }
  std::string prefix;
  EXPECT_EQ(page->EncodedPrefix(u"\u65E5\u65E5", 9, prefix), 1U);
  EXPECT_EQ(prefix, bytes);
  EXPECT_EQ(page->EncodedPrefix(u"\u65E5\u65E5", 7, prefix), 0U);
  EXPECT_EQ(prefix, "");
}

TEST(CodePage, ascii_is_written_at_once_where_it_is_known_how) {
  struct Row {
    const char* page;
    std::u16string_view text;
    bool isWritten;
  };
  const Row rows[] = {
      {"utf-8", u"plain text, 12", true}, {"utf-8", u"", true},           {"utf-8", u"caf\u00E9", false},
      {"1252", u"plain", true},           {"1252", u"pri\u20ACe", false}, {"iso-8859-1", u"\u007F", true},
      {"iso-8859-1", u"\u0080", false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.page);
    const auto page = CodePage::Find(row.page);
    ASSERT_NE(page, nullptr);
    std::string bytes(row.text.size() + 1, '#');
    ASSERT_EQ(page->EncodeAscii(row.text, bytes.data()), row.isWritten);
    EXPECT_EQ(bytes.back(), '#') << "not a byte more";
    const std::string encoded = page->Encode(row.text);
    EXPECT_EQ(page->AreAscii(encoded), row.isWritten);
    if (row.isWritten) {
      EXPECT_EQ(bytes, encoded + "#");
    }
  }
}

TEST(CodePage, pages_that_write_ascii_in_another_way_refuse_to_do_it_at_once) {
  for (const char* name : {"IBM037", "shift_jis", "utf-7"}) {
    const auto page = CodePage::Find(name);
    if (page == nullptr)
      continue;
    SCOPED_TRACE(name);
    char byte = 0;
    EXPECT_FALSE(page->EncodeAscii(u"a", &byte));
    EXPECT_FALSE(page->AreAscii("a"));
  }
}

TEST(CodePage, encoded_prefix_takes_whole_characters_only) {
  struct Row {
    const char* name;
    const char* page;
    std::u16string_view text;
    std::size_t maxBytes;
    std::size_t units;
    std::string_view bytes;
  };
  const Row rows[] = {
      {"nothing fits", "utf-8", u"abc", 0, 0, ""},
      {"ascii cut", "utf-8", u"abc", 2, 2, "ab"},
      {"ascii whole", "utf-8", u"abc", 3, 3, "abc"},
      {"room to spare", "utf-8", u"abc", 100, 3, "abc"},
      {"two-byte character left out", "utf-8", u"a\u00E9", 2, 1, "a"},
      {"two-byte character fits", "utf-8", u"a\u00E9", 3, 2, "a\xC3\xA9"},
      {"pair left out", "utf-8", u"\U0001F600a", 3, 0, ""},
      {"pair fits", "utf-8", u"\U0001F600a", 4, 2, "\xF0\x9F\x98\x80"},
      {"single-byte cut", "1252", u"a\u00E9b", 2, 2, "a\xE9"},
      {"single-byte whole", "1252", u"a\u00E9b", 3, 3,
       "a\xE9"
       "b"},
      {"pair is one question mark", "1252", u"\U0001F600ab", 2, 3, "?a"},
      {"empty", "1252", u"", 5, 0, ""},
      {"half of a multi-byte character", "shift_jis", u"a\u65E5\u672C", 4, 2, "a\x93\xFA"},
      {"multi-byte whole", "shift_jis", u"a\u65E5\u672C", 5, 3, "a\x93\xFA\x96{"},
      {"multi-byte nothing", "shift_jis", u"\u65E5", 1, 0, ""},
      {"multi-byte long text, short limit", "shift_jis", u"abcdefghijklmnopqrstuvwxyz", 3, 3, "abc"},
      {"pair stays together", "gb18030", u"\U0001F600\U0001F600", 5, 2, "\x94\x39\xFC\x36"},
      {"pair left out of a long text", "gb18030", u"a\U0001F600\U0001F600", 1, 1, "a"},
  };
  for (const Row& row : rows) {
    const auto page = CodePage::Find(row.page);
    if (page == nullptr) {
      EXPECT_EQ(CodePage::Find("koi8-r"), nullptr);
      continue;
    }
    SCOPED_TRACE(row.name);
    std::string bytes = "old";
    EXPECT_EQ(page->EncodedPrefix(row.text, row.maxBytes, bytes), row.units);
    EXPECT_EQ(bytes, row.bytes);
  }
}

TEST(CodePage, incomplete_tail_is_what_further_bytes_can_complete) {
  struct Row {
    const char* name;
    const char* page;
    std::string_view bytes;
    std::size_t tail;
  };
  const Row rows[] = {
      {"empty", "utf-8", "", 0},
      {"ascii", "utf-8", "abc", 0},
      {"whole character", "utf-8", "a\xC3\xA9", 0},
      {"one of two", "utf-8", "a\xC3", 1},
      {"one of three", "utf-8", "\xE2", 1},
      {"two of three", "utf-8", "a\xE2\x82", 2},
      {"whole of three", "utf-8", "\xE2\x82\xAC", 0},
      {"three of four", "utf-8", "a\xF0\x9F\x98", 3},
      {"whole of four", "utf-8", "\xF0\x9F\x98\x80", 0},
      {"overlong lead", "utf-8", "a\xC0", 0},
      {"overlong pair", "utf-8", "\xE0\x80", 0},
      {"may be three", "utf-8", "\xE0\xA0", 2},
      {"surrogate", "utf-8", "\xED\xA0", 0},
      {"before the surrogates", "utf-8", "\xED\x9F", 2},
      {"lead of four, low", "utf-8", "\xF0\x8F", 0},
      {"lead of four, too high", "utf-8", "\xF4\x90", 0},
      {"lead of four, highest", "utf-8", "\xF4\x8F", 2},
      {"beyond every lead", "utf-8", "\xF5", 0},
      {"continuations alone", "utf-8", "\x80\x80\x80\x80", 0},
      {"single-byte page", "1252", "a\xE9", 0},
      {"multi-byte whole", "shift_jis", "a\x93\xFA", 0},
      {"multi-byte half", "shift_jis", "\x93\xFA\x93", 1},
      {"multi-byte invalid, then half", "shift_jis", "\xFF\x93", 1},
      {"three of four bytes", "gb18030", "a\x94\x39\xFC", 3},
  };
  for (const Row& row : rows) {
    const auto page = CodePage::Find(row.page);
    if (page == nullptr) {
      EXPECT_EQ(CodePage::Find("koi8-r"), nullptr);
      continue;
    }
    SCOPED_TRACE(row.name);
    EXPECT_EQ(page->IncompleteTail(row.bytes), row.tail);
  }
}

TEST(CodePage, text_read_in_portions_equals_text_read_at_once) {
  for (const char* const name : {"utf-8", "1252", "shift_jis", "gb18030", "euc-kr"}) {
    const auto page = CodePage::Find(name);
    if (page == nullptr) {
      continue;
    }
    SCOPED_TRACE(name);
    const std::string bytes = page->Encode(u"a\u00E9\u65E5\U0001F600b\u672C\u20ACz") + "\xFF!";
    for (std::size_t portion = 4; portion < 8; ++portion) {
      std::u16string text;
      std::string pending;
      for (std::size_t start = 0; start < bytes.size(); start += portion) {
        pending += bytes.substr(start, portion);
        const std::size_t usable = pending.size() - page->IncompleteTail(pending);
        page->DecodeTo(std::string_view(pending).substr(0, usable), text);
        pending.erase(0, usable);
      }
      page->DecodeTo(pending, text);
      EXPECT_EQ(text, page->Decode(bytes)) << portion;
    }
  }
}

TEST(CodePage, bytes_of_units_follow_the_decoded_text) {
  struct Row {
    const char* name;
    const char* page;
    std::string_view bytes;
    std::size_t units;
    std::size_t expected;
  };
  const Row rows[] = {
      {"none", "utf-8", "a\xC3\xA9z", 0, 0},
      {"ascii", "utf-8", "a\xC3\xA9z", 1, 1},
      {"two bytes", "utf-8", "a\xC3\xA9z", 2, 3},
      {"all", "utf-8", "a\xC3\xA9z", 3, 4},
      {"more than all", "utf-8", "a\xC3\xA9z", 9, 4},
      {"invalid byte", "utf-8", "\xE9z", 1, 1},
      {"half of a pair", "utf-8", "\xF0\x9F\x98\x80z", 1, 4},
      {"pair", "utf-8", "\xF0\x9F\x98\x80z", 2, 4},
      {"behind the pair", "utf-8", "\xF0\x9F\x98\x80z", 3, 5},
      {"single-byte", "1252", "a\xE9z", 2, 2},
      {"single-byte, more", "1252", "a\xE9z", 9, 3},
      {"multi-byte", "shift_jis", "a\x93\xFA\x96{z", 2, 3},
      {"multi-byte, ascii alone", "shift_jis", "abc", 2, 2},
      {"multi-byte, all", "shift_jis", "a\x93\xFA\x96{z", 4, 6},
      {"multi-byte, invalid", "shift_jis", "\xFF\x93\xFAz", 2, 3},
      {"multi-byte, none", "shift_jis", "\x93\xFA", 0, 0},
  };
  for (const Row& row : rows) {
    const auto page = CodePage::Find(row.page);
    if (page == nullptr) {
      EXPECT_EQ(CodePage::Find("koi8-r"), nullptr);
      continue;
    }
    SCOPED_TRACE(row.name);
    EXPECT_EQ(page->BytesOfUnits(row.bytes, row.units), row.expected);
  }
}

TEST_F(AnsiPage, is_utf8_until_it_is_set) {
  EXPECT_EQ(CodePage::Ansi().Name(), "UTF-8");
  EXPECT_EQ(&CodePage::Bytes(), &CodePage::Windows1252());
}

TEST_F(AnsiPage, setting_changes_both_pages_and_unknown_names_change_nothing) {
  ASSERT_TRUE(CodePage::SetAnsi("iso-8859-1"));
  EXPECT_EQ(CodePage::Ansi().Name(), "ISO-8859-1");
  EXPECT_EQ(&CodePage::Bytes(), &CodePage::Ansi());
  EXPECT_FALSE(CodePage::SetAnsi("no-such-page"));
  EXPECT_EQ(CodePage::Ansi().Name(), "ISO-8859-1");
  ASSERT_TRUE(CodePage::SetAnsi("cp1252"));
  EXPECT_EQ(&CodePage::Ansi(), &CodePage::Windows1252());
}

TEST_F(AnsiPage, earlier_references_stay_valid) {
  if (CodePage::Find("1251") == nullptr) {
    GTEST_SKIP() << "no conversion modules";
  }
  ASSERT_TRUE(CodePage::SetAnsi("1251"));
  const CodePage& earlier = CodePage::Ansi();
  ASSERT_TRUE(CodePage::SetAnsi("utf-8"));
  EXPECT_EQ(earlier.Decode("\xCF"), u"\u041F");
  ASSERT_TRUE(CodePage::SetAnsi("windows-1251"));
  EXPECT_EQ(&CodePage::Ansi(), &earlier);
}

TEST_F(AnsiPage, serial_lines_keep_a_byte_a_character_under_a_multi_byte_page) {
  if (!CodePage::SetAnsi("shift_jis")) {
    GTEST_SKIP() << "no conversion modules";
  }
  EXPECT_EQ(&CodePage::Bytes(), &CodePage::Windows1252());
}

} // namespace
} // namespace brindle
