#include "platform/code_page.h"

#include "platform/code_page_runs.h"
#include "platform/system_code_page.h"
#include "platform/table_page.h"
#include "platform/unicode.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <limits>
#include <mutex>
#include <new>
#include <optional>
#include <utility>
#include <vector>

namespace brindle {

namespace {

class Utf8Page final : public CodePage {
public:
  Utf8Page() : CodePage("UTF-8", false, true) {}

  void DecodeTo(std::string_view bytes, std::u16string& text) const override {
    while (!bytes.empty()) {
      DecodeAscii(bytes, text);
      while (!bytes.empty() && ToByte(bytes[0]) >= 0x80) {
        char32_t codePoint = 0;
        bytes.remove_prefix(ReadCharacter(bytes, codePoint));
        AppendUtf16(codePoint, text);
      }
    }
  }

  [[nodiscard]] std::size_t IncompleteTail(std::string_view bytes) const override {
    for (std::size_t length = 1; length <= 3 && length <= bytes.size(); ++length) {
      const std::string_view tail = bytes.substr(bytes.size() - length);
      if ((ToByte(tail[0]) & 0xC0) != 0x80) {
        return CanBeCompleted(tail) ? length : 0;
      }
    }
    return 0;
  }

  [[nodiscard]] std::size_t BytesOfUnits(std::string_view bytes, std::size_t units) const override {
    std::string_view rest = bytes;
    for (std::size_t read = 0; read < units && !rest.empty();) {
      char32_t codePoint = 0;
      rest.remove_prefix(ReadCharacter(rest, codePoint));
      read += codePoint < 0x10000 ? 1 : 2;
    }
    return bytes.size() - rest.size();
  }

protected:
  std::size_t EncodeTo(std::u16string_view text, std::size_t maxBytes, std::string& bytes) const override {
    const std::size_t start = bytes.size();
    std::size_t index = 0;
    while (index < text.size()) {
      const std::size_t room = maxBytes - (bytes.size() - start);
      const std::u16string_view ahead = text.substr(index, room);
      const std::size_t ascii = AsciiRun(ahead);
      if (ascii > 0) {
        AppendAscii(ahead.substr(0, ascii), bytes);
        index += ascii;
        continue;
      }
      std::size_t next = index;
      const char32_t codePoint = ReadUtf16(text, next);
      const std::size_t length = codePoint < 0x80 ? 1 : codePoint < 0x800 ? 2 : codePoint < 0x10000 ? 3 : 4;
      if (length > room) {
        break;
      }
      AppendUtf8(codePoint, bytes);
      index = next;
    }
    return index;
  }

private:
  // `bytes` is not empty; never 0.
  static std::size_t ReadCharacter(std::string_view bytes, char32_t& codePoint) noexcept {
    const std::size_t length = ReadUtf8(bytes, codePoint);
    if (length == 0) {
      codePoint = Windows1252Character(ToByte(bytes[0]));
      return 1;
    }
    return length;
  }

