// Enciphered scripts: their numbers against another implementation of the cipher, and what is read as one.
#include "calls/script_cipher.h"
#include "support/script_test.h"

#include <nettle/blowfish.h>

#include <algorithm>
#include <cstdint>
#include <random>

namespace {

using Bytes = std::vector<std::uint8_t>;

// The key is part of the file format: scripts enciphered once must run for ever.
constexpr std::string_view kKey = "Brindle1";

void TurnHalves(Bytes& bytes) {
  for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4)
    std::reverse(bytes.begin() + static_cast<std::ptrdiff_t>(i), bytes.begin() + static_cast<std::ptrdiff_t>(i) + 4);
}

blowfish_ctx OtherCipher() {
  blowfish_ctx context;
  blowfish_set_key(&context, kKey.size(), reinterpret_cast<const std::uint8_t*>(kKey.data()));
  return context;
}

Bytes Enciphered(std::string_view plain) {
  Bytes bytes(plain.begin(), plain.end());
  bytes.resize((bytes.size() + 7) / 8 * 8);
  TurnHalves(bytes);
  const blowfish_ctx context = OtherCipher();
  blowfish_encrypt(&context, bytes.size(), bytes.data(), bytes.data());
  TurnHalves(bytes);
  return bytes;
}

std::string Deciphered(Bytes bytes) {
  bytes.resize((bytes.size() + 7) / 8 * 8);
  TurnHalves(bytes);
  const blowfish_ctx context = OtherCipher();
  blowfish_decrypt(&context, bytes.size(), bytes.data(), bytes.data());
  TurnHalves(bytes);
  return {bytes.begin(), std::find(bytes.begin(), bytes.end(), 0)};
}

std::string Numbers(const Bytes& bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes)
    text.append(text.empty() ? "" : ",").append(std::to_string(byte));
  return text;
}

std::string Decipher(std::string_view numbers) {
  return brindle::DecipherNumbers(std::u16string(numbers.begin(), numbers.end()));
}

TEST(ScriptCipher, numbers_decipher_under_the_fixed_key) {
  std::mt19937 random(1);
  for (std::size_t length = 1; length <= 64; ++length) {
    std::string plain(length, ' ');
    for (char& letter : plain)
      letter = static_cast<char>(1 + random() % 255);
    EXPECT_EQ(Decipher(Numbers(Enciphered(plain))), plain) << length;
  }
}

TEST(ScriptCipher, every_count_of_numbers_agrees_with_another_implementation) {
  std::mt19937 random(2);
  for (std::size_t count = 0; count <= 40; ++count) {
    Bytes bytes(count);
    for (std::uint8_t& byte : bytes)
      byte = static_cast<std::uint8_t>(random());
    EXPECT_EQ(Decipher(Numbers(bytes)), Deciphered(bytes)) << count;
  }
}

TEST(ScriptCipher, thirteen_numbers_are_two_blocks_with_a_tail_of_zeros) {
  // A text whose second block is known to come out different without its last three bytes.
  const Bytes whole = Enciphered("print 1\nprint 2\n");
  Bytes cut(whole.begin(), whole.begin() + 13);
  const std::string plain = Decipher(Numbers(cut));
  EXPECT_EQ(plain, Deciphered(cut));
  EXPECT_EQ(plain.substr(0, 8), "print 1\n");
  cut.resize(16);
  EXPECT_EQ(plain, Decipher(Numbers(cut)));
}

TEST(ScriptCipher, sixteen_numbers_are_two_blocks) {
  const Bytes whole = Enciphered("print 1\nprint 2\nprint 3\n");
  EXPECT_EQ(Decipher(Numbers(Bytes(whole.begin(), whole.begin() + 16))), "print 1\nprint 2\n");
}

