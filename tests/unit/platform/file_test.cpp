#include "platform/file.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <utility>

namespace brindle {
namespace {

class File : public ::testing::Test {
protected:
  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "brindle_file_XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    m_folder = pattern;
  }
  void TearDown() override { std::filesystem::remove_all(m_folder); }

  [[nodiscard]] std::u16string Path(const char* name) const { return (m_folder / name).u16string(); }

  void Put(const char* name, const std::string& bytes) const {
    std::ofstream(m_folder / name, std::ios::binary) << bytes;
  }
  [[nodiscard]] std::string Contents(const char* name) const {
    std::ifstream stream(m_folder / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  std::filesystem::path m_folder;
};

std::string ReadUpTo(CFile& file, std::size_t count) {
  std::string bytes(count, '\0');
  bytes.resize(file.Read(bytes.data(), count));
  return bytes;
}

TEST_F(File, opens_as_the_flags_say) {
  struct Row {
    const char* name;
    bool exists;
    unsigned flags;
    bool opens;
    const char* contentsAfter;
  };
  const Row rows[] = {
      {"read a file", true, CFile::modeRead, true, "old"},
      {"read a missing file", false, CFile::modeRead, false, ""},
      {"write keeps the contents", true, CFile::modeWrite, true, "old"},
      {"write a missing file", false, CFile::modeWrite, false, ""},
      {"read and write keeps", true, CFile::modeReadWrite, true, "old"},
      {"read and write a missing file", false, CFile::modeReadWrite, false, ""},
      {"create empties", true, CFile::modeReadWrite | CFile::modeCreate, true, ""},
      {"create makes", false, CFile::modeReadWrite | CFile::modeCreate, true, ""},
      {"create for writing empties", true, CFile::modeWrite | CFile::modeCreate, true, ""},
      {"create for reading empties", true, CFile::modeRead | CFile::modeCreate, true, ""},
      {"create without truncation", true, CFile::modeWrite | CFile::modeCreate | CFile::modeNoTruncate, true, "old"},
      {"create without truncation makes", false, CFile::modeWrite | CFile::modeCreate | CFile::modeNoTruncate, true,
       ""},
      {"sharing changes nothing", true, CFile::modeRead | CFile::shareDenyNone, true, "old"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    std::filesystem::remove(m_folder / "f");
    if (row.exists) {
      Put("f", "old");
    }
    CFile file;
    EXPECT_EQ(file.Open(Path("f"), row.flags), row.opens);
    EXPECT_EQ(file.IsOpen(), row.opens);
    EXPECT_EQ(file.Descriptor() >= 0, row.opens);
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(std::filesystem::exists(m_folder / "f"), row.opens);
    EXPECT_EQ(Contents("f"), row.contentsAfter);
  }
}

TEST_F(File, folders_and_impossible_names_do_not_open) {
  CFile file;
  for (const unsigned flags : {unsigned{CFile::modeRead}, unsigned{CFile::modeReadWrite},
                               CFile::modeReadWrite | CFile::modeCreate, CFile::modeRead | CFile::modeCreate}) {
    EXPECT_FALSE(file.Open(m_folder.u16string(), flags));
    EXPECT_FALSE(file.Open(m_folder.u16string() + u"/", flags));
    EXPECT_FALSE(file.Open(u"", flags));
    EXPECT_FALSE(file.Open(u"/", flags));
    EXPECT_FALSE(file.Open(Path("f") + std::u16string(1, u'\0') + u"x", flags));
    EXPECT_FALSE(file.Open(Path("no/such/folder/f"), flags));
    EXPECT_FALSE(file.Open(Path(std::string(5000, 'x').c_str()), flags));
  }
  EXPECT_TRUE(std::filesystem::is_empty(m_folder));
}

TEST_F(File, a_path_is_looked_up_without_case_and_with_backslashes) {
  std::filesystem::create_directory(m_folder / "Data");
  Put("Data/Read.Me", "text");
  CFile file;
  ASSERT_TRUE(file.Open(Path("dATA\\READ.me"), CFile::modeRead));
  EXPECT_EQ(ReadUpTo(file, 10), "text");
  ASSERT_TRUE(file.Open(Path("DATA\\New.Txt"), CFile::modeWrite | CFile::modeCreate));
  EXPECT_TRUE(std::filesystem::exists(m_folder / "Data" / "New.Txt"));
}

TEST_F(File, descriptors_are_not_inherited_and_block) {
  CFile file;
  ASSERT_TRUE(file.Open(Path("f"), CFile::modeWrite | CFile::modeCreate));
  EXPECT_NE(fcntl(file.Descriptor(), F_GETFD) & FD_CLOEXEC, 0);
  EXPECT_EQ(fcntl(file.Descriptor(), F_GETFL) & O_NONBLOCK, 0);
}

TEST_F(File, reads_writes_and_seeks) {
  CFile file;
  ASSERT_TRUE(file.Open(Path("f"), CFile::modeReadWrite | CFile::modeCreate));
  file.Write("hello world", 11);
  EXPECT_EQ(file.GetPosition(), 11U);
  EXPECT_EQ(file.GetLength(), 11U);
  EXPECT_EQ(ReadUpTo(file, 4), "");
  EXPECT_EQ(file.Seek(6, CFile::begin), 6U);
  EXPECT_EQ(ReadUpTo(file, 3), "wor");
  EXPECT_EQ(file.Seek(-2, CFile::current), 7U);
  EXPECT_EQ(ReadUpTo(file, 100), "orld");
  EXPECT_EQ(file.Seek(-5, CFile::end), 6U);
  file.Write("W", 1);
  EXPECT_EQ(file.Seek(20, CFile::begin), 20U);
  EXPECT_EQ(ReadUpTo(file, 1), "");
  file.Write("", 0);
  EXPECT_EQ(file.GetLength(), 11U);
  file.Flush();
  EXPECT_EQ(Contents("f"), "hello World");

  file.SetLength(5);
  EXPECT_EQ(file.GetPosition(), 20U);
  EXPECT_EQ(Contents("f"), "hello");
  file.SetLength(7);
  EXPECT_EQ(Contents("f"), std::string("hello\0\0", 7));
}

TEST_F(File, positions_beyond_four_gibibytes_work) {
  CFile file;
  ASSERT_TRUE(file.Open(Path("f"), CFile::modeReadWrite | CFile::modeCreate));
  constexpr std::int64_t far = std::int64_t{5} << 30;
  EXPECT_EQ(file.Seek(far, CFile::begin), static_cast<std::uint64_t>(far));
  file.Write("x", 1);
  EXPECT_EQ(file.GetLength(), static_cast<std::uint64_t>(far) + 1);
}

template <typename Action> CFileException Caught(Action action) {
  try {
    action();
  } catch (const CFileException& failure) {
    return failure;
  }
  return {};
}

TEST_F(File, failures_of_the_system_are_exceptions) {
  Put("f", "text");
  CFile reader;
  ASSERT_TRUE(reader.Open(Path("f"), CFile::modeRead));
  CFile writer;
  ASSERT_TRUE(writer.Open(Path("f"), CFile::modeWrite));
  char byte = 0;
  EXPECT_EQ(Caught([&] { reader.Write("x", 1); }).m_nOsError, EBADF);
  EXPECT_EQ(Caught([&] { writer.Read(&byte, 1); }).m_cause, CFileException::invalidFile);
  EXPECT_EQ(Caught([&] { reader.Seek(-1, CFile::begin); }).m_cause, CFileException::badSeek);
  EXPECT_EQ(Caught([&] { writer.SetLength(~std::uint64_t{0}); }).m_cause, CFileException::diskFull);
  EXPECT_EQ(reader.GetPosition(), 0U);
  EXPECT_EQ(Contents("f"), "text");

  CFile closed;
  EXPECT_EQ(Caught([&] { closed.Read(&byte, 1); }).m_cause, CFileException::invalidFile);
  EXPECT_EQ(Caught([&] { closed.Write("x", 1); }).m_cause, CFileException::invalidFile);
  EXPECT_EQ(Caught([&] { closed.Seek(0, CFile::begin); }).m_cause, CFileException::invalidFile);
  EXPECT_EQ(Caught([&] { static_cast<void>(closed.GetLength()); }).m_cause, CFileException::invalidFile);
  EXPECT_EQ(Caught([&] { static_cast<void>(closed.GetPosition()); }).m_cause, CFileException::invalidFile);
  EXPECT_EQ(Caught([&] { closed.SetLength(0); }).m_cause, CFileException::invalidFile);
  EXPECT_EQ(Caught([&] { closed.Flush(); }).m_cause, CFileException::invalidFile);
  EXPECT_EQ(closed.Read(&byte, 0), 0U);
  closed.Close();
}

TEST_F(File, a_full_device_is_an_exception) {
  CFile file;
  if (!file.Open(u"/dev/full", CFile::modeWrite)) {
    GTEST_SKIP() << "no such device";
  }
  const CFileException failure = Caught([&] { file.Write("x", 1); });
  EXPECT_EQ(failure.m_cause, CFileException::diskFull);
  EXPECT_EQ(failure.m_nOsError, ENOSPC);
}

TEST_F(File, causes_stand_for_system_errors) {
  struct Row {
    int osError;
    CFileException::Cause cause;
  };
  const Row rows[] = {
      {0, CFileException::none},
      {ENOENT, CFileException::fileNotFound},
      {ENOTDIR, CFileException::badPath},
      {EMFILE, CFileException::tooManyOpenFiles},
      {EACCES, CFileException::accessDenied},
      {EROFS, CFileException::accessDenied},
      {EBADF, CFileException::invalidFile},
      {EINVAL, CFileException::badSeek},
      {EIO, CFileException::hardIO},
      {ENOSPC, CFileException::diskFull},
      {EFBIG, CFileException::diskFull},
      {ENXIO, CFileException::generic},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(CFileException::FromOsError(row.osError).m_cause, row.cause) << row.osError;
    EXPECT_EQ(CFileException::FromOsError(row.osError).m_nOsError, row.osError);
  }
  EXPECT_EQ(CFileException().m_cause, CFileException::none);
}

TEST_F(File, exclusive_opening_is_refused_while_another_lasts) {
  constexpr unsigned exclusive = CFile::modeReadWrite | CFile::shareExclusive;
  Put("f", "text");
  CFile first;
  ASSERT_TRUE(first.Open(Path("f"), exclusive));
  CFile second;
  EXPECT_FALSE(second.Open(Path("f"), exclusive));
  EXPECT_FALSE(second.Open(Path("f"), exclusive | CFile::modeCreate));
  EXPECT_EQ(Contents("f"), "text"); // the refused creation has not emptied it
  EXPECT_TRUE(second.Open(Path("f"), CFile::modeRead | CFile::shareDenyNone));
  first.Close();
  EXPECT_TRUE(second.Open(Path("f"), exclusive | CFile::modeCreate));
  EXPECT_EQ(Contents("f"), "");
}

TEST_F(File, a_byte_is_locked_for_one_opening_alone) {
  constexpr std::uint64_t far = std::uint64_t{1} << 62;
  Put("f", "text");
  CFile first;
  CFile second;
  ASSERT_TRUE(first.Open(Path("f"), CFile::modeReadWrite));
  ASSERT_TRUE(second.Open(Path("f"), CFile::modeReadWrite));
  EXPECT_TRUE(first.TryLockByte(far));
  EXPECT_FALSE(second.TryLockByte(far));
  EXPECT_TRUE(second.TryLockByte(far + 1));
  // Closing another opening of the file gives nothing back.
  CFile third;
  ASSERT_TRUE(third.Open(Path("f"), CFile::modeReadWrite));
  third.Close();
  EXPECT_FALSE(second.TryLockByte(far));
  first.UnlockByte(far);
  EXPECT_TRUE(second.TryLockByte(far));
  EXPECT_FALSE(first.TryLockByte(far, CFile::ByteLock::shared));
  second.Close();
  EXPECT_TRUE(first.TryLockByte(far));
  first.UnlockByte(far);
  ASSERT_TRUE(third.Open(Path("f"), CFile::modeReadWrite));
  EXPECT_TRUE(first.TryLockByte(far, CFile::ByteLock::shared));
  EXPECT_TRUE(third.TryLockByte(far, CFile::ByteLock::shared));
  EXPECT_FALSE(third.TryLockByte(far));
  EXPECT_EQ(Contents("f"), "text");
}

TEST_F(File, moving_hands_the_descriptor_over) {
  CFile first;
  ASSERT_TRUE(first.Open(Path("f"), CFile::modeWrite | CFile::modeCreate));
  const int descriptor = first.Descriptor();
  CFile second(std::move(first));
  EXPECT_EQ(second.Descriptor(), descriptor);
  CFile third;
  ASSERT_TRUE(third.Open(Path("g"), CFile::modeWrite | CFile::modeCreate));
  const int replaced = third.Descriptor();
  third = std::move(second);
  EXPECT_EQ(third.Descriptor(), descriptor);
  EXPECT_EQ(fcntl(replaced, F_GETFD), -1);
  {
    const CFile last(std::move(third));
    EXPECT_NE(fcntl(descriptor, F_GETFD), -1);
  }
  EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
}

TEST_F(File, opening_again_closes_first) {
  CFile file;
  ASSERT_TRUE(file.Open(Path("f"), CFile::modeWrite | CFile::modeCreate));
  EXPECT_FALSE(file.Open(Path("missing"), CFile::modeRead));
  EXPECT_FALSE(file.IsOpen());
}

TEST_F(File, a_pipe_never_makes_opening_wait) {
  ASSERT_EQ(mkfifo((m_folder / "pipe").c_str(), 0600), 0);
  CFile file;
  EXPECT_FALSE(file.Open(Path("pipe"), CFile::modeWrite)); // nobody reads
  ASSERT_TRUE(file.Open(Path("pipe"), CFile::modeRead));
  EXPECT_EQ(ReadUpTo(file, 10), "");

  CFile writer;
  ASSERT_TRUE(writer.Open(Path("pipe"), CFile::modeWrite | CFile::modeCreate));
  writer.Flush();
  std::thread later([&writer] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    writer.Write("ab", 2);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    writer.Write("cd", 2);
    writer.Close();
  });
  EXPECT_EQ(ReadUpTo(file, 10), "abcd"); // reading waits, across short reads, for the end
  later.join();
  EXPECT_EQ(Caught([&] { file.Seek(0, CFile::begin); }).m_cause, CFileException::badSeek);
}

TEST_F(File, remove_deletes_files_only) {
  Put("Some.Txt", "x");
  EXPECT_TRUE(CFile::Remove(Path("some.txt")));
  EXPECT_FALSE(std::filesystem::exists(m_folder / "Some.Txt"));
  EXPECT_FALSE(CFile::Remove(Path("some.txt")));
  EXPECT_FALSE(CFile::Remove(m_folder.u16string()));
  EXPECT_FALSE(CFile::Remove(u""));
  Put("f", "x");
  EXPECT_FALSE(CFile::Remove(Path("f") + std::u16string(1, u'\0') + u"g"));
  EXPECT_TRUE(std::filesystem::exists(m_folder / "f"));
}

TEST_F(File, a_whole_file_is_read_up_to_the_limit) {
  struct Row {
    std::size_t length;
    std::uint64_t limit;
    bool read;
  };
  const Row rows[] = {
      {0, 0, true}, {1, 0, false}, {1, 1, true}, {100000, 100000, true}, {100001, 100000, false}, {3, 1000000, true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.length);
    const std::string contents(row.length, 'c');
    Put("f", contents);
    std::string bytes = "old";
    EXPECT_EQ(ReadWholeFile(Path("f"), bytes, row.limit), row.read);
    EXPECT_EQ(bytes, row.read ? contents : "");
  }
}

TEST_F(File, what_cannot_be_read_whole_is_false) {
  std::string bytes = "old";
  EXPECT_FALSE(ReadWholeFile(Path("missing"), bytes, 100));
  EXPECT_EQ(bytes, "");
  EXPECT_FALSE(ReadWholeFile(m_folder.u16string(), bytes, 100));
  EXPECT_FALSE(ReadWholeFile(u"/dev/zero", bytes, 1000000));
  EXPECT_TRUE(ReadWholeFile(u"/dev/null", bytes, 0));
}

TEST_F(File, a_file_without_a_known_length_is_read_whole) {
  std::string bytes;
  if (!std::filesystem::exists("/proc/self/maps")) {
    GTEST_SKIP() << "no such file";
  }
  ASSERT_TRUE(ReadWholeFile(u"/proc/self/maps", bytes, 1U << 24));
  EXPECT_GT(bytes.size(), 1000U);
  EXPECT_EQ(bytes.back(), '\n');
}

} // namespace
} // namespace brindle
