#include "ui/dialog_template.h"

namespace brindle {

namespace {

constexpr std::size_t kItemCountOffset = 8;
constexpr std::uint16_t kPredefined = 0xFFFF;

template <class T> void Put(std::vector<std::byte>& out, T value) {
  for (std::size_t i = 0; i < sizeof value; ++i)
    out.push_back(static_cast<std::byte>((static_cast<std::uint64_t>(value) >> (8 * i)) & 0xFF));
}

void PutText(std::vector<std::byte>& out, const CString& text) {
  // A zero would end the text early and shift all that follows.
  for (const char16_t unit : text.View().substr(0, text.View().find(u'\0')))
    Put(out, static_cast<std::uint16_t>(unit));
  Put<std::uint16_t>(out, 0);
}

void PutRectangle(std::vector<std::byte>& out, const DialogRectangle& rectangle) {
  for (const std::int16_t value : {rectangle.x, rectangle.y, rectangle.width, rectangle.height})
    Put(out, static_cast<std::uint16_t>(value));
}

void Align(std::vector<std::byte>& out) {
  out.resize((out.size() + 3) / 4 * 4);
}

// Reads from the front of a template; once it runs out of bytes everything reads as 0.
class Reader {
public:
  explicit Reader(std::span<const std::byte> bytes) : m_bytes(bytes) {}

