#include "platform/shared_library.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

using brindle::SharedLibrary;

namespace {

TEST(SharedLibraries, a_library_of_the_system_opens_by_its_name) {
  std::string failure;
  const SharedLibrary library = SharedLibrary::Open("libm.so.6", failure);
  ASSERT_TRUE(library.IsOpen()) << failure;
  EXPECT_EQ(failure, "");
  auto* const cosine = library.FindFunction<double(double)>("cos");
  ASSERT_NE(cosine, nullptr);
  EXPECT_EQ(cosine(0.0), 1.0);
}

TEST(SharedLibraries, an_unknown_export_is_null) {
  std::string failure;
  const SharedLibrary library = SharedLibrary::Open("libm.so.6", failure);
  EXPECT_EQ(library.FindSymbol("no_such_export"), nullptr);
  EXPECT_EQ(library.FindSymbol(""), nullptr);
  EXPECT_EQ(library.FindSymbol(std::string("cos\0sin", 7)), nullptr);
  EXPECT_EQ(SharedLibrary().FindSymbol("cos"), nullptr);
}

TEST(SharedLibraries, nonsense_names_fail_with_a_reason_in_one_line) {
  const std::string names[] = {"",
                               std::string("a\0b", 3),
                               "no_such_library",
                               "/no/such/library.so",
                               "/",
                               ".",
                               "./",
                               "..",
                               "/tmp",
                               "%s%n%s",
                               "\xff\xfe",
                               "line\nbreak",
                               std::string(100000, 'x'),
                               "/" + std::string(100000, 'y')};
  for (const std::string& name : names) {
    SCOPED_TRACE(name.substr(0, 20));
    std::string failure;
    EXPECT_FALSE(SharedLibrary::Open(name, failure).IsOpen());
    EXPECT_NE(failure, "");
    EXPECT_EQ(failure.find('\n'), std::string::npos);
  }
}

TEST(SharedLibraries, files_that_are_no_libraries_fail_at_once) {
  std::string pattern = (std::filesystem::temp_directory_path() / "brindle-unit-XXXXXX").string();
  const std::filesystem::path folder = mkdtemp(pattern.data());
  std::ofstream(folder / "text.so") << "no library at all, but longer than the head of one would have to be. "
                                    << folder;
  std::ofstream(folder / "empty.so").close();
  ASSERT_EQ(mkfifo((folder / "pipe.so").c_str(), 0600), 0);
  for (const char* name : {"text.so", "empty.so", "pipe.so", "missing.so"}) {
    SCOPED_TRACE(name);
    std::string failure;
    EXPECT_FALSE(SharedLibrary::Open((folder / name).string(), failure).IsOpen());
    EXPECT_NE(failure.find(name), std::string::npos) << failure;
  }
  std::filesystem::remove_all(folder);
}

TEST(SharedLibraries, a_plug_in_that_is_not_installed_is_named) {
  std::string failure;
  EXPECT_FALSE(SharedLibrary::OpenPlugIn("libbrindle-nowhere.so", failure).IsOpen());
  EXPECT_EQ(failure, "libbrindle-nowhere.so: not found");
}

TEST(SharedLibraries, the_own_folder_is_the_programs_where_the_code_is_linked_in) {
  EXPECT_EQ(brindle::OwnFolder(), std::filesystem::read_symlink("/proc/self/exe").parent_path().string());
}

} // namespace
