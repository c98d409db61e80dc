// A dialog of the console with every kind of control, driven by piped commands.
#include "brindle/console_user_interface.h"
#include "faults/sweep.h"
#include "platform/stack.h"
#include "support/redirected_streams.h"

#include <optional>
#include <thread>

using faults::FaultKind;
using faults::Outcome;
using faults::Scenario;
using faults::Sweep;
using faults::TestsOwn;
using faults::Trial;

namespace {

class Dialog : public Scenario {
public:
  [[nodiscard]] std::vector<FaultKind> Kinds() const override {
    return {FaultKind::Memory, FaultKind::File, FaultKind::Process}; // the last for what a stop from outside wakes
  }
  void Prepare() override {
    Folder().Write("script.bas", R"(dialog "Site visit", 0, 0, 200, 200, 9, "Sans"
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
)");
  }
  [[nodiscard]] std::unique_ptr<CBrindle> Make(RecordingUserInterface& ui) override {
    {
      const TestsOwn own;
      m_streams.emplace("type 11 Smith\ntype 13 77\nset 14 2024-02-29 08:30:00\nclick 15\nselect 30 1\nselect 31 0\n"
                        "set 40 75\nmenu window 0\nclick 60\nclick 99\nshow\nok\n");
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
    if (!reference.output.ends_with("located SmithMill0\nlocated SmithMill0\nclosed 1\ndone\n"))
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
    // Output that is lost makes the runner fail; input that cannot be read is at its end, which cancels the dialog.
    if (m_nErrors > 0 || !m_bWritten || outcome.output.find("closed 2\n") != std::string::npos)
      return {};
    return "not reported";
  }

private:
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
  Dialog scenario;
  Sweep("dialog", scenario);
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
