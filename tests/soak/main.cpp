// brindle_soak: hosts that run for weeks, made short. One interpreter takes a million events and ticks of its
// timer; one host makes and destroys a hundred thousand interpreters that leave everything open.
// Memory and descriptors are measured when a tenth is done and at the end, and must be the same but for noise.
#include "brindle/brindle.h"

#include <malloc.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr const char* kUsage = "brindle_soak [options]\n"
                               "  --events N         events and ticks for one interpreter (default 1000000)\n"
                               "  --interpreters N   interpreters made and destroyed (default 100000)\n";

// Below this a difference is the allocator's, not a leak: a byte an event would be more.
constexpr long kNoiseBytes = 512 * 1024;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMemoryIsMeasured = false; // freed blocks are kept back; leaks are reported at the end
#else
constexpr bool kMemoryIsMeasured = true;
#endif

struct Measure {
  long residentBytes = 0;
  long allocatedBytes = 0;
  long descriptors = 0;
};

Measure MeasureNow() {
  Measure measure;
  long total = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  measure.residentBytes = resident * sysconf(_SC_PAGESIZE);
  if (kMemoryIsMeasured)
    measure.allocatedBytes = static_cast<long>(mallinfo2().uordblks);
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator("/proc/self/fd"))
    ++measure.descriptors;
  return measure;
}

bool Report(const char* what, long count, std::chrono::steady_clock::time_point started, const Measure& early,
            const Measure& late) {
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - started;
  std::printf("%s: %ld in %.1f s; after a tenth and at the end: resident %ld and %ld KiB, allocated %ld and %ld bytes, "
              "descriptors %ld and %ld\n",
              what, count, seconds.count(), early.residentBytes / 1024, late.residentBytes / 1024, early.allocatedBytes,
              late.allocatedBytes, early.descriptors, late.descriptors);
  bool good = true;
  if (kMemoryIsMeasured && (late.residentBytes - early.residentBytes > kNoiseBytes ||
                            late.allocatedBytes - early.allocatedBytes > kNoiseBytes)) {
    std::printf("FAILED %s: memory grows\n", what);
    good = false;
  }
  if (late.descriptors != early.descriptors) {
    std::printf("FAILED %s: descriptors are left\n", what);
    good = false;
  }
  return good;
}

// Ticks when it is told to, counts what is shown, answers every error box with OK.
class SoakUserInterface : public CUserInterface {
public:
  std::map<unsigned, std::function<void()>> timers;
  long messages = 0;
  long errors = 0;

  void ShowMessage(const CString&) override { ++messages; }
  [[nodiscard]] ErrorAnswer ShowError(const CString&) override {
    ++errors;
    return ErrorAnswer::Ok;
  }
  [[nodiscard]] unsigned StartTimer(unsigned, std::function<void()> tick) override {
    timers.emplace(++m_nLast, std::move(tick));
    return m_nLast;
  }
  void StopTimer(unsigned identifier) override { timers.erase(identifier); }

private:
  unsigned m_nLast = 0;
};

// What handlers do in the field: texts, arrays, maps, records, calls, watches, files, tables, errors.
constexpr const char* kResident = R"(
global events, ticks, changes, shown, last, list, longest
events = int(0)
ticks = int(0)
changes = int(0)
dim list[20]
type Point
  x as double
  n as integer
endtype
map create "seen"
dim name[3]
name[0] = "NAME"
name[1] = "C"
name[2] = 20
event create Reading OnReading
event create Reading OnReadingToo
event create OnTimer Ticked
event create Changed OnChanged
timerstart 1000
stayresident
end

sub OnReading(reading)
  events = events + 1
  shown = shown
  last = format(events, "reading %08d") + ":" + str(reading)
  i = int(events / 20)
  list[events - i * 20] = last
  call mapset("seen", left(last, 16), reading)
  if maphas("seen", format(events - 50, "reading %08d")) = 1 then
    call mapremove("seen", format(events - 50, "reading %08d"))
  endif
  watched = reading
  watch create watched Changed
  watched = Twice(reading)
  if events - int(events / 1000) * 1000 = 0 then
    call KeepFiles()
  endif
  if events - int(events / 5000) * 5000 = 0 then
    nothingIsCalledSo(1)
    x = undefinedName + 1
  endif
endsub

sub OnReadingToo(reading)
  for i = 1 to 5
    longest = max(i, len(last))
  next
  throw Unheard(reading)
endsub

sub OnChanged(reading)
  changes = changes + 1
endsub

sub Ticked(reading)
  ticks = ticks + 1
  event remove Reading OnReadingToo
  event create Reading OnReadingToo
  list[3] = repeat("tick ", 40)
endsub

function Twice(n)
  if n > 1000 then
    Twice = n
  else
    Twice = Twice(n + 1000) * 2
  endif
endfunction

sub KeepFiles()
  open "kept.txt" for output as 1 text
  x = writeline(1, list)
  close 1
  open "kept.txt" for input as 2 text
  x = readline(2)
  close 2
  dim field[3]
  field[0] = "NAME"
  field[1] = "C"
  field[2] = 20
  h = dbfcreate("kept", field)
  x = dbfappend(h, last)
  x = dbfclose(h)
  print "kept"
endsub
)";

// What one run of a short-lived interpreter leaves open.
constexpr const char* kShort = R"(
library "more.bas"
dim list[50]
for i = 0 to 49
  list[i] = repeat("x", i)
next
type Point
  x as double
