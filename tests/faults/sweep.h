// A scenario is acted again and again, each time with the next call refused, until none was refused any more.
// Room: tests. Used by: the fault tests.
// May touch: the fault plan, a folder of the scenario's own, descriptors only by counting them.
// Must not: refuse calls of the test itself.
// Invariant: behind every trial nothing is held that was not held before it, and an interpreter still works.
#pragma once

#include "brindle/interpreter.h"
#include "faults/allocator.h"
#include "support/recording_user_interface.h"
#include "support/script_test.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace faults {

using brindle::FaultKind;

struct Trial {
  FaultKind kind = FaultKind::Memory;
  bool lasting = false;
  std::uint64_t number = 0; // of the refused call; 0 when none is refused

  // A trial differs from its neighbours in what the user answers and in when the interpreter ends.
  [[nodiscard]] bool CancelsErrors() const noexcept { return number % 3 == 2; }
  [[nodiscard]] bool EndsUnderFault() const noexcept { return number % 2 == 0; }
};

struct Outcome {
  bool loaded = false; // what ExecuteProgram gave
  bool thrown = false; // std::bad_alloc came out
  std::string output;
  std::vector<int> errors;
  std::vector<std::string> notices;

  [[nodiscard]] bool Reported(int number) const;
  [[nodiscard]] bool Silent() const { return !thrown && errors.empty() && notices.empty(); }
};

// The recording user interface, which is the host's: its memory is never refused.
class FaultUserInterface final : public RecordingUserInterface {
public:
  void ShowMessage(const CString& text) override;
  void ShowNotice(const CString& text) override;
  [[nodiscard]] ErrorAnswer ShowError(const CString& text) override;
  [[nodiscard]] unsigned StartTimer(unsigned period, std::function<void()> tick) override;
  void StopTimer(unsigned identifier) override;
};

class Scenario {
public:
  virtual ~Scenario() = default;

  // The kinds of calls that the scenario makes: with another one it would say nothing.
  [[nodiscard]] virtual std::vector<FaultKind> Kinds() const { return {FaultKind::Memory}; }
  // Up to this call every one has its trial, behind it steps are taken; less where a trial has to wait.
  [[nodiscard]] virtual std::uint64_t EveryOne() const { return 300; }
  // Before every trial, with nothing refused: the folder is new and empty.
  virtual void Prepare() {}
  // The interpreter of a trial, made with nothing refused.
  [[nodiscard]] virtual std::unique_ptr<CBrindle> Make(RecordingUserInterface& ui);
  // The trial itself. The default runs the file script.bas of the folder.
  virtual void Act(CBrindle* interpreter, Outcome& outcome);
  // Where messages go; the scenario's own, else a recording one.
  [[nodiscard]] virtual CUserInterface* UserInterface() { return nullptr; }
  // Behind the interpreter's end, with nothing refused: lets go of what Prepare and Make made, but for files.
  virtual void Finish(Outcome&) {}
  // What is wrong with what a trial with a refused call left, the interpreter included, which has ended. Empty when
  // nothing is. `reference` is the outcome of the trial without a refusal.
  [[nodiscard]] virtual std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome& reference);

  [[nodiscard]] const TemporaryFolder& Folder() const { return *m_pFolder; }
  [[nodiscard]] std::string PathOf(std::string_view name) const { return Folder().Path(name).string(); }

  std::unique_ptr<TemporaryFolder> m_pFolder;
};

// Every kind of the scenario, each once and from the chosen call on.
void Sweep(const char* name, Scenario& scenario);

} // namespace faults