// Both sides of the limits of a number: a whole block whose first byte can be written in many ways.
TEST(ScriptCipher, a_number_counts_within_32_bits) {
  struct Row {
    const char* number;
    int byte; // -1: the list ends there
  };
  const Row rows[] = {
      {"0", 0},
      {"-0", 0},
      {"+7", 7},
      {"255", 255},
      {"256", 0},
      {"-1", 255},
      {"-255", 1},
      {"-256", 0},
      {"65536", 0},
      {"000000000000000000000000000017", 17},
      {"-000000000000000000000000000017", 239},
      {"2147483646", 0xFE},
      {"2147483647", -1},
      {"2147483648", -1},
      {"4294967297", -1},
      {"18446744073709551617", -1},
      {"99999999999999999999999999999999", -1},
      {"-2147483647", 1},
      {"-2147483648", -1},
      {"-2147483649", -1},
      {"-99999999999999999999999999999999", -1},
      {"x", -1},
      {"0x10", 0},
      {"-", -1},
      {"+", -1},
      {"--1", -1},
      {"- 1", -1},
      {"", -1},
      {".5", -1},
      {"\"5\"", -1},
      {"#5", -1},
  };
  const Bytes rest = {9, 8, 7, 6, 5, 4, 3};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.number);
    Bytes expected;
    if (row.byte >= 0) {
      expected.push_back(static_cast<std::uint8_t>(row.byte));
      if (std::string_view(row.number) != "0x10") // behind its digits stands a letter
        expected.insert(expected.end(), rest.begin(), rest.end());
    }
    EXPECT_EQ(Decipher(std::string(row.number) + "," + Numbers(rest)), Deciphered(expected));
  }
}

TEST(ScriptCipher, white_space_may_stand_before_a_number_only) {
  const Bytes whole = Enciphered("print 1\nprint 2\n");
  const std::string first = Numbers(Bytes(whole.begin(), whole.begin() + 8));
  const std::string second = Numbers(Bytes(whole.begin() + 8, whole.end()));
  const std::string both = "print 1\nprint 2\n";
  struct Row {
    const char* name;
    std::string numbers;
    std::string expected;
  };
  const Row rows[] = {
      {"comma", first + "," + second, both},
      {"blank", first + " " + second, both},
      {"comma and white space", first + ",\t\v\f\r\n " + second, both},
      {"line break", first + "\r\n" + second, both},
      {"white space in front and behind", " \r\n" + first + "," + second + " \r\n", both},
      {"comma at the end", first + "," + second + ",", both},
      {"blank before the comma", first + " ," + second, "print 1\n"},
      {"two commas", first + ",," + second, "print 1\n"},
      {"semicolon", first + ";" + second, "print 1\n"},
      {"comma in front", "," + first, ""},
  };
  for (const Row& row : rows)
    EXPECT_EQ(Decipher(row.numbers), row.expected) << row.name;
}

TEST(ScriptCipher, characters_beyond_8_bits_are_no_digits) {
  EXPECT_EQ(brindle::DecipherNumbers(u"\u0661,2,3"), "");
  EXPECT_EQ(brindle::DecipherNumbers(u"\u00A01,2,3"), "");
}

TEST(ScriptCipher, what_is_enciphered_deciphers_to_itself) {
  std::mt19937 random(3);
  for (std::size_t length = 0; length <= 300; length += length < 40 ? 1 : 13) {
    std::string plain(length, ' ');
    for (char& letter : plain)
      letter = static_cast<char>(1 + random() % 255);
    std::string reason;
    const auto script = brindle::EncipherScript(plain, reason);
    ASSERT_TRUE(script) << reason;
    const std::string head = "encrypt\r\n";
    ASSERT_EQ(script->substr(0, head.size()), head);
    const std::size_t numbers = std::string_view("encrypt").size() + brindle::kCipherTextOffset;
    EXPECT_EQ(Decipher(std::string_view(*script).substr(numbers)), plain);
    EXPECT_EQ(script->find_first_not_of("0123456789, \r\n", head.size()), std::string::npos);
  }
}

TEST(ScriptCipher, a_zero_byte_is_refused_with_its_reason) {
  for (const std::string& plain : {std::string(1, '\0'), std::string("print 1\n\0", 9), std::string("a\0b", 3)}) {
    std::string reason;
    EXPECT_FALSE(brindle::EncipherScript(plain, reason));
    EXPECT_NE(reason.find("zero"), std::string::npos) << reason;
  }
}

class EncipheredProgram : public ScriptTest {
protected:
  bool RunNumbers(std::string_view plain) { return Run("encrypt\r\n " + ::Numbers(Enciphered(plain)) + "\r\n"); }
};

TEST_F(EncipheredProgram, its_text_is_the_deciphered_one_with_a_line_end) {
  EXPECT_TRUE(RunNumbers("print \"hi\"\nx = 5"));
  EXPECT_EQ(m_ui.Output(), "hi\n");
  EXPECT_EQ(State().program->Text(), u"print \"hi\"\nx = 5\n");
  EXPECT_EQ(TextOf(u"x"), "5.000000");
}

