// Text files and tables, written and read while memory or a file is refused.
#include "brindle/dbf.h"
#include "faults/sweep.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

using faults::FaultKind;
using faults::Outcome;
using faults::Scenario;
using faults::Sweep;
using faults::Trial;

namespace {

std::vector<std::string> LinesOf(const std::string& bytes) {
  std::vector<std::string> lines;
  for (std::size_t from = 0; from < bytes.size();) {
    const std::size_t end = std::min(bytes.find('\n', from), bytes.size() - 1);
    lines.push_back(bytes.substr(from, end + 1 - from));
    from = end + 1;
  }
  return lines;
}

// Whether `part` is `whole` with some of its elements left out.
template <class Range> bool IsThinned(const Range& part, const Range& whole) {
  auto next = whole.begin();
  for (const auto& element : part) {
    next = std::find(next, whole.end(), element);
    if (next == whole.end())
      return false;
    ++next;
  }
  return true;
}

// Whether it begins as the new text does and goes on as the old one; all three are of one length.
bool IsBetween(const std::string& text, const std::string& before, const std::string& now) {
  for (std::size_t part = 0; part <= now.size(); ++part)
    if (text == now.substr(0, part) + before.substr(part))
      return true;
  return false;
}

bool AreAmong(const std::vector<int>& errors, const std::set<int>& documented) {
  return std::all_of(errors.begin(), errors.end(), [&](int error) { return documented.contains(error); });
}

const std::vector<FaultKind> kWriting = {FaultKind::Memory, FaultKind::File, FaultKind::PartialWrite};

class Writing : public Scenario {
public:
  [[nodiscard]] std::vector<FaultKind> Kinds() const override { return kWriting; }
  void Prepare() override {
    Folder().Write("Old.txt", "old one\r\nold two\n");
    Folder().Write("script.bas", "folder = \"" + PathOf("") + R"("
lf = format(10, "%c")
dim many[3]
many[0] = "three" + lf
many[1] = "four" + lf
many[2] = "five" + lf
open folder + "new.txt" for output as 1 text
n = writeline(1, "one" + lf)
n = writeline(1, "zwei größer" + lf)
n = writeline(1, many)
close 1
open folder + "old.TXT" for append as 2 text
n = writeline(2, "added" + lf)
close 2
open folder + "numbers" for output as 3
n = write(3, many, 4)
n = write(3, many, 4)
p = seek(3, 0)
r = read(3, 3, 4)
print "size "; int(filesize(3))
close 3
open folder + "new.txt" as 4 text
do while iseof(4) = 0
  line = readline(4)
  if len(line) = 0 then
    goto enough
  endif
  print line
loop
enough:
close 4
open folder + "old.txt" as 5 text
print readline(5); "/"; readline(5); "/"; readline(5)
names = findfiles(folder + "*.txt", 0)
print names[0]; " "; names[1]
print "done"
)");
  }
  [[nodiscard]] std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome& reference) override {
    if (reference.output !=
        "size 24\none\nzwei größer\nthree\nfour\nfive\nold one/old two/added\nOld.txt new.txt\ndone\n")
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    const std::vector<std::string> written = LinesOf(Folder().Read("new.txt"));
    if (!IsThinned(written, {"one\n", "zwei größer\n", "three\n", "four\n", "five\n"}))
      return "new.txt holds a part of a line";
    const std::string old = Folder().Read("Old.txt");
    if (old != "old one\r\nold two\n" && old != "old one\r\nold two\nadded\n")
      return "Old.txt is neither as before nor as after";
    if (std::filesystem::exists(PathOf("numbers")) && std::filesystem::file_size(PathOf("numbers")) % 12 != 0)
      return "a part of the numbers was written";
    if (outcome.output == reference.output)
      return {};
    if (trial.kind == FaultKind::Memory) {
      if (!reference.output.starts_with(outcome.output))
        return "printed something else";
      return AreAmong(outcome.errors, {17, 50}) && !outcome.errors.empty() ? "" : "not reported as want of memory";
    }
    // Files that are not there, short reads and failed calls; the variables that miss a value then, and a search
    // for files that cannot be made finds none.
    if (!AreAmong(outcome.errors, {17, 47, 49, 51, 53, 3, 35, 36, 37, 21, 22}))
      return "reported as something else";
    return outcome.errors.empty() && outcome.output.find("done") == std::string::npos ? "not reported" : "";
  }
};

