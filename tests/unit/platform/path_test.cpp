#include "platform/path.h"

#include "platform/file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace brindle {
namespace {

using Names = std::vector<std::u16string>;

class Path : public ::testing::Test {
protected:
  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "brindle_path_XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    m_folder = pattern;
    m_start = std::filesystem::current_path();
    std::filesystem::current_path(m_folder);
  }
  void TearDown() override {
    std::filesystem::current_path(m_start);
    std::filesystem::remove_all(m_folder);
  }

  static void Make(const std::string& name) { std::ofstream stream(name); }
  static void MakeFolder(const char* name) { std::filesystem::create_directories(name); }

  std::filesystem::path m_folder;
  std::filesystem::path m_start;
};

TEST_F(Path, resolves_component_by_component) {
  MakeFolder("Data/Sub");
  MakeFolder("mixed");
  Make("Data/File.Txt");
  Make("Data/Sub/Deep");
  Make("data.txt");
  Make("DATA.TXT");
  Make("Mixed.file");
  Make("MIXED");
  Make("\xC3\x84rger.txt");

  struct Row {
    const char* name;
    std::u16string_view path;
    std::string_view native;
  };
  const Row rows[] = {
      {"empty", u"", ""},
      {"as written", u"Data/File.Txt", "Data/File.Txt"},
      {"backslash", u"Data\\File.Txt", "Data/File.Txt"},
      {"file without case", u"Data/file.txt", "Data/File.Txt"},
      {"folder without case", u"DATA\\sub\\DEEP", "Data/Sub/Deep"},
      {"exact name preferred", u"DATA.TXT", "DATA.TXT"},
      {"exact name preferred, the other", u"data.txt", "data.txt"},
      {"first in byte order", u"Data.Txt", "DATA.TXT"},
      {"only a folder serves before a separator", u"Mixed/x", "mixed/x"},
      {"an exact file is no folder either", u"MIXED/x", "mixed/x"},
      {"umlaut without case", u"\u00E4RGER.TXT", "\xC3\x84rger.txt"},
      {"missing last component as written", u"DATA/New.Txt", "Data/New.Txt"},
      {"missing folder as written", u"DATA/No/New.Txt", "Data/No/New.Txt"},
      {"missing altogether", u"Nothing", "Nothing"},
      {"dots", u".\\DATA\\..\\data\\FILE.TXT", "./Data/../Data/File.Txt"},
      {"separator at the end", u"data\\sub\\", "Data/Sub/"},
      {"doubled separators", u"DATA\\\\file.txt", "Data//File.Txt"},
      {"root", u"\\", "/"},
      {"beyond a file", u"data.txt/x", "data.txt/x"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ResolvePath(row.path), row.native);
  }
}

TEST_F(Path, resolves_absolute_paths) {
  MakeFolder("Data");
  Make("Data/File.Txt");
  const std::string absolute = m_folder.string();
  EXPECT_EQ(ResolvePath(PathFromNative(absolute + "\\DATA\\file.TXT")), absolute + "/Data/File.Txt");
}

TEST_F(Path, very_long_paths_come_back) {
  std::u16string path;
  for (int count = 0; count < 20000; ++count) {
    path += u"./";
  }
  EXPECT_EQ(ResolvePath(path).size(), path.size());
  EXPECT_EQ(ResolvePath(std::u16string(100000, u'x')).size(), 100000U);
}

TEST_F(Path, dangling_links_exist) {
  std::filesystem::create_symlink("nowhere", "Link");
  EXPECT_EQ(ResolvePath(u"LINK"), "Link");
}

