// Record types: the packed layout, and what fields make of the values written to them.
#include "data/record_type.h"
#include "support/script_test.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>

namespace {

CTypeStructure RecordOf(const CTypeStructure& type) {
  CTypeStructure record;
  record.MakeRecordOf(type);
  return record;
}

CTypeStructure RecordWith(TYPE_DEFINITION kind, int count = 1) {
  CTypeStructure type;
  EXPECT_TRUE(type.AddField(u"f", kind, count));
  return RecordOf(type);
}

std::string ReadText(const CTypeStructure& record, int index = 0, const char16_t* name = u"f") {
  CBasicVariable value;
  return record.ReadField(name, index, value) ? value.GetStringValue().ToUtf8() : "(no element)";
}

std::vector<unsigned> BytesOf(CTypeStructure& record) {
  std::vector<unsigned> bytes;
  for (const std::byte byte : record.Block())
    bytes.push_back(std::to_integer<unsigned>(byte));
  return bytes;
}

using Bytes = std::vector<unsigned>;

TEST(RecordType, kinds_have_fixed_widths) {
  EXPECT_EQ(TD_CHAR, 1);
  EXPECT_EQ(TD_WORD, 2);
  EXPECT_EQ(TD_INTEGER, 3);
  EXPECT_EQ(TD_FLOAT, 4);
  EXPECT_EQ(TD_DOUBLE, 5);
  EXPECT_EQ(TD_STRING, 6);
  const std::map<TYPE_DEFINITION, unsigned> widths = {{TD_NONE, 0},  {TD_CHAR, 1},   {TD_WORD, 2},  {TD_INTEGER, 4},
                                                      {TD_FLOAT, 4}, {TD_DOUBLE, 8}, {TD_STRING, 4}};
  for (const auto& [kind, width] : widths)
    EXPECT_EQ(CTypeStructure::ElementWidth(kind), width) << kind;
}

TEST(RecordType, fields_follow_each_other_without_padding) {
  CTypeStructure type;
  EXPECT_EQ(type.Size(), 0U);
  EXPECT_TRUE(type.AddField(u"i", TD_INTEGER, 1));
  EXPECT_TRUE(type.AddField(u"d", TD_DOUBLE, 1));
  EXPECT_TRUE(type.AddField(u"c", TD_CHAR, 3));
  EXPECT_EQ(type.Size(), 15U);
  ASSERT_EQ(type.Fields().size(), 3U);
  const std::uint32_t offsets[] = {0, 4, 12};
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_EQ(type.Fields()[i].m_nOffset, offsets[i]);
  EXPECT_TRUE(type.Block().empty()) << "a type holds no data";
  EXPECT_EQ(RecordOf(type).Block().size(), 15U);
}

TEST(RecordType, a_text_is_a_reference_or_inline) {
  CTypeStructure type;
  EXPECT_TRUE(type.AddField(u"reference", TD_STRING, 1));
  EXPECT_TRUE(type.AddField(u"inline", TD_STRING, 10));
  EXPECT_TRUE(type.AddField(u"two", TD_STRING, 2));
  EXPECT_TRUE(type.AddField(u"c", TD_CHAR, 1));
  EXPECT_EQ(type.Fields()[0].m_nOffset, 0U);
  EXPECT_TRUE(type.Fields()[0].m_bIndirect);
  EXPECT_EQ(type.Fields()[1].m_nOffset, 4U);
  EXPECT_FALSE(type.Fields()[1].m_bIndirect);
  EXPECT_EQ(type.Fields()[2].m_nOffset, 44U);
  EXPECT_FALSE(type.Fields()[2].m_bIndirect);
  EXPECT_EQ(type.Fields()[3].m_nOffset, 52U);
  EXPECT_FALSE(type.Fields()[3].m_bIndirect) << "only texts";
  EXPECT_EQ(type.Size(), 53U);
}

TEST(RecordType, a_field_of_no_size_is_not_appended) {
  CTypeStructure type;
  EXPECT_TRUE(type.AddField(u"f", TD_NONE, 5));
  EXPECT_TRUE(type.Fields().empty());
  EXPECT_EQ(type.Size(), 0U);
}

TEST(RecordType, a_type_that_cannot_be_made_is_refused) {
  CTypeStructure type;
  int fields = 0;
  while (fields < 100'000 && type.AddField(u"f", TD_DOUBLE, 16000))
    ++fields;
  EXPECT_LT(fields, 100'000) << "sizes stay within 32 bits";
  EXPECT_GT(fields, 100);
  EXPECT_EQ(type.Fields().size(), static_cast<std::size_t>(fields));
  EXPECT_EQ(type.Size(), static_cast<unsigned>(fields) * 128'000U);
}

TEST(RecordType, a_fresh_record_is_zeroed) {
  for (const TYPE_DEFINITION kind : {TD_CHAR, TD_WORD, TD_INTEGER})
    EXPECT_EQ(ReadText(RecordWith(kind)), "0");
  for (const TYPE_DEFINITION kind : {TD_FLOAT, TD_DOUBLE})
    EXPECT_EQ(ReadText(RecordWith(kind)), "0.000000");
  EXPECT_EQ(ReadText(RecordWith(TD_STRING)), "");
  EXPECT_EQ(ReadText(RecordWith(TD_STRING, 5)), "");
}

TEST(RecordType, values_read_have_the_kind_of_their_field) {
  const std::map<TYPE_DEFINITION, BASICVARTYPE> kinds = {{TD_CHAR, BVT_NUMBER},    {TD_WORD, BVT_NUMBER},
                                                         {TD_INTEGER, BVT_NUMBER}, {TD_FLOAT, BVT_NUMBER},
                                                         {TD_DOUBLE, BVT_NUMBER},  {TD_STRING, BVT_STRING}};
  for (const auto& [kind, expected] : kinds) {
    CBasicVariable value;
    EXPECT_TRUE(RecordWith(kind).ReadField(u"f", 0, value));
    EXPECT_EQ(value.GetType(), expected);
  }
}

TEST(RecordType, numbers_are_cut_to_their_field) {
  struct Row {
    TYPE_DEFINITION kind;
    double written;
    const char* read;
  };
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const Row rows[] = {
      {TD_CHAR, 300, "44"},
      {TD_CHAR, 200, "-56"},
      {TD_CHAR, 127, "127"},
      {TD_CHAR, 128, "-128"},
      {TD_CHAR, 255.9, "-1"},
      {TD_CHAR, -1.9, "-1"},
      {TD_CHAR, -128, "-128"},
      {TD_CHAR, -129, "127"},
      {TD_CHAR, 1e300, "-1"}, // the low byte of the largest integer
      {TD_CHAR, -1e300, "0"},
      {TD_CHAR, kNan, "0"},
      {TD_WORD, 65535, "65535"},
      {TD_WORD, 65536, "0"},
      {TD_WORD, 70000, "4464"},
      {TD_WORD, -1, "65535"},
      {TD_WORD, 2.9, "2"},
      {TD_WORD, 4294967295.0, "65535"}, // beyond a signed integer: unsigned 32 bits
      {TD_WORD, 2147483649.0, "1"},
      {TD_WORD, 4294967297.0, "1"}, // modulo 2^32
      {TD_WORD, kNan, "0"},
      {TD_INTEGER, 2.9, "2"},
      {TD_INTEGER, -2.9, "-2"},
      {TD_INTEGER, 2147483647, "2147483647"},
      {TD_INTEGER, 2147483648.0, "2147483647"},
      {TD_INTEGER, -2147483648.0, "-2147483648"},
      {TD_INTEGER, -2147483649.0, "-2147483648"},
      {TD_INTEGER, kInfinity, "2147483647"},
      {TD_INTEGER, -kInfinity, "-2147483648"},
      {TD_INTEGER, kNan, "0"},
      {TD_FLOAT, 0.5, "0.500000"},
      {TD_FLOAT, 16777217, "16777216.000000"},
      {TD_FLOAT, 1e300, "inf"},
      {TD_FLOAT, -1e300, "-inf"},
      {TD_FLOAT, kInfinity, "inf"},
      {TD_FLOAT, kNan, "nan"},
      {TD_FLOAT, 1e-300, "0.000000"},
      {TD_DOUBLE, 16777217.25, "16777217.250000"},
      {TD_DOUBLE, -kInfinity, "-inf"},
      {TD_DOUBLE, kNan, "nan"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << "kind " << row.kind << ", written " << row.written);
    CTypeStructure record = RecordWith(row.kind);
    EXPECT_TRUE(record.WriteField(u"f", 0, CBasicVariable(row.written)));
    EXPECT_EQ(ReadText(record), row.read);
  }
}

TEST(RecordType, a_float_rounds_at_its_own_largest_number) {
  constexpr double kLargest = std::numeric_limits<float>::max();
  CTypeStructure record = RecordWith(TD_FLOAT);
  EXPECT_TRUE(record.WriteField(u"f", 0, CBasicVariable(kLargest)));
  CBasicVariable value;
  EXPECT_TRUE(record.ReadField(u"f", 0, value));
  EXPECT_EQ(value.GetNumberValue(), kLargest);
  // Nearer to the largest float than to the next power of two: still that float.
  EXPECT_TRUE(record.WriteField(u"f", 0, CBasicVariable(std::nextafter(kLargest, 1e300))));
  EXPECT_TRUE(record.ReadField(u"f", 0, value));
  EXPECT_EQ(value.GetNumberValue(), kLargest);
}

TEST(RecordType, other_kinds_are_written_as_their_number) {
  CTypeStructure record = RecordWith(TD_INTEGER);
  EXPECT_TRUE(record.WriteField(u"f", 0, CBasicVariable(u"12abc")));
  EXPECT_EQ(ReadText(record), "12");
  EXPECT_TRUE(record.WriteField(u"f", 0, CBasicVariable(true)));
  EXPECT_EQ(ReadText(record), "1");
  EXPECT_TRUE(record.WriteField(u"f", 0, CBasicVariable()));
  EXPECT_EQ(ReadText(record), "0");
  CBasicVariable array(5);
  array.AddItem(6);
  array.SetCurIndex(1);
  EXPECT_TRUE(record.WriteField(u"f", 0, array));
  EXPECT_EQ(ReadText(record), "6");
}

TEST(RecordType, the_block_holds_the_bytes_that_external_code_expects) {
  CTypeStructure type;
  EXPECT_TRUE(type.AddField(u"c", TD_CHAR, 2));
  EXPECT_TRUE(type.AddField(u"w", TD_WORD, 1));
  EXPECT_TRUE(type.AddField(u"i", TD_INTEGER, 1));
  EXPECT_TRUE(type.AddField(u"f", TD_FLOAT, 1));
  EXPECT_TRUE(type.AddField(u"d", TD_DOUBLE, 1));
  CTypeStructure record = RecordOf(type);
  EXPECT_TRUE(record.WriteField(u"c", 0, CBasicVariable(0x141)));
  EXPECT_TRUE(record.WriteField(u"c", 1, CBasicVariable(-2)));
  EXPECT_TRUE(record.WriteField(u"w", 0, CBasicVariable(0x0102)));
  EXPECT_TRUE(record.WriteField(u"i", 0, CBasicVariable(0x01020304)));
  EXPECT_TRUE(record.WriteField(u"f", 0, CBasicVariable(1.0)));
  EXPECT_TRUE(record.WriteField(u"d", 0, CBasicVariable(-2.0)));
  ASSERT_EQ(std::endian::native, std::endian::little);
  EXPECT_EQ(BytesOf(record), (Bytes{0x41, 0xFE, 2, 1, 4, 3, 2, 1, 0, 0, 0x80, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0xC0}));
}

TEST(RecordType, elements_lie_side_by_side) {
  CTypeStructure record = RecordWith(TD_WORD, 3);
  for (int i = 0; i < 3; ++i)
    EXPECT_TRUE(record.WriteField(u"f", i, CBasicVariable(i + 1)));
  EXPECT_EQ(BytesOf(record), (Bytes{1, 0, 2, 0, 3, 0}));
  EXPECT_EQ(ReadText(record, 2), "3");
}

TEST(RecordType, an_unknown_field_or_element_fails_and_changes_nothing) {
  for (const TYPE_DEFINITION kind : {TD_CHAR, TD_WORD, TD_INTEGER, TD_FLOAT, TD_DOUBLE, TD_STRING}) {
    CTypeStructure record = RecordWith(kind, 3);
    const Bytes before = BytesOf(record);
    for (const int index : {-1, 3, 4, 16000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
      EXPECT_EQ(ReadText(record, index), "(no element)");
      EXPECT_FALSE(record.WriteField(u"f", index, CBasicVariable(-1)));
    }
    for (const char16_t* name : {u"g", u"F", u"", u"ff"}) {
      EXPECT_EQ(ReadText(record, 0, name), "(no element)");
      EXPECT_FALSE(record.WriteField(name, 0, CBasicVariable(-1)));
    }
    EXPECT_EQ(BytesOf(record), before);
    CBasicVariable untouched(u"untouched");
    EXPECT_FALSE(record.ReadField(u"f", 3, untouched));
    EXPECT_EQ(untouched.GetStringValue().ToUtf8(), "untouched");
  }
}

TEST(RecordType, the_first_field_of_a_name_counts) {
  CTypeStructure type;
  EXPECT_TRUE(type.AddField(u"f", TD_CHAR, 1));
  EXPECT_TRUE(type.AddField(u"f", TD_DOUBLE, 1));
  EXPECT_EQ(type.Size(), 9U);
  CTypeStructure record = RecordOf(type);
  EXPECT_TRUE(record.WriteField(u"f", 0, CBasicVariable(300)));
  EXPECT_EQ(ReadText(record), "44");
}

TEST(RecordType, a_text_takes_writes_and_ignores_them) {
  for (const int count : {1, 10}) {
    CTypeStructure record = RecordWith(TD_STRING, count);
    const Bytes before = BytesOf(record);
    EXPECT_TRUE(record.WriteField(u"f", count - 1, CBasicVariable(u"text")));
    EXPECT_TRUE(record.WriteField(u"f", 0, CBasicVariable(5)));
    EXPECT_EQ(BytesOf(record), before);
    EXPECT_EQ(ReadText(record), "");
  }
}

// External code fills the block: two bytes a character, ended by zero or by the field.
TEST(RecordType, an_inline_text_is_read_up_to_its_zero) {
  CTypeStructure type;
  EXPECT_TRUE(type.AddField(u"f", TD_STRING, 2)); // 8 bytes: four characters
  EXPECT_TRUE(type.AddField(u"next", TD_INTEGER, 1));
  CTypeStructure record = RecordOf(type);
  const char16_t text[] = u"a\u00E9cdEF";
  std::memcpy(record.Block().data(), text, record.Block().size());
  EXPECT_EQ(ReadText(record), "a\xC3\xA9"
                              "cd")
      << "it ends with the field";
  EXPECT_EQ(ReadText(record, 1), ReadText(record)) << "the element does not matter";
  record.Block()[4] = std::byte{0};
  record.Block()[5] = std::byte{0};
  EXPECT_EQ(ReadText(record), "a\xC3\xA9");
  EXPECT_EQ(ReadText(record, 0, u"next"), std::to_string(u'E' + u'F' * 0x10000));
}

TEST(RecordType, a_record_keeps_the_layout_it_was_made_with) {
  CTypeStructure type;
  EXPECT_TRUE(type.AddField(u"f", TD_INTEGER, 1));
  CTypeStructure record = RecordOf(type);
  EXPECT_TRUE(record.WriteField(u"f", 0, CBasicVariable(5)));
  EXPECT_TRUE(type.AddField(u"g", TD_INTEGER, 1));
  EXPECT_EQ(record.FindField(u"g"), nullptr);
  EXPECT_EQ(ReadText(record), "5");
  record.MakeRecordOf(type);
  EXPECT_EQ(ReadText(record), "0") << "zeroed anew";
  EXPECT_NE(record.FindField(u"g"), nullptr);
}

// ---- the statement

class TypeStatement : public ScriptTest {
protected:
  const CTypeStructure* Find(const char16_t* name) {
    const auto& types = State().m_mapTypes;
    const auto found = types.find(CString(name));
    return found == types.end() ? nullptr : &found->second;
  }
};

TEST_F(TypeStatement, builds_the_layout) {
  Run("type Packet\nid as integer\nValue as double\nmark[3] as char\nname as string\nlabel[10] as string\nratio as "
      "float\n"
      "endtype\n");
  const CTypeStructure* type = Find(u"Packet");
  ASSERT_NE(type, nullptr);
  EXPECT_EQ(type->Size(), 4U + 8 + 3 + 4 + 40 + 4);
  struct Row {
    const char* name;
    std::uint32_t offset;
    TYPE_DEFINITION kind;
    int count;
    bool indirect;
  };
  const Row rows[] = {{"id", 0, TD_INTEGER, 1, false},     {"Value", 4, TD_DOUBLE, 1, false},
                      {"mark", 12, TD_CHAR, 3, false},     {"name", 15, TD_STRING, 1, true},
                      {"label", 19, TD_STRING, 10, false}, {"ratio", 59, TD_FLOAT, 1, false}};
  ASSERT_EQ(type->Fields().size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    SCOPED_TRACE(rows[i].name);
    const CTypeField& field = type->Fields()[i];
    EXPECT_EQ(field.m_strName.ToUtf8(), rows[i].name);
    EXPECT_EQ(field.m_nOffset, rows[i].offset);
    EXPECT_EQ(field.m_nType, rows[i].kind);
    EXPECT_EQ(field.m_nCount, rows[i].count);
    EXPECT_EQ(field.m_bIndirect, rows[i].indirect);
  }
}

TEST_F(TypeStatement, without_endtype_it_is_declared_at_the_end_of_the_program) {
  for (const char* program :
       {"type Open\nx as integer\n", "type Open\nx as integer", "type Open\nx as integer\n\n# end\n\n"}) {
    SCOPED_TRACE(program);
    State().m_mapTypes.clear();
    EXPECT_TRUE(Run(program));
    EXPECT_TRUE(m_ui.errors.empty());
    ASSERT_NE(Find(u"Open"), nullptr);
    EXPECT_EQ(Find(u"Open")->Size(), 4U);
  }
  Run("dim r as Open\nr.x = 3\nprint r.x\n");
  EXPECT_EQ(m_ui.Output(), "3\n");
}

TEST_F(TypeStatement, a_failed_type_is_not_declared) {
  struct Row {
    const char* line;
    int error;
  };
  const Row rows[] = {
      {"u as unicode", 1},     {"u as title", 1},        {"u as byte", 1},          {"u as \"integer\"", 1},
      {"u integer", 1},        {"u byval integer", 1},   {"u (3) as integer", 1},   {"u, v as integer", 1},
      {"u[3 as integer", 1},   {"u[] as integer", 1},    {"u[nope] as integer", 1}, {"u[3] integer", 1},
      {"u[0] as integer", 32}, {"u[-1] as integer", 32}, {"u[16001] as char", 32},  {"u[1e300] as char", 32},
      {"u[0.9] as char", 32},  {"\"\" as integer", 33},  {"u \"as\" integer", 1},   {"u = integer", 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    m_ui.Forget();
    Run("type Bad\na as integer\n" + std::string(row.line) + "\nb as integer\nendtype\nprint \"behind\"\n");
    ASSERT_FALSE(m_ui.errors.empty());
    // An empty index has a missing operand besides.
    EXPECT_EQ(m_ui.ErrorNumbers().back(), row.error);
    for (const std::string& box : m_ui.errors)
      EXPECT_TRUE(box.ends_with("\n\n" + std::string(row.line))) << box;
    EXPECT_EQ(m_ui.Output(), "behind\n");
    EXPECT_EQ(Find(u"Bad"), nullptr);
  }
}

TEST_F(TypeStatement, replaced_types_and_records_are_not_kept) {
  for (int i = 0; i < 3; ++i)
    Run("type T\nx as integer\nendtype\ndim r as T\ndim r as T\n");
  EXPECT_EQ(State().m_mapTypes.size(), 1U);
  EXPECT_EQ(State().m_mapStructVariables.size(), 1U);
}

TEST_F(TypeStatement, a_record_is_stored_under_its_name_as_written) {
  Run("type T\nx as integer\nendtype\ndim Rec as T\nglobal Other as T\ncall p()\nend\nsub p()\ndim Deep as "
      "T\nendsub\n");
  for (const char16_t* name : {u"Rec", u"Other", u"Deep"})
    EXPECT_TRUE(State().m_mapStructVariables.contains(CString(name)));
  EXPECT_EQ(State().m_mapStructVariables.size(), 3U);
}

TEST_F(TypeStatement, records_stay_for_later_runs) {
  Run("type T\nx as integer\nendtype\ndim r as T\nr.x = 5\n");
  Run("print r.x\nr.x = 6\n");
  Run("dim q as T\nprint r.x; q.x\n");
  EXPECT_EQ(m_ui.Output(), "5\n60\n");
}

TEST_F(TypeStatement, a_field_token_changes_its_kind_when_its_record_appears) {
  Run("type T\nx as integer\nendtype\nfor i = 1 to 3\nif i = 2 then\ndim r as T\nendif\nr.x = i\nprint r.x\nnext\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{37, 37}));
  ASSERT_EQ(m_ui.messages.size(), 3U);
  EXPECT_EQ(m_ui.messages[1] + m_ui.messages[2], "2\n3\n");
}

} // namespace
