#include "io/com_port.h"

#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/number_text.h"

#include <algorithm>
#include <array>

namespace brindle {

namespace {

CString TextOf(std::string_view bytes) {
  return CString(std::u16string_view(CodePage::Bytes().Decode(bytes)));
}

} // namespace

ComPort::~ComPort() = default;

int ComPort::BytesWaiting() const {
  return static_cast<int>(m_line.BytesWaiting());
}

bool ComPort::Purge() {
  if (!IsOpen())
    return false;
  m_nLastActivity = m_nLastRead = m_nLastWrite = TickCount();
  return m_line.PurgeInput() || KeepError();
}

bool ComPort::IsOpen() const {
  return m_line.IsOpen();
}

bool ComPort::Open() {
  if (!m_line.Open(GetDeviceName().View()))
    return KeepError();
  ApplySettings();
  // Nothing else is to be asked for: every terminal device tells of bytes that come and of room to write, and has
  // buffers of 4096 bytes. Some devices send rubbish while their power or their signals come up.
  constexpr unsigned settlingTime = 10;
  SleepMilliseconds(settlingTime);
  Purge();
  return true;
}

void ComPort::Close() {
  m_line.Close();
}

bool ComPort::Write(const CString& text) {
  return Send(text, {});
}

bool ComPort::WriteLength(const CString& text, int length) {
  return Send(text.Left(std::max(length, 0)), {});
}

bool ComPort::WriteLine(const CString& text, char terminator) {
  return Send(text, std::string_view(&terminator, 1));
}

bool ComPort::WriteBytes(const void* bytes, std::size_t count) {
  if (!IsOpen())
    return false;
  const std::size_t written = m_line.Write(bytes, count, kWriteTimeout);
  m_nLastActivity = TickCount();
  if (written < count)
    return KeepError();
  m_nLastWrite = m_nLastActivity;
  return true;
}

bool ComPort::Send(const CString& text, std::string_view end) {
  if (text.GetLength() > kLongestText)
    return false;
  std::string bytes = CodePage::Bytes().Encode(text.View());
  bytes += end;
  return WriteBytes(bytes.data(), bytes.size());
}

bool ComPort::SetBreak() {
  return IsOpen() && (m_line.SetBreak() || KeepError());
}

bool ComPort::ClearBreak() {
  return IsOpen() && (m_line.ClearBreak() || KeepError());
}

bool ComPort::Read(CString& text) {
  std::array<char, kBufferSize + 1> buffer;
  const std::string_view bytes(buffer.data(), ReadBytes(buffer.data(), buffer.size()));
  text = TextOf(bytes.substr(0, bytes.find('\0')));
  return !bytes.empty();
}

bool ComPort::ReadLength(CString& text, int length) {
  std::string bytes;
  const std::size_t wanted = static_cast<std::size_t>(std::max(length, 0));
  std::array<char, kBufferSize> buffer;
  while (bytes.size() < wanted) {
    const std::size_t got = m_line.Read(buffer.data(), std::min(buffer.size(), wanted - bytes.size()), m_nReadTimeout);
    if (got == 0)
      break;
    bytes.append(buffer.data(), got);
  }
  NoteRead(bytes.size());
  text = TextOf(bytes);
  return IsOpen() && bytes.size() == wanted;
}

bool ComPort::ReadLine(CString& line, char terminator) {
  std::string bytes;
  bool complete = false;
  char byte = 0;
  // Byte by byte: what follows the terminator belongs to the next read, whatever kind it is.
  while (!complete && bytes.size() < kBufferSize && m_line.Read(&byte, 1, m_nReadTimeout) == 1) {
    complete = byte == terminator;
    if (!complete)
      bytes += byte;
  }
  NoteRead(bytes.size() + (complete ? 1 : 0));
  line = TextOf(bytes);
  return complete;
}

std::size_t ComPort::ReadBytes(void* buffer, std::size_t capacity) {
  char* const bytes = static_cast<char*>(buffer);
  std::size_t count = m_line.Read(bytes, capacity, m_nReadTimeout);
  // Deliberate: no length and no terminator ends a reply, only silence.
  for (std::size_t got = count; got != 0 && count < capacity; count += got)
    got = m_line.Read(bytes + count, capacity - count, kGap);
  NoteRead(count);
  return count;
}

void ComPort::NoteRead(std::size_t count) noexcept {
  m_nLastActivity = TickCount();
  if (count != 0)
    m_nLastRead = m_nLastActivity;
}

void ComPort::SetBaudRate(int baudRate) {
  if (baudRate > 0)
    m_nBaudRate = baudRate;
  ApplySettings();
}

void ComPort::SetHandshake(int handshake) {
  m_nHandshake = handshake;
  ApplySettings();
}

void ComPort::SetParity(int parity) {
  m_nParity = parity;
  ApplySettings();
}

void ComPort::SetStopBits(std::uint8_t stopBits) {
  m_nStopBits = stopBits;
  ApplySettings();
}

void ComPort::SetDataBits(std::uint8_t dataBits) {
  m_nDataBits = dataBits;
  ApplySettings();
}

void ComPort::SetReadTimeout(int milliseconds) noexcept {
  m_nReadTimeout = std::max(milliseconds, kShortestTimeout);
}

CString ComPort::GetDeviceName() const {
  return u"COM" + FormatInteger(m_nPort) + u":";
}

void ComPort::ApplySettings() {
  if (!IsOpen())
    return;
  const bool parity = m_nParity != 0;
  const bool dsrDtr = (m_nHandshake & kDsrDtr) != 0;
  const bool ctsRts = (m_nHandshake & kCtsRts) != 0;
  const bool xonXoff = (m_nHandshake & kXonXoff) != 0;

  const std::uint8_t derivedDataBits = parity ? 7 : 8;
  m_settings.baudRate = static_cast<std::uint32_t>(m_nBaudRate);
  m_settings.dataBits = m_nDataBits != 0 ? m_nDataBits : derivedDataBits;
  m_settings.parity = static_cast<std::uint8_t>(m_nParity);
  m_settings.stopBits = m_nStopBits;
  m_settings.parityCheck = parity;
  m_settings.dsrOutputFlow = dsrDtr;
  m_settings.dtr = dsrDtr ? SignalControl::Handshake : SignalControl::On;
  m_settings.ctsOutputFlow = ctsRts;
  m_settings.rts = ctsRts ? SignalControl::Handshake : SignalControl::On;
  m_settings.xonXoffOutput = xonXoff;
  m_settings.xonXoffInput = xonXoff;
  // What the device refuses does not matter: it works with the nearest that it takes.
  if (!m_line.Configure(m_settings))
    KeepError();
}

bool ComPort::KeepError() {
  const std::string message = SystemMessage(m_line.LastError());
  m_strLastError = message.empty() ? FormatInteger(m_line.LastError()) : CString::FromUtf8(message);
  return false;
}

} // namespace brindle
