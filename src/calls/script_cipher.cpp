#include "calls/script_cipher.h"

#include "brindle/blowfish.h"
#include "brindle/interpreter.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"
#include "platform/code_page.h"

#include <array>
#include <vector>

namespace brindle {

namespace {

constexpr std::size_t kNumbersPerLine = 16;

// The cipher under the key that every interpreter shares. It keeps a script from a passing eye, not from
// somebody who has this library.
void SetKey(CBlowFish& cipher) {
  constexpr std::array<std::uint32_t, 2> kKey = {0x6E697242U, 0x31656C64U};
  std::array<unsigned char, 8> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<unsigned char>(kKey[i / 4] >> (8 * (i % 4)));
  cipher.Initialize(bytes.data(), static_cast<int>(bytes.size()));
}

bool IsSpaceUnit(char16_t unit) {
  return unit == u' ' || (unit >= 9 && unit <= 13);
}

// A decimal number behind white space. False when there is none, or when it does not fit 32 bits.
bool ReadNumber(std::u16string_view text, std::size_t& at, std::int64_t& value) {
  while (at < text.size() && IsSpaceUnit(text[at]))
    ++at;
  bool negative = false;
  if (at < text.size() && (text[at] == u'-' || text[at] == u'+'))
    negative = text[at++] == u'-';
  const std::size_t first = at;
  value = 0;
  for (; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at) {
    value = value * 10 + (text[at] - u'0');
    if (value >= (negative ? -std::int64_t{INT32_MIN} : std::int64_t{INT32_MAX}))
      return false; // what does not fit reads as the limit, so the limit itself ends the list too
  }
  if (negative)
    value = -value;
  return at > first;
}

} // namespace

std::string DecipherNumbers(std::u16string_view numbers) {
  std::vector<unsigned char> bytes;
  std::int64_t value = 0;
  for (std::size_t at = 0; ReadNumber(numbers, at, value);) {
    bytes.push_back(static_cast<unsigned char>(value));
    if (at < numbers.size() && numbers[at] == u',')
      ++at;
  }
  CBlowFish cipher;
  SetKey(cipher);
  const auto count = static_cast<unsigned long>(bytes.size());
  bytes.resize(cipher.GetOutputLength(count)); // a last block cut short reads zeros
  cipher.Decode(bytes.data(), bytes.data(), count);
  const std::string plain(bytes.begin(), bytes.end());
  return plain.substr(0, plain.find('\0'));
}

std::optional<std::string> EncipherScript(std::string_view plain, std::string& reason) {
  if (plain.find('\0') != std::string_view::npos) {
    reason = "the script holds a zero byte, and a deciphered script ends at the first one";
    return std::nullopt;
  }
  std::vector<unsigned char> bytes(plain.begin(), plain.end());
  CBlowFish cipher;
  SetKey(cipher);
  const auto count = static_cast<unsigned long>(bytes.size());
  bytes.resize(cipher.GetOutputLength(count));
  cipher.Encode(bytes.data(), bytes.data(), count);

  std::string script = "encrypt\r\n "; // three characters stand before the first number
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    script += std::to_string(bytes[i]);
    if (i + 1 < bytes.size())
      script += (i + 1) % kNumbersPerLine == 0 ? ",\r\n" : ",";
  }
  script += "\r\n";
  if (script.size() >= static_cast<std::size_t>(kLongestText)) {
    reason = "the enciphered script would be too long to be loaded";
    return std::nullopt;
  }
  const std::u16string numbers(script.begin() + 7 + kCipherTextOffset, script.end());
  if (DecipherNumbers(numbers) != plain) {
    reason = "the script would not come back as it is";
    return std::nullopt;
  }
  return script;
}

} // namespace brindle

using namespace brindle;

// Recognises an enciphered program by its first word and replaces it by the plain one.
bool CBrindle::Decrypt() {
  Rewind();
  do
    get_token();
  while (m_pState->token.command == COMMAND_END_OF_LINE);
  const bool enciphered = m_pState->token.command == COMMAND_ENCRYPT && ExecEncrypt();
  Rewind();
  return enciphered;
}

bool CBrindle::ExecEncrypt() {
  FindEOL();
  const std::u16string_view text = m_pState->program->Text();
  const std::size_t start = m_pState->position + kCipherTextOffset;
  const std::string plain = DecipherNumbers(start < text.size() ? text.substr(start) : std::u16string_view());
  std::u16string program = CodePage::Ansi().Decode(plain);
  program.push_back(u'\n'); // as every program that is loaded
  m_pState->program = std::make_shared<ProgramText>(std::move(program), m_pState->fileName);
  m_pState->program->HideSource();
  m_pState->position = 0;
  return true;
}
