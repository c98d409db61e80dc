// Text files: lines, positions, encodings.
#include "io/text_file.h"

#include "support/script_test.h"

namespace {

using brindle::TextFile;
using brindle::WriteEncoding;
using Result = TextFile::LineResult;

class TextFileTest : public testing::Test {
protected:
  ~TextFileTest() override { TextFile::SetWriteEncoding(WriteEncoding::Ansi); }

  void Open(std::string_view bytes, unsigned flags = CFile::modeReadWrite) {
    ASSERT_TRUE(m_file.Open(m_folder.Write("text.txt", bytes), flags | CFile::shareDenyNone));
  }
  // The next line, "(end)" behind the last one.
  std::string Line() {
    CString line;
    const Result result = m_file.ReadLine(line);
    if (result == Result::EndOfFile) {
      EXPECT_TRUE(line.IsEmpty());
    }
    return result == Result::Line ? line.ToUtf8() : result == Result::EndOfFile ? "(end)" : "(too long)";
  }

  TemporaryFolder m_folder;
  TextFile m_file;
};

// The text in UTF-16, little-endian, with its mark.
std::string Utf16(std::u16string_view text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

TEST_F(TextFileTest, the_position_is_that_of_the_next_unread_character) {
  Open("one\ntwo\r\n\nlast");
  const std::pair<const char*, unsigned> rows[] = {{"one", 4}, {"two", 9}, {"", 10}, {"last", 14}, {"(end)", 14}};
  EXPECT_EQ(m_file.GetPosition(), 0U);
  for (const auto& [line, position] : rows) {
    EXPECT_EQ(Line(), line);
    EXPECT_EQ(m_file.GetPosition(), position);
  }
  EXPECT_EQ(m_file.GetLength(), 14U);
}

TEST_F(TextFileTest, the_position_of_utf16_counts_bytes_from_behind_the_mark) {
  Open(Utf16(u"ab\nß\r\n𝄞"));
  EXPECT_EQ(m_file.GetPosition(), 2U);
  EXPECT_EQ(Line(), "ab");
  EXPECT_EQ(m_file.GetPosition(), 8U);
  EXPECT_EQ(Line(), "ß");
  EXPECT_EQ(m_file.GetPosition(), 14U);
  EXPECT_EQ(Line(), "𝄞");
  EXPECT_EQ(m_file.GetPosition(), 18U);
  EXPECT_EQ(Line(), "(end)");
}

TEST_F(TextFileTest, a_position_leads_back_to_its_line) {
  std::string text;
  for (int i = 0; i < 5000; ++i)
    text += "line " + std::to_string(i) + "\n";
  Open(text);
  std::vector<std::uint64_t> positions;
  for (int i = 0; i < 5000; ++i) {
    positions.push_back(m_file.GetPosition());
    ASSERT_EQ(Line(), "line " + std::to_string(i));
  }
  for (const int i : {4999, 0, 2500, 1, 4998, 17}) {
    m_file.Seek(positions[static_cast<std::size_t>(i)]);
    EXPECT_EQ(m_file.GetPosition(), positions[static_cast<std::size_t>(i)]);
    EXPECT_EQ(Line(), "line " + std::to_string(i));
  }
}

TEST_F(TextFileTest, lines_of_every_length_around_the_buffer_are_read_whole) {
  for (const std::size_t length : {255U, 256U, 257U, 511U, 512U, 513U, 16383U, 16384U, 16385U, 32768U, 100000U}) {
    for (const char* end : {"\n", "\r\n"}) {
      const std::string first(length, 'a');
      Open(first + end + "next");
      EXPECT_EQ(Line(), first) << length;
      EXPECT_EQ(m_file.GetPosition(), length + std::string_view(end).size());
      EXPECT_EQ(Line(), "next");
    }
  }
}

TEST_F(TextFileTest, a_character_split_over_two_fills_is_whole) {
  for (std::size_t before = 16380; before < 16388; ++before) {
    const std::string line = std::string(before, 'a') + "ß𝄞€";
    Open(line + "\nnext");
    EXPECT_EQ(Line(), line);
    EXPECT_EQ(Line(), "next");
  }
}

TEST_F(TextFileTest, a_line_feed_split_over_two_fills_of_utf16_is_found) {
  for (std::size_t before = 8185; before < 8196; ++before) {
    const std::u16string line(before, u'a');
    Open(Utf16(line + u"\nnext"));
    EXPECT_EQ(Line(), std::string(before, 'a'));
    EXPECT_EQ(Line(), "next");
  }
}

TEST_F(TextFileTest, a_unit_that_only_looks_like_a_line_feed_ends_no_line) {
  Open(Utf16(u"a\u0A0Ab\u0A00c\nd"));
  EXPECT_EQ(Line(), "a\u0A0Ab\u0A00c");
  EXPECT_EQ(Line(), "d");
}

TEST_F(TextFileTest, what_follows_a_carriage_return_in_a_line_is_dropped) {
  Open("a\rb\nc\r\r\n\rd\n");
  for (const char* line : {"a", "c", "", "(end)"})
    EXPECT_EQ(Line(), line);
}

TEST_F(TextFileTest, zero_bytes_are_dropped_from_8_bit_text) {
  Open(std::string("a\0b\0\nc\n\0\0", 9));
  EXPECT_EQ(Line(), "ab");
  EXPECT_EQ(Line(), "c");
  EXPECT_EQ(Line(), "(end)");
}

TEST_F(TextFileTest, only_the_little_endian_mark_makes_utf16) {
  const std::pair<std::string, std::string> rows[] = {
      {std::string("\xFF"), "ÿ"},
      {std::string("\xFF\xFE"), "(end)"},
      {std::string("\xFE\xFF"), "þÿ"},
      {std::string("\xFF\xFE\x61", 3), "(end)"},
      {std::string("\xFF\xFE\x61\0", 4), "a"},
  };
  for (const auto& [bytes, line] : rows) {
    Open(bytes);
    EXPECT_EQ(Line(), line);
  }
}

TEST_F(TextFileTest, an_empty_file_is_at_its_end) {
  Open("");
  EXPECT_EQ(m_file.GetPosition(), 0U);
  EXPECT_EQ(m_file.GetLength(), 0U);
  EXPECT_EQ(Line(), "(end)");
  EXPECT_EQ(Line(), "(end)");
}

TEST_F(TextFileTest, reading_goes_on_when_the_file_grows) {
  Open("one\n");
  EXPECT_EQ(Line(), "one");
  EXPECT_EQ(Line(), "(end)");
  std::ofstream(m_folder.Path("text.txt"), std::ios::app | std::ios::binary) << "two\n";
  EXPECT_EQ(Line(), "two");
}

TEST_F(TextFileTest, writing_stands_where_reading_stopped) {
  Open("one\ntwo\nthree\n");
  EXPECT_EQ(Line(), "one");
  m_file.Write(u"TWO");
  EXPECT_EQ(m_file.GetPosition(), 7U);
  EXPECT_EQ(m_folder.Read("text.txt"), "one\nTWO\nthree\n");
  EXPECT_EQ(Line(), "");
  EXPECT_EQ(Line(), "three");
}

TEST_F(TextFileTest, bytes_and_lines_share_one_position) {
  Open("ab\ncdefgh\nij");
  EXPECT_EQ(Line(), "ab");
  char bytes[4] = {};
  EXPECT_EQ(m_file.ReadBytes(bytes, 3), 3U);
  EXPECT_STREQ(bytes, "cde");
  EXPECT_EQ(m_file.GetPosition(), 6U);
  EXPECT_EQ(Line(), "fgh");
  EXPECT_EQ(m_file.ReadBytes(bytes, 4), 2U) << "the file ends";
  EXPECT_EQ(m_file.GetPosition(), 12U);
}

TEST_F(TextFileTest, text_is_written_as_it_is) {
  Open("", CFile::modeCreate | CFile::modeReadWrite);
  m_file.Write(u"a\nß\r\n");
  m_file.Write(CString());
  m_file.Write(u"€");
  EXPECT_EQ(m_folder.Read("text.txt"), "a\nß\r\n€");
}

TEST_F(TextFileTest, utf16_marks_an_empty_file_once) {
  TextFile::SetWriteEncoding(WriteEncoding::Utf16);
  Open("", CFile::modeCreate | CFile::modeReadWrite);
  m_file.Write(u"a\n");
  m_file.Write(u"𝄞");
  EXPECT_EQ(m_folder.Read("text.txt"), Utf16(u"a\n𝄞"));
  m_file.Seek(0);
  EXPECT_EQ(m_file.GetPosition(), 2U);
  EXPECT_EQ(Line(), "a");
  EXPECT_EQ(Line(), "𝄞");
}

TEST_F(TextFileTest, the_write_encoding_is_that_of_the_process) {
  EXPECT_EQ(TextFile::GetWriteEncoding(), WriteEncoding::Ansi);
  RecordingUserInterface ui;
  CBrindle first;
  CBrindle second;
  first.SetUserInterface(&ui);
  second.SetUserInterface(&ui);
  const auto program = [this](const char* file, const char* write) {
    return m_folder.Write("script.bas", "open \"" + m_folder.Path(file).string() + "\" for output as 1 text\n" + write);
  };
  first.ExecuteProgram(program("a.txt", "x = writeline(1, \"a\", \"Utf16\")\n"));
  EXPECT_EQ(TextFile::GetWriteEncoding(), WriteEncoding::Utf16);
  second.ExecuteProgram(program("b.txt", "x = writeline(1, \"b\")\n"));
  second.ExecuteProgram(program("c.txt", "x = writeline(1, \"c\", \"utf8\")\n"));
  first.ExecuteProgram(program("d.txt", "x = writeline(1, \"d\", \"ascii\")\n"));
  second.ExecuteProgram(program("e.txt", "x = writeline(1, \"e\")\n"));
  EXPECT_TRUE(ui.errors.empty());
  EXPECT_EQ(m_folder.Read("a.txt"), Utf16(u"a"));
  EXPECT_EQ(m_folder.Read("b.txt"), Utf16(u"b"));
  EXPECT_EQ(m_folder.Read("c.txt"), Utf16(u"c"));
  EXPECT_EQ(m_folder.Read("d.txt"), "d");
  EXPECT_EQ(m_folder.Read("e.txt"), "e");
}

} // namespace
