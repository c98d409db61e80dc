// CQtUserInterface: message boxes, dialogs, menus, timers and sounds by Qt 6 Widgets.
// Room: ui. Used by: Qt hosts, which link libbrindle-qt; the plug-in that the runner loads.
// May touch: the Qt application; makes one where the program has none.
// Must not: let an exception pass through Qt's event loop, or wait for a sound.
// Invariant: a Qt application that the host has made is never ended here.
#pragma once

#include "brindle/window_user_interface.h"

#include <memory>

#if defined(_WIN32)
#if defined(BRINDLE_QT_BUILDING)
#define BRINDLE_QT_API __declspec(dllexport)
#else
#define BRINDLE_QT_API __declspec(dllimport)
#endif
#else
#define BRINDLE_QT_API __attribute__((visibility("default")))
#endif

class QWidget;

/// Use it on the thread of the Qt application. Every box and dialog is modal and serves timers while it is
/// shown; where the application's event loop is told to end, what is open is cancelled. So it is when the run that has
/// opened it is to stop or its time is up; the notice that tells of a used-up budget stays until it is read, or until
/// a stop is asked for.
class BRINDLE_QT_API CQtUserInterface : public CWindowUserInterface {
public:
  /// `parent` (borrowed, may be null) is the window that boxes and dialogs belong to; a dialog that runs takes
  /// its place meanwhile. The host may delete it at any time. Where the program has no Qt application yet, one
  /// is made that lasts as long as this object.
  explicit CQtUserInterface(QWidget* parent = nullptr, ErrorPolicy policy = ErrorPolicy::Automatic);
  ~CQtUserInterface() override;
  CQtUserInterface(const CQtUserInterface&) = delete;
  CQtUserInterface& operator=(const CQtUserInterface&) = delete;

  /// Whether file dialogs are the desktop's own (the default where the desktop has some) or Qt's.
  void SetNativeFileDialogs(bool native) noexcept;

  void SetErrorPolicy(ErrorPolicy policy) noexcept override;
  [[nodiscard]] int GetNumberOfErrors() const noexcept override;
  void ServeUntilClosed() override;

  void ShowMessage(const CString& text) override;
  void ShowNotice(const CString& text) override;
  [[nodiscard]] ErrorAnswer ShowError(const CString& text) override;
  [[nodiscard]] bool AskYesNo(const CString& question, const CString& title) override;
  [[nodiscard]] std::optional<CString> ChooseFile(const FileRequest& request) override;
  [[nodiscard]] int ShowPopupMenu(const CStringArray& entries) override;
  [[nodiscard]] std::unique_ptr<CDialogWindow> CreateDialogWindow(const CDialogDescription& description,
                                                                  CDialogEvents& events) override;
  void PlaySoundFile(const CString& path) override;
  [[nodiscard]] unsigned StartTimer(unsigned period, std::function<void()> tick) override;
  void StopTimer(unsigned identifier) override;

private:
  struct State;
  std::unique_ptr<State> m_pState;
};