  // Whether further bytes can make a well-formed character of this lead byte and what follows it. Trying the lowest
  // and the highest continuation covers every second byte that is allowed.
  static bool CanBeCompleted(std::string_view tail) {
    char32_t codePoint = 0;
    for (const char filler : {ToChar(0x80), ToChar(0xBF)}) {
      std::array<char, 4> bytes{};
      std::copy(tail.begin(), tail.end(), bytes.begin());
      for (std::size_t length = tail.size() + 1; length <= bytes.size(); ++length) {
        bytes[length - 1] = filler;
        if (ReadUtf8({bytes.data(), length}, codePoint) == length) {
          return true;
        }
      }
    }
    return false;
  }
};

// Lives until the process ends: a host's static objects may still run scripts while others are destroyed.
template <typename Type> class Immortal {
public:
  Immortal(const Immortal&) = delete;
  Immortal& operator=(const Immortal&) = delete;
  template <typename... Arguments> explicit Immortal(Arguments&&... arguments) {
    new (m_storage) Type(std::forward<Arguments>(arguments)...);
  }
  [[nodiscard]] Type& Get() noexcept { return *std::launder(reinterpret_cast<Type*>(m_storage)); }

private:
  alignas(Type) std::byte m_storage[sizeof(Type)];
};

struct AnsiSetting {
  std::mutex mutex;
  std::vector<std::shared_ptr<const CodePage>> everSet;
};

std::atomic<const CodePage*> ansiPage{nullptr};

AnsiSetting& GetAnsiSetting() noexcept {
  static Immortal<AnsiSetting> setting;
  return setting.Get();
}

const CodePage& Latin1() noexcept {
  static Immortal<TablePage> page("ISO-8859-1", Latin1Table());
  return page.Get();
}

std::shared_ptr<const CodePage> Unowned(const CodePage& page) noexcept {
  return {std::shared_ptr<const CodePage>(), &page};
}

char AsciiUpper(char character) noexcept {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

bool IsAsciiDigit(char character) noexcept {
  return character >= '0' && character <= '9';
}

// Upper case, letters and digits only: "utf_8", "UTF-8" and "utf8" are one name.
std::string CompactName(std::string_view name) {
  std::string compact;
  for (const char character : name) {
    const char upper = AsciiUpper(character);
    if (IsAsciiDigit(upper) || (upper >= 'A' && upper <= 'Z')) {
      compact.push_back(upper);
    }
  }
  return compact;
}

// The number of "1252", "cp1252", "windows1252" or "ibm1252", given compact.
std::optional<std::string_view> PageNumber(std::string_view compact) noexcept {
  for (const std::string_view prefix : {"WINDOWS", "CP", "IBM"}) {
    if (compact.starts_with(prefix)) {
      compact.remove_prefix(prefix.size());
      break;
    }
  }
  if (compact.empty() || !std::all_of(compact.begin(), compact.end(), IsAsciiDigit)) {
    return std::nullopt;
  }
  return compact;
}

struct PageAlias {
  std::string_view key; // a page number or a compact name
  const char* name;
};

// Page numbers that conversion libraries do not know, and a name that they take more strictly than text files do: their
// Shift JIS turns the backslash of every path into a yen sign, the page that is meant by it in practice does not.
constexpr PageAlias PageAliases[] = {
    {"SHIFTJIS", "CP932"},   {"SJIS", "CP932"},       {"20127", "US-ASCII"},    {"20866", "KOI8-R"},
    {"20932", "EUC-JP"},     {"21866", "KOI8-U"},     {"28592", "ISO-8859-2"},  {"28593", "ISO-8859-3"},
    {"28594", "ISO-8859-4"}, {"28595", "ISO-8859-5"}, {"28596", "ISO-8859-6"},  {"28597", "ISO-8859-7"},
    {"28598", "ISO-8859-8"}, {"28599", "ISO-8859-9"}, {"28603", "ISO-8859-13"}, {"28605", "ISO-8859-15"},
    {"51932", "EUC-JP"},     {"51949", "EUC-KR"},     {"54936", "GB18030"},
};

// The names to try with the system, in order.
std::vector<std::string> SystemNames(std::string_view name, std::string_view compact) {
  std::vector<std::string> names;
  const std::optional<std::string_view> number = PageNumber(compact);
  for (const PageAlias& alias : PageAliases) {
    if (alias.key == number.value_or(compact)) {
      names.emplace_back(alias.name);
    }
  }
  if (number) {
    names.push_back("CP" + std::string(*number));
  }
  std::string upper(name);
  std::transform(upper.begin(), upper.end(), upper.begin(), AsciiUpper);
  names.push_back(upper);
  std::replace(upper.begin(), upper.end(), '_', '-');
  names.push_back(upper);
  return names;
}

// A "/" or "," would pass options to the conversion, an empty name or these two would mean the process locale.
bool IsPlainName(std::string_view name, std::string_view compact) noexcept {
  constexpr std::size_t longestName = 64;
  const auto plain = [](char character) {
    const char upper = AsciiUpper(character);
    return IsAsciiDigit(upper) || (upper >= 'A' && upper <= 'Z') ||
           std::string_view("-_.:+()").find(upper) != std::string_view::npos;
  };
  return name.size() <= longestName && std::all_of(name.begin(), name.end(), plain) && !compact.empty() &&
         compact != "CHAR" && compact != "WCHART";
}

} // namespace

CodePage::~CodePage() = default;

bool CodePage::EncodeAscii(std::u16string_view text, char* bytes) const noexcept {
  for (const char16_t unit : text) {
    if (unit >= 0x80)
      return false;
    *bytes++ = static_cast<char>(unit);
  }
  return IsAsciiBased();
}

bool CodePage::AreAscii(std::string_view bytes) const noexcept {
  return AsciiRun(bytes) == bytes.size() && IsAsciiBased();
}

const CodePage& CodePage::Utf8() noexcept {
  static Immortal<Utf8Page> page;
  return page.Get();
}

const CodePage& CodePage::Windows1252() noexcept {
  static Immortal<TablePage> page("windows-1252", Windows1252Table());
  return page.Get();
}

const CodePage& CodePage::Ansi() noexcept {
  const CodePage* page = ansiPage.load(std::memory_order_acquire);
  return page != nullptr ? *page : Utf8();
}

bool CodePage::SetAnsi(std::string_view name) {
  std::shared_ptr<const CodePage> page = Find(name);
  if (page == nullptr) {
    return false;
  }
  AnsiSetting& setting = GetAnsiSetting();
  const std::scoped_lock lock(setting.mutex);
  const auto same = std::find_if(setting.everSet.begin(), setting.everSet.end(),
                                 [&page](const auto& other) { return other->Name() == page->Name(); });
  if (same == setting.everSet.end()) {
    setting.everSet.push_back(page);
  } else {
    page = *same;
  }
  ansiPage.store(page.get(), std::memory_order_release);
  return true;
}

const CodePage& CodePage::Bytes() noexcept {
  const CodePage& ansi = Ansi();
  return ansi.IsSingleByte() ? ansi : Windows1252();
}

std::shared_ptr<const CodePage> CodePage::Find(std::string_view name) {
  const std::string compact = CompactName(name);
  if (!IsPlainName(name, compact)) {
    return nullptr;
  }
  const std::optional<std::string_view> number = PageNumber(compact);
  if (compact == "UTF8" || number == "65001") {
    return Unowned(Utf8());
  }
  if (number == "1252") {
    return Unowned(Windows1252());
  }
  if (compact == "ISO88591" || compact == "LATIN1" || number == "28591") {
    return Unowned(Latin1());
  }

  for (const std::string& systemName : SystemNames(name, compact)) {
    if (auto page = FindSystemPage(systemName)) {
      return page;
    }
  }
  return nullptr;
}

std::u16string CodePage::Decode(std::string_view bytes) const {
  std::u16string text;
  DecodeTo(bytes, text);
  return text;
}

std::string CodePage::Encode(std::u16string_view text) const {
  std::string bytes;
  EncodeTo(text, std::numeric_limits<std::size_t>::max(), bytes);
  return bytes;
}

std::size_t CodePage::EncodedPrefix(std::u16string_view text, std::size_t maxBytes, std::string& bytes) const {
  bytes.clear();
  return EncodeTo(text, maxBytes, bytes);
}

} // namespace brindle
