// The templates that scripts make, byte for byte. What is expected is spelt field by field and never made by the
// code under test.
#include "ui/dialog_script_test.h"

#include <cstdint>
#include <string_view>

namespace {

// A template as a human writes it down: little-endian fields one behind the other.
class Layout {
public:
  Layout& U16(unsigned value) {
    m_hex += Hex(value & 0xFF) + Hex(value >> 8 & 0xFF);
    return *this;
  }
  Layout& U32(std::uint32_t value) { return U16(value & 0xFFFF).U16(value >> 16); }
  Layout& Text(std::u16string_view text) {
    for (const char16_t unit : text)
      U16(unit);
    return U16(0);
  }
  Layout& Pad() {
    while (m_hex.size() % 12 != 0) // three characters a byte
      m_hex += Hex(0);
    return *this;
  }
  [[nodiscard]] const std::string& Dump() const { return m_hex; }

  static std::string Hex(unsigned byte) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    return {kDigits[byte >> 4 & 15], kDigits[byte & 15], ' '};
  }

private:
  std::string m_hex;
};

std::string Dump(const std::vector<std::byte>& bytes) {
  std::string hex;
  for (const std::byte byte : bytes)
    hex += Layout::Hex(std::to_integer<unsigned>(byte));
  return hex;
}

class DialogBytes : public DialogScriptTest {
protected:
  // The dump of the only template that the program shows.
  std::string Shown(const std::string& program) {
    m_dialogs.descriptions.clear();
    Run(program);
    if (m_dialogs.descriptions.size() != 1 || m_dialogs.descriptions[0].templates.size() != 1)
      return "not one dialog";
    return Dump(m_dialogs.descriptions[0].templates[0]);
  }
};

TEST_F(DialogBytes, whole_dialog_as_a_dump) {
  EXPECT_EQ(Shown("dialog \"Hi\", 1, 2, 200, 100\n"
                  "control button \"Go\", 10, 5, 6, 50, 14\n"
                  "control okbutton \"OK!\", 99, -1, 0, 258, 4\n"
                  "enddialog\n"),
            "80 00 CC 80 00 00 00 00 02 00 01 00 02 00 C8 00 64 00 00 00 00 00 " // style .. class
            "48 00 69 00 00 00 "                                                 // Hi
            "00 00 01 10 00 00 00 00 05 00 06 00 32 00 0E 00 0A 00 FF FF 80 00 " // style .. class
            "47 00 6F 00 00 00 00 00 "                                           // Go, no data
            "00 00 "                                                             // filled up
            "01 00 01 10 00 00 00 00 FF FF 00 00 02 01 04 00 01 00 FF FF 80 00 "
            "4F 00 4B 00 21 00 00 00 00 00 ");
}

TEST_F(DialogBytes, font_counts_from_seven_parameters_on) {
  struct Row {
    const char* parameters;
    bool hasFont;
  };
  const Row rows[] = {{"", false}, {", 9", false}, {", 9, \"Sans\"", true}, {", 9, \"Sans\", 1, 2", true}};
  for (const Row& row : rows) {
    Layout expected;
    expected.U32(row.hasFont ? 0x80CC00C0 : 0x80CC0080).U32(0).U16(0);
    expected.U16(0).U16(0).U16(120).U16(60).U16(0).U16(0).Text(u"Abc");
    if (row.hasFont)
      expected.U16(9).Text(u"Sans");
    EXPECT_EQ(Shown(std::string("dialog \"Abc\", 0, 0, 120, 60") + row.parameters + "\nenddialog\n"),
              expected.Pad().Dump())
        << row.parameters;
  }
}

TEST_F(DialogBytes, headers_are_filled_up_to_a_multiple_of_four) {
  for (const char16_t* title : {u"", u"a", u"ab", u"abc", u"abcd"}) {
    for (const char16_t* face : {u"", u"x", u"xy", u"xyz"}) {
      Layout expected;
      expected.U32(0x80CC00C0).U32(0).U16(0).U16(1).U16(2).U16(3).U16(4).U16(0).U16(0).Text(title).U16(8).Text(face);
      EXPECT_EQ(Shown("dialog \"" + CString(title).ToUtf8() + "\", 1, 2, 3, 4, 8, \"" + CString(face).ToUtf8() +
                      "\"\nenddialog\n"),
                expected.Pad().Dump());
    }
  }
}

struct KindRow {
  const char* word;
  std::uint32_t style;
  unsigned classCode; // 0: by name
  const char16_t* className;
  unsigned id;
};

constexpr KindRow kKinds[] = {
    {"button", 0x10010000, 0x80, u"", 40},
    {"edittext", 0x10810080, 0x81, u"", 40},
    {"checkbox", 0x10010003, 0x80, u"", 40},
    {"listbox", 0x10B10041, 0x83, u"", 40},
    {"okbutton", 0x10010001, 0x80, u"", 1},
    {"statictext", 0x10000000, 0x82, u"", 40},
    {"bitmap", 0x1000000E, 0x82, u"", 40},
    {"groupbox", 0x10020007, 0x80, u"", 40},
    {"multilistbox", 0x10B10049, 0x83, u"", 40},
    {"datetime", 0x10010020, 0, u"SysDateTimePick32", 40},
    {"editmultiline", 0x10B110C4, 0x81, u"", 40},
    {"cancelbutton", 0x10010000, 0x80, u"", 2},
    {"combobox", 0x10210203, 0x85, u"", 40},
    {"editnumber", 0x10812080, 0x81, u"", 40},
    {"radiogroup", 0x10010009, 0x80, u"", 40},
    {"treeview", 0x10810037, 0, u"SysTreeView32", 40},
    {"sliderhorz", 0x10010005, 0, u"msctls_trackbar32", 40},
    {"slidervert", 0x10010007, 0, u"msctls_trackbar32", 40},
    {"tabcontrol", 0x10010000, 0, u"SysTabControl32", 40},
};