// The same below a root that the host sets, with links and names in another case.
class BelowRoot : public Scenario {
public:
  [[nodiscard]] std::vector<FaultKind> Kinds() const override { return kWriting; }
  void Prepare() override {
    Folder().Write("files/Inner/Old.txt", "old one\n");
    std::filesystem::create_symlink("Inner", PathOf("files/link"));
    Folder().Write("script.bas", R"(lf = format(10, "%c")
open "\link\new.txt" for output as 1 text
n = writeline(1, "one" + lf)
close 1
open "inner/old.TXT" for append as 2 text
n = writeline(2, "added" + lf)
close 2
open "\inner\old.txt" as 5 text
print readline(5); "/"; readline(5)
names = findfiles("\link\*.txt", 0)
print names[0]; " "; names[1]
print "done"
)");
    m_root = CString::FromUtf8(PathOf("files"));
    m_bLimited = false;
  }
  void Act(CBrindle* interpreter, Outcome& outcome) override {
    CExecutionLimits limits;
    limits.root = m_root;
    m_bLimited = interpreter->SetLimits(limits);
    if (m_bLimited)
      Scenario::Act(interpreter, outcome);
  }
  [[nodiscard]] std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome& reference) override {
    if (reference.output != "old one/added\nOld.txt new.txt\ndone\n")
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown && m_bLimited)
      return "std::bad_alloc left ExecuteProgram";
    const std::string old = Folder().Read("files/Inner/Old.txt");
    if (old != "old one\n" && old != "old one\nadded\n")
      return "Old.txt is neither as before nor as after";
    const std::string made = Folder().Read("files/Inner/new.txt");
    if (!made.empty() && made != "one\n")
      return "new.txt holds a part of a line";
    if (outcome.output == reference.output || !m_bLimited)
      return {};
    if (trial.kind == FaultKind::Memory)
      return AreAmong(outcome.errors, {17, 50}) && !outcome.errors.empty() ? "" : "not reported as want of memory";
    return AreAmong(outcome.errors, {17, 47, 49, 51, 53, 3, 35, 36, 37, 21, 22, 65}) ? ""
                                                                                     : "reported as something else";
  }

private:
  CString m_root;
  bool m_bLimited = false;
};

const char* const kNames[] = {"anna", "bert", "carl", "dora", "emil", "fred"};

class Tables : public Scenario {
public:
  [[nodiscard]] std::vector<FaultKind> Kinds() const override { return kWriting; }
  void Prepare() override {
    Folder().Write("script.bas", "name = \"" + PathOf("people") + R"("
dim f1[3], f2[4]
f1[0] = "NAME"
f1[1] = "CHAR"
f1[2] = 8
f2[0] = "AGE"
f2[1] = "N"
f2[2] = 6
f2[3] = 1
h = dbfcreate(name, f1, f2)
print h
print dbfappend(h, "anna", "1"); dbfappend(h, "bert", "2"); dbfappend(h, "carl", "3")
print dbfclose(h)
h = dbfopen(name)
r = dbfread(h)
print r[0]; r[1]
print dbfappend(h, "dora", "4"); dbfappend(h, "emil", "5")
print dbfwrite(h, 1, "BERT", "22"); dbfdelete(h, 2)
print dbfseek(h, 1)
r = dbfread(h)
print r[0]; r[1]
print dbfclose(h)
k = dbfopen(name)
print dbfappend(k, "fred", "6")
print dbfclose(k)
h = dbfopen(name)
n = dbffieldnames(h)
print n[0]; " "; n[1]; " "; int(dbfnumrecords(h)); " "; int(dbfnumfields(h))
print "done"
)");
  }
  [[nodiscard]] std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome& reference) override {
    if (!reference.output.ends_with("NAME AGE 6 2\ndone\n"))
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    if (const std::string fault = JudgeTable(); !fault.empty())
      return fault;
    if (outcome.output == reference.output)
      return {};
    if (trial.kind == FaultKind::Memory)
      return AreAmong(outcome.errors, {17, 50}) && !outcome.errors.empty() ? "" : "not reported as want of memory";
    // What fails is false or -1, which is printed; what is then done with -1 reports 57, an item that is not there 36.
    return AreAmong(outcome.errors, {17, 57, 3, 35, 36, 37}) ? "" : "reported as something else";
  }

private:
  // Every record as it was before a change or behind it, wherever the changes came to an end.
  std::string JudgeTable() {
    const std::filesystem::path path = PathOf("people.dbf");
    if (!std::filesystem::exists(path) || std::filesystem::file_size(path) == 0)
      return {}; // it could not be created
    CDbf table;
    if (!table.Open(CString::FromUtf8(path.string()), DBF_READ))
      return "the table does not open any more";
    const auto length = std::filesystem::file_size(path);
    const unsigned long records = table.GetNumRecords();
    if (records > 6 || length < 97 + records * 27)
      return "the table says that it holds more than it does";
    std::size_t next = 0; // one that could not be appended is missing
    for (unsigned long i = 0; i < records; ++i) {
      CStringArray values;
      if (!table.ReadRecord(i, values))
        return "a record cannot be read";
      const std::string name = values[0].ToUtf8();
      const std::string age = values[1].ToUtf8();
      if (name == "BERT    " && age.starts_with("22.0 ") == false && !age.starts_with("22 "))
        return "a record was changed in part";
      if (name == "BERT    ")
        continue;
      bool found = false;
      for (; next < 6 && !found; ++next) {
        std::string padded = kNames[next];
        padded.resize(8, ' ');
        found = name == padded && age.starts_with(std::to_string(next + 1));
      }
      if (!found)
        return "a record that was never written: " + name + age;
    }
    return {};
  }
};

