#include "ui/console/error_detail.h"

#include "platform/path.h"

#include <algorithm>

namespace brindle {

namespace {

// The innermost calls tell most; of an endless recursion nobody wants to read all.
constexpr std::size_t kMostCallsShown = 12;
// Of a longer line a part around the column is shown.
constexpr std::size_t kLongestLine = 160;
constexpr std::size_t kBeforeColumn = 100;

bool IsInnerUnitOfPair(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The unit at which the character of that column (counted from 1) starts.
std::size_t UnitAtColumn(std::u16string_view line, int column) {
  std::size_t unit = 0;
  for (int at = 1; at < column && unit < line.size(); ++at) {
    ++unit;
    while (unit < line.size() && IsInnerUnitOfPair(line[unit]))
      ++unit;
  }
  return unit;
}

// A path as the shell would be given it.
std::string PathText(const CString& file) {
  std::string path = PathToNative(file.View());
  std::replace(path.begin(), path.end(), '\\', '/');
  for (char& character : path)
    if (static_cast<unsigned char>(character) < 0x20 || character == 0x7F)
      character = '?';
  return path;
}

std::string PlaceText(const CString& file, int line) {
  return PathText(file) + (line > 0 ? ":" + std::to_string(line) : std::string());
}

// The line and the mark below it. Tabs stay in both, so that the mark stands where the terminal shows the column.
std::string QuoteLine(const CErrorPlace& place) {
  std::u16string line(place.sourceLine.View());
  std::size_t unit = UnitAtColumn(line, place.column);
  if (line.size() > kLongestLine) {
    std::size_t start = unit > kBeforeColumn ? unit - kBeforeColumn : 0;
    while (start < line.size() && IsInnerUnitOfPair(line[start]))
      ++start;
    line = line.substr(start, kLongestLine);
    unit -= start;
    if (start > 0) {
      line.insert(0, u"... ");
      unit += 4;
    }
  }
  std::u16string mark;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] < 0x20 && line[i] != u'\t')
      line[i] = u' ';
    if (i < unit && !IsInnerUnitOfPair(line[i]))
      mark.push_back(line[i] == u'\t' ? u'\t' : u' ');
  }
  const std::string number = std::to_string(place.line);
  return " " + number + " | " + CString(line).ToUtf8() + "\n " + std::string(number.size(), ' ') + " | " +
         CString(mark).ToUtf8() + "^\n";
}

std::string CallText(const CCallFrame& call) {
  using Kind = CCallFrame::Kind;
  std::string text = call.kind == Kind::Program   ? "  in " + PathText(call.name)
                     : call.kind == Kind::Handler ? "  in the handler " + call.name.ToUtf8()
                                                  : "  in " + call.name.ToUtf8();
  if (call.line > 0)
    text += (call.kind == Kind::Program ? ", run at " : ", called at ") + PlaceText(call.file, call.line);
  return text + "\n";
}

} // namespace

std::string FormatErrorPlace(const CErrorPlace& place) {
  if (place.file.IsEmpty())
    return std::string();
  std::string text = PlaceText(place.file, place.line);
  text += place.line > 0 ? ":" + std::to_string(place.column) + "\n" : "\n";
  if (!place.sourceLine.IsEmpty())
    text += QuoteLine(place);
  const std::size_t shown = std::min(place.calls.size(), kMostCallsShown);
  for (std::size_t i = 0; i < shown; ++i)
    text += CallText(place.calls[i]);
  if (const std::size_t more = place.calls.size() - shown + place.callsLeftOut; more > 0)
    text += "  and " + std::to_string(more) + (more == 1 ? " call more\n" : " calls more\n");
  return text;
}

} // namespace brindle
