#include "brindle/console_user_interface.h"

#include "platform/standard_streams.h"
#include "platform/unicode.h"
#include "ui/console/console_dialog.h"
#include "ui/console/error_detail.h"
#include "ui/console/timer_queue.h"

#include <algorithm>
#include <functional>
#include <new>
#include <string>

using brindle::StandardStreams;
using brindle::TimerQueue;

struct CConsoleUserInterface::State {
  ErrorPolicy policy = ErrorPolicy::Automatic;
  ErrorDetail detail = ErrorDetail::Automatic;
  int errors = 0;
  StandardStreams streams;
  TimerQueue timers;

  brindle::ConsoleDialog::Screen screen;

  // The error may be want of memory: then the text is written character by character, which needs none.
  void TellError(const CString& text) {
    try {
      streams.WriteError(text.ToUtf8() + "\n");
    } catch (const std::bad_alloc&) {
      const std::u16string_view units = text.View();
      for (std::size_t index = 0; index < units.size();) {
        std::string character; // short enough to lie in place
        brindle::AppendUtf8(brindle::ReadUtf16(units, index), character);
        streams.WriteError(character);
      }
      streams.WriteError("\n");
    }
  }

  // A line of input; nothing at its end, or as soon as the question is over. Timers tick while it waits.
  std::optional<CString> Ask(const std::string& prompt, const std::function<bool()>& isOver = {}) {
    // A person answers behind the prompt; for a program that pipes lines in, each prompt is a line of its own.
    if (!prompt.empty())
      streams.WriteError(prompt + (streams.InputIsTerminal() ? " " : "\n"));
    std::string line;
    for (;;) {
      // First, so that input that never pauses starves no timer, and a tick that ends the wait loses no line.
      timers.RunDue();
      if (isOver && isOver())
        return std::nullopt;
      switch (streams.ReadLine(line, timers.NextTick())) {
      case StandardStreams::WaitResult::Line: return CString::FromUtf8(line);
      case StandardStreams::WaitResult::EndOfInput: return std::nullopt;
      case StandardStreams::WaitResult::TimedOut: break;
      }
    }
  }
};

namespace {

bool IsOneOf(const CString& answer, const char16_t* first, const char16_t* second) {
  return answer.CompareNoCase(CString(first)) == 0 || answer.CompareNoCase(CString(second)) == 0;
}

} // namespace

CConsoleUserInterface::CConsoleUserInterface(ErrorPolicy policy) : m_pState(std::make_unique<State>()) {
  m_pState->policy = policy;
}

CConsoleUserInterface::~CConsoleUserInterface() = default;

void CConsoleUserInterface::SetErrorPolicy(ErrorPolicy policy) noexcept {
  m_pState->policy = policy;
}

void CConsoleUserInterface::SetErrorDetail(ErrorDetail detail) noexcept {
  m_pState->detail = detail;
}

int CConsoleUserInterface::GetNumberOfErrors() const noexcept {
  return m_pState->errors;
}

void CConsoleUserInterface::ServeUntilEndOfInput() {
  m_pState->streams.EndInputOnTermination();
  while (m_pState->Ask(std::string()))
    ;
}

std::optional<std::chrono::milliseconds> CConsoleUserInterface::ServeTimers() {
  m_pState->timers.RunDue();
  m_pState->streams.Flush();
  const auto next = m_pState->timers.NextTick();
  if (!next)
    return std::nullopt;
  const auto wait = std::chrono::ceil<std::chrono::milliseconds>(*next - TimerQueue::Clock::now());
  return std::max(wait, std::chrono::milliseconds(0));
}

bool CConsoleUserInterface::Flush() noexcept {
  m_pState->streams.Flush();
  return !m_pState->streams.OutputLost();
}

void CConsoleUserInterface::ShowMessage(const CString& text) {
  m_pState->streams.Write(text.ToUtf8());
}

void CConsoleUserInterface::ShowNotice(const CString& text) {
  ++m_pState->errors;
  m_pState->TellError(text);
}

CUserInterface::ErrorAnswer CConsoleUserInterface::ShowError(const CString& text) {
  return Report(text, std::string());
}