  [[nodiscard]] bool Failed() const noexcept { return m_bFailed; }
  std::uint16_t Word() {
    if (m_bFailed || m_bytes.size() - m_nAt < 2) {
      m_bFailed = true;
      return 0;
    }
    const auto low = std::to_integer<std::uint16_t>(m_bytes[m_nAt]);
    const auto high = std::to_integer<std::uint16_t>(m_bytes[m_nAt + 1]);
    m_nAt += 2;
    return static_cast<std::uint16_t>(low | (high << 8));
  }
  std::uint32_t DoubleWord() {
    const std::uint32_t low = Word();
    return low | (static_cast<std::uint32_t>(Word()) << 16);
  }
  DialogRectangle Rectangle() {
    DialogRectangle rectangle;
    for (std::int16_t* value : {&rectangle.x, &rectangle.y, &rectangle.width, &rectangle.height})
      *value = static_cast<std::int16_t>(Word());
    return rectangle;
  }
  // What templates of scripts never hold: menus, window classes and creation data of their own.
  void Nothing() { m_bFailed = Word() != 0 || m_bFailed; }
  // Up to its zero; a text without one is a fault.
  CString Text() {
    std::u16string text;
    for (std::uint16_t unit = Word(); unit != 0; unit = Word())
      text += static_cast<char16_t>(unit);
    return CString(text);
  }
  void Align() {
    const std::size_t aligned = (m_nAt + 3) / 4 * 4;
    m_bFailed = m_bFailed || aligned > m_bytes.size();
    m_nAt = m_bFailed ? m_nAt : aligned;
  }

private:
  std::span<const std::byte> m_bytes;
  std::size_t m_nAt = 0;
  bool m_bFailed = false;
};

DialogItem ReadItem(Reader& reader) {
  DialogItem item;
  item.style = reader.DoubleWord();
  reader.DoubleWord(); // extended style
  item.rectangle = reader.Rectangle();
  item.id = reader.Word();
  const std::uint16_t first = reader.Word();
  if (first == kPredefined) {
    item.windowClass = static_cast<WindowClass>(reader.Word());
  } else if (first != 0) {
    item.className = CString(static_cast<char16_t>(first), 1) + reader.Text();
  }
  item.caption = reader.Text();
  reader.Nothing(); // no creation data
  return item;
}

} // namespace

std::vector<std::byte> MakeDialogHeader(const DialogHeader& header) {
  std::vector<std::byte> out;
  Put(out, header.hasFont ? header.style | kStyleSetFont : header.style);
  Put<std::uint32_t>(out, 0);
  Put<std::uint16_t>(out, 0);
  PutRectangle(out, header.rectangle);
  Put<std::uint16_t>(out, 0); // no menu
  Put<std::uint16_t>(out, 0); // the standard window class
  PutText(out, header.title);
  if (header.hasFont) {
    Put(out, header.pointSize);
    PutText(out, header.face);
  }
  Align(out);
  return out;
}

std::vector<std::byte> MakeDialogItem(const DialogItem& item) {
  std::vector<std::byte> out;
  Put(out, item.style);
  Put<std::uint32_t>(out, 0);
  PutRectangle(out, item.rectangle);
  Put(out, item.id);
  if (item.windowClass == WindowClass::Named) {
    PutText(out, item.className);
  } else {
    Put(out, kPredefined);
    Put(out, static_cast<std::uint16_t>(item.windowClass));
  }
  PutText(out, item.caption);
  Put<std::uint16_t>(out, 0); // no creation data
  return out;
}

void AppendItem(std::vector<std::byte>& dialogTemplate, std::span<const std::byte> item) {
  Align(dialogTemplate);
  dialogTemplate.insert(dialogTemplate.end(), item.begin(), item.end());
  const unsigned count = ItemCountOf(dialogTemplate) + 1U;
  dialogTemplate[kItemCountOffset] = static_cast<std::byte>(count & 0xFF);
  dialogTemplate[kItemCountOffset + 1] = static_cast<std::byte>((count >> 8) & 0xFF);
}

std::uint16_t ItemCountOf(std::span<const std::byte> dialogTemplate) {
  return Reader(dialogTemplate.subspan(kItemCountOffset)).Word();
}

std::optional<DialogTemplate> ReadDialogTemplate(std::span<const std::byte> bytes) {
  Reader reader(bytes);
  DialogTemplate result;
  DialogHeader& header = result.header;
  header.style = reader.DoubleWord();
  reader.DoubleWord(); // extended style
  header.itemCount = reader.Word();
  header.rectangle = reader.Rectangle();
  reader.Nothing(); // no menu
  reader.Nothing(); // the standard window class
  header.title = reader.Text();
  header.hasFont = (header.style & kStyleSetFont) != 0;
  if (header.hasFont) {
    header.pointSize = reader.Word();
    header.face = reader.Text();
  }
  for (int i = 0; i < header.itemCount && !reader.Failed(); ++i) {
    reader.Align();
    result.items.push_back(ReadItem(reader));
  }
  if (reader.Failed())
    return std::nullopt;
  return result;
}

namespace {

ControlKind ButtonKind(std::uint32_t style) {
  switch (style & 0x0F) {
  case 0x0: return ControlKind::Button;
  case 0x1: return ControlKind::DefaultButton;
  case 0x2:
  case 0x3: return ControlKind::CheckBox;
  case 0x4:
  case 0x9: return ControlKind::RadioButton;
  case 0x7: return ControlKind::GroupBox;
  default: return ControlKind::Unknown;
  }
}

ControlKind EditKind(std::uint32_t style) {
  constexpr std::uint32_t kMultiLine = 0x4;
  constexpr std::uint32_t kDigitsOnly = 0x2000;
  if ((style & kMultiLine) != 0)
    return ControlKind::EditMultiLine;
  return (style & kDigitsOnly) != 0 ? ControlKind::EditNumber : ControlKind::Edit;
}

ControlKind NamedKind(const DialogItem& item) {
  constexpr std::uint32_t kVertical = 0x2;
  if (item.className == u"SysDateTimePick32")
    return ControlKind::Date;
  if (item.className == u"SysTreeView32")
    return ControlKind::Tree;
  if (item.className == u"msctls_trackbar32")
    return (item.style & kVertical) != 0 ? ControlKind::SliderVertical : ControlKind::SliderHorizontal;
  return item.className == u"SysTabControl32" ? ControlKind::Tab : ControlKind::Unknown;
}

} // namespace

ControlKind KindOf(const DialogItem& item) noexcept {
  constexpr std::uint32_t kMultipleSelection = 0x8;
  constexpr std::uint32_t kStaticTypeMask = 0x1F;
  constexpr std::uint32_t kStaticBitmap = 0xE;
  switch (item.windowClass) {
  case WindowClass::Button: return ButtonKind(item.style);
  case WindowClass::Edit: return EditKind(item.style);
  case WindowClass::Static:
    return (item.style & kStaticTypeMask) == kStaticBitmap ? ControlKind::Bitmap : ControlKind::Static;
  case WindowClass::ListBox:
    return (item.style & kMultipleSelection) != 0 ? ControlKind::MultiListBox : ControlKind::ListBox;
  case WindowClass::ComboBox: return ControlKind::ComboBox;
  case WindowClass::Named: return NamedKind(item);
  default: return ControlKind::Unknown;
  }
}

} // namespace brindle
