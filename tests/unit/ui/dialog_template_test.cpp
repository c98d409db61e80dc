#include "ui/dialog_template.h"

#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace brindle {
namespace {

using Bytes = std::vector<std::byte>;

constexpr std::size_t kCountAt = 8;

DialogHeader Header(const char16_t* title) {
  DialogHeader header;
  header.rectangle = {1, 2, 300, 400};
  header.title = CString(title);
  return header;
}

DialogItem Button(const char16_t* caption) {
  return {.style = 0x10010000,
          .rectangle = {5, 6, 50, 14},
          .id = 10,
          .windowClass = WindowClass::Button,
          .className = CString(),
          .caption = CString(caption)};
}

DialogItem Picker(const char16_t* caption) {
  return {.style = 0x10010020,
          .rectangle = {-5, -6, 32767, -32768},
          .id = 0xFFFE,
          .windowClass = WindowClass::Named,
          .className = CString(u"SysDateTimePick32"),
          .caption = CString(caption)};
}

// One of each, with a font.
Bytes ValidTemplate() {
  DialogHeader header = Header(u"Title");
  header.hasFont = true;
  header.pointSize = 9;
  header.face = CString(u"Sans");
  Bytes bytes = MakeDialogHeader(header);
  AppendItem(bytes, MakeDialogItem(Button(u"OK")));
  AppendItem(bytes, MakeDialogItem(Picker(u"abc")));
  AppendItem(bytes, MakeDialogItem(Button(u"")));
  return bytes;
}

void SetCount(Bytes& bytes, unsigned count) {
  bytes[kCountAt] = static_cast<std::byte>(count & 0xFF);
  bytes[kCountAt + 1] = static_cast<std::byte>(count >> 8);
}

TEST(DialogTemplate, header_has_the_stated_size) {
  for (const char16_t* title : {u"", u"a", u"ab", u"abc", u"abcd", u"abcde"}) {
    const auto length = static_cast<std::size_t>(CString(title).GetLength());
    const std::size_t plain = (length + 12) * 2;
    EXPECT_EQ(MakeDialogHeader(Header(title)).size(), (plain + 3) / 4 * 4) << length;
    for (const char16_t* face : {u"", u"x", u"xy", u"xyz"}) {
      DialogHeader header = Header(title);
      header.hasFont = true;
      header.face = CString(face);
      const std::size_t withFont = plain + (static_cast<std::size_t>(header.face.GetLength()) + 2) * 2;
      EXPECT_EQ(MakeDialogHeader(header).size(), (withFont + 3) / 4 * 4) << length << " " << header.face.GetLength();
    }
  }
}

TEST(DialogTemplate, item_has_the_stated_size) {
  for (const char16_t* caption : {u"", u"a", u"ab", u"abc"}) {
    const auto length = static_cast<std::size_t>(CString(caption).GetLength());
    EXPECT_EQ(MakeDialogItem(Button(caption)).size(), (length + 13) * 2);
    EXPECT_EQ(MakeDialogItem(Picker(caption)).size(), (17 + 1 + length + 11) * 2);
  }
}

TEST(DialogTemplate, items_start_at_multiples_of_four_and_are_counted) {
  Bytes bytes = MakeDialogHeader(Header(u"T"));
  EXPECT_EQ(ItemCountOf(bytes), 0);
  const Bytes odd = MakeDialogItem(Button(u""));
  ASSERT_EQ(odd.size() % 4, 2U);
  for (unsigned count = 1; count <= 300; ++count) {
    const std::size_t start = (bytes.size() + 3) / 4 * 4;
    AppendItem(bytes, odd);
    ASSERT_EQ(bytes.size(), start + odd.size());
    ASSERT_TRUE(std::equal(odd.begin(), odd.end(), bytes.begin() + static_cast<std::ptrdiff_t>(start)));
    ASSERT_EQ(ItemCountOf(bytes), count);
  }
}

TEST(DialogTemplate, what_is_written_is_read_back) {
  const auto read = ReadDialogTemplate(ValidTemplate());
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(read->header.style, 0x80CC00C0U);
  EXPECT_EQ(read->header.title, CString(u"Title"));
  EXPECT_EQ(read->header.rectangle.x, 1);
  EXPECT_EQ(read->header.rectangle.y, 2);
  EXPECT_EQ(read->header.rectangle.width, 300);
  EXPECT_EQ(read->header.rectangle.height, 400);
  EXPECT_TRUE(read->header.hasFont);
  EXPECT_EQ(read->header.pointSize, 9);
  EXPECT_EQ(read->header.face, CString(u"Sans"));
  ASSERT_EQ(read->items.size(), 3U);
  EXPECT_EQ(read->items[0].windowClass, WindowClass::Button);
  EXPECT_EQ(read->items[0].caption, CString(u"OK"));
  EXPECT_EQ(read->items[0].id, 10);
  EXPECT_EQ(read->items[1].className, CString(u"SysDateTimePick32"));
  EXPECT_EQ(read->items[1].caption, CString(u"abc"));
  EXPECT_EQ(read->items[1].id, 0xFFFE);
  EXPECT_EQ(read->items[1].rectangle.x, -5);
  EXPECT_EQ(read->items[1].rectangle.height, -32768);
  EXPECT_EQ(read->items[2].caption, CString());
}

TEST(DialogTemplate, text_ends_at_a_zero_inside_it) {
  Bytes bytes = MakeDialogHeader(Header(u"T"));
  DialogItem item = Button(u"");
  item.caption = CString(u"ab\0cd", 5);
  AppendItem(bytes, MakeDialogItem(item));
  const auto read = ReadDialogTemplate(bytes);
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(read->items.at(0).caption, CString(u"ab"));
}

TEST(DialogTemplate, every_truncation_is_refused) {
  const Bytes whole = ValidTemplate();
  ASSERT_TRUE(ReadDialogTemplate(whole).has_value());
  for (std::size_t size = 0; size < whole.size(); ++size) {
    // A copy of its own, so that reading behind its end is reading behind an allocation.
    const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_FALSE(ReadDialogTemplate(part).has_value()) << size;
  }
}

TEST(DialogTemplate, bytes_behind_the_last_item_are_ignored) {
  Bytes bytes = ValidTemplate();
  bytes.resize(bytes.size() + 7, std::byte{0xAA});
  const auto read = ReadDialogTemplate(bytes);
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(read->items.size(), 3U);
}

TEST(DialogTemplate, count_that_lies_is_refused_when_too_large_and_obeyed_when_too_small) {
  const Bytes whole = ValidTemplate();
  for (unsigned count = 0; count <= 3; ++count) {
    Bytes bytes = whole;
    SetCount(bytes, count);
    const auto read = ReadDialogTemplate(bytes);
    ASSERT_TRUE(read.has_value()) << count;
    EXPECT_EQ(read->items.size(), count);
  }
  for (const unsigned count : {4U, 5U, 100U, 0x7FFFU, 0x8000U, 0xFFFFU}) {
    Bytes bytes = whole;
    SetCount(bytes, count);
    EXPECT_FALSE(ReadDialogTemplate(bytes).has_value()) << count;
  }
}

TEST(DialogTemplate, text_without_its_end_is_refused) {
  Bytes title(22 + 400, std::byte{0x41});
  std::fill(title.begin(), title.begin() + 22, std::byte{0});
  EXPECT_FALSE(ReadDialogTemplate(title).has_value());

  Bytes caption = MakeDialogHeader(Header(u"T"));
  Bytes item = MakeDialogItem(Button(u"abc"));
  item.resize(item.size() - 4);
  item.resize(item.size() + 400, std::byte{0x41});
  AppendItem(caption, item);
  EXPECT_FALSE(ReadDialogTemplate(caption).has_value());
}

TEST(DialogTemplate, menus_classes_and_creation_data_are_refused) {
  const Bytes whole = ValidTemplate();
  for (const std::size_t at : {18U, 20U, static_cast<unsigned>(whole.size() - 2)}) {
    Bytes bytes = whole;
    bytes[at] = std::byte{1};
    EXPECT_FALSE(ReadDialogTemplate(bytes).has_value()) << at;
  }
}

TEST(DialogTemplate, corruption_is_refused_or_read_within_bounds) {
  const Bytes whole = ValidTemplate();
  std::mt19937 random(20240229);
  int readable = 0;
  for (int round = 0; round < 60000; ++round) {
    Bytes bytes = whole;
    for (unsigned changes = 1 + random() % 8; changes > 0; --changes)
      bytes[random() % bytes.size()] = static_cast<std::byte>(random());
    if (random() % 4 == 0)
      bytes.resize(random() % (bytes.size() + 1));
    const auto read = ReadDialogTemplate(bytes);
    if (!read)
      continue;
    ++readable;
    std::size_t units = static_cast<std::size_t>(read->header.title.GetLength() + read->header.face.GetLength());
    for (const DialogItem& item : read->items) {
      static_cast<void>(KindOf(item));
      units += static_cast<std::size_t>(item.className.GetLength() + item.caption.GetLength());
    }
    ASSERT_EQ(read->items.size(), read->header.itemCount);
    ASSERT_LT(units * 2, bytes.size());
  }
  EXPECT_GT(readable, 1000);
}

TEST(DialogTemplate, noise_is_refused_or_read_within_bounds) {
  std::mt19937 random(7);
  for (int round = 0; round < 40000; ++round) {
    Bytes bytes(random() % 200);
    // Mostly zeros, so that texts end and counts stay small.
    for (std::byte& byte : bytes)
      byte = random() % 3 == 0 ? static_cast<std::byte>(random()) : std::byte{0};
    const auto read = ReadDialogTemplate(bytes);
    if (read) {
      ASSERT_EQ(read->items.size(), read->header.itemCount);
      ASSERT_LE(22 + read->items.size() * 24, bytes.size());
    }
  }
}

TEST(DialogTemplate, kind_follows_from_class_and_style) {
  struct Row {
    WindowClass windowClass;
    const char16_t* className;
    std::uint32_t style;
    ControlKind expected;
  };
  const Row rows[] = {
      {WindowClass::Button, u"", 0x10010000, ControlKind::Button},
      {WindowClass::Button, u"", 0x10010001, ControlKind::DefaultButton},
      {WindowClass::Button, u"", 0x10010003, ControlKind::CheckBox},
      {WindowClass::Button, u"", 0x10010009, ControlKind::RadioButton},
      {WindowClass::Button, u"", 0x10020007, ControlKind::GroupBox},
      {WindowClass::Button, u"", 0x1001000B, ControlKind::Unknown},
      {WindowClass::Edit, u"", 0x10810080, ControlKind::Edit},
      {WindowClass::Edit, u"", 0x10B110C4, ControlKind::EditMultiLine},
      {WindowClass::Edit, u"", 0x10812080, ControlKind::EditNumber},
      {WindowClass::Static, u"", 0x10000000, ControlKind::Static},
      {WindowClass::Static, u"", 0x1000000E, ControlKind::Bitmap},
      {WindowClass::ListBox, u"", 0x10B10041, ControlKind::ListBox},
      {WindowClass::ListBox, u"", 0x10B10049, ControlKind::MultiListBox},
      {WindowClass::ComboBox, u"", 0x10210203, ControlKind::ComboBox},
      {WindowClass::ScrollBar, u"", 0x10000000, ControlKind::Unknown},
      {WindowClass::Named, u"SysDateTimePick32", 0x10010020, ControlKind::Date},
      {WindowClass::Named, u"SysTreeView32", 0x10810037, ControlKind::Tree},
      {WindowClass::Named, u"msctls_trackbar32", 0x10010005, ControlKind::SliderHorizontal},
      {WindowClass::Named, u"msctls_trackbar32", 0x10010007, ControlKind::SliderVertical},
      {WindowClass::Named, u"SysTabControl32", 0x10010000, ControlKind::Tab},
      {WindowClass::Named, u"Unheard", 0x10010000, ControlKind::Unknown},
      {static_cast<WindowClass>(0x1234), u"", 0x10010000, ControlKind::Unknown},
  };
  for (const Row& row : rows) {
    DialogItem item;
    item.windowClass = row.windowClass;
    item.className = CString(row.className);
    item.style = row.style;
    EXPECT_EQ(KindOf(item), row.expected) << std::hex << static_cast<int>(row.windowClass) << " " << row.style;
  }
}

} // namespace
} // namespace brindle
