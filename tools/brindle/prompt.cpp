#include "prompt.h"

#include "command_line.h"
#include "entry.h"
#include "interruption.h"
#include "line_editor.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// The file that remembers what was typed; empty when there is no place for it.
std::string HistoryFile() {
  const auto folderOf = [](const char* name) {
    const char* const value = std::getenv(name);
    return fs::path(value != nullptr ? value : "");
  };
  fs::path folder = folderOf("XDG_STATE_HOME");
  if (!folder.is_absolute()) {
    folder = folderOf("HOME");
    if (!folder.is_absolute())
      return std::string();
    folder /= ".local/state";
  }
  folder /= "brindle";
  std::error_code error;
  fs::create_directories(folder, error);
  return error ? std::string() : (folder / "history").string();
}

// The lines of one entry, up to the word that ends it.
LineEditor::Result ReadEntry(LineEditor& editor, std::string& entry) {
  entry.clear();
  std::string line;
  do {
    const LineEditor::Result result = editor.Read(entry.empty() ? "> " : "... ", line);
    if (result != LineEditor::Result::Line)
      return result;
    entry += line + "\n";
  } while (!IsComplete(entry));
  return LineEditor::Result::Line;
}

} // namespace

bool CanPrompt() {
  return ::isatty(STDIN_FILENO) == 1;
}

int RunPrompt(CBrindle& interpreter, const CExecutionLimits& limits, CConsoleUserInterface& console) {
  const Interruption interruption;
  std::cerr << "brindle " BRINDLE_VERSION ". Ctrl-C abandons an entry, Ctrl-D ends.\n";
  const auto serve = [&] {
    const Interruption::Running running(interpreter);
    return console.ServeTimers();
  };
  LineEditor editor(serve, HistoryFile());
  std::string entry;
  for (int number = 1;;) {
    switch (ReadEntry(editor, entry)) {
    case LineEditor::Result::EndOfInput: return console.Flush() ? kDone : kFailed;
    case LineEditor::Result::Abandoned: continue;
    case LineEditor::Result::Line: break;
    }
    if (IsEmpty(entry))
      continue;
    const std::string name = "entry " + std::to_string(number++);
    {
      const Interruption::Running running(interpreter);
      interpreter.ExecuteText(CString::FromUtf8(ProgramOf(entry)), CString::FromUtf8(name));
    }
    // A stop that came too late for its entry is not meant for the next one.
    if (Interruption::Take() && interpreter.SetLimits(limits))
      std::cerr << '\n';
  }
}
