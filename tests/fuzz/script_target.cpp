// Whole scripts: any text as a program with a budget, shut up in a folder of its own, with a user who plays along.
#include "fuzz_support.h"

#include "brindle/brindle.h"
#include "io/text_file.h"
#include "support/dialog_user_interface.h"

namespace {

constexpr int kMostDialogs = 12;
constexpr int kMostTicks = 3;

// Answers most error boxes with OK, and touches every control of a dialog before it closes it.
class PlayingUser : public DialogUserInterface {
public:
  explicit PlayingUser(int patience) : m_nPatience(patience) {}

  [[nodiscard]] ErrorAnswer ShowError(const CString& text) override {
    (void)DialogUserInterface::ShowError(text);
    return m_nPatience-- > 0 ? ErrorAnswer::Ok : ErrorAnswer::Cancel;
  }
  [[nodiscard]] bool AskYesNo(const CString&, const CString&) override { return ++m_nAnswers % 2 == 0; }
  [[nodiscard]] std::optional<CString> ChooseFile(const FileRequest&) override { return CString(u"lines.txt"); }
  [[nodiscard]] int ShowPopupMenu(const CStringArray& entries) override {
    return ++m_nAnswers % (static_cast<int>(entries.GetSize()) + 1) - 1;
  }
  [[nodiscard]] std::unique_ptr<CDialogWindow> CreateDialogWindow(const CDialogDescription& description,
                                                                  CDialogEvents& events) override {
    if (++m_nDialogs > kMostDialogs)
      return nullptr;
    plays.emplace_front([](PlayedDialog& dialog) { Play(dialog); });
    return DialogUserInterface::CreateDialogWindow(description, events);
  }

private:
  static void Play(PlayedDialog& dialog) {
    constexpr int kMostControls = 12;
    for (int id = CDialogWindow::kWindow; id < kMostControls && !dialog.IsEnded(); ++id) {
      dialog.Type(id, u"typed");
      dialog.Select(id, {});
      dialog.Notify(id);
      dialog.Menu(id, 0);
      if (id != CDialogWindow::kCancel)
        dialog.Click(id);
    }
    dialog.Click(CDialogWindow::kCancel);
    dialog.End(CDialogWindow::kCancel);
  }

  int m_nPatience;
  int m_nAnswers = 0;
  int m_nDialogs = 0;
};

CExecutionLimits Limits() {
  CExecutionLimits limits;
  limits.statements = 3000;
  limits.milliseconds = 5000;
  limits.bytes = 8 * 1024 * 1024;
  limits.callDepth = 60;
  limits.root = CString::FromUtf8(fuzz::ScratchFolder());
  limits.noPrograms = limits.noLibraries = limits.noAutomation = limits.noSerialPorts = true;
  return limits;
}

void MakeFiles(std::string_view script) {
  fuzz::ClearScratch();
  fuzz::WriteScratch("script.bas", script);
  fuzz::WriteScratch("lines.txt", "1;one;1.5\n2;two;2.5\r\n\nlast");
  fuzz::WriteScratch("other.bas", "function other(p)\nother = p + 1\nendfunction\n");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using Route = CEnvironment::Route;
  unsigned sum = 1;
  for (std::size_t i = 0; i < size; ++i)
    sum = sum * 31 + data[i];
  MakeFiles({reinterpret_cast<const char*>(data), size});
  // Most scripts run as usual, the others with statements that are compiled at once and given up now and then.
  CEnvironment::SetRoute(sum % 4 == 0 ? Route::Eager : Route::Automatic, sum % 4 == 0 ? sum / 4 % 20 : 0);
  brindle::TextFile::SetWriteEncoding(brindle::WriteEncoding::Ansi); // a script before may have changed it
  PlayingUser user(sum / 64 % 8 == 0 ? 0 : 40);
  CBrindle interpreter;
  interpreter.SetUserInterface(&user);
  fuzz::Require(interpreter.SetLimits(Limits()), "the folder can be the root");
  interpreter.ExecuteProgram(CString::FromUtf8(fuzz::ScratchFolder() + "/script.bas"));
  for (int tick = 0; tick < kMostTicks && !user.timers.empty(); ++tick) {
    const std::function<void()> next = user.timers.begin()->second;
    next();
  }
  return 0;
}
