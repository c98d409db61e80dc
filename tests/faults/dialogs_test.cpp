// Dialogs, sheets and menus of the console, driven by piped commands; what waits and is to stop.
#include "brindle/console_user_interface.h"
#include "faults/sweep.h"
#include "platform/stack.h"
#include "platform/stop_signal.h"
#include "support/redirected_streams.h"

#include <chrono>
#include <optional>
#include <thread>

using faults::FaultKind;
using faults::Outcome;
using faults::Scenario;
using faults::Sweep;
using faults::TestsOwn;
using faults::Trial;

namespace {

constexpr const char* kDialog = R"(dialog "Site visit", 0, 0, 200, 200, 9, "Sans"
  control statictext "Inspector:", 10, 5, 5, 50, 10
  control edittext "Miller", 11, 60, 5, 80, 14, "typed"
  control editmultiline "", 12, 5, 20, 80, 30
  control editnumber "42", 13, 5, 55, 80, 14, "typed"
  control datetime "Date", 14, 5, 70, 80, 14, "moved"
  control checkbox "Paid", 15, 5, 85, 80, 14, "checked"
  control groupbox "Size", 20, 5, 100, 80, 50
  control radiogroup "small", 21, 5, 110, 80, 14
  control radiogroup "large", 22, 5, 125, 80, 14
  control listbox "Site", 30, 100, 5, 80, 40, "chosen"
  control multilistbox "Crops", 31, 100, 50, 80, 40, "chosen"
  control combobox "Weather", 32, 100, 95, 80, 40
  control treeview "Place", 33, 100, 110, 80, 40
  control tabcontrol "Pages", 34, 100, 150, 80, 40
  control sliderhorz "Depth", 40, 5, 150, 80, 14, "moved"
  control slidervert "Height", 41, 5, 165, 80, 14
  control bitmap "logo.bmp", 50, 5, 180, 20, 20
  control button "Locate", 60, 30, 180, 50, 14, "located"
  control okbutton "OK", 1, 85, 180, 50, 14
  control cancelbutton "Cancel", 2, 140, 180, 50, 14
  oninit opened
  onexit closed
enddialog
print "done"
end
sub opened(r)
  alter 12
    text "a longer text of more than one word"
  endalter
  alter 30
    value "Harbour"
    value "Mill"
  endalter
  alter 31
    value "oats"
    value "rye"
  endalter
  alter 33
    value "north\field"
  endalter
  alter 34
    value "general"
  endalter
  alter window
    title "Site visit today"
    menuitem "About this program", "located"
  endalter
endsub
sub typed(t)
  print "typed "; t
endsub
sub moved(t)
  print "moved "; t
endsub
sub checked(t)
  print "checked "; int(t)
endsub
sub chosen(t)
  print "chosen "; t
endsub
sub located(t)
  print "located "; controlvalue(11); controlvalue(30); controlvalue(34)
endsub
sub closed(t)
  print "closed "; int(t)
endsub
)";
constexpr const char* kDialogInput =
    "type 11 Smith\ntype 13 77\nset 14 2024-02-29 08:30:00\nclick 15\nselect 30 1\nselect 31 0\n"
    "set 40 75\nmenu window 0\nclick 60\nclick 99\nshow\nok\n";
constexpr const char* kDialogOutput = "located SmithMill0\nlocated SmithMill0\nclosed 1\ndone\n";

// A sheet of two pages, menus before, inside and behind it, and a dialog on the sheet.
constexpr const char* kSheet = R"(dim more[2]
more[0] = "-"
more[1] = "third"
print "chosen "; popupmenu("first", "second", more)
propertysheet "Settings", 0, 0, 120, 90
  page "Line"
    control combobox "Speed", 10, 5, 5, 50, 40
    control edittext "COM1:", 11, 5, 20, 50, 12, "typed"
    oninit opened
    onexit closed
  endpage
  page "Log"
    control checkbox "Keep", 20, 5, 5, 50, 12, "checked"
    control button "Folder", 21, 5, 20, 50, 12, "asked"
    onexit closed
  endpage
enddialog
print "then "; popupmenu("last")
print "done"
end
sub opened(r)
  alter 10
    value "9600"
    value "19200"
    selection 1
  endalter
  alter window
    title "Settings of the line"
  endalter
endsub
sub typed(t)
  print "typed "; t
endsub
sub checked(t)
  print "checked "; int(t)
endsub
sub asked(t)
  print "asked "; popupmenu("here", "there")
  dialog "Inner", 0, 0, 100, 60
    control edittext "inner", 30, 5, 5, 50, 12
  enddialog
  print controlvalue(10); " "; controlvalue(11)
endsub
sub closed(r)
  print "closed "; int(r)
endsub
)";
constexpr const char* kSheetInput = "9\n3\ntype 11 COM2:\nclick 20\nclick 21\n1\ncancel\nshow\nok\n0\n";
constexpr const char* kSheetOutput = "asked 1\n19200 COM2:\nclosed 1\nclosed 1\nthen 0\ndone\n";

