#include "platform/system_code_page.h"

#include "platform/code_page_runs.h"
#include "platform/faults.h"
#include "platform/table_page.h"
#include "platform/unicode.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <limits>
#include <mutex>
#include <span>
#include <string_view>

namespace brindle {

namespace {

// A conversion descriptor of the system. 32-bit code points are one side of every conversion because C libraries have
// them built in, while UTF-16 may be a loadable module that a small system lacks.
class Converter {
public:
  Converter(const char* to, const char* from) noexcept
      : m_handle(Refused(FaultKind::Library, ENOMEM) ? Closed() : iconv_open(to, from)) {}
  ~Converter() {
    if (IsOpen()) {
      iconv_close(m_handle);
    }
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  static const char* CodePoints() noexcept {
    return std::endian::native == std::endian::little ? "UCS-4LE" : "UCS-4BE";
  }

  [[nodiscard]] bool IsOpen() const noexcept { return m_handle != Closed(); }
  void Reset() const noexcept { iconv(m_handle, nullptr, nullptr, nullptr, nullptr); }

  // Moves `input` and `output` past what was converted; 0, or EILSEQ, EINVAL (cut short) or E2BIG.
  int Convert(std::string_view& input, std::span<char>& output) const noexcept {
    // The system's interface lacks a const that it keeps to.
    char* in = const_cast<char*>(input.data());
    char* out = output.data();
    std::size_t inLeft = input.size();
    std::size_t outLeft = output.size();
    const std::size_t result = iconv(m_handle, &in, &inLeft, &out, &outLeft);
    const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
    input.remove_prefix(input.size() - inLeft);
    output = output.last(outLeft);
    return error;
  }

  // Writes what the converter holds back: a character awaiting a combining mark, the return to the first shift state.
  void Finish(std::span<char>& output) const noexcept {
    char* out = output.data();
    std::size_t outLeft = output.size();
    iconv(m_handle, nullptr, nullptr, &out, &outLeft);
    output = output.last(outLeft);
  }

private:
  static iconv_t Closed() noexcept { return reinterpret_cast<iconv_t>(-1); }
  iconv_t m_handle;
};

template <std::size_t Count> class CodePointBuffer {
public:
  [[nodiscard]] std::span<char> Room() noexcept {
    return {reinterpret_cast<char*>(m_codePoints.data()), sizeof m_codePoints};
  }
  // What was written when `left` is the room left over.
  [[nodiscard]] std::span<const char32_t> Written(std::span<char> left) const noexcept {
    return std::span(m_codePoints).first(Count - left.size() / sizeof(char32_t));
  }

private:
  std::array<char32_t, Count> m_codePoints{};
};

class ConvertedPage final : public CodePage {
public:
  explicit ConvertedPage(const std::string& systemName)
      : CodePage(systemName, false), m_decoder(Converter::CodePoints(), systemName.c_str()),
        m_encoder(systemName.c_str(), Converter::CodePoints()) {
    if (IsUsable()) {
      m_bAscii = KeepsAscii();
    }
  }

  [[nodiscard]] bool IsUsable() const noexcept { return m_decoder.IsOpen() && m_encoder.IsOpen(); }

  void DecodeTo(std::string_view bytes, std::u16string& text) const override {
    Read<256>(bytes, std::numeric_limits<std::size_t>::max(), &text);
  }

  [[nodiscard]] std::size_t IncompleteTail(std::string_view bytes) const override {
    return Read<256>(bytes, std::numeric_limits<std::size_t>::max(), nullptr).incompleteTail;
  }

