// A host for scripts that it does not trust: nothing outside of one folder, nothing that starts, loads or calls others,
// so much and no more of everything, and Ctrl+C ends what still runs.
#include <brindle/brindle.h>

#include <atomic>
#include <csignal>
#include <iostream>

namespace {

std::atomic<CBrindle*> running = nullptr;
static_assert(std::atomic<CBrindle*>::is_always_lock_free);

// RequestStop is the one member that may be called here.
void OnInterrupt(int) {
  if (CBrindle* const guest = running)
    guest->RequestStop();
}

// Lasts as long as the signal stops this script.
class Interruptible {
public:
  explicit Interruptible(CBrindle& guest) {
    running = &guest;
    m_before = std::signal(SIGINT, OnInterrupt);
  }
  Interruptible(const Interruptible&) = delete;
  Interruptible& operator=(const Interruptible&) = delete;
  ~Interruptible() {
    std::signal(SIGINT, m_before);
    running = nullptr;
  }

private:
  void (*m_before)(int) = SIG_DFL;
};

CString FirstLine(const CString& text) {
  return text.Find(u'\n') < 0 ? text : text.Left(text.Find(u'\n'));
}

// The console, but nobody is asked what to do about an error: it is told, and the script goes on as far as it may.
class Log : public CConsoleUserInterface {
public:
  [[nodiscard]] ErrorAnswer ShowErrorAt(const CString& text, const CErrorPlace& place) override {
    ShowMessage(u"line " + CString::FromUtf8(std::to_string(place.line)) + u": " + FirstLine(text) + u"\n");
    return ErrorAnswer::Ok;
  }
  // The end comes with a notice of its own; below it is told from GetLastError, together with a stop that has none.
  void ShowNotice(const CString&) override {}
};

CExecutionLimits LimitsBelow(const char* root) {
  CExecutionLimits limits;
  limits.statements = 50'000;
  limits.milliseconds = 30'000; // the time that the script waits for an answer is part of it
  limits.bytes = 8 << 20;
  limits.callDepth = 100;
  limits.root = CString::FromUtf8(root);
  limits.noPrograms = limits.noLibraries = limits.noAutomation = limits.noSerialPorts = true;
  return limits;
}

} // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: brindle_example_untrusted ROOT SCRIPT\n";
    return 2;
  }
  Log log; // first: the interpreter borrows it
  CBrindle guest;
  guest.SetUserInterface(&log);
  if (!guest.SetLimits(LimitsBelow(argv[1]))) {
    std::cerr << argv[1] << " is no folder: nothing is limited, so nothing is run\n";
    return 2;
  }
  bool loaded = false;
  {
    const Interruptible interruptible(guest);
    loaded = guest.ExecuteProgram(CString::FromUtf8(argv[2]));
  }
  log.Flush();
  const CString last = guest.GetLastError();
  std::cout << (last.IsEmpty() ? "ended by itself" : "last error: " + FirstLine(last).ToUtf8()) << '\n';
  return loaded ? 0 : 1;
}
