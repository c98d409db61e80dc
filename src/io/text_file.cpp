#include "io/text_file.h"

#include "interpreter/limits.h"
#include "platform/code_page.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstring>

namespace brindle {

namespace {

constexpr std::size_t kFillSize = 16 * 1024;
constexpr std::string_view kMark("\xFF\xFE", 2);
constexpr std::size_t kUnit = 2; // bytes of a UTF-16 unit

// The length of a line of plain ASCII, without the return at its end; npos for one that has more to it.
std::size_t PlainLength(std::string_view line) {
  if (line.ends_with('\r'))
    line.remove_suffix(1);
  bool isPlain = CodePage::Ansi().IsAsciiBased();
  for (const char byte : line)
    isPlain &= byte > '\r' || byte == '\t';
  return isPlain ? line.size() : std::string_view::npos;
}

std::atomic<WriteEncoding> writeEncoding = WriteEncoding::Ansi;

} // namespace

WriteEncoding TextFile::GetWriteEncoding() noexcept {
  return writeEncoding;
}

void TextFile::SetWriteEncoding(WriteEncoding encoding) noexcept {
  writeEncoding = encoding;
}

bool TextFile::Open(const CString& path, unsigned flags) {
  if (!m_file.Open(path.View(), flags))
    return false;
  // Without a seek, which a pipe refuses: what is no mark is the first of the text.
  std::array<char, 2> start{};
  const std::size_t count = m_file.Read(start.data(), start.size());
  m_buffer.assign(start.data(), count);
  m_nBufferStart = 0;
  m_nConsumed = 0;
  m_bUnicode = m_buffer == kMark;
  if (m_bUnicode)
    m_nConsumed = kMark.size();
  return true;
}

void TextFile::Seek(std::uint64_t position) {
  m_nBufferStart = m_file.Seek(static_cast<std::int64_t>(position), CFile::begin);
  m_buffer.clear();
  m_nConsumed = 0;
  SkipMark();
}

void TextFile::SkipMark() {
  if (m_bUnicode && m_nBufferStart == 0)
    m_nBufferStart = m_file.Seek(static_cast<std::int64_t>(kMark.size()), CFile::begin);
}

void TextFile::SeekToEnd() {
  Seek(m_file.GetLength());
}

bool TextFile::Fill() {
  m_buffer.erase(0, m_nConsumed);
  m_nBufferStart += m_nConsumed;
  m_nConsumed = 0;
  const std::size_t held = m_buffer.size();
  m_buffer.resize(held + kFillSize);
  std::size_t count = 0;
  try {
    count = m_file.Read(m_buffer.data() + held, kFillSize);
  } catch (...) {
    m_buffer.resize(held);
    throw;
  }
  m_buffer.resize(held + count);
  return count > 0;
}

// Position of the next line feed at or behind `from`, the buffer's size when there is none.
std::size_t TextFile::FindLineFeed(std::size_t from) const noexcept {
  if (!m_bUnicode)
    return std::min(m_buffer.find('\n', from), m_buffer.size());
  for (; from + kUnit <= m_buffer.size(); from += kUnit)
    if (m_buffer[from] == '\n' && m_buffer[from + 1] == '\0')
      return from;
  return m_buffer.size();
}

CString TextFile::LineOf(std::size_t from, std::size_t to) const {
  std::u16string text;
  if (m_bUnicode) {
    text.resize((to - from) / kUnit);
    for (std::size_t i = 0; i < text.size(); ++i) {
      const auto low = static_cast<unsigned char>(m_buffer[from + i * kUnit]);
      const auto high = static_cast<unsigned char>(m_buffer[from + i * kUnit + 1]);
      text[i] = static_cast<char16_t>(low | (high << 8));
    }
  } else if (const std::size_t length = PlainLength(std::string_view(m_buffer).substr(from, to - from));
             length != std::string_view::npos) {
    CString line;
    std::copy_n(m_buffer.data() + from, length, line.GetBufferSetLength(static_cast<int>(length)));
    return line;
  } else {
    std::string bytes = m_buffer.substr(from, to - from);
    std::erase(bytes, '\0');
    text = CodePage::Ansi().Decode(bytes);
  }
  return CString(std::u16string_view(text).substr(0, text.find(u'\r')));
}

TextFile::LineResult TextFile::ReadLine(CString& line) {
  const std::size_t unit = m_bUnicode ? kUnit : 1;
  std::size_t searched = m_nConsumed;
  for (;;) {
    const std::size_t lineFeed = FindLineFeed(searched);
    if (lineFeed < m_buffer.size()) {
      line = LineOf(m_nConsumed, lineFeed);
      m_nConsumed = lineFeed + unit;
      return LineResult::Line;
    }
    const std::size_t held = m_buffer.size() - m_nConsumed;
    if (held > static_cast<std::size_t>(kLongestText) * unit)
      return LineResult::TooLong;
    if (!Fill()) {
      // A line of zero bytes is no line.
      const bool pending = m_bUnicode ? held >= kUnit : m_buffer.find_first_not_of('\0') != std::string::npos;
      line = pending ? LineOf(0, m_buffer.size()) : CString();
      m_nConsumed = m_buffer.size();
      return pending ? LineResult::Line : LineResult::EndOfFile;
    }
    searched = held - held % unit;
  }
}

std::size_t TextFile::ReadBytes(void* buffer, std::size_t count) {
  const std::size_t ready = std::min(count, m_buffer.size() - m_nConsumed);
  std::memcpy(buffer, m_buffer.data() + m_nConsumed, ready);
  m_nConsumed += ready;
  if (ready == count)
    return count;
  const std::size_t more = m_file.Read(static_cast<char*>(buffer) + ready, count - ready);
  m_nBufferStart = GetPosition() + more;
  m_buffer.clear();
  m_nConsumed = 0;
  return ready + more;
}

void TextFile::WriteBytes(const void* buffer, std::size_t count) {
  // What was read ahead does not count: the file's own position goes back to the reader's.
  const std::uint64_t position = GetPosition();
  m_file.Seek(static_cast<std::int64_t>(position), CFile::begin);
  m_buffer.clear();
  m_nConsumed = 0;
  m_nBufferStart = position;
  m_file.Write(buffer, count);
  m_nBufferStart = position + count;
}

void TextFile::Write(const CString& text) {
  std::string bytes;
  if (GetWriteEncoding() == WriteEncoding::Ansi) {
    bytes = CodePage::Ansi().Encode(text.View());
  } else {
    if (m_file.GetLength() == 0) {
      bytes = kMark;
      m_bUnicode = true;
    }
    for (const char16_t unit : text.View()) {
      bytes += static_cast<char>(unit & 0xFF);
      bytes += static_cast<char>(unit >> 8);
    }
  }
  if (!bytes.empty())
    WriteBytes(bytes.data(), bytes.size());
}

} // namespace brindle
