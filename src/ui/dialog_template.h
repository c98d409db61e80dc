// In-memory dialog templates: made from a script's lines, and read back by the window systems.
// Room: ui. Used by: the dialog statements (writing), every window system (reading).
// May touch: nothing.
// Must not: trust a template that it reads: sizes and counts may lie.
// Invariant: what is written is read back the same; every item starts at a multiple of four.
#pragma once

#include "brindle/text.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace brindle {

struct DialogRectangle {
  std::int16_t x = 0;
  std::int16_t y = 0;
  std::int16_t width = 0;
  std::int16_t height = 0;
};

// Style bits that the window systems look at.
inline constexpr std::uint32_t kStyleVisible = 0x10000000;
inline constexpr std::uint32_t kStyleGroup = 0x00020000;
inline constexpr std::uint32_t kStyleTabStop = 0x00010000;
inline constexpr std::uint32_t kStyleDialog = 0x80CC0080;
inline constexpr std::uint32_t kStyleSetFont = 0x40;

// The predefined window classes.
enum class WindowClass : std::uint16_t {
  Named = 0,
  Button = 0x80,
  Edit = 0x81,
  Static = 0x82,
  ListBox = 0x83,
  ScrollBar = 0x84,
  ComboBox = 0x85
};

struct DialogHeader {
  std::uint32_t style = kStyleDialog;
  std::uint16_t itemCount = 0;
  DialogRectangle rectangle;
  CString title;
  bool hasFont = false;
  std::uint16_t pointSize = 0;
  CString face;
};

struct DialogItem {
  std::uint32_t style = 0;
  DialogRectangle rectangle;
  std::uint16_t id = 0;
  WindowClass windowClass = WindowClass::Named;
  CString className; // of a named class
  CString caption;
};

struct DialogTemplate {
  DialogHeader header;
  std::vector<DialogItem> items;
};

// The header with an item count of 0, filled up to a multiple of four.
[[nodiscard]] std::vector<std::byte> MakeDialogHeader(const DialogHeader& header);
// One item, not filled up.
[[nodiscard]] std::vector<std::byte> MakeDialogItem(const DialogItem& item);
// Appends an item at the next multiple of four and counts it.
void AppendItem(std::vector<std::byte>& dialogTemplate, std::span<const std::byte> item);
// How many items a template made here holds so far.
[[nodiscard]] std::uint16_t ItemCountOf(std::span<const std::byte> dialogTemplate);

// Nothing for bytes that are no whole template.
[[nodiscard]] std::optional<DialogTemplate> ReadDialogTemplate(std::span<const std::byte> bytes);

// What a control is, by its class and style.
enum class ControlKind {
  Button,
  DefaultButton,
  CheckBox,
  RadioButton,
  GroupBox,
  Edit,
  EditMultiLine,
  EditNumber,
  Static,
  Bitmap,
  ListBox,
  MultiListBox,
  ComboBox,
  Date,
  Tree,
  SliderHorizontal,
  SliderVertical,
  Tab,
  Unknown
};

[[nodiscard]] ControlKind KindOf(const DialogItem& item) noexcept;

} // namespace brindle
