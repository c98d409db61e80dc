// ComPort: a serial port as scripts see it: settings, time-outs, text in and out.
// Room: io. Used by: the serial port functions, the table of open ports.
// May touch: SerialLine, the code page of serial lines.
// Must not: report errors; what fails leaves a closed port, no text or false, and its message here.
// Invariant: the settings block holds what was asked for last; every setter asks anew while the port is open.
#pragma once

#include "brindle/text.h"
#include "platform/serial_line.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace brindle {

class ComPort {
public:
  enum Handshake : int { kDsrDtr = 1, kCtsRts = 2, kXonXoff = 4 };

  static constexpr int kLongestText = 512; // characters that one call writes
  static constexpr int kBufferSize = 4096; // bytes that one call reads behind the first one
  static constexpr int kShortestTimeout = 10;
  static constexpr int kGap = 10;            // silence, in milliseconds, that ends a reply
  static constexpr int kWriteTimeout = 5000; // without a byte leaving, as when a handshake holds the line back

  explicit ComPort(int port = 1) noexcept : m_nPort(port) {}
  ComPort(const ComPort&) = delete;
  ComPort& operator=(const ComPort&) = delete;
  virtual ~ComPort();

  // 0 when the line cannot tell.
  [[nodiscard]] virtual int BytesWaiting() const;
  // Throws away what has arrived and was not read.
  virtual bool Purge();
  [[nodiscard]] virtual bool IsOpen() const;
  [[nodiscard]] virtual bool Open();
  virtual void Close();

  // Each is true when every byte went out. A longer text than kLongestText is refused whole.
  [[nodiscard]] virtual bool Write(const CString& text);
  [[nodiscard]] virtual bool WriteLength(const CString& text, int length);
  [[nodiscard]] virtual bool WriteLine(const CString& text, char terminator);
  [[nodiscard]] virtual bool WriteBytes(const void* bytes, std::size_t count);

  virtual bool SetBreak();
  virtual bool ClearBreak();

  // A reply: waits for the first byte up to the read time-out, then collects until a gap of kGap in the data. The
  // text ends before the first zero byte. True when a byte came.
  virtual bool Read(CString& text);
  // Exactly that many characters. False, with those that came, when none came for the read time-out.
  [[nodiscard]] virtual bool ReadLength(CString& text, int length);
  // Up to the terminator, which is taken but no part of the text; what follows it stays for the next read. False,
  // with what came, after the read time-out without a byte and after kBufferSize bytes without the terminator.
  [[nodiscard]] virtual bool ReadLine(CString& line, char terminator);
  // A reply as Read collects it, as plain bytes; returns how many came.
  [[nodiscard]] virtual std::size_t ReadBytes(void* buffer, std::size_t capacity);

  // Ignored unless above 0.
  void SetBaudRate(int baudRate);
  void SetHandshake(int handshake);
  void SetParity(int parity);
  void SetStopBits(std::uint8_t stopBits);
  // 0: 7 with parity, 8 without.
  void SetDataBits(std::uint8_t dataBits);
  // At least kShortestTimeout.
  void SetReadTimeout(int milliseconds) noexcept;

  [[nodiscard]] int GetReadTimeout() const noexcept { return m_nReadTimeout; }
  [[nodiscard]] CString GetDeviceName() const;
  [[nodiscard]] const LineSettings& GetSettings() const noexcept { return m_settings; }
  [[nodiscard]] const CString& GetLastErrorText() const noexcept { return m_strLastError; }
  // Counts of the millisecond clock, see TickCount.
  [[nodiscard]] std::uint32_t GetLastActivity() const noexcept { return m_nLastActivity; }
  [[nodiscard]] std::uint32_t GetLastRead() const noexcept { return m_nLastRead; }
  [[nodiscard]] std::uint32_t GetLastWrite() const noexcept { return m_nLastWrite; }

private:
  void ApplySettings();
  // Keeps the message of the last failure; false, for the caller to hand on.
  bool KeepError();
  [[nodiscard]] bool Send(const CString& text, std::string_view end);
  void NoteRead(std::size_t count) noexcept;

  LineSettings m_settings;
  int m_nBaudRate = 4800;
  int m_nHandshake = 0;
  int m_nPort;
  int m_nParity = 0;
  std::uint8_t m_nStopBits = 0;
  std::uint8_t m_nDataBits = 0;
  SerialLine m_line;
  int m_nReadTimeout = 1000;
  CString m_strLastError;
  std::uint32_t m_nLastActivity = 0;
  std::uint32_t m_nLastRead = 0;
  std::uint32_t m_nLastWrite = 0;
};

} // namespace brindle
