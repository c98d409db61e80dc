#include "platform/data_folders.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace brindle {
namespace {

namespace fs = std::filesystem;

class DataFoldersTest : public testing::Test {
protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "brindle_data_XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    m_folder = pattern;
    m_data = Saved("XDG_DATA_HOME");
    m_home = Saved("HOME");
  }
  void TearDown() override {
    Set("XDG_DATA_HOME", m_data);
    Set("HOME", m_home);
    fs::remove_all(m_folder);
  }

  static std::optional<std::string> Saved(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
  }
  static void Set(const char* name, const std::optional<std::string>& value) {
    if (value)
      setenv(name, value->c_str(), 1);
    else
      unsetenv(name);
  }
  [[nodiscard]] std::string Path(const char* name) const { return (m_folder / name).string(); }
  [[nodiscard]] std::string Read(const char* name) const {
    std::ifstream file(m_folder / name);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  [[nodiscard]] std::ptrdiff_t Entries() const {
    return std::distance(fs::directory_iterator(m_folder), fs::directory_iterator());
  }

  fs::path m_folder;
  std::optional<std::string> m_data;
  std::optional<std::string> m_home;
};

TEST_F(DataFoldersTest, the_users_folder_comes_from_the_environment_or_the_list_of_users) {
  Set("XDG_DATA_HOME", Path("data"));
  const std::string own = UserDataFolder();
  EXPECT_TRUE(own.starts_with(Path("data"))) << own;
  const std::string behind = own.substr(Path("data").size());
  // A variable that is no path from the root does not count.
  for (const char* odd : {"", "data", "./data"}) {
    Set("XDG_DATA_HOME", odd);
    Set("HOME", Path("home"));
    EXPECT_EQ(UserDataFolder(), Path("home") + "/.local/share" + behind) << odd;
  }
  const passwd* const user = getpwuid(getuid());
  ASSERT_NE(user, nullptr);
  for (const char* odd : {"", "home"}) {
    Set("HOME", odd);
    EXPECT_EQ(UserDataFolder(), std::string(user->pw_dir) + "/.local/share" + behind) << odd;
  }
}

TEST_F(DataFoldersTest, a_file_is_written_whole_into_folders_that_are_made) {
  std::string reason;
  EXPECT_TRUE(WriteDataFile(Path("a/b/file.txt"), "one\n", reason));
  EXPECT_TRUE(WriteDataFile(Path("a/b/file.txt"), "two\n", reason));
  EXPECT_EQ(Read("a/b/file.txt"), "two\n");
  EXPECT_EQ(FilesIn(Path("a/b"), ".txt"), std::vector<std::string>{Path("a/b/file.txt")});
  EXPECT_TRUE(FilesIn(Path("a/b"), ".bas").empty());
  EXPECT_TRUE(FilesIn(Path("nowhere"), ".txt").empty());
  EXPECT_TRUE(RemoveDataFile(Path("a/b/file.txt"), reason));
  EXPECT_EQ(reason, "");
}

TEST_F(DataFoldersTest, what_cannot_be_written_or_removed_says_why_and_leaves_nothing) {
  std::ofstream(m_folder / "file") << "text";
  fs::create_directories(m_folder / "taken/x");
  std::string reason;
  EXPECT_FALSE(WriteDataFile(Path("file/below/new.txt"), "x", reason));
  EXPECT_EQ(reason, "cannot make the folder " + Path("file/below") + ": Not a directory");
  EXPECT_FALSE(WriteDataFile(Path("taken"), "x", reason));
  EXPECT_EQ(reason, "cannot write " + Path("taken") + ": Is a directory");
  fs::create_directory(m_folder / ("new." + std::to_string(getpid()) + ".part"));
  EXPECT_FALSE(WriteDataFile(Path("new"), "x", reason));
  EXPECT_EQ(reason, "cannot write " + Path("new"));
  EXPECT_FALSE(RemoveDataFile(Path("missing"), reason));
  EXPECT_EQ(reason, "cannot remove " + Path("missing"));
  EXPECT_FALSE(RemoveDataFile(Path("taken"), reason));
  EXPECT_EQ(reason, "cannot remove " + Path("taken") + ": Directory not empty");
  EXPECT_EQ(Read("file"), "text");
  EXPECT_LE(Entries(), 3);
}

} // namespace
} // namespace brindle
