// Damaged tables: whatever the bytes say, nothing crashes, hangs, or grows beyond what was asked for.
#include "io/dbf_fixture.h"

#include <filesystem>
#include <functional>
#include <random>

namespace {

RawTable SmallTable() {
  return {.fields = {{"NAME", 'C', 6}, {"PRICE", 'N', 8, 2}, {"OK", 'L', 1}, {"DAY", 'D', 8}},
          .records = {" bolt      1.50Y20260731", "*nut       2.25N20260801", " screw    13.00?20260802"}};
}

class DbfDamageTest : public DbfTest {
protected:
  // Everything that can be done to a table, on the bytes given; returns whether it opened for reading.
  bool Exercise(const std::string& bytes) {
    // A fresh file each time: some file systems bring one that was emptied and written anew to the disk at once.
    std::filesystem::remove(m_folder.Path("t.dbf"));
    m_folder.Write("t.dbf", bytes);
    const bool opened = Read();
    EXPECT_EQ(Bytes(), bytes) << "reading changes nothing";
    EXPECT_EQ(Update(), opened) << "a table opens for both or for none";
    // Twice 64 KiB: the most that a record can be long, once appended and once written to place 2.
    EXPECT_LE(std::filesystem::file_size(m_folder.Path("t.dbf")), bytes.size() + 65536 + 6 * 65536);
    return opened;
  }

private:
  bool Read() {
    CDbf table;
    if (!table.Open(Path("t"), DBF_READ))
      return false;
    int read = 0;
    while (read < 50 && table.ReadRecord())
      ++read;
    for (const unsigned long record : {0UL, 1UL, 3UL, 70000UL, 0xFFFFFFFFUL}) {
      CStringArray values;
      (void)table.ReadRecord(record, values);
      (void)table.IsValidRecord(record);
      for (int field = -1; field <= table.GetNumFields() && field < 20; ++field) {
        CString text;
        (void)table.GetAttributeStr(text, record, field);
        EXPECT_LE(text.GetLength(), 255);
      }
    }
    for (const std::string& value : ValuesOf(table))
      EXPECT_LE(value.size(), 3U * 255U);
    EXPECT_TRUE(table.Rewind());
    return table.Close();
  }
  bool Update() {
    CDbf table;
    if (!table.Open(Path("t"), DBF_READ_WRITE))
      return false;
    CStringArray values;
    for (int i = 0; i < table.GetNumFields(); ++i)
      values.Add(CString(u"12.3456789 and more"));
    const unsigned long before = table.GetNumRecords();
    const bool appended = table.AppendRecord(values, true);
    EXPECT_EQ(table.GetNumRecords() - before, appended ? 1U : 0U);
    (void)table.WriteRecord(0, values, true);
    (void)table.WriteRecord(2, values, false);
    (void)table.MarkRecordAsDeleted(1);
    (void)table.ReadRecord(0);
    (void)table.DeleteLastRecord(1);
    (void)table.DeleteLastRecord(3);
    (void)table.AppendRecord(values, false);
    (void)table.Close();
    return true;
  }
};

TEST_F(DbfDamageTest, every_truncation_of_a_table) {
  const std::string bytes = SmallTable().Bytes();
  const std::size_t header = SmallTable().Header().size();
  for (std::size_t length = 0; length <= bytes.size(); ++length)
    EXPECT_EQ(Exercise(bytes.substr(0, length)), length >= header) << length;
}

TEST_F(DbfDamageTest, every_change_of_one_byte_of_the_header) {
  const RawTable table{.fields = {{"NAME", 'C', 6}, {"PRICE", 'N', 8, 2}},
                       .records = {" bolt      1.50", "*nut       2.25", " screw    13.00"}};
  const std::string bytes = table.Bytes();
  const std::size_t header = table.Header().size();
  for (std::size_t at = 0; at < header; ++at) {
    for (int value = 0; value < 256; ++value) {
      std::string damaged = bytes;
      damaged[at] = static_cast<char>(value);
      const bool opens = Exercise(damaged);
      // Only the header's length can keep a table from opening, by asking for fields that are not there.
      if (at != 8 && at != 9) {
        EXPECT_TRUE(opens) << at << ": " << value;
      }
      ASSERT_FALSE(HasFailure()) << at << ": " << value;
    }
  }
}

TEST_F(DbfDamageTest, thousands_of_random_changes) {
  std::mt19937 random(20260731); // seeded, so that a failure comes back
  const auto below = [&random](std::size_t limit) { return static_cast<std::size_t>(random() % limit); };
  std::vector<std::string> tables = {SmallTable().Bytes()};
  tables.push_back(RawTable{.fields = {{"A", 'C', 1}}, .records = {" a", " b"}}.Bytes());
  tables.push_back(RawTable{.fields = {}, .records = {" ", "*"}}.Bytes());
  RawTable foreign{.fields = {{"A", 'C', 4}, {"M", 'M', 10}}, .records = {" aaaa" + std::string(14, '\0')}};
  foreign.recordLength = 19;
  foreign.behindTerminator = std::string(263, '\0');
  tables.push_back(foreign.Bytes());
  constexpr int rounds = 5000;
  int opened = 0;
  for (int round = 0; round < rounds; ++round) {
    std::string bytes = tables[below(tables.size())];
    for (std::size_t changes = 1 + below(8); changes > 0; --changes) {
      // Most of the changes where they matter most.
      const std::size_t at = below(random() % 2 == 0 ? std::min<std::size_t>(64, bytes.size()) : bytes.size());
      bytes[at] = static_cast<char>(random() % 256);
    }
    if (random() % 8 == 0)
      bytes.resize(below(bytes.size() + 1));
    opened += Exercise(bytes) ? 1 : 0;
    ASSERT_FALSE(HasFailure()) << "round " << round;
  }
  EXPECT_GT(opened, rounds / 10) << "most rounds must get beyond the header to be of use";
  EXPECT_LT(opened, rounds);
}

TEST_F(DbfDamageTest, lengths_at_their_limits) {
  for (const int headerLength : {0, 31, 32, 33, 34, 64, 65, 66, 97, 161, 162, 32767, 32768, 65535})
    for (const int recordLength : {0, 1, 2, 23, 24, 25, 255, 32768, 65535})
      for (const int recordCount : {0, 1, 3, 4, 0x7FFFFFFF}) {
        RawTable table = SmallTable();
        table.headerLength = headerLength;
        table.recordLength = recordLength;
        table.recordCount = recordCount;
        (void)Exercise(table.Bytes());
        ASSERT_FALSE(HasFailure()) << headerLength << ", " << recordLength << ", " << recordCount;
      }
}

TEST_F(DbfDamageTest, noise_instead_of_a_table) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    std::string bytes(random() % 4000, '\0');
    for (char& byte : bytes)
      byte = static_cast<char>(random() % 256);
    (void)Exercise(bytes);
    ASSERT_FALSE(HasFailure()) << "round " << round;
  }
}

} // namespace
