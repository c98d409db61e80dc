// The reader of text files: lines, places and bytes of any file, in several code pages; and what was written comes
// back.
#include "fuzz_support.h"

#include "io/text_file.h"
#include "platform/code_page.h"

#include <algorithm>
#include <array>
#include <vector>

using namespace brindle;
using fuzz::Require;

namespace {

constexpr const char* kName = "text.txt";
constexpr std::string_view kMark("\xFF\xFE", 2);

const CString& Path() {
  static const CString path = CString::FromUtf8(fuzz::ScratchFolder() + "/" + kName);
  return path;
}

// Pages of every kind: built in, one byte a character, several, with shift states.
void SetPage(unsigned choice) {
  constexpr std::array<std::string_view, 8> kPages = {"UTF-8",     "1252",    "ISO-8859-1", "cp437",
                                                      "Shift_JIS", "GB18030", "EUC-KR",     "1251"};
  Require(CodePage::SetAnsi(kPages[choice % kPages.size()]) || choice > 2, "the pages of this library are there");
}

CString UpToReturn(std::u16string_view text) {
  return CString(text.substr(0, text.find(u'\r')));
}

// The lines of a file without a mark, in the plainest way.
std::vector<CString> LinesOf(std::string_view bytes) {
  std::vector<CString> lines;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    std::string line(bytes.substr(0, end));
    const bool isLast = end == std::string_view::npos;
    bytes.remove_prefix(isLast ? bytes.size() : end + 1);
    if (isLast && line.find_first_not_of('\0') == std::string::npos)
      break;
    std::erase(line, '\0');
    lines.push_back(UpToReturn(CodePage::Ansi().Decode(line)));
  }
  return lines;
}

std::vector<CString> LinesOf(std::u16string_view text) {
  std::vector<CString> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(u'\n'), text.size());
    lines.push_back(UpToReturn(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::vector<CString> ReadLines(TextFile& file) {
  std::vector<CString> lines;
  CString line;
  for (std::uint64_t before = file.GetPosition(); file.ReadLine(line) == TextFile::LineResult::Line;) {
    Require(line.Find(u'\n') < 0 && line.Find(u'\r') < 0, "a line holds no line end");
    Require(file.GetPosition() > before && file.GetPosition() <= file.GetLength(), "a line moves the position on");
    before = file.GetPosition();
    lines.push_back(line);
  }
  Require(file.IsAtEnd() && line.IsEmpty(), "behind the last line nothing is left");
  return lines;
}

void ReadFromPlaces(TextFile& file, fuzz::Input& places) {
  CString line;
  std::array<char, 300> bytes{};
  for (int i = 0; i < 4; ++i) {
    const std::uint64_t place = places.Number(2);
    file.Seek(place);
    Require(file.GetPosition() == place || place < kMark.size(), "a place is where it was wanted");
    const std::uint64_t left = std::max(file.GetLength(), file.GetPosition()) - file.GetPosition();
    if (places.Byte() % 2 == 0) {
      const bool found = file.ReadLine(line) == TextFile::LineResult::Line;
      Require(!found || left > 0, "behind the end is no line");
    } else {
      const std::size_t count = places.Byte();
      Require(file.ReadBytes(bytes.data(), count) == std::min<std::uint64_t>(count, left), "the bytes there are given");
    }
    (void)file.ReadLine(line);
  }
}

void CheckWritten(const CString& text, WriteEncoding encoding) {
  TextFile::SetWriteEncoding(encoding);
  {
    TextFile file;
    Require(file.Open(Path(), CFile::modeCreate | CFile::modeReadWrite), "a file can be made");
    file.Write(text);
  }
  TextFile file;
  Require(file.Open(Path(), CFile::modeRead), "a file that was written can be read");
  const std::vector<CString> lines = ReadLines(file);
  const std::vector<CString> wanted = LinesOf(text.View());
  if (encoding == WriteEncoding::Utf16)
    Require(lines == wanted, "text written in UTF-16 comes back");
  else
    Require(lines.size() <= wanted.size(), "no line is made up by the code page");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::uint8_t choice = input.Byte();
  // Sometimes, as it takes long: in front of the bytes, so that the end of a reader's block falls into them.
  constexpr std::uint8_t kPadded = 0xC8;
  const std::size_t padding = (choice & kPadded) == kPadded ? 16 * 1024 - input.Byte() : 0;
  fuzz::Input places(data, size);
  std::string bytes(padding, 'a');
  bytes += input.Rest();

  SetPage(choice % 8);
  fuzz::WriteScratch(kName, bytes);
  {
    TextFile file;
    Require(file.Open(Path(), CFile::modeRead), "a file can be read");
    const bool isUnicode = bytes.starts_with(kMark);
    const std::vector<CString> lines = ReadLines(file);
    Require(isUnicode || lines == LinesOf(std::string_view(bytes)), "the lines are those of the file");
    ReadFromPlaces(file, places);
  }
  const CString text(CodePage::Ansi().Decode(bytes));
  CheckWritten(text, (choice & 16) != 0 ? WriteEncoding::Utf16 : WriteEncoding::Ansi);
  return 0;
}
