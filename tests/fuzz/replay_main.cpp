// Runs a fuzzer over the files of folders: its seeds, and what it once found. No clang and no engine is needed.
#include "fuzz_support.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> FilesOf(const fs::path& folder) {
  std::vector<fs::path> files;
  if (fs::is_directory(folder))
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
      files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

void RunFile(const fs::path& path) {
  // Named before it runs: what breaks ends the process.
  std::printf("%s\n", path.c_str());
  std::fflush(stdout);
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int count, char** arguments) {
  std::size_t runs = 0;
  for (int i = 1; i < count; ++i)
    for (const fs::path& path : FilesOf(arguments[i])) {
      RunFile(path);
      ++runs;
    }
  std::printf("%zu inputs\n", runs);
  return runs > 0 ? 0 : 1;
}
