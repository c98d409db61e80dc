#include "brindle/qt_user_interface.h"

#include "brindle/stop_request.h"
#include "platform/termination.h"
#include "ui/qt/message_boxes.h"
#include "ui/qt/qt_dialog.h"
#include "ui/qt/qt_text.h"
#include "ui/qt/qt_timers.h"
#include "ui/qt/sound_player.h"

#include <QApplication>
#include <QSocketNotifier>

#include <algorithm>
#include <cstdio>
#include <exception>

using namespace brindle;

namespace {

// Qt keeps references to the arguments it was made with.
struct OwnApplication {
  int count = 1;
  char name[8] = "brindle";
  char* arguments[2] = {name, nullptr};
  QApplication application{count, arguments};

  OwnApplication() {
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Brindle"));
    // A script has windows only now and then; the end of one is not the end of the script.
    QGuiApplication::setQuitOnLastWindowClosed(false);
  }
};

bool HasVisibleWindow() {
  const QWidgetList windows = QApplication::topLevelWidgets();
  return std::any_of(windows.begin(), windows.end(), [](const QWidget* window) { return window->isVisible(); });
}

// The desktop's file dialogs need a desktop.
bool PlatformHasDialogs() {
  const QString platform = QGuiApplication::platformName();
  return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

} // namespace

struct CQtUserInterface::State {
  std::unique_ptr<OwnApplication> application; // first: everything below needs one
  QPointer<QWidget> parent;
  ErrorPolicy policy = ErrorPolicy::Automatic;
  int errors = 0;
  bool nativeFileDialogs = false;
  bool serving = false;
  std::exception_ptr tickFailure;
  SoundPlayer sounds;
  QtTimers timers{[this] { OnTickFailed(); }};

  // The window that the next box belongs to.
  [[nodiscard]] QWidget* Owner() const {
    QWidget* const modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : parent.data();
  }

  [[nodiscard]] bool AnswersAlone() const { return policy == ErrorPolicy::Continue || policy == ErrorPolicy::Abort; }
  void WriteError(const CString& text) const { std::fputs((text.ToUtf8() + "\n").c_str(), stderr); }

  // Who serves the timers throws it on; in a host's own loop nobody can.
  void OnTickFailed() {
    if (serving && tickFailure == nullptr)
      tickFailure = std::current_exception();
    else
      std::fputs("brindle: an exception of a timer was dropped\n", stderr);
  }
};

CQtUserInterface::CQtUserInterface(QWidget* parent, ErrorPolicy policy) {
  auto application = QCoreApplication::instance() == nullptr ? std::make_unique<OwnApplication>() : nullptr;
  m_pState = std::make_unique<State>();
  m_pState->application = std::move(application);
  m_pState->parent = parent;
  m_pState->policy = policy;
  m_pState->nativeFileDialogs = PlatformHasDialogs();
}

CQtUserInterface::~CQtUserInterface() {
  // The application goes last.
  const std::unique_ptr<OwnApplication> application = std::move(m_pState->application);
  m_pState.reset();
}

void CQtUserInterface::SetNativeFileDialogs(bool native) noexcept {
  m_pState->nativeFileDialogs = native;
}

void CQtUserInterface::SetErrorPolicy(ErrorPolicy policy) noexcept {
  m_pState->policy = policy;
}

int CQtUserInterface::GetNumberOfErrors() const noexcept {
  return m_pState->errors;
}

void CQtUserInterface::ServeUntilClosed() {
  bool terminated = false;
  QSocketNotifier termination(TerminationDescriptor(), QSocketNotifier::Read);
  QObject::connect(&termination, &QSocketNotifier::activated, &termination, [&] {
    terminated = true;
    termination.setEnabled(false);
    QCoreApplication::exit(); // every dialog that is open is cancelled
  });
  m_pState->serving = true;
  QEventLoop loop;
  while (!terminated && m_pState->tickFailure == nullptr && (!m_pState->timers.IsEmpty() || HasVisibleWindow()))
    loop.processEvents(QEventLoop::WaitForMoreEvents);
  m_pState->serving = false;
  if (m_pState->tickFailure != nullptr)
    std::rethrow_exception(std::exchange(m_pState->tickFailure, nullptr));
}

// A run that is to stop opens nothing any more, but for the notice that says why.
void CQtUserInterface::ShowMessage(const CString& text) {
  if (CStopRequest::IsMade())
    return;
  (void)ShowBox(m_pState->Owner(), QMessageBox::NoIcon, CString(), text, QMessageBox::Ok, QMessageBox::Ok);
}

void CQtUserInterface::ShowNotice(const CString& text) {
  ++m_pState->errors;
  if (m_pState->AnswersAlone()) {
    m_pState->WriteError(text);
    return;
  }
  (void)ShowBox(m_pState->Owner(), QMessageBox::Warning, CString(), text, QMessageBox::Ok, QMessageBox::Ok,
                CStopRequest::IsMade() ? StopWatch::On::FurtherRequest : StopWatch::On::Stop);
}

CUserInterface::ErrorAnswer CQtUserInterface::ShowError(const CString& text) {
  ++m_pState->errors;
  if (m_pState->AnswersAlone()) {
    m_pState->WriteError(text);
    return m_pState->policy == ErrorPolicy::Continue ? ErrorAnswer::Ok : ErrorAnswer::Cancel;
  }
  if (CStopRequest::IsMade())
    return ErrorAnswer::Cancel;
  const auto pressed = ShowBox(m_pState->Owner(), QMessageBox::Critical, CString(), text,
                               QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel);
  return pressed == QMessageBox::Ok ? ErrorAnswer::Ok : ErrorAnswer::Cancel;
}

bool CQtUserInterface::AskYesNo(const CString& question, const CString& title) {
  return !CStopRequest::IsMade() && ShowBox(m_pState->Owner(), QMessageBox::Question, title, question,
                                            QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

std::optional<CString> CQtUserInterface::ChooseFile(const FileRequest& request) {
  return CStopRequest::IsMade() ? std::nullopt
                                : ShowFileDialog(m_pState->Owner(), request, m_pState->nativeFileDialogs);
}

int CQtUserInterface::ShowPopupMenu(const CStringArray& entries) {
  return CStopRequest::IsMade() ? -1 : ShowMenu(m_pState->Owner(), entries);
}

std::unique_ptr<CDialogWindow> CQtUserInterface::CreateDialogWindow(const CDialogDescription& description,
                                                                    CDialogEvents& events) {
  std::vector<DialogTemplate> templates;
  for (const std::vector<std::byte>& bytes : description.templates) {
    auto dialogTemplate = ReadDialogTemplate(bytes);
    if (!dialogTemplate)
      return nullptr;
    templates.push_back(std::move(*dialogTemplate));
  }
  return std::make_unique<QtDialog>(description, templates, events, m_pState->Owner());
}

void CQtUserInterface::PlaySoundFile(const CString& path) {
  m_pState->sounds.Play(path);
}

unsigned CQtUserInterface::StartTimer(unsigned period, std::function<void()> tick) {
  return m_pState->timers.Start(period, std::move(tick));
}

void CQtUserInterface::StopTimer(unsigned identifier) {
  m_pState->timers.Stop(identifier);
}
