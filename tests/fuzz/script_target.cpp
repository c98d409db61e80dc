// Whole scripts: any text as a program with a budget, shut up in a folder of its own, with a user who plays along.
#include "fuzz_support.h"

#include "brindle/brindle.h"
#include "io/text_file.h"
#include "platform/code_page.h"
#include "ui/console/console_dialog.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <sys/resource.h>
#include <utility>
#include <vector>

namespace {

constexpr int kMostDialogs = 12;
constexpr int kMostTicks = 3;

// What follows "# input:" in the script is what the user types into its dialogs, as in the script tests.
std::vector<CString> InputsOf(std::string_view script) {
  constexpr std::string_view kMark = "# input: ";
  std::vector<CString> inputs;
  for (std::size_t at = script.find(kMark); at != std::string_view::npos; at = script.find(kMark, at)) {
    at += kMark.size();
    inputs.emplace_back(brindle::CodePage::Utf8().Decode(script.substr(at, script.find('\n', at) - at)));
  }
  return inputs;
}

// Answers most error boxes with OK, types what the script says into dialogs, and then touches what many of them have.
class PlayingUser : public CUserInterface {
public:
  std::map<unsigned, std::function<void()>> timers; // running ones, by identifier

  PlayingUser(std::vector<CString> inputs, int patience) : m_inputs(std::move(inputs)), m_nPatience(patience) {}

  [[nodiscard]] ErrorAnswer ShowError(const CString&) override {
    return m_nPatience-- > 0 ? ErrorAnswer::Ok : ErrorAnswer::Cancel;
  }
  [[nodiscard]] bool AskYesNo(const CString&, const CString&) override { return ++m_nAnswers % 2 == 0; }
  [[nodiscard]] std::optional<CString> ChooseFile(const FileRequest&) override { return CString(u"lines.txt"); }
  [[nodiscard]] int ShowPopupMenu(const CStringArray& entries) override {
    return ++m_nAnswers % (static_cast<int>(entries.GetSize()) + 1) - 1;
  }
  [[nodiscard]] std::unique_ptr<CDialogWindow> CreateDialogWindow(const CDialogDescription& description,
                                                                  CDialogEvents& events) override {
    std::vector<brindle::DialogTemplate> templates;
    for (const std::vector<std::byte>& bytes : description.templates) {
      const auto read = brindle::ReadDialogTemplate(bytes);
      fuzz::Require(read.has_value(), "a script makes templates that can be read");
      templates.push_back(*read);
    }
    if (++m_nDialogs > kMostDialogs)
      return nullptr;
    const auto ask = [this, touched = std::size_t{0}](const std::function<bool()>& isOver) mutable {
      return isOver() ? std::nullopt : NextInput(touched);
    };
    return std::make_unique<brindle::ConsoleDialog>(
        description, templates, events,
        brindle::ConsoleDialog::Terminal{ask, [](const std::string&) {}, true, &m_screen});
  }
  [[nodiscard]] unsigned StartTimer(unsigned, std::function<void()> tick) override {
    timers.emplace(++m_nTimers, std::move(tick));
    return m_nTimers;
  }
  void StopTimer(unsigned identifier) override { timers.erase(identifier); }

private:
  std::optional<CString> NextInput(std::size_t& touched) {
    static constexpr std::array kTouches = {u"click 3",   u"type 10 typed", u"click 10",    u"select 11 1",
                                            u"set 12 50", u"click 12",      u"select 13 0", u"menu window 0",
                                            u"menu 10 0", u"type 1 typed",  u"select 2 1",  u"ok"};
    if (m_nInput < m_inputs.size())
      return m_inputs[m_nInput++];
    return touched < kTouches.size() ? std::optional(CString(kTouches[touched++])) : std::nullopt;
  }

  std::vector<CString> m_inputs;
  std::size_t m_nInput = 0;
  brindle::ConsoleDialog::Screen m_screen;
  unsigned m_nTimers = 0;
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

// The limits of a script do not bound its files; larger ones only take time.
bool LimitFiles() {
  constexpr rlim_t kLargestFile = 16 * 1024 * 1024;
  CEnvironment::ReportFileSizeLimits();
  const rlimit limit{kLargestFile, kLargestFile};
  return setrlimit(RLIMIT_FSIZE, &limit) == 0;
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
  static const bool filesAreLimited = LimitFiles();
  fuzz::Require(filesAreLimited, "the size of files can be limited");
  unsigned sum = 1;
  for (std::size_t i = 0; i < size; ++i)
    sum = sum * 31 + data[i];
  const std::string_view script(reinterpret_cast<const char*>(data), size);
  MakeFiles(script);
  // Most scripts run as usual, the others with statements that are compiled at once and given up now and then.
  CEnvironment::SetRoute(sum % 4 == 0 ? Route::Eager : Route::Automatic, sum % 4 == 0 ? sum / 4 % 20 : 0);
  brindle::TextFile::SetWriteEncoding(brindle::WriteEncoding::Ansi); // a script before may have changed it
  PlayingUser user(InputsOf(script), sum / 64 % 8 == 0 ? 0 : 40);
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
