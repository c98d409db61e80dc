// The three standard streams as bytes, with lines of input that can be waited for with a time limit.
// Room: platform. Used by: the console user interface.
// May touch: descriptors 0, 1 and 2.
// Must not: know what the lines mean.
// Invariant: output is buffered here alone; it is written before input is waited for and before an error text.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace brindle {

class StandardStreams {
public:
  StandardStreams() = default;
  StandardStreams(const StandardStreams&) = delete;
  StandardStreams& operator=(const StandardStreams&) = delete;
  ~StandardStreams() { Flush(); }

  void Write(std::string_view bytes);
  void WriteError(std::string_view bytes);
  void Flush() noexcept;
  // Whether something written could not be delivered (a full disk, say).
  [[nodiscard]] bool OutputLost() const noexcept { return m_bOutputLost; }
  [[nodiscard]] bool InputIsTerminal() const noexcept;
  [[nodiscard]] bool ErrorIsTerminal() const noexcept;
  // From now on the signals that ask a process to end count as the end of input.
  void EndInputOnTermination();

  enum class WaitResult { Line, EndOfInput, TimedOut };
  // A line without its end. Gives up at `deadline`, when there is one.
  [[nodiscard]] WaitResult ReadLine(std::string& line, std::optional<std::chrono::steady_clock::time_point> deadline);

private:
  [[nodiscard]] bool TakeLine(std::string& line);

  std::string m_output;
  std::string m_input;         // read but not yet given out
  std::size_t m_nSearched = 0; // how much of it is known to hold no line end
  int m_nTerminationPipe = -1;
  bool m_bOutputLost = false;
  bool m_bEndOfInput = false;
};

} // namespace brindle
