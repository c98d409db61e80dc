// Enciphered scripts: any program as the interpreter deciphers it, any text there and back, the cipher with any key.
#include "fuzz_support.h"

#include "brindle/blowfish.h"
#include "brindle/environment.h"
#include "calls/script_cipher.h"
#include "platform/code_page.h"
#include "support/test_access.h"

#include <algorithm>
#include <vector>

using namespace brindle;
using fuzz::Require;

namespace {

// True when the program was an enciphered one; `plain` is what it became.
bool Decipher(std::string_view script, std::u16string& plain) {
  CUserInterface nobody;
  CBrindle interpreter;
  interpreter.SetUserInterface(&nobody);
  InterpreterState& state = BrindleTestAccess::State(interpreter);
  state.program = std::make_shared<ProgramText>(CodePage::Utf8().Decode(script) + u'\n');
  const bool deciphered = BrindleTestAccess::Decrypt(interpreter);
  Require(state.position == 0, "reading begins at the start");
  plain = state.program->Text();
  return deciphered;
}

void CheckScript(std::string_view bytes) {
  std::string reason;
  const auto script = EncipherScript(bytes, reason);
  Require(script.has_value() == (bytes.find('\0') == std::string_view::npos), "only a zero byte cannot be enciphered");
  if (!script)
    return;
  Require(CEnvironment::IsEncipheredScript(*script), "an enciphered script is known as one");
  std::u16string plain;
  Require(Decipher(*script, plain) && plain == CodePage::Utf8().Decode(bytes) + u'\n', "a script comes back");
}

void CheckCipher(std::string_view key, std::string_view bytes) {
  std::vector<unsigned char> keyBytes(key.begin(), key.end());
  const std::vector<unsigned char> plain(bytes.begin(), bytes.end());
  CBlowFish cipher;
  if (keyBytes.empty())
    keyBytes.push_back(0);
  cipher.Initialize(keyBytes.data(), static_cast<int>(keyBytes.size()));
  const auto count = static_cast<unsigned long>(plain.size());
  std::vector<unsigned char> work = plain;
  work.resize(cipher.GetOutputLength(count));
  Require(cipher.Encode(work.data(), work.data(), count) == work.size(), "whole blocks are written");
  cipher.Decode(work.data(), work.data(), static_cast<unsigned long>(work.size()));
  Require(std::equal(plain.begin(), plain.end(), work.begin()), "bytes come back");
  Require(std::all_of(work.begin() + static_cast<std::ptrdiff_t>(plain.size()), work.end(),
                      [](unsigned char byte) { return byte == 0; }),
          "a block is filled up with zeros");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::u16string plain;
  const bool deciphered = Decipher(bytes, plain);
  Require(deciphered || plain == CodePage::Utf8().Decode(bytes) + u'\n', "a plain program stays as it is");
  const bool startsAscii = !bytes.empty() && static_cast<unsigned char>(bytes[0]) < 0x80;
  // A zero byte, which the text reader takes for a line end, is none for a host that looks at the file.
  if (startsAscii && bytes.find('\0') == std::string_view::npos)
    Require(deciphered == CEnvironment::IsEncipheredScript(bytes), "hosts and interpreter agree on what is enciphered");
  // One of the two: making a key ready takes most of a run's time.
  if (size % 2 == 0) {
    CheckScript(bytes);
    return 0;
  }
  fuzz::Input input(data, size);
  const std::string_view key = input.Bytes(input.Byte() % 80);
  CheckCipher(key, input.Rest());
  return 0;
}