  [[nodiscard]] std::size_t BytesOfUnits(std::string_view bytes, std::size_t units) const override {
    return Read<1>(bytes, units, nullptr).bytes;
  }

protected:
  std::size_t EncodeTo(std::u16string_view text, std::size_t maxBytes, std::string& bytes) const override {
    const std::size_t start = bytes.size();
    // A character takes at least one byte, so that a short limit needs no look at the whole of a long text.
    std::size_t candidates = maxBytes < text.size() / 2 ? maxBytes * 2 : text.size();
    candidates -= SplitsPair(text, candidates) ? 1 : 0;
    EncodeAll(text.substr(0, candidates), bytes);
    if (bytes.size() - start <= maxBytes) {
      return candidates;
    }

    // Combined characters and shift states make the length of a part unknown before it is encoded.
    std::size_t fits = 0;
    std::size_t tooLong = candidates;
    while (tooLong - fits > 1) {
      const std::size_t middle = fits + (tooLong - fits) / 2;
      bytes.resize(start);
      EncodeAll(text.substr(0, middle), bytes);
      (bytes.size() - start <= maxBytes ? fits : tooLong) = middle;
    }
    fits -= SplitsPair(text, fits) ? 1 : 0;
    bytes.resize(start);
    EncodeAll(text.substr(0, fits), bytes);
    return fits;
  }

private:
  struct ReadResult {
    std::size_t bytes = 0;
    std::size_t incompleteTail = 0;
  };

  static bool SplitsPair(std::u16string_view text, std::size_t position) noexcept {
    return position > 0 && position < text.size() && IsHighSurrogate(text[position - 1]) &&
           IsLowSurrogate(text[position]);
  }

  // Reads `bytes` until `units` units are read; `text`, when given, receives them. With a Portion of 1 the count of
  // bytes is exact after every character.
  template <std::size_t Portion>
  ReadResult Read(std::string_view bytes, std::size_t units, std::u16string* text) const {
    const std::scoped_lock lock(m_mutex);
    std::string_view rest = bytes;
    ReadResult result;
    std::size_t read = 0;
    const auto take = [&](char32_t codePoint) {
      read += codePoint < 0x10000 ? 1 : 2;
      if (text != nullptr) {
        AppendUtf16(codePoint, *text);
      }
    };
    if (m_bAscii && text != nullptr) {
      DecodeAscii(rest, *text);
    }

    // Converters work on far more input than fits into the output, and anew in the next call; so it is portioned.
    constexpr std::size_t inputPortion = std::max<std::size_t>(Portion, 16);
    m_decoder.Reset();
    while (!rest.empty() && read < units) {
      CodePointBuffer<Portion> buffer;
      std::span<char> left = buffer.Room();
      std::string_view input = rest.substr(0, inputPortion);
      const std::size_t before = input.size();
      const int error = m_decoder.Convert(input, left);
      rest.remove_prefix(before - input.size());
      const std::span<const char32_t> written = buffer.Written(left);
      std::for_each(written.begin(), written.end(), take);
      const bool moved = input.size() < before || !written.empty();
      const bool cutByPortion = error == EINVAL && input.size() < rest.size();
      if (error == 0 || (moved && (error == E2BIG || cutByPortion))) {
        continue;
      }
      FinishReading(take);
      if (read >= units) {
        break;
      }
      if (error == EINVAL && result.incompleteTail == 0) {
        result.incompleteTail = rest.size();
      }
      take(Windows1252Character(ToByte(rest[0])));
      rest.remove_prefix(1);
    }
    FinishReading(take);
    result.bytes = bytes.size() - rest.size();
    return result;
  }

  template <typename Take> void FinishReading(const Take& take) const {
    CodePointBuffer<4> buffer;
    std::span<char> left = buffer.Room();
    m_decoder.Finish(left);
    const std::span<const char32_t> written = buffer.Written(left);
    std::for_each(written.begin(), written.end(), take);
  }