// A script at the console, which gets its commands and answers from a pipe.
class AtConsole : public Scenario {
public:
  // The output ends so when nothing is refused.
  AtConsole(const char* script, const char* input, const char* output)
      : m_pScript(script), m_pInput(input), m_pOutput(output) {}
  [[nodiscard]] std::vector<FaultKind> Kinds() const override {
    // Process for what a stop from outside wakes.
    return {FaultKind::Memory, FaultKind::File, FaultKind::Process, FaultKind::PartialWrite};
  }
  void Prepare() override { Folder().Write("script.bas", m_pScript); }
  [[nodiscard]] std::unique_ptr<CBrindle> Make(RecordingUserInterface& ui) override {
    {
      const TestsOwn own;
      m_streams.emplace(m_pInput);
    }
    m_console = std::make_unique<CConsoleUserInterface>(CConsoleUserInterface::ErrorPolicy::Continue);
    return Scenario::Make(ui);
  }
  [[nodiscard]] CUserInterface* UserInterface() override { return m_console.get(); }
  void Act(CBrindle* interpreter, Outcome& outcome) override {
    Scenario::Act(interpreter, outcome);
    m_bWritten = m_console->Flush();
    m_streams->Stop();
  }
  void Finish(Outcome& outcome) override {
    m_streams->Stop();
    m_nErrors = m_console->GetNumberOfErrors();
    m_console.reset();
    outcome.output = m_streams->Output();
    m_shown = m_streams->Error();
    m_streams.reset();
  }
  [[nodiscard]] std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome& reference) override {
    if (!reference.output.ends_with(m_pOutput))
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    if (outcome.output == reference.output)
      return {};
    if (trial.kind == FaultKind::Memory) {
      if (m_nErrors == 0)
        return "not reported";
      return m_shown.find("Brindle unrecoverable error\n") != std::string::npos ||
                     m_shown.find("Not enough memory to load source file\n") != std::string::npos
                 ? ""
                 : "nobody was told";
    }
    // Output that is lost makes the runner fail; input that cannot be read is at its end, which cancels what asks.
    if (m_nErrors > 0 || !m_bWritten || outcome.output.find("closed 2\n") != std::string::npos ||
        outcome.output.find(" -1\n") != std::string::npos)
      return {};
    return "not reported";
  }

private:
  const char* m_pScript;
  const char* m_pInput;
  const char* m_pOutput;
  std::optional<RedirectedStreams> m_streams;
  std::unique_ptr<CConsoleUserInterface> m_console;
  std::string m_shown;
  int m_nErrors = 0;
  bool m_bWritten = true;
};

void Arm(FaultKind kind) {
  brindle::faultPlan.kind = kind;
  brindle::faultPlan.lasting = true;
  brindle::faultPlan.chosen = 1;
  brindle::faultPlan.calls = 0;
  brindle::faultPlan.refused = 0;
  brindle::faultPlan.active = true;
}

} // namespace

TEST(DialogFaults, a_console_dialog_with_every_kind_of_control) {
  AtConsole scenario(kDialog, kDialogInput, kDialogOutput);
  Sweep("dialog", scenario);
}

TEST(DialogFaults, a_property_sheet_and_menus_of_the_console) {
  AtConsole scenario(kSheet, kSheetInput, kSheetOutput);
  Sweep("sheet and menus", scenario);
}

// A wait whose calls are all refused ends when it would have ended, and with the flag of the stop.
TEST(DialogFaults, a_stop_reaches_waits_of_which_the_system_refuses_every_call) {
  using brindle::StopSignal;
  StopSignal signal;
  const StopSignal::Scope scope(&signal);
  EXPECT_GE(StopSignal::CurrentDescriptor(), 0);
  Arm(FaultKind::Process);
  EXPECT_GE(StopSignal::CurrentDescriptor(), 0) << "what was answered long ago stays in it";
  EXPECT_EQ(brindle::faultPlan.refused, 1U);
  const auto start = StopSignal::Clock::now();
  StopSignal::SleepUntil(start + std::chrono::milliseconds(20));
  EXPECT_GE(StopSignal::Clock::now() - start, std::chrono::milliseconds(20)) << "a sleep is as long without poll";
  signal.SetDeadline(StopSignal::Clock::now() + std::chrono::milliseconds(20));
  StopSignal::SleepUntil(start + std::chrono::hours(1));
  EXPECT_TRUE(signal.WasLate()) << "and ends at the deadline";
  signal.Clear();
  signal.SetDeadline(std::nullopt);
  const std::uint64_t before = brindle::faultPlan.refused;
  signal.Request();
  EXPECT_EQ(brindle::faultPlan.refused, before + 1);
  StopSignal::SleepUntil(start + std::chrono::hours(1));
  brindle::faultPlan.active = false;
  EXPECT_TRUE(StopSignal::CurrentShouldStop()) << "the flag needs no descriptor";
}

TEST(DialogFaults, without_a_pipe_for_signals_the_input_is_served_to_its_end) {
  RedirectedStreams streams("a line\nanother\n");
  CConsoleUserInterface console;
  Arm(FaultKind::Process);
  console.ServeUntilEndOfInput();
  brindle::faultPlan.active = false;
  streams.Stop();
  EXPECT_EQ(brindle::faultPlan.refused, 1U);
}

TEST(DialogFaults, a_thread_whose_stack_is_unknown_counts_as_roomy) {
  std::size_t remaining = 0;
  std::thread other([&] {
    Arm(FaultKind::Process);
    remaining = brindle::RemainingStack();
    brindle::faultPlan.active = false;
  });
  other.join();
  EXPECT_EQ(brindle::faultPlan.refused, 1U);
  EXPECT_EQ(remaining, brindle::UnknownStackRemaining);
}