TEST_F(DialogBytes, each_control_kind_with_captions_of_odd_and_even_length) {
  for (const KindRow& kind : kKinds) {
    for (const char16_t* caption : {u"", u"x", u"xy", u"x\u00E4\u20AC"}) {
      for (const bool font : {false, true}) {
        Layout expected;
        expected.U32(font ? 0x80CC00C0 : 0x80CC0080).U32(0).U16(2);
        expected.U16(0).U16(0).U16(120).U16(60).U16(0).U16(0).Text(u"T");
        if (font)
          expected.U16(10).Text(u"Ab");
        // Twice the same, so that the second one shows how the first is filled up.
        for (int i = 0; i < 2; ++i) {
          expected.Pad().U32(kind.style).U32(0).U16(5).U16(6).U16(70).U16(80).U16(kind.id);
          if (kind.classCode != 0)
            expected.U16(0xFFFF).U16(kind.classCode);
          else
            expected.Text(kind.className);
          expected.Text(caption).U16(0);
        }
        const std::string line =
            std::string("control ") + kind.word + " \"" + CString(caption).ToUtf8() + "\", 40, 5, 6, 70, 80\n";
        EXPECT_EQ(Shown(std::string("dialog \"T\", 0, 0, 120, 60") + (font ? ", 10, \"Ab\"" : "") + "\n" + line + line +
                        "enddialog\n"),
                  expected.Dump())
            << kind.word << " " << CString(caption).ToUtf8() << " " << font;
      }
    }
  }
}

TEST_F(DialogBytes, numbers_are_truncated_and_kept_in_16_bits) {
  Layout expected;
  expected.U32(0x80CC0080).U32(0).U16(1).U16(0xFFFF).U16(2).U16(0x86A0).U16(7).U16(0).U16(0).Text(u"5.500000").Pad();
  expected.U32(0x10010000).U32(0).U16(1).U16(0xFFFE).U16(0).U16(0x8000).U16(0x000A).U16(0xFFFF).U16(0x80);
  expected.Text(u"7").U16(0);
  EXPECT_EQ(Shown("dialog 5.5, 0 - 1.9, 2.9, 100000, \"7 units\"\n"
                  "control button int(7), 65546, 1.5, 0 - 2.5, 0.99, 32768\n"
                  "enddialog\n"),
            expected.Dump());
}

TEST_F(DialogBytes, pages_take_their_size_from_the_sheet) {
  Run("propertysheet \"Sheet\", 3, 4, 210, 130\n"
      "page \"One\"\ncontrol button \"A\", 40, 5, 6, 70, 80\nendpage\n"
      "page \"Two\"\nendpage\n"
      "enddialog\n");
  ASSERT_EQ(m_dialogs.descriptions.size(), 1U);
  const CDialogDescription& sheet = m_dialogs.descriptions[0];
  EXPECT_TRUE(sheet.sheet);
  EXPECT_EQ(sheet.title, CString(u"Sheet"));
  EXPECT_EQ(sheet.x, 3);
  EXPECT_EQ(sheet.y, 4);
  EXPECT_EQ(sheet.width, 210);
  EXPECT_EQ(sheet.height, 130);
  ASSERT_EQ(sheet.templates.size(), 2U);
  Layout first;
  first.U32(0x80CC0080).U32(0).U16(1).U16(0).U16(0).U16(210).U16(130).U16(0).U16(0).Text(u"One").Pad();
  first.U32(0x10010000).U32(0).U16(5).U16(6).U16(70).U16(80).U16(40).U16(0xFFFF).U16(0x80).Text(u"A").U16(0);
  EXPECT_EQ(Dump(sheet.templates[0]), first.Dump());
  Layout second;
  second.U32(0x80CC0080).U32(0).U16(0).U16(0).U16(0).U16(210).U16(130).U16(0).U16(0).Text(u"Two").Pad();
  EXPECT_EQ(Dump(sheet.templates[1]), second.Dump());
}

TEST_F(DialogBytes, many_controls_are_counted) {
  std::string program = "dialog \"Many\", 0, 0, 100, 100\n";
  for (int i = 0; i < 5000; ++i)
    program += "control button \"b\", " + std::to_string(i + 3) + ", 0, 0, 1, 1\n";
  Run(program + "enddialog\n");
  ASSERT_EQ(m_dialogs.descriptions.size(), 1U);
  const auto read = brindle::ReadDialogTemplate(m_dialogs.descriptions[0].templates.at(0));
  ASSERT_TRUE(read.has_value());
  ASSERT_EQ(read->items.size(), 5000U);
  EXPECT_EQ(read->items.back().id, 5002);
}

TEST_F(DialogBytes, more_controls_than_can_be_counted_report_42) {
  std::string program = "dialog \"Many\", 0, 0, 100, 100\n";
  for (int i = 0; i < 0xFFFF; ++i)
    program += "control button \"\",3,0,0,1,1\n";
  Run(program + "enddialog\n");
  EXPECT_EQ(Errors(), Numbers());
  ASSERT_EQ(m_dialogs.descriptions.size(), 1U);
  Run(program + "control button \"\",3,0,0,1,1\nenddialog\nprint \"on\"\n", "one_more.bas");
  EXPECT_EQ(Errors(), Numbers{42});
  EXPECT_EQ(Output(), "on\n");
  EXPECT_EQ(m_dialogs.descriptions.size(), 1U);
}

} // namespace
