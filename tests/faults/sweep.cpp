#include "faults/sweep.h"

#include "platform/text_blocks.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <random>

namespace faults {

void SetTestsOwn(bool own) noexcept;

namespace {

namespace fs = std::filesystem;
using brindle::faultPlan;

const char* NameOf(FaultKind kind) {
  switch (kind) {
  case FaultKind::Memory: return "memory";
  case FaultKind::File: return "file";
  case FaultKind::Serial: return "serial";
  case FaultKind::Library: return "library";
  case FaultKind::Process: return "process";
  case FaultKind::PartialWrite: return "partial";
  }
  return "";
}

struct Holdings {
  std::size_t memory = 0;
  std::size_t descriptors = 0;
  int interpreters = 0;

  static Holdings Now() {
    [[maybe_unused]] static const bool everyTextIsAllocated = (brindle::detail::KeepNoBlocks(), true);
    Holdings now;
    now.memory = Held();
    now.descriptors =
        static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
    now.interpreters = BrindleTestAccess::NumberOfCopies();
    return now;
  }
  bool operator==(const Holdings&) const = default;
};

std::string ToText(const Holdings& holdings) {
  return std::to_string(holdings.memory) + " allocations, " + std::to_string(holdings.descriptors) + " descriptors, " +
         std::to_string(holdings.interpreters) + " interpreters";
}

// What a little program prints, or why it does not.
std::string Greeting(CBrindle& interpreter, const CString& script) {
  RecordingUserInterface ui;
  CUserInterface* const before = &interpreter.GetUserInterface();
  interpreter.SetUserInterface(&ui);
  interpreter.ExecuteProgram(script);
  interpreter.SetUserInterface(before);
  std::string said = ui.Output();
  for (const std::string& error : ui.errors)
    said += "error: " + error;
  return said;
}

class TrialRun {
public:
  TrialRun(Scenario& scenario, const Trial& trial) : m_scenario(scenario), m_trial(trial) {}

  [[nodiscard]] const Outcome& Result() const { return m_outcome; }
  [[nodiscard]] std::uint64_t Calls() const { return m_nCalls; }
  [[nodiscard]] bool Struck() const { return m_nRefused > 0; }

  // What is wrong with what the trial left, apart from what the scenario judges.
  std::string Run() {
    m_scenario.m_pFolder = std::make_unique<TemporaryFolder>();
    const CString greeting = m_scenario.Folder().Write("greeting.bas", kGreeting);
    m_scenario.Prepare();
    const Holdings before = Holdings::Now();
    const std::size_t mark = Mark();
    std::string fault;
    {
      FaultUserInterface ui;
      if (m_trial.CancelsErrors())
        ui.CancelErrors();
      SetTestsOwn(false);
      std::unique_ptr<CBrindle> interpreter = m_scenario.Make(ui);
      Start();
      try {
        m_scenario.Act(interpreter.get(), m_outcome);
      } catch (const std::bad_alloc&) {
        m_outcome.thrown = true;
      }
      if (m_trial.EndsUnderFault())
        interpreter.reset();
      Stop();
      SetTestsOwn(true);
      if (interpreter != nullptr)
        fault = CheckGreeting(Greeting(*interpreter, greeting));
      SetTestsOwn(false);
      interpreter.reset();
      SetTestsOwn(true);
      m_scenario.Finish(m_outcome);
      m_outcome.output += ui.Output();
      m_outcome.errors = ui.ErrorNumbers();
      m_outcome.notices.insert(m_outcome.notices.end(), ui.notices.begin(), ui.notices.end());
      CBrindle fresh;
      if (fault.empty())
        fault = CheckGreeting(Greeting(fresh, greeting));
    }
    const Holdings after = Holdings::Now();
    if (fault.empty() && after != before) {
      fault = "left behind: before " + ToText(before) + ", after " + ToText(after);
      TraceHeldSince(mark);
    }
    return fault;
  }

private:
  static constexpr std::string_view kGreeting = R"(dim list[5]
said = ""
for i = 0 to 4
  list[i] = i * 2
  said = said + Letter(i)
next
print said; int(list[4])
end
function Letter(n)
  Letter = mid("abcdef", n, 1)
endfunction
)";
  static std::string CheckGreeting(const std::string& said) {
    return said == "abcde8\n" ? std::string() : "an interpreter does not work any more: " + said;
  }

  void Start() {
    faultPlan.kind = m_trial.kind;
    faultPlan.lasting = m_trial.lasting;
    faultPlan.chosen = m_trial.number;
    faultPlan.calls = 0;
    faultPlan.refused = 0;
    faultPlan.active = true;
  }
  void Stop() {
    faultPlan.active = false;
    m_nCalls = faultPlan.calls;
    m_nRefused = faultPlan.refused;
  }