endtype
dim p as Point
p.x = Sum(1, 2) + hosted(3)
map create "m"
call mapset("m", "k", list)
event create E Handler
watch create i E
i = 7
timerstart 500
open "left.txt" for output as 1 text
x = writeline(1, list)
open "left.txt" for input as 2
dim field[3]
field[0] = "NAME"
field[1] = "C"
field[2] = 20
h = dbfcreate("left", field)
x = dbfappend(h, "one")
x = comportopen(7)
goto 5
end
sub Handler(v)
  print v
endsub
)";
constexpr const char* kLibrary = "function Sum(a, b)\nSum = a + b\nendfunction\n";

bool Write(const char* name, const char* text) {
  std::ofstream file(name);
  file << text;
  return static_cast<bool>(file.flush());
}

CBasicVariable Hosted(CBrindle*, CBasicVariableArray& arguments, int value) {
  return CBasicVariable(arguments.GetSize() + value);
}

bool SoakEvents(long count) {
  SoakUserInterface userInterface;
  CBrindle interpreter;
  interpreter.SetUserInterface(&userInterface);
  if (!interpreter.ExecuteProgram(CString("resident.bas")) || !interpreter.IsResident() ||
      userInterface.timers.size() != 1) {
    std::printf("FAILED events: the program does not stay: %s\n", interpreter.GetLastError().ToUtf8().c_str());
    return false;
  }
  const auto started = std::chrono::steady_clock::now();
  Measure early;
  long thrown = 0;
  long ticks = 0;
  for (long number = 1; number <= count; ++number) {
    if (number == count / 10)
      early = MeasureNow();
    if (number % 4 == 0) {
      userInterface.timers.begin()->second();
      ++ticks;
    } else {
      CBasicVariable value(static_cast<double>(number % 777));
      if (!interpreter.EventThrow(CString("Reading"), &value))
        return false;
      ++thrown;
    }
  }
  bool good = Report("events and ticks", count, started, early, MeasureNow());
  // Every handler ran every time: a tick that did nothing would cost nothing.
  const auto wanted = [&](long shown, long expected, const char* what) {
    if (shown != expected) {
      std::printf("FAILED events: %ld %s, not %ld\n", shown, what, expected);
      good = false;
    }
  };
  wanted(userInterface.messages, thrown / 1000, "messages");
  wanted(userInterface.errors > 0 ? 1 : 0, thrown >= 5000 ? 1 : 0, "error boxes or none");
  if (!Write("count.bas",
             "open \"counts.txt\" for output as 9 text\n"
             "x = writeline(9, int(events))\nx = writeline(9, \" \")\nx = writeline(9, int(ticks))\nclose 9\n"))
    return false;
  interpreter.ExecuteProgram(CString("count.bas"));
  long counted = -1;
  long ticked = -1;
  std::ifstream("counts.txt") >> counted >> ticked;
  wanted(counted, thrown, "events handled");
  wanted(ticked, ticks, "ticks handled");
  return good;
}

bool SoakInterpreters(long count) {
  SoakUserInterface userInterface;
  const auto started = std::chrono::steady_clock::now();
  Measure early;
  for (long number = 1; number <= count; ++number) {
    {
      CBrindle interpreter;
      interpreter.SetUserInterface(&userInterface);
      if (!interpreter.AddCustomFunction(CString("hosted"), Hosted, 4, nullptr) ||
          !interpreter.ExecuteProgram(CString("short.bas")))
        return false;
    }
    // To empty a file that is there takes some systems a journey to the disk.
    fs::remove("left.txt");
    fs::remove("left.dbf");
    if (number == count / 10)
      early = MeasureNow();
  }
  bool good = Report("interpreters", count, started, early, MeasureNow());
  // Each printed what its watch saw, met its one error, and took its timer along.
  if (userInterface.messages != count || userInterface.errors != count || !userInterface.timers.empty()) {
    std::printf("FAILED interpreters: %ld messages, %ld error boxes, %zu timers left\n", userInterface.messages,
                userInterface.errors, userInterface.timers.size());
    good = false;
  }
  return good;
}

// A folder to work in, below the system's one for temporary files; it ends with the object.
class WorkFolder {
public:
  WorkFolder() : m_before(fs::current_path()) {
    std::string pattern = (fs::temp_directory_path() / "brindle-soak-XXXXXX").string();
    m_path = mkdtemp(pattern.data());
    fs::current_path(m_path);
    // No device is to be found.
    setenv("BRINDLE_DEVICES", m_path.c_str(), 1);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder() {
    fs::current_path(m_before);
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
  }

private:
  fs::path m_before;
  fs::path m_path;
};

} // namespace

int main(int count, char** arguments) {
  long events = 1'000'000;
  long interpreters = 100'000;
  for (int i = 1; i < count; ++i) {
    const long number = i + 1 < count ? std::atol(arguments[i + 1]) : 0;
    if (std::strcmp(arguments[i], "--events") == 0 && number >= 10) {
      events = number;
      ++i;
    } else if (std::strcmp(arguments[i], "--interpreters") == 0 && number >= 10) {
      interpreters = number;
      ++i;
    } else {
      std::fputs(kUsage, stderr);
      return 2;
    }
  }
  const WorkFolder folder;
  if (!Write("resident.bas", kResident) || !Write("short.bas", kShort) || !Write("more.bas", kLibrary))
    return 1;
  const bool eventsGood = SoakEvents(events);
  const bool interpretersGood = SoakInterpreters(interpreters);
  return eventsGood && interpretersGood ? 0 : 1;
}
