// Calls into the user interface. While one lasts, timers and dialogs may run handlers inside the window system's
// own loop, which no exception may pass: what they throw is kept and thrown on when the call is back.
// Room: interpreter. Used by: everything that shows a box or a dialog; timers and dialogs keep exceptions.
// May touch: nothing.
// Invariant: a kept exception is thrown by the innermost call in progress, whichever interpreter made it.
#pragma once

#include "brindle/dialog.h"

#include <exception>
#include <type_traits>
#include <utility>

namespace brindle {

class UserInterfaceCalls {
public:
  // Inside a handler for (...). False when no call is in progress: then the exception is the caller's. A dialog
  // that is the innermost call ends, so that the exception gets on its way.
  [[nodiscard]] static bool KeepException() {
    if (m_depth == 0)
      return false;
    if (m_kept == nullptr)
      m_kept = std::current_exception();
    if (m_dialog != nullptr)
      m_dialog->End(CDialogWindow::kCancel);
    return true;
  }
  static void ThrowKept() {
    if (m_kept != nullptr)
      std::rethrow_exception(std::exchange(m_kept, nullptr));
  }

  // Lasts as long as the call does; `dialog` when the call is that dialog's run.
  class Scope {
  public:
    explicit Scope(CDialogWindow* dialog) : m_outer(std::exchange(m_dialog, dialog)) {
      if (m_depth++ == 0)
        m_kept = nullptr; // left behind by a call that threw an exception of its own
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() {
      --m_depth;
      m_dialog = m_outer;
    }

  private:
    CDialogWindow* m_outer;
  };

private:
  static inline thread_local int m_depth = 0;
  static inline thread_local CDialogWindow* m_dialog = nullptr;
  static inline thread_local std::exception_ptr m_kept;
};

template <class Call> auto CallUserInterface(Call call, CDialogWindow* dialog = nullptr) {
  if constexpr (std::is_void_v<decltype(call())>) {
    {
      const UserInterfaceCalls::Scope scope(dialog);
      call();
    }
    UserInterfaceCalls::ThrowKept();
  } else {
    auto result = [&] {
      const UserInterfaceCalls::Scope scope(dialog);
      return call();
    }();
    UserInterfaceCalls::ThrowKept();
    return result;
  }
}

} // namespace brindle
