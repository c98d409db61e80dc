// The interface that shows nothing, and the process-wide choice.
#include "brindle/user_interface.h"

#include "brindle/console_user_interface.h"

#include <new>

namespace {

CUserInterface* chosen = nullptr;

} // namespace

CUserInterface::~CUserInterface() = default;

CDialogEvents::~CDialogEvents() = default;

CDialogWindow::~CDialogWindow() = default;

void CUserInterface::ShowMessage(const CString&) {}

void CUserInterface::ShowNotice(const CString&) {}

CUserInterface::ErrorAnswer CUserInterface::ShowErrorAt(const CString& text, const CErrorPlace&) {
  return ShowError(text);
}

CUserInterface::ErrorAnswer CUserInterface::ShowError(const CString&) {
  return ErrorAnswer::Cancel;
}

bool CUserInterface::AskYesNo(const CString&, const CString&) {
  return false;
}

std::optional<CString> CUserInterface::ChooseFile(const FileRequest&) {
  return std::nullopt;
}

int CUserInterface::ShowPopupMenu(const CStringArray&) {
  return -1;
}

std::unique_ptr<CDialogWindow> CUserInterface::CreateDialogWindow(const CDialogDescription&, CDialogEvents&) {
  return nullptr;
}

void CUserInterface::PlaySoundFile(const CString&) {}

unsigned CUserInterface::StartTimer(unsigned, std::function<void()>) {
  return 0;
}

void CUserInterface::StopTimer(unsigned) {}

CUserInterface& CUserInterface::Default() noexcept {
  if (chosen != nullptr)
    return *chosen;
  // It outlives every interpreter, those with static storage as well; only its output is written at the end.
  struct Console {
    CConsoleUserInterface* interface = new CConsoleUserInterface;
    ~Console() { interface->Flush(); }
  };
  try {
    static const Console console;
    return *console.interface;
  } catch (const std::bad_alloc&) {
    static CUserInterface silent; // until there is memory for the console
    return silent;
  }
}

void CUserInterface::SetDefault(CUserInterface* userInterface) noexcept {
  chosen = userInterface;
}
