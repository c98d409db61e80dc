// SerialLine: one serial line of the system, and how its settings become terminal modes.
// Room: platform. Used by: io (the port object).
// May touch: terminal devices, the environment variable that says where they are.
// Must not touch: text; what the bytes mean is the caller's affair. The process's controlling terminal.
// Invariant: no call waits longer than its caller said (closing: as long as bytes still leave the line).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

// What an output signal of the line does.
enum class SignalControl : std::uint8_t { Off = 0, On = 1, Handshake = 2 };

// Everything that is asked of a line, in one block. What the system or the device lacks is mapped to the nearest.
struct LineSettings {
  std::uint32_t blockLength = 28;
  std::uint32_t baudRate = 9600;
  bool binary = true;
  bool parityCheck = false;
  bool ctsOutputFlow = false;
  bool dsrOutputFlow = false;
  SignalControl dtr = SignalControl::On;
  SignalControl rts = SignalControl::On;
  bool dsrSensitivity = false;
  bool xonXoffOutput = false;
  bool xonXoffInput = false;
  bool errorReplacement = false;
  bool nullStripping = false;
  bool abortOnError = false;
  std::uint16_t xonLimit = 128;
  std::uint16_t xoffLimit = 10;
  std::uint8_t dataBits = 8;
  std::uint8_t parity = 0;   // 0 none, 1 odd, 2 even, 3 mark, 4 space
  std::uint8_t stopBits = 0; // 0 one, 1 one and a half, 2 two
  unsigned char xonCharacter = 0x11;
  unsigned char xoffCharacter = 0x13;

  bool operator==(const LineSettings&) const = default;
};

// The terminal modes of a device, in the system's own numbers.
struct LineModes {
  std::uint32_t input = 0;
  std::uint32_t output = 0;
  std::uint32_t control = 0;
  std::uint32_t local = 0;
  std::uint32_t inputSpeed = 0;
  std::uint32_t outputSpeed = 0;
  unsigned char start = 0;
  unsigned char stop = 0;
  unsigned char leastBytes = 0;
  unsigned char readTime = 0;
};

// `current` with everything replaced that the settings speak of.
[[nodiscard]] LineModes ModesFor(const LineSettings& settings, const LineModes& current) noexcept;

// What to try, best first, with a device that refuses some settings: each entry gives up one more of them.
[[nodiscard]] std::vector<LineSettings> NearestSettings(const LineSettings& wanted);

// The device that stands for "COM<n>:": the entry com<n> of the folder that the environment variable BRINDLE_DEVICES
// names, when it is set, else /dev/ttyS<n-1>. Empty when the name is no such name.
[[nodiscard]] std::string FindSerialDevice(std::u16string_view name);

// The system's message for an error number; empty when it has none.
[[nodiscard]] std::string SystemMessage(int osError);

class SerialLine {
public:
  SerialLine() = default;
  SerialLine(const SerialLine&) = delete;
  SerialLine& operator=(const SerialLine&) = delete;
  ~SerialLine();

  // False when there is no such device, it is no terminal device, or somebody else has it open for himself. While it
  // is open others are kept out (a superuser only by the advisory lock).
  [[nodiscard]] bool Open(std::u16string_view name);
  [[nodiscard]] bool IsOpen() const noexcept { return m_nDescriptor >= 0; }
  // Lets bytes leave that are still on their way, as long as they do leave.
  void Close() noexcept;

  // False only when the device takes none of the nearest settings either; it then works with those it has.
  bool Configure(const LineSettings& settings);

  // Waits up to `milliseconds` for a byte, then takes what is there. A line that has gone behaves as a silent one:
  // nothing comes, after the whole time, so that a script that polls it never spins.
  [[nodiscard]] std::size_t Read(void* buffer, std::size_t capacity, int milliseconds);
  // The number of bytes that the line took. Gives up when it takes none for `milliseconds`.
  [[nodiscard]] std::size_t Write(const void* bytes, std::size_t count, int milliseconds);

  // 0 when the line cannot tell.
  [[nodiscard]] std::size_t BytesWaiting() const noexcept;
  bool PurgeInput() noexcept;
  bool SetBreak() noexcept;
  bool ClearBreak() noexcept;

  // The system's number of the last failure, 0 when there was none.
  [[nodiscard]] int LastError() const noexcept { return m_nLastError; }

private:
  bool Fail(int osError) noexcept;
  bool Apply(const LineSettings& settings) noexcept;
  void RaiseSignals(const LineSettings& settings) noexcept;
  void AwaitOutput() noexcept;

  int m_nDescriptor = -1;
  int m_nLastError = 0;
};

} // namespace brindle