CUserInterface::ErrorAnswer CConsoleUserInterface::ShowErrorAt(const CString& text, const CErrorPlace& place) {
  const bool detailed = m_pState->detail == ErrorDetail::Automatic ? m_pState->streams.ErrorIsTerminal()
                                                                   : m_pState->detail == ErrorDetail::Place;
  std::string detail;
  try {
    if (detailed)
      detail = brindle::FormatErrorPlace(place);
  } catch (const std::bad_alloc&) {
    // The error may be want of memory: then its text has to do.
  }
  return Report(text, detail);
}

CUserInterface::ErrorAnswer CConsoleUserInterface::Report(const CString& text, const std::string& detail) {
  ++m_pState->errors;
  m_pState->TellError(text);
  if (!detail.empty())
    m_pState->streams.WriteError(detail);
  switch (m_pState->policy) {
  case ErrorPolicy::Continue: return ErrorAnswer::Ok;
  case ErrorPolicy::Abort: return ErrorAnswer::Cancel;
  case ErrorPolicy::Automatic:
    if (!m_pState->streams.InputIsTerminal())
      return ErrorAnswer::Cancel;
    break;
  case ErrorPolicy::Ask: break;
  }
  // A program that answers through a pipe reads the error text alone; a person is told the choice.
  const bool person = m_pState->streams.InputIsTerminal();
  const auto answer = m_pState->Ask(person ? "[Enter] continues, [c] cancels:" : "");
  return !answer || IsOneOf(*answer, u"c", u"cancel") ? ErrorAnswer::Cancel : ErrorAnswer::Ok;
}

bool CConsoleUserInterface::AskYesNo(const CString& question, const CString& title) {
  const std::string heading = title.IsEmpty() ? std::string() : title.ToUtf8() + "\n";
  const auto answer = m_pState->Ask(heading + question.ToUtf8() + " [y/n]:");
  return answer && IsOneOf(*answer, u"y", u"yes");
}

std::optional<CString> CConsoleUserInterface::ChooseFile(const FileRequest& request) {
  std::string prompt = request.save ? "Save as" : "Open";
  if (!request.fileName.IsEmpty())
    prompt += " [" + request.fileName.ToUtf8() + "]";
  auto answer = m_pState->Ask(prompt + ":");
  if (!answer || answer->IsEmpty())
    return std::nullopt;
  return answer;
}

int CConsoleUserInterface::ShowPopupMenu(const CStringArray& entries) {
  std::string menu;
  for (int i = 0; i < entries.GetSize(); ++i) {
    const std::string entry = entries[i].ToUtf8();
    menu += entry == "-" ? "    -\n" : std::to_string(i) + "   " + entry + "\n";
  }
  for (;;) {
    const auto answer = m_pState->Ask(menu + "Choice:");
    if (!answer)
      return -1;
    const std::string digits = answer->ToUtf8();
    const bool isNumber =
        !digits.empty() && digits.size() < 7 && digits.find_first_not_of("0123456789") == std::string::npos;
    const int index = isNumber ? std::stoi(digits) : -1;
    if (digits.empty() || digits == "-1")
      return -1;
    if (index >= 0 && index < entries.GetSize() && entries[index] != u"-")
      return index;
    m_pState->streams.WriteError("No such entry: " + digits + "\n");
  }
}

std::unique_ptr<CDialogWindow> CConsoleUserInterface::CreateDialogWindow(const CDialogDescription& description,
                                                                         CDialogEvents& events) {
  std::vector<brindle::DialogTemplate> templates;
  for (const std::vector<std::byte>& bytes : description.templates) {
    auto dialogTemplate = brindle::ReadDialogTemplate(bytes);
    if (!dialogTemplate)
      return nullptr;
    templates.push_back(std::move(*dialogTemplate));
  }
  State* state = m_pState.get();
  return std::make_unique<brindle::ConsoleDialog>(
      description, templates, events,
      brindle::ConsoleDialog::Terminal{[state](const std::function<bool()>& isOver) {
                                         return state->Ask(state->streams.InputIsTerminal() ? ">" : "", isOver);
                                       },
                                       [state](const std::string& text) { state->streams.WriteError(text); },
                                       state->streams.InputIsTerminal(), &state->screen});
}

unsigned CConsoleUserInterface::StartTimer(unsigned period, std::function<void()> tick) {
  return m_pState->timers.Start(period, std::move(tick));
}

void CConsoleUserInterface::StopTimer(unsigned identifier) {
  m_pState->timers.Stop(identifier);
}
