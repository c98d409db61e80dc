// Ctrl-C at the prompt: it abandons what is typed, and stops what runs.
// Room: tools. Used by: the prompt and its line editor.
// May touch: the action of SIGINT, which it gives back.
// Must not: do more in the signal's handler than note it.
// Invariant: one at a time.
#pragma once

#include <optional>

#include <chrono>

class CBrindle;

class Interruption {
public:
  Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption();

  // While it lasts, Ctrl-C asks this interpreter to stop.
  class Running {
  public:
    explicit Running(CBrindle& interpreter);
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running();
  };

  enum class Wait { Input, TimedOut, Interrupted };
  // Until standard input has something, Ctrl-C comes, or the time is over.
  [[nodiscard]] static Wait WaitForInput(std::optional<std::chrono::milliseconds> limit);
  // Whether Ctrl-C came since it was asked last.
  [[nodiscard]] static bool Take();
};
