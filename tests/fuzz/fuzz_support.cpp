#include "fuzz_support.h"

#include <algorithm>
#include <filesystem>
#include <unistd.h>

namespace fuzz {

namespace fs = std::filesystem;

namespace {

class Folder {
public:
  Folder() {
    const bool hasMemory = access("/dev/shm", W_OK) == 0;
    m_path = (hasMemory ? std::string("/dev/shm") : fs::temp_directory_path().string()) + "/brindle-fuzz-XXXXXX";
    Require(mkdtemp(m_path.data()) != nullptr, "a folder can be made");
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
  }
  [[nodiscard]] const std::string& Path() const noexcept { return m_path; }

private:
  std::string m_path;
};

} // namespace

std::uint64_t Input::Number(std::size_t bytes) {
  std::uint64_t number = 0;
  const std::string_view taken = Bytes(bytes);
  for (std::size_t i = 0; i < taken.size(); ++i)
    number |= static_cast<std::uint64_t>(static_cast<unsigned char>(taken[i])) << (8 * i);
  return number;
}

std::string_view Input::Bytes(std::size_t count) {
  const std::string_view taken = m_bytes.substr(0, count);
  m_bytes.remove_prefix(taken.size());
  return taken;
}

const std::string& ScratchFolder() {
  static const Folder folder;
  return folder.Path();
}

void WriteScratch(const std::string& name, std::string_view bytes) {
  std::FILE* file = std::fopen((ScratchFolder() + "/" + name).c_str(), "wb");
  Require(file != nullptr, "a file can be made");
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  Require(std::fclose(file) == 0 && written, "a file can be written");
}

void ClearScratch() {
  for (const fs::directory_entry& entry : fs::directory_iterator(ScratchFolder())) {
    std::error_code ignored;
    fs::remove_all(entry.path(), ignored);
  }
}

} // namespace fuzz
