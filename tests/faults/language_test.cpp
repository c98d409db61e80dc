// Scripts that compute, by both routes, while memory or a file of the program is refused.
#include "brindle/environment.h"
#include "faults/sweep.h"

using faults::FaultKind;
using faults::Outcome;
using faults::Scenario;
using faults::Sweep;
using faults::Trial;

namespace {

constexpr int kLoadError = 17;
constexpr int kMemoryError = 50;

// Want of memory ends the run with its error; what was printed until then is right.
std::string JudgeRun(const Trial& trial, const Outcome& outcome, const Outcome& reference) {
  if (outcome.thrown)
    return "std::bad_alloc left ExecuteProgram";
  if (!reference.output.starts_with(outcome.output))
    return "printed something else";
  if (outcome.loaded == outcome.Reported(kLoadError))
    return "error 17 and the result do not agree";
  if (trial.kind == FaultKind::Memory && outcome.output != reference.output && !outcome.Reported(kLoadError) &&
      !outcome.Reported(kMemoryError))
    return "ended early without an error";
  return {};
}

class Computing : public Scenario {
public:
  explicit Computing(CEnvironment::Route route) { CEnvironment::SetRoute(route, 0); }
  ~Computing() override { CEnvironment::SetRoute(CEnvironment::Route::Automatic, 0); }

  void Prepare() override {
    Folder().Write("script.bas", R"(type Station
  id as integer
  height as double
  code[4] as char
endtype
dim s as Station
dim numbers[20], names[5]
global Count
Count = 0
words = ""
for i = 1 to 12
  words = words + ucase(mid("abcdefghijklmnop", i, 2)) + "-"
  s.id = i
  s.height = s.height + i / 4
  Count = Count + Square(i)
  numbers[i] = Count
next
print words; " "; s.id; " "; s.height; " "; int(Count)
k = 0
total = 0
do while k < 20
  if numbers[k] > 100 then
    total = total + numbers[k] * 2
  else
    total = total - 1
  endif
  k = k + 1
loop
copy = numbers
print int(total); " "; int(copy[12]); " "; int(ubound("copy"))
map create "m"
for i = 1 to 6
  call mapset("m", "key" + str(int(i)), repeat("x", i))
next
call mapremove("m", "key2")
keys = mapgetkeys("m")
values = mapgetvalues("m")
print keys[4]; values[4]; int(ubound("keys")); mapget("m", "key1"); int(maphas("m", "key2"))
event create changed Note
event create alarm Note
event create alarm Other
w = 1
watch create w changed
w = 2
w = "text"
throw alarm("rang")
watch remove w
w = 3
print replace(format(3.14159, "%8.3f"), ".", ","); left(words, 3); int(instr(words, "CD")); getname("/a/b/c.txt")
call Deep(12)
goto last
print "never"
last:
names[1] = "one"
names[4] = names[1] + "four"
print names[4]; " "; int(val("12.5") * 2); " "; lcase("ENDE"); int(len(words))
timerstart 1000
timerstop
print "done"
end
function Square(n)
  Square = n * n
endfunction
sub Note(v)
  print "note "; v
endsub
sub Other(v)
  global Seen
  Seen = "seen " + v
  print Seen
endsub
sub Deep(n)
  local = "level " + str(n)
  if n > 0 then
    call Deep(n - 1)
  endif
endsub
)");
  }
  [[nodiscard]] std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome& reference) override {
    if (!reference.output.ends_with("done\n"))
      return "the scenario does not reach its end";
    return JudgeRun(trial, outcome, reference);
  }
};

// A program that is put together from several files, and runs another.
class PutTogether : public Scenario {
public:
  [[nodiscard]] std::vector<FaultKind> Kinds() const override { return {FaultKind::Memory, FaultKind::File}; }
  void Prepare() override {
    Folder().Write("lib.bas", "function Twice(n)\n  Twice = n * 2\nendfunction\n");
    Folder().Write("part.bas", "print \"part \"; int(Twice(4))\n");
    Folder().Write("child.bas", "for i = 1 to 3\n  print \"child \"; int(i)\nnext\n");
    Folder().Write("script.bas", "library \"lib.bas\"\nprint \"begin\"\ninclude \"part.bas\"\nrun \"" +
                                     PathOf("child.bas") + "\"\nprint \"done\"\nend\n");
  }
  [[nodiscard]] std::string Judge(const Trial&, const Outcome& outcome, const Outcome& reference) override {
    if (reference.output != "begin\npart 8\nchild 1\nchild 2\nchild 3\ndone\n")
      return "the scenario does not reach its end";
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    // A file that cannot be read is reported, whichever of them it is; the rest of the program may go on.
    return outcome.output != reference.output && outcome.errors.empty() ? "something was left out in silence" : "";
  }
};

// An interpreter's beginning and end.
class Construction : public Scenario {
public:
  [[nodiscard]] std::unique_ptr<CBrindle> Make(RecordingUserInterface&) override { return nullptr; }
  void Act(CBrindle*, Outcome& outcome) override {
    CBrindle first;
    CBrindle second;
    outcome.loaded = true;
  }
  [[nodiscard]] std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome&) override {
    return trial.number != 0 && outcome.loaded == outcome.thrown ? "neither made nor refused" : std::string();
  }
};

} // namespace

TEST(LanguageFaults, a_script_by_the_executing_parser) {
  Computing scenario(CEnvironment::Route::Parser);
  Sweep("parser", scenario);
}

TEST(LanguageFaults, a_script_by_compiled_statements) {
  Computing scenario(CEnvironment::Route::Eager);
  Sweep("compiled", scenario);
}

TEST(LanguageFaults, a_program_of_several_files) {
  PutTogether scenario;
  Sweep("several files", scenario);
}

TEST(LanguageFaults, an_interpreter_that_cannot_be_made) {
  Construction scenario;
  Sweep("construction", scenario);
}