  void EncodeAll(std::u16string_view text, std::string& bytes) const {
    if (m_bAscii) {
      const std::size_t ascii = AsciiRun(text);
      AppendAscii(text.substr(0, ascii), bytes);
      text.remove_prefix(ascii);
    }
    if (text.empty()) {
      return; // some pages would write a header even so
    }
    std::u32string codePoints;
    codePoints.reserve(text.size());
    for (std::size_t index = 0; index < text.size();) {
      const char32_t codePoint = ReadUtf16(text, index);
      codePoints.push_back(IsSurrogate(codePoint) ? U'?' : codePoint);
    }

    const std::scoped_lock lock(m_mutex);
    m_encoder.Reset();
    const char32_t substitute = U'?';
    const std::string_view substituteInput(reinterpret_cast<const char*>(&substitute), sizeof substitute);
    std::string_view rest(reinterpret_cast<const char*>(codePoints.data()), codePoints.size() * sizeof(char32_t));
    std::array<char, 512> buffer;
    while (!rest.empty()) {
      std::span<char> left(buffer);
      std::string_view input = rest.substr(0, 64 * sizeof(char32_t));
      const std::size_t before = input.size();
      const int error = m_encoder.Convert(input, left);
      rest.remove_prefix(before - input.size());
      bytes.append(buffer.data(), buffer.size() - left.size());
      if (error != 0 && error != E2BIG) {
        left = buffer;
        std::string_view question = substituteInput;
        m_encoder.Convert(question, left);
        bytes.append(buffer.data(), buffer.size() - left.size());
        rest.remove_prefix(sizeof(char32_t));
      }
    }
    std::span<char> left(buffer);
    m_encoder.Finish(left);
    bytes.append(buffer.data(), buffer.size() - left.size());
  }

  // Whether every ASCII byte alone is its own character; pages with shift sequences made of ASCII bytes do not pass.
  [[nodiscard]] bool KeepsAscii() const noexcept {
    for (unsigned byte = 0; byte < 0x80; ++byte) {
      m_decoder.Reset();
      const char character = ToChar(byte);
      std::string_view input(&character, 1);
      CodePointBuffer<4> buffer;
      std::span<char> left = buffer.Room();
      const int error = m_decoder.Convert(input, left);
      m_decoder.Finish(left);
      const std::span<const char32_t> written = buffer.Written(left);
      if (error != 0 || written.size() != 1 || written[0] != byte) {
        return false;
      }
    }
    return true;
  }

  mutable std::mutex m_mutex; // a descriptor has one conversion state
  Converter m_decoder;
  Converter m_encoder;
  bool m_bAscii = false;
};

enum class PageShape { singleByte, multiByte, unusable };

// Fills `table` while every byte alone is at most one character; an undefined byte is left UndefinedByte.
PageShape Probe(const std::string& systemName, ByteTable& table) noexcept {
  const Converter decoder(Converter::CodePoints(), systemName.c_str());
  if (!decoder.IsOpen()) {
    return PageShape::unusable;
  }
  PageShape shape = PageShape::singleByte;
  for (unsigned byte = 0; byte < table.size(); ++byte) {
    decoder.Reset();
    const char character = ToChar(byte);
    std::string_view input(&character, 1);
    CodePointBuffer<4> buffer;
    std::span<char> left = buffer.Room();
    const int error = decoder.Convert(input, left);
    decoder.Finish(left);
    const std::span<const char32_t> written = buffer.Written(left);
    if (error == EILSEQ) {
      table[byte] = UndefinedByte;
    } else if (error == 0 && written.size() == 1 && written[0] < UndefinedByte) {
      table[byte] = static_cast<char16_t>(written[0]);
    } else if (byte == 'A') {
      return PageShape::unusable; // an encoding in 16- or 32-bit units
    } else {
      shape = PageShape::multiByte;
    }
  }
  return shape;
}

} // namespace

std::shared_ptr<const CodePage> FindSystemPage(const std::string& systemName) {
  ByteTable table{};
  switch (Probe(systemName, table)) {
  case PageShape::singleByte: CompleteTable(table); return std::make_shared<TablePage>(systemName, table);
  case PageShape::multiByte:
    if (auto page = std::make_shared<ConvertedPage>(systemName); page->IsUsable()) {
      return page;
    }
    break;
  case PageShape::unusable: break;
  }
  return nullptr;
}

} // namespace brindle
