// Lines typed by a person: edited and remembered by libedit where that is installed, else as the terminal gives them.
// Room: tools. Used by: the prompt.
// May touch: standard input, standard error, libedit, the file of the history.
// Must not: load libedit before the first line is asked for: scripts that are run need none.
// Invariant: what is typed is shown on standard error; the terminal is left as it was found.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class LineEditor {
public:
  // What is to be done while a line is typed; how long until it wants to be called again, nothing for never.
  using Serve = std::function<std::optional<std::chrono::milliseconds>()>;

  // Lines of earlier sessions are read from the file, and written when the editor ends; an empty name is no file.
  LineEditor(Serve serve, std::string historyFile);
  LineEditor(const LineEditor&) = delete;
  LineEditor& operator=(const LineEditor&) = delete;
  ~LineEditor();

  enum class Result { Line, Abandoned, EndOfInput };
  // A line without its end.
  [[nodiscard]] Result Read(const std::string& prompt, std::string& line);

  // The library that edits lines, "" when there is none; for --version.
  [[nodiscard]] static std::string Library();

private:
  struct State;
  std::unique_ptr<State> m_pState;
};
