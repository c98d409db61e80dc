// Declared functions: the words that a call prepares, what comes back through a routine, and the look-up of
// libraries. A recording routine stands in for the invocation, so that the words can be looked at.
#include "calls/external_call.h"

#include "interpreter/func_desc.h"
#include "platform/shared_library.h"
#include "support/script_test.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

using namespace brindle;

namespace {

struct Recording {
  int calls = 0;
  void* routine = nullptr;
  std::vector<std::uint32_t> words;
  std::vector<void*> addresses;
  // What the routine does; may be empty.
  std::function<void(std::uint64_t&, const ExternalCall&)> act;
};
Recording recording;

void Record(std::uint64_t& result, const ExternalCall& call) {
  ++recording.calls;
  recording.routine = call.routine;
  recording.words.assign(call.words.begin(), call.words.end());
  recording.addresses = call.addresses;
  if (recording.act)
    recording.act(result, call);
}

template <class T> T Load(const void* address) {
  T value;
  std::memcpy(&value, address, sizeof value);
  return value;
}

std::uint32_t FloatBits(float value) {
  return std::bit_cast<std::uint32_t>(value);
}

class ExternalFunctions : public ScriptTest {
protected:
  ExternalFunctions() {
    recording = Recording();
    SetInvocationRoutine(&Record);
    m_function.m_nCode = FUNCTION_EXTERNAL;
    m_function.m_nKind = CFuncDesc::kExternalFunction;
    m_function.m_strLibrary = CString::FromUtf8(LibraryWithoutEnding()) + u".dll";
    m_function.m_strEntryName = u"AddNumbers";
  }
  ~ExternalFunctions() override {
    SetInvocationRoutine(nullptr);
    recording = Recording();
  }

  static std::string LibraryWithoutEnding() {
    const std::string path = TEST_ROUTINES;
    return path.substr(0, path.size() - 3); // ".so"
  }
  // A declaration of the test library's routine, with an empty line end.
  static std::string Declare(const std::string& rest, const std::string& kind = "function") {
    return "declare " + kind + " AddNumbers lib \"" + LibraryWithoutEnding() + "\" " + rest + "\n";
  }
  bool Call(const std::vector<std::uint32_t>& types, CBasicVariableArray& arguments) {
    m_function.m_parameterTypes.RemoveAll();
    for (const std::uint32_t type : types)
      m_function.m_parameterTypes.Add(type);
    return Access::ExecExternalFunction(*m_pInterpreter, m_function, m_result, arguments);
  }

  CFuncDesc m_function;
  CBasicVariable m_result{u"untouched"};
};

TEST_F(ExternalFunctions, type_names_have_fixed_codes) {
  const struct {
    const char16_t* name;
    unsigned long code;
    bool known;
  } rows[] = {
      {u"char", 0x0001, true},
      {u"integer", 0x0004, true},
      {u"float", 0x0008, true},
      {u"double", 0x0008, true},
      {u"unicode", 0x1020, true},
      {u"string", 0x1040, true},
      {u"INTEGER", 0x0004, true},
      {u"String", 0x1040, true},
      {u"word", 0, false},
      {u"long", 0, false},
      {u"", 0, false},
      {u"integers", 0, false},
  };
  for (const auto& row : rows) {
    CString name(row.name);
    SCOPED_TRACE(name.ToUtf8());
    bool known = !row.known;
    EXPECT_EQ(Access::GetReturnTypeDef(name, known), row.code);
    EXPECT_EQ(known, row.known);
    CString lowered(row.name);
    EXPECT_EQ(name, lowered.MakeLower()) << "lower-cased in place";
  }
}

TEST_F(ExternalFunctions, numbers_by_value_become_words) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    const char* name;
    std::uint32_t type;
    double number;
    std::vector<std::uint32_t> words;
  } rows[] = {
      {"char", kTypeChar, 65, {65}},
      {"char, fraction", kTypeChar, 65.9, {65}},
      {"char, sign", kTypeChar, -1, {0xFFFFFFFF}},
      {"char, low 8 bits", kTypeChar, 0x1FF, {0xFFFFFFFF}},
      {"char, low 8 bits, positive", kTypeChar, 0x17F, {0x7F}},
      {"word", kTypeWord, 65535, {65535}},
      {"word, low 16 bits", kTypeWord, 65536 + 7, {7}},
      {"word, negative", kTypeWord, -1, {65535}},
      {"integer", kTypeInteger, 123456, {123456}},
      {"integer, truncated", kTypeInteger, -2.9, {static_cast<std::uint32_t>(-2)}},
      {"integer, saturated", kTypeInteger, 1e20, {0x7FFFFFFF}},
      {"integer, saturated below", kTypeInteger, -1e20, {0x80000000}},
      {"integer, not a number", kTypeInteger, kNan, {0}},
      {"float", kTypeFloat, 2.5, {FloatBits(2.5F)}},
      {"float, rounded", kTypeFloat, 0.1, {FloatBits(0.1F)}},
      {"float, too large", kTypeFloat, 1e300, {FloatBits(std::numeric_limits<float>::infinity())}},
      {"double", kTypeDouble, 1.0, {0, 0x3FF00000}},
      {"double, low word first", kTypeDouble, 0.1, {0x9999999A, 0x3FB99999}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    CBasicVariableArray arguments;
    arguments.Add(CBasicVariable(row.number));
    EXPECT_TRUE(Call({row.type}, arguments));
    EXPECT_EQ(recording.words, row.words);
    EXPECT_TRUE(recording.addresses.empty());
    EXPECT_EQ(std::isnan(arguments[0].GetNumberValue()), std::isnan(row.number));
    if (!std::isnan(row.number)) {
      EXPECT_EQ(arguments[0].GetNumberValue(), row.number) << "by value: the argument stays";
    }
  }
}