// The table class of the hosts: what gave true is there, what gave false is not.
class HostTable : public Scenario {
public:
  HostTable() { m_fields.Add(&m_field); }
  [[nodiscard]] std::vector<FaultKind> Kinds() const override { return kWriting; }
  [[nodiscard]] std::unique_ptr<CBrindle> Make(RecordingUserInterface&) override { return nullptr; }
  void Prepare() override {
    m_records.clear();
    m_bClosed = false;
    m_bStillOpen = true;
    m_newPath = CString::FromUtf8(PathOf("new.dbf"));
    CDbf table;
    m_path = CString::FromUtf8(PathOf("table.dbf"));
    EXPECT_TRUE(table.Create(m_path, m_fields, 1));
    for (const char* record : {"anna", "bert"}) {
      EXPECT_TRUE(table.AppendRecord(Values(record), false));
      m_records.push_back(record);
    }
    EXPECT_TRUE(table.Close());
    m_values = {Values("carl"), Values("dora"), Values("BERT")};
  }
  void Act(CBrindle*, Outcome& outcome) override {
    CDbf table;
    try {
      CDbf made;
      (void)made.Create(m_newPath, m_fields, 1);
      (void)made.AppendRecord(m_values[0], false);
    } catch (const std::bad_alloc&) {
      outcome.thrown = true;
    }
    try {
      outcome.loaded = table.Open(m_path, DBF_READ);
      if (table.AppendRecord(m_values[0], false))
        Note([this] { m_records.push_back("carl"); });
      m_bStillOpen = table.IsOpen();
      if (table.WriteRecord(1, m_values[2], false))
        Note([this] { m_records[1] = "BERT"; });
      if (table.AppendRecord(m_values[1], false))
        Note([this] { m_records.push_back("dora"); });
      if (table.DeleteLastRecord(1))
        Note([this] { m_records.pop_back(); });
      (void)table.Flush();
    } catch (const std::bad_alloc&) {
      outcome.thrown = true;
    }
    m_bClosed = table.Close();
  }
  [[nodiscard]] std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome&) override {
    if (outcome.loaded && !m_bStillOpen)
      return "a table that cannot be written to is not open any more";
    CDbf table;
    const std::string made = Folder().Read("new.dbf");
    if (!made.empty() && (!table.Open(m_newPath, DBF_READ) || table.GetNumRecords() > 1))
      return "the new table does not open";
    if (!table.Open(m_path, DBF_READ))
      return "the table does not open any more";
    // A header that could not be written counts the records of before; they are all there.
    const unsigned long counted = table.GetNumRecords();
    if (m_bClosed && counted != m_records.size() && !outcome.thrown)
      return "closed, but " + std::to_string(counted) + " records and not " + std::to_string(m_records.size());
    for (unsigned long i = 0; i < std::min<std::size_t>(counted, m_records.size()); ++i) {
      CStringArray values;
      if (!table.ReadRecord(i, values))
        return "a record cannot be read";
      std::string padded = m_records[i];
      padded.resize(8, ' ');
      // What stood in the place of a write that was taken in part, and then no more, is gone.
      const bool isTorn = trial.kind == FaultKind::PartialWrite && trial.lasting && padded == "bert    " &&
                          IsBetween(values[0].ToUtf8(), padded, "BERT    ");
      if (values[0].ToUtf8() != padded && !isTorn)
        return "record " + std::to_string(i) + " is " + values[0].ToUtf8() + " and not " + padded;
    }
    return {};
  }

private:
  static CStringArray Values(const char* text) {
    CStringArray values;
    values.Add(CString(text));
    return values;
  }
  template <class Change> static void Note(Change change) {
    const faults::TestsOwn own;
    change();
  }

  CDbfFieldDescriptorEx m_field{u"NAME", DBF_CHAR, 8};
  CArray<CDbfFieldDescriptorEx*, CDbfFieldDescriptorEx*> m_fields;
  CString m_path;
  CString m_newPath;
  std::vector<CStringArray> m_values;
  std::vector<std::string> m_records;
  bool m_bClosed = false;
  bool m_bStillOpen = true;
};

} // namespace

TEST(FileFaults, files_are_written_and_read) {
  Writing scenario;
  Sweep("files", scenario);
}

TEST(FileFaults, files_below_a_root) {
  BelowRoot scenario;
  Sweep("below a root", scenario);
}

TEST(FileFaults, a_table_is_made_changed_and_opened_again) {
  Tables scenario;
  Sweep("tables", scenario);
}

TEST(FileFaults, what_a_table_says_is_done_is_done) {
  HostTable scenario;
  Sweep("table of a host", scenario);
}
