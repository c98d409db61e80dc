// CConsoleUserInterface: boxes and prompts as lines on the standard streams.
// Room: ui. Used by: the runner, hosts without a window system, and by default.
// May touch: standard input, output and error.
// Invariant: standard output holds what scripts print and nothing else.
#pragma once

#include "brindle/user_interface.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

/// Messages go to standard output, everything else to standard error; answers are lines of standard input.
/// End of input answers every prompt: Cancel, No, no file, no entry. Timers tick while a prompt waits.
class BRINDLE_API CConsoleUserInterface : public CUserInterface {
public:
  /// How an error box is answered.
  enum class ErrorPolicy {
    Automatic, ///< asks when standard input is a terminal, else Cancel
    Ask,       ///< reads a line: "c" or "cancel" is Cancel, anything else OK
    Continue,  ///< OK
    Abort      ///< Cancel
  };

  /// What is shown below an error text: where in the scripts it was reported, and the calls that led there.
  enum class ErrorDetail {
    Automatic, ///< the place, when standard error is a terminal
    None,      ///< the error text alone
    Place      ///< the place
  };

  explicit CConsoleUserInterface(ErrorPolicy policy = ErrorPolicy::Automatic);
  ~CConsoleUserInterface() override;
  CConsoleUserInterface(const CConsoleUserInterface&) = delete;
  CConsoleUserInterface& operator=(const CConsoleUserInterface&) = delete;

  void SetErrorPolicy(ErrorPolicy policy) noexcept;
  void SetErrorDetail(ErrorDetail detail) noexcept;
  /// Writes out what is buffered for standard output; false when any of the output was lost (a full disk).
  bool Flush() noexcept;
  /// How many error boxes and notices were shown so far.
  [[nodiscard]] int GetNumberOfErrors() const noexcept;
  /// Serves timers until the end of standard input, or until SIGINT or SIGTERM, which it takes over.
  void ServeUntilEndOfInput();
  /// For a host that waits for input itself: runs the ticks that are due and writes out what is buffered. How long
  /// until the next tick; nothing when no timer runs.
  std::optional<std::chrono::milliseconds> ServeTimers();

  void ShowMessage(const CString& text) override;
  void ShowNotice(const CString& text) override;
  [[nodiscard]] ErrorAnswer ShowError(const CString& text) override;
  [[nodiscard]] ErrorAnswer ShowErrorAt(const CString& text, const CErrorPlace& place) override;
  [[nodiscard]] bool AskYesNo(const CString& question, const CString& title) override;
  [[nodiscard]] std::optional<CString> ChooseFile(const FileRequest& request) override;
  [[nodiscard]] int ShowPopupMenu(const CStringArray& entries) override;
  [[nodiscard]] std::unique_ptr<CDialogWindow> CreateDialogWindow(const CDialogDescription& description,
                                                                  CDialogEvents& events) override;
  [[nodiscard]] unsigned StartTimer(unsigned period, std::function<void()> tick) override;
  void StopTimer(unsigned identifier) override;

private:
  [[nodiscard]] ErrorAnswer Report(const CString& text, const std::string& detail);

  struct State;
  std::unique_ptr<State> m_pState;
};