TEST_F(ExternalFunctions, other_kinds_of_values_are_converted_as_numbers) {
  CBasicVariableArray arguments;
  arguments.Add(CBasicVariable(u"12abc"));
  arguments.Add(CBasicVariable(true));
  arguments.Add(CBasicVariable());
  EXPECT_TRUE(Call({kTypeInteger, kTypeInteger, kTypeInteger}, arguments));
  EXPECT_EQ(recording.words, (std::vector<std::uint32_t>{12, 1, 0}));
}

TEST_F(ExternalFunctions, numbers_by_reference_are_storage_of_their_width_and_are_read_back) {
  const struct {
    const char* name;
    std::uint32_t type;
    double number;
    std::uint64_t before; // of 4 bytes, or of 8 for a double
    std::uint64_t left;   // by the routine
    const char* after;
  } rows[] = {
      {"char", kTypeChar, -2, 0xFFFFFFFE, 0x80, "-128"},
      {"char, declared width", kTypeChar, 1, 1, 0x12345601, "1"},
      {"word", kTypeWord, -1, 0xFFFF, 0xFFFE, "65534"},
      {"word, declared width", kTypeWord, 1, 1, 0x12340002, "2"},
      {"integer", kTypeInteger, 7.9, 7, 0xFFFFFFFF, "-1"},
      {"float", kTypeFloat, 2.5, FloatBits(2.5F), FloatBits(-0.5F), "-0.500000"},
      {"double", kTypeDouble, 2.5, std::bit_cast<std::uint64_t>(2.5), std::bit_cast<std::uint64_t>(1e10),
       "10000000000.000000"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::size_t width = row.type == kTypeDouble ? 8 : 4;
    std::uint64_t found = 0;
    recording.act = [&](std::uint64_t&, const ExternalCall& call) {
      std::memcpy(&found, call.addresses.at(call.words[0]), width);
      std::memcpy(call.addresses.at(call.words[0]), &row.left, width);
    };
    CBasicVariableArray arguments;
    arguments.Add(CBasicVariable(row.number));
    EXPECT_TRUE(Call({row.type | kByReference}, arguments));
    EXPECT_EQ(recording.words, std::vector<std::uint32_t>{0}) << "one word, the index of the address";
    EXPECT_EQ(found, row.before);
    EXPECT_EQ(arguments[0].GetStringValue().ToUtf8(), row.after);
  }
}

TEST_F(ExternalFunctions, what_a_routine_leaves_alone_is_read_back_as_it_was_prepared) {
  CBasicVariableArray arguments;
  arguments.Add(CBasicVariable(0.1));
  arguments.Add(CBasicVariable(300.7));
  EXPECT_TRUE(Call({kTypeFloat | kByReference, kTypeChar | kByReference}, arguments));
  EXPECT_EQ(arguments[0].GetNumberValue(), static_cast<double>(0.1F));
  EXPECT_EQ(arguments[1].GetStringValue().ToUtf8(), "44");
}

TEST_F(ExternalFunctions, texts_are_buffers_of_at_least_256_units) {
  for (const std::uint32_t type :
       {kTypeUnicode, kTypeString, kTypeUnicode | kByReference, kTypeString | kByReference}) {
    SCOPED_TRACE(type);
    std::u16string found;
    recording.act = [&](std::uint64_t&, const ExternalCall& call) {
      auto* text = static_cast<char16_t*>(call.addresses.at(call.words[1]));
      found = text;
      for (int i = 0; i < kTextBufferLength - 1; ++i)
        text[i] = u'x';
      text[kTextBufferLength - 1] = 0;
    };
    CBasicVariableArray arguments;
    arguments.Add(CBasicVariable(5));
    arguments.Add(CBasicVariable(u"Grüße"));
    EXPECT_TRUE(Call({kTypeInteger, type}, arguments));
    EXPECT_EQ(recording.words, (std::vector<std::uint32_t>{5, 0})) << "the first address of the call";
    EXPECT_EQ(found, u"Grüße");
    EXPECT_EQ(arguments[1].GetStringValue(), CString(u'x', kTextBufferLength - 1));
    EXPECT_EQ(arguments[1].GetType(), BVT_STRING);
  }
}

TEST_F(ExternalFunctions, a_number_given_for_a_text_is_its_text) {
  CBasicVariableArray arguments;
  arguments.Add(CBasicVariable(2.5));
  EXPECT_TRUE(Call({kTypeString | kByReference}, arguments));
  EXPECT_EQ(arguments[0].GetStringValue().ToUtf8(), "2.500000");
  EXPECT_EQ(arguments[0].GetType(), BVT_STRING);
}

TEST_F(ExternalFunctions, results_are_read_by_their_type) {
  const struct {
    const char* name;
    std::uint32_t type;
    std::uint64_t word;
    const char* result;
  } rows[] = {
      {"none", 0, 77, "untouched"},
      {"char", kTypeChar, 0x1FF, "-1"},
      {"word", kTypeWord, 0x1FFFF, "65535"},
      {"integer", kTypeInteger, 0xFFFFFFFF, "-1"},
      {"float", kTypeFloat, FloatBits(0.25F), "0.250000"},
      {"double", kTypeDouble, std::bit_cast<std::uint64_t>(-0.5), "-0.500000"},
      {"declared string", kTypeString | kByReference, 0, "untouched"},
      {"declared unicode", kTypeUnicode | kByReference, 0, "untouched"},
      {"number by reference", kTypeInteger | kByReference, 5, "untouched"},
      {"two sizes at once", kTypeInteger | kTypeChar, 5, "untouched"},
      {"text without an address", kTypeString, 3, "untouched"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    recording.act = [&](std::uint64_t& result, const ExternalCall&) { result = row.word; };
    m_function.m_nReturnType = row.type;
    m_result = u"untouched";
    CBasicVariableArray arguments;
    EXPECT_TRUE(Call({}, arguments));
    EXPECT_EQ(m_result.GetStringValue().ToUtf8(), row.result);
  }
}

TEST_F(ExternalFunctions, a_text_result_is_copied_from_its_address) {
  char16_t text[] = u"from the library";
  recording.act = [&](std::uint64_t& result, const ExternalCall& call) {
    result = call.addresses.size();
    call.addresses.push_back(text);
  };
  for (const std::uint32_t type : {kTypeUnicode, kTypeString}) {
    m_function.m_nReturnType = type;
    CBasicVariableArray arguments;
    arguments.Add(CBasicVariable(u"another address"));
    EXPECT_TRUE(Call({kTypeString | kByReference}, arguments));
    EXPECT_EQ(m_result.GetStringValue().ToUtf8(), "from the library");
  }
}

TEST_F(ExternalFunctions, the_invocation_stores_0_and_enters_no_routine) {
  SetInvocationRoutine(nullptr);
  std::string failure;
  const auto* entered = static_cast<const int*>(SharedLibrary::Open(TEST_ROUTINES, failure).FindSymbol("entered"));
  ASSERT_NE(entered, nullptr) << failure;
  EXPECT_TRUE(
      Run(Declare("(byval a as integer, b as integer) as integer") + "x = int(3)\nprint AddNumbers(2, x); x\nend\n"));
  EXPECT_EQ(*entered, 0);
  EXPECT_EQ(m_ui.Output(), "03\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ExternalFunctions, the_routine_is_the_one_that_the_library_exports) {
  CBasicVariableArray arguments;
  EXPECT_TRUE(Call({}, arguments));
  void* const first = recording.routine;
  ASSERT_NE(first, nullptr);
  m_function = CFuncDesc(m_function);
  m_function.m_pRoutine = nullptr;
  m_function.m_strEntryName = u"FillText";
  EXPECT_TRUE(Call({}, arguments));
  EXPECT_NE(recording.routine, first);
  EXPECT_NE(recording.routine, nullptr);
}

TEST_F(ExternalFunctions, variables_by_reference_are_written_back) {
  recording.act = [](std::uint64_t& result, const ExternalCall& call) {
    result = 9;
    const int number = 42;
    std::memcpy(call.addresses.at(call.words[0]), &number, sizeof number);
    auto* text = static_cast<char16_t*>(call.addresses.at(call.words[2]));
    std::memcpy(text, u"new", sizeof u"new");
  };
  Run(Declare("(a as integer, byval b as integer, c as string) as integer") +
      "a = 1\nb = 2\nc = \"old\"\nprint AddNumbers(a, b, c); a; \" \"; int(b); \" \"; c\n");
  EXPECT_EQ(m_ui.Output(), "942 2 new\n");
  m_ui.Forget();
  Run("call AddNumbers(a, b, c)\nprint a; c\n");
  EXPECT_EQ(m_ui.Output(), "42new\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ExternalFunctions, arguments_that_are_no_plain_variables_are_not_written_back) {
  recording.act = [](std::uint64_t&, const ExternalCall& call) {
    const int number = 42;
    std::memcpy(call.addresses.at(call.words[0]), &number, sizeof number);
  };
  Run(Declare("(a as integer)") + "a = int(1)\ncall AddNumbers(a + 0)\ncall AddNumbers((a))\ncall AddNumbers(5)\n"
                                  "call AddNumbers(int(a))\nprint a\n");
  EXPECT_EQ(m_ui.Output(), "1\n");
  EXPECT_EQ(recording.calls, 4);
}

TEST_F(ExternalFunctions, nested_calls_write_back_to_their_own_variables) {
  recording.act = [](std::uint64_t& result, const ExternalCall& call) {
    const int number = Load<int>(call.addresses.at(call.words[0])) + 1;
    std::memcpy(call.addresses.at(call.words[0]), &number, sizeof number);
    result = static_cast<std::uint64_t>(number);
  };
  Run(Declare("(a as integer, byval b as integer) as integer") +
      "a = int(10)\nb = int(20)\nprint AddNumbers(a, AddNumbers(b, 0)); \" \"; a; \" \"; b\n");
  EXPECT_EQ(m_ui.Output(), "11 11 21\n");
}

TEST_F(ExternalFunctions, a_write_back_in_a_procedure_reaches_its_own_variable) {
  recording.act = [](std::uint64_t&, const ExternalCall& call) {
    const int number = 7;
    std::memcpy(call.addresses.at(call.words[0]), &number, sizeof number);
  };
  Run(Declare("(a as integer)") + "a = int(1)\ncall work()\nprint a\nend\nsub work()\na = int(2)\ncall AddNumbers(a)\n"
                                  "print a\nendsub\n");
  EXPECT_EQ(m_ui.Output(), "7\n1\n");
}

TEST_F(ExternalFunctions, a_watched_variable_tells_of_its_write_back) {
  recording.act = [](std::uint64_t&, const ExternalCall& call) {
    const int number = 7;
    std::memcpy(call.addresses.at(call.words[0]), &number, sizeof number);
  };
  Run(Declare("(a as integer)") + "a = int(1)\nevent create changed tell\nwatch create a changed\ncall AddNumbers(a)\n"
                                  "end\nsub tell(v)\nprint v\nendsub\n");
  EXPECT_EQ(m_ui.Output(), "7\n");
}

TEST_F(ExternalFunctions, a_handler_writes_back_only_to_variables_that_were_thrown) {
  recording.act = [](std::uint64_t&, const ExternalCall& call) {
    const int number = 7;
    std::memcpy(call.addresses.at(call.words[0]), &number, sizeof number);
  };
  Run(Declare("(a as integer)") + "a = int(1)\nevent create e AddNumbers\nthrow e(a)\nprint a\n"
                                  "global G\nG = int(1)\nwatch create G e\nb = int(1)\n"
                                  "print two(b, poke()); b; G\nend\n"
                                  "function poke()\nG = int(2)\npoke = int(3)\nendfunction\n"
                                  "function two(c, d)\ntwo = c\nendfunction\n");
  EXPECT_EQ(recording.calls, 2) << "thrown, and the change of G";
  EXPECT_EQ(m_ui.Output(), "7\n112\n");
  recording.calls = 1;
  CBasicVariable value(3);
  Interpreter().EventThrow(u"e", &value);
  EXPECT_EQ(recording.calls, 2);
  EXPECT_EQ(value.GetNumberValue(), 3);
  EXPECT_EQ(State().m_arrTemporaries.GetSize(), 0);
}

TEST_F(ExternalFunctions, thirty_two_parameters_are_the_most) {
  const auto parameters = [](int count) {
    std::string text = "(";
    for (int i = 0; i < count; ++i)
      text += std::string(i > 0 ? ", " : "") + "byval p" + std::to_string(i) + " as integer";
    return text + ") as integer";
  };
  const auto arguments = [](int count) {
    std::string text = "(";
    for (int i = 0; i < count; ++i)
      text += std::string(i > 0 ? ", " : "") + std::to_string(i);
    return text + ")";
  };
  Run(Declare(parameters(32)) + "print AddNumbers" + arguments(32) + "\n");
  EXPECT_TRUE(m_ui.errors.empty());
  ASSERT_EQ(recording.words.size(), 32U);
  EXPECT_EQ(recording.words[31], 31U);

  m_pInterpreter = std::make_unique<CBrindle>();
  m_pInterpreter->SetUserInterface(&m_ui);
  Run(Declare(parameters(33)) + "call AddNumbers" + arguments(33) + "\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{24});
  EXPECT_EQ(recording.calls, 1);
}

TEST_F(ExternalFunctions, sixty_four_words_are_prepared_for_as_many_doubles) {
  CBasicVariableArray arguments;
  std::vector<std::uint32_t> types;
  for (int i = 0; i < kMostParameters; ++i) {
    arguments.Add(CBasicVariable(1.0));
    types.push_back(kTypeDouble);
  }
  EXPECT_TRUE(Call(types, arguments));
  EXPECT_EQ(recording.words.size(), 64U);
}

TEST_F(ExternalFunctions, another_number_of_arguments_reports_24) {
  Run(Declare("(byval a as integer)") + "call AddNumbers()\ncall AddNumbers(1, 2)\ncall AddNumbers(1)\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{24, 24}));
  EXPECT_EQ(recording.calls, 1);
}

TEST_F(ExternalFunctions, faults_are_reported_in_the_order_library_routine_parameters) {
  Run("declare function none lib \"no such library\" (a as integer)\nprint \"declared\"\ncall none()\n");
  EXPECT_EQ(m_ui.Output(), "declared\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{25});
  m_ui.Forget();
  Run("declare function NoSuchRoutine lib \"" + LibraryWithoutEnding() + "\" (a as integer)\ncall NoSuchRoutine()\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{26});
}

TEST_F(ExternalFunctions, nonsense_names_of_libraries_and_routines_report_25_and_26) {
  const char* const names[] = {"",      ".",    "..",    "/",   "\\",           "%s%n", "a/b/c",
                               "../..", "/tmp", "C:\\x", "???", "\xE2\x82\xAC", "a\nb", "/dev/null"};
  int number = 0;
  for (const char* name : names) {
    SCOPED_TRACE(name);
    m_ui.Forget();
    const std::string script = "n" + std::to_string(++number);
    Run("declare function x lib \"" + std::string(name) + "\" alias \"" + script + "\" ()\ncall " + script + "()\n");
    EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{25});
  }
  m_ui.Forget();
  Run("declare function x lib \"" + std::string(100000, 'n') + "\" alias \"long\" ()\ncall long()\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{25});
}

TEST_F(ExternalFunctions, the_other_endings_are_tried_where_the_stated_one_does_not_exist) {
  const struct {
    const char* file;
    bool found;
  } rows[] = {{"sub/tool.dll", true},   {"sub/tool.so", true},      {"sub/libtool.so", true},
              {"sub/tool.so.1", false}, {"sub/libtool.dll", false}, {"sub/tool", false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.file);
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.Path("sub"));
    std::filesystem::copy_file(TEST_ROUTINES, folder.Path(row.file));
    m_function.m_pRoutine = nullptr;
    m_function.m_strLibrary = CString::FromUtf8(folder.Path("SUB\\Tool").string()) + u".dll"; // any case, either slash
    m_ui.Forget();
    CBasicVariableArray arguments;
    EXPECT_EQ(Call({}, arguments), row.found);
    EXPECT_EQ(m_ui.ErrorNumbers(), row.found ? Numbers{} : Numbers{25});
  }
}

TEST_F(ExternalFunctions, the_alias_is_the_name_for_scripts_and_the_identifier_the_librarys) {
  Run("declare function AddNumbers lib \"" + LibraryWithoutEnding() +
      "\" alias \"Sum\" (byval a as integer) as integer\nprint SUM(1)\ncall AddNumbers(1)\n");
  EXPECT_EQ(m_ui.Output(), "0\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{21});
  EXPECT_EQ(recording.calls, 1);
}

TEST_F(ExternalFunctions, a_declared_double_is_a_float_both_ways) {
  recording.act = [](std::uint64_t& result, const ExternalCall& call) {
    EXPECT_EQ(call.words[0], FloatBits(0.1F));
    EXPECT_EQ(Load<std::uint32_t>(call.addresses.at(call.words[1])), FloatBits(0.2F));
    result = FloatBits(0.3F);
  };
  Run(Declare("(byval a as double, b as double) as double") +
      "b = 0.2\nr = AddNumbers(0.1, b)\nprint format(r, \"%.12f\"); \" \"; format(b, \"%.12f\")\n");
  EXPECT_EQ(m_ui.Output(), "0.300000011921 0.200000002980\n");
}

TEST_F(ExternalFunctions, a_host_function_of_the_same_name_wins) {
  Interpreter().AddCustomFunction(
      u"addnumbers", [](CBrindle*, CBasicVariableArray&, int) { return CBasicVariable(u"host"); }, 0, nullptr);
  Run(Declare("() as integer") + "print AddNumbers()\n");
  EXPECT_EQ(m_ui.Output(), "host\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ExternalFunctions, a_declared_sub_is_run_as_a_procedure_and_ends_in_23) {
  for (const char* head : {"", "(a) \n", "x = 1\n"}) {
    m_pInterpreter = std::make_unique<CBrindle>();
    m_pInterpreter->SetUserInterface(&m_ui);
    m_ui.Forget();
    Run(head + Declare("(byval a as integer)", "sub") + "call AddNumbers(1)\nprint \"next\"\n");
    EXPECT_EQ(m_ui.ErrorNumbers().back(), 23);
    EXPECT_EQ(m_ui.Output(), "next\n");
    EXPECT_EQ(State().m_nScopeLevel, 1);
  }
  EXPECT_EQ(recording.calls, 0);
}

TEST_F(ExternalFunctions, a_declaration_lasts_over_runs) {
  Run(Declare("() as integer"));
  Run("print AddNumbers()\n");
  EXPECT_EQ(m_ui.Output(), "0\n");
  Run(Declare("() as integer"));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{27});
}

} // namespace