TEST_F(Path, finds_names_by_wildcards) {
  MakeFolder("Folder.dir");
  for (const char* const name : {"b.txt", "A.TXT", "a.bas", "noext", ".hidden", "abc",
                                 "\xC3\x9C"
                                 "b.txt",
                                 "\xF0\x9F\x98\x80.x"}) {
    Make(name);
  }
  Make("Folder.dir/inner.txt");

  struct Row {
    const char* name;
    std::u16string_view pattern;
    Names names;
  };
  const Names all = {u".hidden", u"A.TXT", u"Folder.dir",  u"a.bas",       u"abc",
                     u"b.txt",   u"noext", u"\u00DCb.txt", u"\U0001F600.x"};
  const Row rows[] = {
      {"every name", u"*", all},
      {"every name, with a dot", u"*.*", all},
      {"by extension, without case", u"*.txt", {u"A.TXT", u"b.txt", u"\u00DCb.txt"}},
      {"upper case pattern", u"*.BAS", {u"a.bas"}},
      {"one character", u"?.txt", {u"A.TXT", u"b.txt"}},
      {"one character is a whole one", u"?.x", {u"\U0001F600.x"}},
      {"two characters", u"??.txt", {u"\u00DCb.txt"}},
      {"umlaut without case", u"\u00FC*", {u"\u00DCb.txt"}},
      {"prefix", u"a*", {u"A.TXT", u"a.bas", u"abc"}},
      {"stars in a row", u"a**c", {u"abc"}},
      {"star matches nothing too", u"abc*", {u"abc"}},
      {"folder in another case", u"FOLDER.DIR\\*.txt", {u"inner.txt"}},
      {"folder as such", u"folder*", {u"Folder.dir"}},
      {"here", u"./*.bas", {u"a.bas"}},
      {"wildcard in the folder part", u"F*/inner.txt", {}},
      {"missing folder", u"none/*", {}},
      {"file as a folder", u"abc/*", {}},
      {"no match", u"*.none", {}},
      {"no wildcard", u"abc", {u"abc"}},
      {"no wildcard, name as on disk", u"a.txt", {u"A.TXT"}},
      {"no wildcard, in a folder", u"folder.dir\\INNER.TXT", {u"inner.txt"}},
      {"no wildcard, missing", u"missing", {}},
      {"dot", u".", {}},
      {"dots", u"..", {}},
      {"dots behind a folder", u"Folder.dir/..", {}},
      {"dot with wildcard", u".*", {u".hidden"}},
      {"empty", u"", {}},
      {"separator at the end", u"Folder.dir/", {}},
      {"question marks do not reach the dots", u"??", {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(FindFiles(row.pattern), row.names);
  }
  EXPECT_EQ(FindFiles(std::u16string(u"ab\0*", 4)), Names{});
}

TEST_F(Path, hostile_patterns_end_soon) {
  Make(std::string(250, 'a'));
  std::u16string pattern;
  for (int count = 0; count < 200; ++count) {
    pattern += u"*a";
  }
  EXPECT_EQ(FindFiles(pattern).size(), 1U);
  EXPECT_EQ(FindFiles(pattern + u"b").size(), 0U);
}

TEST_F(Path, a_name_that_is_not_utf8_is_found_and_opened) {
  const std::string name = "caf\xE9_\xFF.TXT";
  Make(name);
  if (!std::filesystem::exists(name)) {
    GTEST_SKIP() << "the file system takes UTF-8 names only";
  }
  const Names names = FindFiles(u"*.txt");
  ASSERT_EQ(names.size(), 1U);
  EXPECT_EQ(names[0], (std::u16string{u'c', u'a', u'f', 0xDCE9, u'_', 0xDCFF, u'.', u'T', u'X', u'T'}));
  EXPECT_EQ(ResolvePath(names[0]), name);
  CFile file;
  EXPECT_TRUE(file.Open(names[0], CFile::modeRead));
}

TEST(PathText, goes_to_the_system_and_back) {
  const std::string everything = "a\\b/\xC3\xA9\xF0\x9F\x98\x80\xE9\xED\xA0\x80\xFF";
  EXPECT_EQ(PathToNative(PathFromNative(everything)), everything);
  EXPECT_EQ(PathToNative(std::u16string{0xD800}), "\xEF\xBF\xBD");
  EXPECT_EQ(PathToNative(std::u16string{0xDC41}), "\xEF\xBF\xBD"); // no byte below 80 travels this way
  EXPECT_EQ(PathToNative(u""), "");
  EXPECT_EQ(PathFromNative(""), u"");
}

TEST(PathText, directory_part_ends_with_its_separator) {
  EXPECT_EQ(DirectoryPart(u"a/b\\c"), u"a/b\\");
  EXPECT_EQ(DirectoryPart(u"a\\b/c"), u"a\\b/");
  EXPECT_EQ(DirectoryPart(u"/c"), u"/");
  EXPECT_EQ(DirectoryPart(u"c"), u"");
  EXPECT_EQ(DirectoryPart(u"a/"), u"a/");
  EXPECT_EQ(DirectoryPart(u""), u"");
}

} // namespace
} // namespace brindle
