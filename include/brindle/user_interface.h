// CUserInterface: where message boxes, questions, file dialogs, menus, timers and sounds go.
// Room: platform. Used by: interpreter, calls, io, ui, hosts that bring a window system of their own.
// May touch: nothing; an interface.
// Must not: know an interpreter's insides.
// Invariant: every member returns; none keeps a reference to what it was given, but for a timer's callback.
#pragma once

#include "brindle/collections.h"
#include "brindle/dialog.h"
#include "brindle/error_place.h"
#include "brindle/text.h"

#include <functional>
#include <memory>
#include <optional>

/// The window system as an interpreter sees it. All members are called on the thread that runs the
/// interpreter, and may block it (a modal box does). This base class is the interface that shows nothing:
/// it drops messages, answers an error box with Cancel and a question with No, dismisses dialogs and
/// menus, and never ticks; override what the host can show.
/// An exception that leaves a member ends the run and reaches the caller of ExecuteProgram.
class BRINDLE_API CUserInterface {
public:
  /// How the user answered an error box.
  enum class ErrorAnswer {
    Ok,    ///< go on behind the failing statement
    Cancel ///< abort the run
  };

  /// What a file dialog is asked for.
  struct FileRequest {
    bool save = false;        ///< a name to save as, rather than an existing file
    CString fileName;         ///< what the name starts as; may be empty
    CString defaultExtension; ///< added to a name without one; may be empty
    CString filter;           ///< "Text files|*.txt|All files|*.*||"; empty: all files
    CString initialFolder;    ///< empty: the current one
  };

  virtual ~CUserInterface();

  /// The message box of "print". The text is complete: line ends are part of it.
  virtual void ShowMessage(const CString& text);
  /// A message of the system itself that needs no answer.
  virtual void ShowNotice(const CString& text);
  /// The error box: message, line feed, failing line.
  [[nodiscard]] virtual ErrorAnswer ShowError(const CString& text);
  /// The error box of an interpreter, which knows where the error was reported. Shows the box alone unless it is
  /// overridden.
  [[nodiscard]] virtual ErrorAnswer ShowErrorAt(const CString& text, const CErrorPlace& place);
  /// A question with Yes and No; true for Yes.
  [[nodiscard]] virtual bool AskYesNo(const CString& question, const CString& title);
  /// The chosen path, nothing when the user cancelled.
  [[nodiscard]] virtual std::optional<CString> ChooseFile(const FileRequest& request);
  /// Shows a menu ("-" is a separator); the index of the chosen entry, -1 when dismissed.
  [[nodiscard]] virtual int ShowPopupMenu(const CStringArray& entries);
  /// A dialog that is ready to be run; null when the window system refuses it. `events` outlives it.
  [[nodiscard]] virtual std::unique_ptr<CDialogWindow> CreateDialogWindow(const CDialogDescription& description,
                                                                          CDialogEvents& events);
  /// Plays a sound file without waiting; silently nothing where there is no device or no such file.
  virtual void PlaySoundFile(const CString& path);

  /// Calls `tick` about every `period` milliseconds (at least 1) from wherever this interface waits for
  /// the user. The identifier is not 0; 0 means that no timer could be started.
  [[nodiscard]] virtual unsigned StartTimer(unsigned period, std::function<void()> tick);
  /// No tick comes after it returns; an unknown identifier is ignored.
  virtual void StopTimer(unsigned identifier);

  /// The interface of interpreters that have none of their own: the one set here, else the console.
  [[nodiscard]] static CUserInterface& Default() noexcept;
  /// Borrowed; must outlive every use. Null brings the console back.
  static void SetDefault(CUserInterface* userInterface) noexcept;
};
