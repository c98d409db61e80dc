#include "encrypt_command.h"

#include "calls/script_cipher.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace {

enum ExitStatus { kWritten = 0, kFailed = 1, kUsage = 2 };

int Fail(const std::string& reason) {
  std::cerr << "brindle encrypt: " << reason << '\n';
  return kFailed;
}

// Whether the first word of the script is "encrypt", so that running it would decipher it.
bool IsEnciphered(std::string_view script) {
  constexpr std::string_view kWord = "encrypt";
  const std::size_t start = script.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos || script.size() - start < kWord.size())
    return false;
  for (std::size_t i = 0; i < kWord.size(); ++i)
    if ((script[start + i] | 0x20) != kWord[i])
      return false;
  const std::string_view rest = script.substr(start + kWord.size());
  return rest.empty() || std::string_view(" \t\r\n,;=+-").find(rest[0]) != std::string_view::npos;
}

} // namespace

int EncryptCommand(const std::vector<std::string>& words) {
  if (words.size() != 2) {
    std::cerr << "usage: brindle encrypt IN OUT\n";
    return kUsage;
  }
  const std::filesystem::path in(words[0]);
  const std::filesystem::path out(words[1]);
  std::error_code error;
  if (std::filesystem::is_directory(in, error))
    return Fail(in.string() + " is a folder");
  std::ifstream source(in, std::ios::binary);
  if (!source)
    return Fail("cannot read " + in.string());
  const std::string plain((std::istreambuf_iterator<char>(source)), std::istreambuf_iterator<char>());
  if (source.bad())
    return Fail("cannot read " + in.string());
  if (std::filesystem::equivalent(in, out, error))
    return Fail("the script would be lost: OUT is the same file as IN");
  if (IsEnciphered(plain))
    return Fail(in.string() + " is enciphered already");

  std::string reason;
  const auto script = brindle::EncipherScript(plain, reason);
  if (!script)
    return Fail(in.string() + ": " + reason);

  // Beside its place first: a full disk must not cost an older file.
  std::filesystem::path unfinished = out;
  unfinished += ".part";
  std::ofstream target(unfinished, std::ios::binary | std::ios::trunc);
  target << *script;
  target.close();
  if (target)
    std::filesystem::rename(unfinished, out, error);
  if (!target || error) {
    std::filesystem::remove(unfinished, error);
    return Fail("cannot write " + out.string());
  }
  return kWritten;
}
