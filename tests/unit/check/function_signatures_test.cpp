// What the function table says of arguments and results, compared with what every built-in function does.
#include "interpreter/function_signature.h"
#include "interpreter/state.h"
#include "support/script_test.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace brindle {
namespace {

constexpr int kMostArguments = 9;
constexpr int kParameterCount = 24; // the number of its error

class FunctionSignaturesTest : public ScriptTest {
protected:
  FunctionSignaturesTest() { setenv("BRINDLE_DEVICES", m_folder.Path("no devices").c_str(), 1); }
  ~FunctionSignaturesTest() override { unsetenv("BRINDLE_DEVICES"); }

  [[nodiscard]] std::vector<const CFuncDesc*> BuiltIns() {
    std::vector<const CFuncDesc*> functions;
    State().functions.ForEach([&](const CFuncDesc& function) { functions.push_back(&function); });
    return functions;
  }

  // An argument that no function refuses for its value: the number of an open file, a new path, three items.
  [[nodiscard]] std::string Argument(const CFuncDesc& function, int index) const {
    switch (function.m_nCode) {
    case FUNCTION_DBFCREATE: return index == 0 ? "\"" + m_folder.Path("made.dbf").string() + "\"" : "field";
    case FUNCTION_WRITE:
    case FUNCTION_READ: return "1";
    default: return "1";
    }
  }

  // What one call with so many arguments reports, and what it leaves in "result".
  [[nodiscard]] std::vector<int> Call(const CFuncDesc& function, int count) {
    std::string program = "dim field[3]\nfield[0] = \"NAME\"\nfield[1] = \"C\"\nfield[2] = 5\n";
    program += "open \"" + m_folder.Write("file", "").ToUtf8() + "\" for output as 1 text\n";
    program += "result = " + function.m_strName.ToUtf8() + "(";
    for (int i = 0; i < count; ++i)
      program += (i > 0 ? "," : "") + Argument(function, i);
    program += ")\nclose 1\n";
    m_ui.Forget();
    EXPECT_TRUE(Run(program));
    return m_ui.ErrorNumbers();
  }

  [[nodiscard]] ValueKinds KindsOfResult() {
    CString name(u"result");
    const CBasicVariable* result = Access::FindVariable(Interpreter(), name);
    if (result == nullptr)
      return kNotSet;
    const ValueKinds many = result->GetNumItems() > 1 ? kManyValues : ValueKinds{0};
    switch (result->GetType()) {
    case BVT_NUMBER: return kNumberValue | many;
    case BVT_STRING: return kTextValue | many;
    case BVT_OBJECT: return kObjectValue | many;
    default: return kNotSet | many;
    }
  }
};

TEST_F(FunctionSignaturesTest, every_built_in_reports_24_exactly_where_the_table_says) {
  const auto functions = BuiltIns();
  ASSERT_GT(functions.size(), 80U);
  for (const CFuncDesc* function : functions) {
    const FunctionSignature signature = State().functions.SignatureOf(function->m_nCode);
    for (int count = 0; count <= kMostArguments; ++count) {
      const std::vector<int> errors = Call(*function, count);
      const bool reported = std::find(errors.begin(), errors.end(), kParameterCount) != errors.end();
      EXPECT_EQ(signature.Reports(count), reported)
          << function->m_strName.ToUtf8() << " with " << count << " arguments";
    }
  }
}

TEST_F(FunctionSignaturesTest, every_result_is_of_a_kind_that_the_table_names) {
  for (const CFuncDesc* function : BuiltIns()) {
    const FunctionSignature signature = State().functions.SignatureOf(function->m_nCode);
    for (int count = 0; count <= kMostArguments; ++count) {
      if (!signature.Accepts(count) || !Call(*function, count).empty())
        continue;
      EXPECT_EQ(0, KindsOfResult() & ~signature.result)
          << function->m_strName.ToUtf8() << " with " << count << " arguments";
    }
  }
}

TEST_F(FunctionSignaturesTest, every_built_in_has_a_row) {
  for (const CFuncDesc* function : BuiltIns()) {
    const FunctionSignature signature = State().functions.SignatureOf(function->m_nCode);
    EXPECT_LE(signature.fewest, signature.most) << function->m_strName.ToUtf8();
    // A row that nobody filled in would take anything and give anything.
    EXPECT_FALSE(signature.check == ArgumentCheck::None && signature.most == FunctionSignature::kNoLimit &&
                 signature.result == kAnyValue)
        << function->m_strName.ToUtf8();
  }
}

struct CountRow {
  const char* name;
  FunctionSignature signature;
  int count;
  bool accepts;
  bool reports;
};

TEST(FunctionSignature, counts_are_judged_by_check_and_silence) {
  const FunctionSignature exact{2, 3, ArgumentCheck::Exact, ArgumentSilence::Never, kAnyValue};
  const FunctionSignature least{2, 3, ArgumentCheck::Least, ArgumentSilence::Never, kAnyValue};
  const FunctionSignature none{0, 3, ArgumentCheck::None, ArgumentSilence::Never, kAnyValue};
  const FunctionSignature quietWithoutAny{2, 3, ArgumentCheck::Least, ArgumentSilence::WithoutAny, kAnyValue};
  const FunctionSignature quiet{2, 3, ArgumentCheck::Least, ArgumentSilence::Always, kAnyValue};
  const CountRow rows[] = {
      {"exact, too few", exact, 1, false, true},
      {"exact, fewest", exact, 2, true, false},
      {"exact, most", exact, 3, true, false},
      {"exact, too many", exact, 4, false, true},
      {"least, none", least, 0, false, true},
      {"least, too few", least, 1, false, true},
      {"least, too many", least, 4, true, false},
      {"none, too many", none, 4, true, false},
      {"quiet without any, none", quietWithoutAny, 0, false, false},
      {"quiet without any, too few", quietWithoutAny, 1, false, true},
      {"quiet, too few", quiet, 1, false, false},
  };
  for (const CountRow& row : rows) {
    EXPECT_EQ(row.accepts, row.signature.Accepts(row.count)) << row.name;
    EXPECT_EQ(row.reports, row.signature.Reports(row.count)) << row.name;
  }
}

} // namespace
} // namespace brindle
