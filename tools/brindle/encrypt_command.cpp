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

int EncryptCommand(const Words& words) {
  CLI::App app("Writes the enciphered form of a script, which runs as the script does and cannot be read.",
               "brindle encrypt");
  std::string source;
  std::string target;
  app.add_option("IN", source, "The script")->type_name("");
  const CLI::Option* const last = app.add_option("OUT", target, "The file to write")->type_name("");
  if (const auto over = ReadPlainWords(app, words, [last] { return last->count() == 1; }))
    return *over;
  const fs::path in(source);
  const fs::path out(target);
  std::error_code error;
  if (fs::is_directory(in, error))
    return Fail(in.string() + " is a folder");
  std::ifstream script(in, std::ios::binary);
  if (!script)
    return Fail("cannot read " + in.string());
  const std::string plain((std::istreambuf_iterator<char>(script)), std::istreambuf_iterator<char>());
  if (script.bad())
    return Fail("cannot read " + in.string());
  if (fs::equivalent(in, out, error))
    return Fail("the script would be lost: OUT is the same file as IN");
  if (CEnvironment::IsEncipheredScript(plain))
    return Fail(in.string() + " is enciphered already");

  std::string reason;
  const auto enciphered = CEnvironment::EncipherScript(plain, reason);
  if (!enciphered)
    return Fail(in.string() + ": " + reason);
  // As private as the script is.
  const fs::perms mode = fs::status(in, error).permissions() & fs::perms(0666);
  return Write(out, *enciphered, mode) ? kDone : Fail("cannot write " + out.string());
}
