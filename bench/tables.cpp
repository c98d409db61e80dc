// What dBase tables cost: writing, scanning and updating records, beside reading the same bytes with CFile.
//
//   brindle_bench_tables FOLDER [RECORDS [ROUNDS]]
//
// Prints one line for each measurement, "name seconds sum": the best of the rounds in processor and waiting time, and
// a sum over what was read, which tables.py compares with its own.
#include "brindle/dbf.h"
#include "platform/file.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <string>

namespace {

constexpr int kFields = 5;

struct Measurement {
  double seconds = std::numeric_limits<double>::infinity();
  std::uint64_t sum = 0;
};

void Fail(const char* what) {
  std::fprintf(stderr, "tables: %s failed\n", what);
  std::exit(1);
}

void Measure(const char* name, int rounds, const std::function<std::uint64_t()>& work) {
  Measurement best;
  for (int round = 0; round < rounds; ++round) {
    const auto start = std::chrono::steady_clock::now();
    const std::uint64_t sum = work();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    if (round > 0 && sum != best.sum)
      Fail(name);
    best = {std::min(best.seconds, took.count()), sum};
  }
  std::printf("%s %.6f %llu\n", name, best.seconds, static_cast<unsigned long long>(best.sum));
}

bool Create(CDbf& table, const CString& path) {
  CDbfFieldDescriptorEx fields[kFields] = {{CString(u"NAME"), DBF_CHAR, 24},
                                           {CString(u"NUMBER"), DBF_NUMERIC, 18},
                                           {CString(u"PRICE"), DBF_NUMERIC, 18, 2},
                                           {CString(u"DAY"), DBF_DATE, 8},
                                           {CString(u"OPEN"), DBF_LOGICAL, 1}};
  CArray<CDbfFieldDescriptorEx*, CDbfFieldDescriptorEx*> pointers;
  for (CDbfFieldDescriptorEx& field : fields)
    pointers.Add(&field);
  return table.Create(path, pointers, kFields);
}

void SetValues(CStringArray& values, unsigned long record) {
  CString number;
  number.Format("%lu", record);
  values[0] = CString(u"record ") + number;
  values[1] = number;
  values[2] = number + u".5";
  values[3] = u"20260731";
  values[4] = record % 2 == 0 ? u"T" : u"F";
}

std::uint64_t Write(const CString& path, unsigned long records) {
  CDbf table;
  if (!Create(table, path))
    Fail("creating");
  CStringArray values;
  values.SetSize(kFields);
  for (unsigned long record = 0; record < records; ++record) {
    SetValues(values, record);
    if (!table.AppendRecord(values, true))
      Fail("appending");
  }
  const std::uint64_t count = table.GetNumRecords();
  if (!table.Close())
    Fail("closing");
  return count;
}

// The same bytes in pieces of a record, and nothing done with them but a look at one.
std::uint64_t ReadPieces(const CString& path, std::size_t headerLength, std::size_t recordLength) {
  CFile file;
  if (!file.Open(path.View(), CFile::modeRead | CFile::shareDenyNone))
    Fail("opening");
  file.Seek(static_cast<std::int64_t>(headerLength), CFile::begin);
  std::string record(recordLength, '\0');
  std::uint64_t sum = 0;
  while (file.Read(record.data(), recordLength) == recordLength)
    sum += static_cast<unsigned char>(record[8]);
  return sum;
}

// Every value as text; the sum is that of the first characters behind "record ".
std::uint64_t Scan(const CString& path) {
  CDbf table;
  if (!table.Open(path, DBF_READ))
    Fail("opening");
  CStringArray values;
  std::uint64_t sum = 0;
  while (table.ReadRecord()) {
    table.GetRecordFields(values);
    sum += values[0].GetAt(7);
  }
  return sum;
}

std::uint64_t Update(const CString& path, unsigned long records) {
  CDbf table;
  if (!table.Open(path, DBF_READ_WRITE))
    Fail("opening");
  CStringArray values;
  for (unsigned long record = 0; record < records; ++record) {
    if (!table.ReadRecord(record, values))
      Fail("reading");
    values[4] = u"T";
    if (!table.WriteRecord(record, values, true))
      Fail("updating");
  }
  return table.Close() ? records : 0;
}

} // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: brindle_bench_tables FOLDER [RECORDS [ROUNDS]]\n", stderr);
    return 2;
  }
  const CString path = CString::FromUtf8(std::string(argv[1]) + "/bench.dbf");
  const unsigned long records = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 100000;
  const int rounds = argc > 3 ? std::atoi(argv[3]) : 5;
  constexpr std::size_t headerLength = 32 * kFields + 33;
  constexpr std::size_t recordLength = 24 + 18 + 18 + 8 + 1 + 1;

  Measure("write", rounds, [&] { return Write(path, records); });
  Measure("pieces", rounds, [&] { return ReadPieces(path, headerLength, recordLength); });
  Measure("scan", rounds, [&] { return Scan(path); });
  Measure("update", rounds, [&] { return Update(path, records); });
  return 0;
}
