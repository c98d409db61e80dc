#include "encrypt_command.h"

#include <brindle/environment.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <random>

namespace {

namespace fs = std::filesystem;

enum ExitStatus { kWritten = 0, kFailed = 1, kUsage = 2 };

int Fail(const std::string& reason) {
  std::cerr << "brindle encrypt: " << reason << '\n';
  return kFailed;
}

bool WriteTo(std::FILE* file, const std::string& text) {
  const bool written = file != nullptr && std::fwrite(text.data(), 1, text.size(), file) == text.size();
  return file != nullptr && std::fclose(file) == 0 && written;
}

// A file of a name that nobody has, beside its place: a full disk must not cost an older file.
bool Replace(const fs::path& place, const std::string& text, fs::perms mode) {
  std::random_device random;
  fs::path unfinished;
  std::FILE* file = nullptr;
  for (int attempt = 0; file == nullptr && attempt < 16; ++attempt) {
    unfinished = place;
    unfinished += "." + std::to_string(random()) + ".part";
    file = std::fopen(unfinished.c_str(), "wbx");
  }
  if (file == nullptr)
    return false;
  std::error_code error;
  fs::permissions(unfinished, mode, error); // before the text is in it
  if (WriteTo(file, text)) {
    fs::rename(unfinished, place, error);
    if (!error)
      return true;
  }
  fs::remove(unfinished, error);
  return false;
}

bool Write(const fs::path& out, const std::string& text, fs::perms mode) {
  std::error_code error;
  const fs::file_status status = fs::status(out, error); // of what a link leads to
  if (!fs::exists(status))
    return Replace(out, text, mode);
  if (!fs::is_regular_file(status))
    return !fs::is_directory(status) && WriteTo(std::fopen(out.c_str(), "wb"), text);
  const fs::path place = fs::canonical(out, error);
  return !error && Replace(place, text, status.permissions());
}

} // namespace

int EncryptCommand(const std::vector<std::string>& words) {
  if (words.size() != 2) {
    std::cerr << "usage: brindle encrypt IN OUT\n";
    return kUsage;
  }
  const fs::path in(words[0]);
  const fs::path out(words[1]);
  std::error_code error;
  if (fs::is_directory(in, error))
    return Fail(in.string() + " is a folder");
  std::ifstream source(in, std::ios::binary);
  if (!source)
    return Fail("cannot read " + in.string());
  const std::string plain((std::istreambuf_iterator<char>(source)), std::istreambuf_iterator<char>());
  if (source.bad())
    return Fail("cannot read " + in.string());
  if (fs::equivalent(in, out, error))
    return Fail("the script would be lost: OUT is the same file as IN");
  if (CEnvironment::IsEncipheredScript(plain))
    return Fail(in.string() + " is enciphered already");

  std::string reason;
  const auto script = CEnvironment::EncipherScript(plain, reason);
  if (!script)
    return Fail(in.string() + ": " + reason);
  // As private as the script is.
  const fs::perms mode = fs::status(in, error).permissions() & fs::perms(0666);
  return Write(out, *script, mode) ? kWritten : Fail("cannot write " + out.string());
}