  Scenario& m_scenario;
  Trial m_trial;
  Outcome m_outcome;
  std::uint64_t m_nCalls = 0;
  std::uint64_t m_nRefused = 0;
};

// Steps of changing length: one that never changed might miss what comes round in a loop.
class Steps {
public:
  Steps(std::uint64_t everyOne, std::uint64_t calls) : m_nEveryOne(everyOne) {
    const std::uint64_t trialsBehind = everyOne * 5 / 6;
    if (std::getenv("BRINDLE_SLOW_TESTS") == nullptr && calls > everyOne + trialsBehind)
      m_nMean = (calls - everyOne) / trialsBehind;
  }
  [[nodiscard]] std::uint64_t Behind(std::uint64_t number) {
    if (number < m_nEveryOne || m_nMean == 1)
      return number + 1;
    return number + std::uniform_int_distribution<std::uint64_t>(1, 2 * m_nMean - 1)(m_random);
  }

private:
  std::uint64_t m_nEveryOne;
  std::uint64_t m_nMean = 1;
  std::minstd_rand m_random; // the same steps in every run: a failure can be had again
};

void SweepOne(const char* name, Scenario& scenario, FaultKind kind, bool lasting, const Outcome& reference,
              std::uint64_t calls) {
  Steps steps(scenario.EveryOne(), calls);
  std::uint64_t trials = 0;
  const char* const only = std::getenv("BRINDLE_FAULT_ONLY");
  for (std::uint64_t number = only != nullptr ? std::strtoull(only, nullptr, 10) : 1;; number = steps.Behind(number)) {
    const Trial trial{kind, lasting, number};
    SCOPED_TRACE(std::string(name) + ": " + NameOf(kind) + " call " + std::to_string(number) +
                 (lasting ? " and all behind it" : ""));
    std::optional<TrialRun> run(std::in_place, scenario, trial);
    std::string fault = run->Run();
    if (fault.starts_with("left behind")) {
      // What is made once and kept for the process is made but once.
      run.emplace(scenario, trial);
      fault = run->Run();
    }
    if (!run->Struck()) {
      EXPECT_EQ(fault, "");
      EXPECT_EQ(run->Result().output, reference.output);
      break;
    }
    ++trials;
    if (fault.empty())
      fault = scenario.Judge(trial, run->Result(), reference);
    // The rest is written by another call, and nobody sees a difference.
    if (fault.empty() && kind == FaultKind::PartialWrite && !lasting &&
        (run->Result().output != reference.output || !run->Result().Silent()))
      fault = "a write in two parts is not as good as one";
    if (!fault.empty()) {
      TraceRefused();
      std::string said = "output: " + run->Result().output + "\nerrors:";
      for (const int error : run->Result().errors)
        said += " " + std::to_string(error);
      for (const std::string& notice : run->Result().notices)
        said += "\nnotice: " + notice;
      ADD_FAILURE() << fault << "\n" << said;
      if (testing::Test::HasFailure() && std::getenv("BRINDLE_FAULT_GO_ON") == nullptr)
        return;
    }
    if (only != nullptr)
      return;
  }
  std::printf("%-24s %-8s %-8s %6llu faults, %6llu calls\n", name, NameOf(kind), lasting ? "lasting" : "once",
              static_cast<unsigned long long>(trials), static_cast<unsigned long long>(calls));
  std::fflush(stdout);
}

} // namespace

bool Outcome::Reported(int number) const {
  return std::find(errors.begin(), errors.end(), number) != errors.end();
}

void FaultUserInterface::ShowMessage(const CString& text) {
  const TestsOwn own;
  RecordingUserInterface::ShowMessage(text);
}

void FaultUserInterface::ShowNotice(const CString& text) {
  const TestsOwn own;
  RecordingUserInterface::ShowNotice(text);
}

CUserInterface::ErrorAnswer FaultUserInterface::ShowError(const CString& text) {
  const TestsOwn own;
  return RecordingUserInterface::ShowError(text);
}

unsigned FaultUserInterface::StartTimer(unsigned period, std::function<void()> tick) {
  const TestsOwn own;
  return RecordingUserInterface::StartTimer(period, std::move(tick));
}

void FaultUserInterface::StopTimer(unsigned identifier) {
  const TestsOwn own;
  RecordingUserInterface::StopTimer(identifier);
}

std::unique_ptr<CBrindle> Scenario::Make(RecordingUserInterface& ui) {
  auto interpreter = std::make_unique<CBrindle>();
  interpreter->SetUserInterface(UserInterface() != nullptr ? UserInterface() : &ui);
  return interpreter;
}

void Scenario::Act(CBrindle* interpreter, Outcome& outcome) {
  std::optional<CString> script;
  {
    const TestsOwn own;
    script = CString::FromUtf8(PathOf("script.bas"));
  }
  outcome.loaded = interpreter->ExecuteProgram(*script);
  const TestsOwn own;
  script.reset();
}

std::string Scenario::Judge(const Trial&, const Outcome&, const Outcome&) {
  return {};
}

void Sweep(const char* name, Scenario& scenario) {
  const char* const only = std::getenv("BRINDLE_FAULT_KIND");
  for (const FaultKind kind : scenario.Kinds()) {
    if (only != nullptr && std::string_view(only) != NameOf(kind))
      continue;
    // Twice: what is made once and kept for the process is there at the second time.
    std::optional<TrialRun> reference;
    std::string fault;
    for (int round = 0; round < 2; ++round) {
      reference.emplace(scenario, Trial{kind, false, 0});
      fault = reference->Run();
    }
    ASSERT_EQ(fault, "") << name;
    ASSERT_FALSE(reference->Result().thrown) << name;
    ASSERT_EQ(reference->Result().errors, std::vector<int>()) << name << ": " << reference->Result().output;
    ASSERT_GT(reference->Calls(), 0U) << name << " makes no call of kind " << NameOf(kind);
    for (const bool lasting : {false, true})
      SweepOne(name, scenario, kind, lasting, reference->Result(), reference->Calls());
  }
  scenario.m_pFolder.reset();
}

} // namespace faults