TEST_F(EncipheredProgram, an_error_quotes_the_deciphered_line) {
  EXPECT_TRUE(RunNumbers("x = 1\nnext\n"));
  EXPECT_EQ(m_ui.errors, std::vector<std::string>{"Illegal NEXT statement.\n\nnext"});
  EXPECT_EQ(Interpreter().GetLastError().ToUtf8(), "Illegal NEXT statement.\n\nnext");
}

TEST_F(EncipheredProgram, a_marker_without_numbers_is_an_empty_program) {
  for (const char* text : {"encrypt", "encrypt\n", "encrypt\r\n", "encrypt\r\n ", "\n\nENCRYPT\r\n \r\n",
                           "encrypt 1,2,3\r\n ", "encrypt\r\n x1,2,3,4,5,6,7,8\r\nprint \"not read\"\n"}) {
    SCOPED_TRACE(text);
    EXPECT_TRUE(Run(text));
    EXPECT_TRUE(m_ui.errors.empty());
    EXPECT_EQ(m_ui.Output(), "");
  }
}

TEST_F(EncipheredProgram, another_first_statement_runs_the_text_unchanged) {
  for (const char* text :
       {"print \"a\"\nencrypt\nprint \"b\"\n", "# comment\nencrypt\nprint \"a\"\nprint \"b\"\n",
        "rem comment\nencrypt 1,2\nprint \"a\"\nprint \"b\"\n", "encrypted = 1\nprint \"a\"\nprint \"b\"\n"}) {
    SCOPED_TRACE(text);
    m_ui.Forget();
    EXPECT_TRUE(Run(text));
    EXPECT_TRUE(m_ui.errors.empty());
    EXPECT_EQ(m_ui.Output(), "a\nb\n");
  }
}

// The marker's end is a line end of two characters and one more: a line feed alone costs two characters.
TEST_F(EncipheredProgram, the_numbers_begin_three_characters_behind_the_marker) {
  const Bytes bytes = Enciphered("print 1\n");
  ASSERT_EQ(bytes[0], 218); // three digits, so that losing two of them leaves a number
  const std::string numbers = ::Numbers(bytes);
  struct Row {
    const char* between;
    bool whole;
  };
  for (const Row& row : {Row{"\r\n ", true}, Row{"\n  ", true}, Row{"\r\nX", true}, Row{"\n\n\n", true},
                         Row{"  \t\r\n ", true}, Row{" anything\r\n ", true}, Row{"\r\n   \r\n ", true},
                         Row{"\n ", false}, Row{"\n", false}, Row{"\r\n", false}}) {
    SCOPED_TRACE(row.between);
    m_ui.Forget();
    Run("encrypt" + std::string(row.between) + numbers + "\r\n");
    if (row.whole)
      EXPECT_EQ(m_ui.Output(), "1.000000\n");
    else
      EXPECT_EQ(m_ui.Output(), "");
  }
}

TEST_F(EncipheredProgram, a_run_behind_a_plain_one_and_back) {
  Run("print \"plain\"\n");
  RunNumbers("print \"enciphered\"\n");
  Run("print \"plain again\"\n");
  EXPECT_EQ(m_ui.Output(), "plain\nenciphered\nplain again\n");
}

TEST_F(EncipheredProgram, its_procedures_serve_later_runs_and_events) {
  RunNumbers("event create ping shown\nend\nsub shown(v)\nprint v\nendsub\n");
  Run("call shown(\"called\")\n");
  CBasicVariable value(u"thrown");
  Interpreter().EventThrow(u"ping", &value);
  EXPECT_EQ(m_ui.Output(), "called\nthrown\n");
}

TEST_F(EncipheredProgram, damaged_numbers_never_harm_the_host) {
  std::mt19937 random(4);
  m_ui.CancelErrors();
  for (int round = 0; round < 300; ++round) {
    Bytes bytes(random() % 64);
    for (std::uint8_t& byte : bytes)
      byte = static_cast<std::uint8_t>(random());
    EXPECT_TRUE(Run("encrypt\r\n " + ::Numbers(bytes) + "\r\n"));
  }
}

} // namespace
