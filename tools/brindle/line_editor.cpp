#include "line_editor.h"

#include "interruption.h"

#ifdef BRINDLE_LIBEDIT
#include <histedit.h>
#endif

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cwchar>
#include <iostream>
#include <type_traits>

#include <dlfcn.h>
#include <unistd.h>

using Wait = Interruption::Wait;

namespace {

constexpr int kMostRemembered = 1000;

// One byte of standard input, with everything else that happens meanwhile; nothing when the line is over.
std::optional<char> ReadByte(const LineEditor::Serve& serve, const std::function<void()>& onPause) {
  for (;;) {
    const auto pause = serve();
    switch (Interruption::WaitForInput(pause)) {
    case Wait::Interrupted: return std::nullopt;
    case Wait::TimedOut: onPause(); continue;
    case Wait::Input: break;
    }
    char byte = 0;
    const ssize_t count = ::read(STDIN_FILENO, &byte, 1);
    if (count == 1)
      return byte;
    if (count == 0 || (errno != EINTR && errno != EAGAIN))
      return std::nullopt;
  }
}

#ifdef BRINDLE_LIBEDIT

constexpr const char* kLibrary = "libedit.so.2";

// The functions of libedit that are used. It is loaded, not linked: a script that is run must not wait for it.
struct EditFunctions {
  decltype(&::el_init) init = nullptr;
  decltype(&::el_end) end = nullptr;
  decltype(&::el_set) set = nullptr;
  decltype(&::el_gets) gets = nullptr;
  decltype(&::el_resize) resize = nullptr;
  decltype(&::history_init) historyInit = nullptr;
  decltype(&::history_end) historyEnd = nullptr;
  decltype(&::history) history = nullptr;

  [[nodiscard]] bool Load() {
    void* const library = ::dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
    const auto find = [library](auto& function, const char* name) {
      function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(::dlsym(library, name));
      return function != nullptr;
    };
    return library != nullptr && find(init, "el_init") && find(end, "el_end") && find(set, "el_set") &&
           find(gets, "el_gets") && find(resize, "el_resize") && find(historyInit, "history_init") &&
           find(historyEnd, "history_end") && find(history, "history");
  }
};

volatile std::sig_atomic_t sizeChanged = 0;

void NoteSize(int) {
  sizeChanged = 1;
}

#endif

} // namespace

#ifdef BRINDLE_LIBEDIT

struct LineEditor::State {
  State(Serve doServe, std::string file) : serve(std::move(doServe)), historyFile(std::move(file)) {
    // The editor measures characters by the locale. One without UTF-8 would take each byte for a character.
    if (std::setlocale(LC_CTYPE, "") == nullptr || MB_CUR_MAX < 4)
      std::setlocale(LC_CTYPE, "C.UTF-8");
    if (!functions.Load())
      return;
    editor = functions.init("brindle", stdin, stderr, stderr);
    history = functions.historyInit();
    if (editor == nullptr || history == nullptr)
      return;
    HistEvent event{};
    functions.history(history, &event, H_SETSIZE, kMostRemembered);
    functions.history(history, &event, H_SETUNIQUE, 1);
    if (!historyFile.empty())
      functions.history(history, &event, H_LOAD, historyFile.c_str());
    functions.set(editor, EL_CLIENTDATA, this);
    functions.set(editor, EL_PROMPT, &Prompt);
    functions.set(editor, EL_EDITOR, "emacs");
    functions.set(editor, EL_SIGNAL, 0);
    functions.set(editor, EL_HIST, functions.history, history);
    functions.set(editor, EL_GETCFN, &ReadCharacter);
    current = this;
    struct sigaction action = {};
    action.sa_handler = NoteSize;
    ::sigaction(SIGWINCH, &action, nullptr);
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() {
    HistEvent event{};
    if (history != nullptr && !historyFile.empty())
      functions.history(history, &event, H_SAVE, historyFile.c_str());
    if (editor != nullptr)
      functions.end(editor);
    if (history != nullptr)
      functions.historyEnd(history);
    current = nullptr;
  }

  [[nodiscard]] bool CanEdit() const noexcept { return editor != nullptr && history != nullptr; }

  [[nodiscard]] Result ReadEdited(std::string& line) {
    // Before the prompt is shown: who sees it may type at once, and Ctrl-D too is a key of the editor then.
    functions.set(editor, EL_PREP_TERM, 1);
    int count = 0;
    const char* const text = functions.gets(editor, &count);
    if (Interruption::Take()) {
      std::cerr << "^C\n";
      return Result::Abandoned;
    }
    if (text == nullptr || count <= 0) {
      std::cerr << '\n';
      return Result::EndOfInput;
    }
    line.assign(text, static_cast<std::size_t>(count));
    HistEvent event{};
    if (line.find_first_not_of(" \t\r\n") != std::string::npos)
      functions.history(history, &event, H_ENTER, line.c_str());
    return Result::Line;
  }

  static char* Prompt(EditLine*) { return current->prompt.data(); }

  // What the editor reads by: a character, 0 at the end of the input, -1 when the line is abandoned.
  static int ReadCharacter(EditLine* editor, wchar_t* character) {
    const auto redraw = [editor] {
      if (sizeChanged != 0)
        current->functions.resize(editor);
      sizeChanged = 0;
      current->functions.set(editor, EL_REFRESH);
    };
    std::mbstate_t state{};
    for (;;) {
      const auto byte = ReadByte(current->serve, redraw);
      if (!byte)
        return 0;
      const std::size_t used = std::mbrtowc(character, &*byte, 1, &state);
      if (used == static_cast<std::size_t>(-1))
        state = {}; // what is no character is dropped
      else if (used != static_cast<std::size_t>(-2))
        return 1;
    }
  }

  Serve serve;
  std::string historyFile;
  std::string prompt;
  EditFunctions functions;
  EditLine* editor = nullptr;
  History* history = nullptr;
  static inline State* current = nullptr; // the editor's callbacks are told no more than the editor
};

std::string LineEditor::Library() {
  return EditFunctions().Load() ? kLibrary : std::string();
}

#else

struct LineEditor::State {
  State(Serve doServe, std::string) : serve(std::move(doServe)) {}
  [[nodiscard]] bool CanEdit() const noexcept { return false; }
  [[nodiscard]] Result ReadEdited(std::string&) { return Result::EndOfInput; }

  Serve serve;
  std::string prompt;
};

std::string LineEditor::Library() {
  return std::string();
}

#endif

LineEditor::LineEditor(Serve serve, std::string historyFile)
    : m_pState(std::make_unique<State>(std::move(serve), std::move(historyFile))) {}

LineEditor::~LineEditor() = default;

LineEditor::Result LineEditor::Read(const std::string& prompt, std::string& line) {
  line.clear();
  m_pState->prompt = prompt;
  Result result = Result::Line;
  if (m_pState->CanEdit()) {
    result = m_pState->ReadEdited(line);
  } else {
    std::cerr << prompt << std::flush;
    while (line.empty() || line.back() != '\n') {
      const auto byte = ReadByte(m_pState->serve, [] {});
      if (byte) {
        line += *byte;
        continue;
      }
      if (Interruption::Take()) {
        std::cerr << '\n';
        return Result::Abandoned;
      }
      if (line.empty()) {
        std::cerr << '\n';
        return Result::EndOfInput;
      }
      break;
    }
  }
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
    line.pop_back();
  return result;
}
