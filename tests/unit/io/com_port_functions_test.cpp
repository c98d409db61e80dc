// The four serial port functions of the scripts, and the table of open ports.
#include "io/com_port_table.h"
#include "support/pseudo_terminal.h"
#include "support/script_test.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace brindle {
namespace {

using Clock = std::chrono::steady_clock;

// What a wait may last beyond its time on a busy machine.
constexpr int kMargin = 10000;

int ElapsedSince(Clock::time_point start) {
  return static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count());
}

class ComPortFunctionsTest : public ScriptTest {
protected:
  ComPortFunctionsTest() { m_devices.Link(1, m_far.Device()); }

  // One call with these arguments; `result` starts as the text "before".
  bool Call(FUNCTION_TYPE function, const std::vector<CBasicVariable>& values) {
    CBasicVariableArray args;
    for (const CBasicVariable& value : values)
      args.Add(value);
    m_result = CBasicVariable(u"before");
    return Access::ExecComPortOperation(Interpreter(), m_result, args, function);
  }
  [[nodiscard]] std::string Result() const { return m_result.GetStringValue().ToUtf8(); }
  [[nodiscard]] const LineSettings& Settings(std::uint16_t number) {
    return State().comPorts.Find(number)->GetSettings();
  }

  DeviceFolder m_devices;
  PseudoTerminal m_far;
  CBasicVariable m_result;
};

TEST_F(ComPortFunctionsTest, a_script_talks_to_an_instrument) {
  std::thread instrument([this] {
    if (m_far.Receive(5) == "*IDN?")
      m_far.Send("LEVEL 3\r\n");
  });
  EXPECT_TRUE(Run("print comportopen(1, 9600, 0, 0, 5000)\nprint comportwrite(1, \"*IDN?\")\nprint comportread(1);\n"
                  "print comportclose(1)\nprint comportclose(1)\n"));
  instrument.join();
  EXPECT_EQ(m_ui.Output(), "True\nTrue\nLEVEL 3\r\nTrue\nFalse\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ComPortFunctionsTest, open_takes_what_is_given) {
  m_devices.Link(9, m_far.Device());
  struct Row {
    std::vector<CBasicVariable> args;
    std::uint32_t baudRate;
    std::uint8_t dataBits;
    std::uint8_t parity;
    std::uint8_t stopBits;
    int timeout;
  };
  const Row rows[] = {
      {{CBasicVariable(9)}, 4800, 8, 0, 0, 1000},
      {{CBasicVariable(9.9)}, 4800, 8, 0, 0, 1000},
      {{CBasicVariable(u"9 and more")}, 4800, 8, 0, 0, 1000},
      {{CBasicVariable(9), CBasicVariable(19200.7)}, 19200, 8, 0, 0, 1000},
      {{CBasicVariable(9), CBasicVariable(0)}, 4800, 8, 0, 0, 1000},
      {{CBasicVariable(9), CBasicVariable(9600), CBasicVariable(2)}, 9600, 7, 2, 0, 1000},
      {{CBasicVariable(9), CBasicVariable(9600), CBasicVariable(0), CBasicVariable(2)}, 9600, 8, 0, 2, 1000},
      {{CBasicVariable(9), CBasicVariable(9600), CBasicVariable(0), CBasicVariable(0), CBasicVariable(3)},
       9600,
       8,
       0,
       0,
       10},
      {{CBasicVariable(9), CBasicVariable(9600), CBasicVariable(0), CBasicVariable(0), CBasicVariable(250),
        CBasicVariable(u"ignored")},
       9600,
       8,
       0,
       0,
       250},
  };
  for (const Row& row : rows) {
    EXPECT_TRUE(Call(FUNCTION_COMPORTOPEN, row.args));
    EXPECT_EQ(Result(), "True");
    ASSERT_TRUE(State().comPorts.Find(9)->IsOpen());
    EXPECT_EQ(Settings(9).baudRate, row.baudRate);
    EXPECT_EQ(Settings(9).dataBits, row.dataBits);
    EXPECT_EQ(Settings(9).parity, row.parity);
    EXPECT_EQ(Settings(9).parityCheck, row.parity != 0);
    EXPECT_EQ(Settings(9).stopBits, row.stopBits);
    EXPECT_EQ(State().comPorts.Find(9)->GetReadTimeout(), row.timeout);
  }
}

// Deliberate: scripts see the failure as empty reads and false writes.
TEST_F(ComPortFunctionsTest, a_port_that_does_not_open_takes_its_number_all_the_same) {
  EXPECT_TRUE(Call(FUNCTION_COMPORTOPEN, {CBasicVariable(7)}));
  EXPECT_EQ(Result(), "True");
  EXPECT_TRUE(Call(FUNCTION_COMPORTREAD, {CBasicVariable(7)}));
  EXPECT_EQ(Result(), "before") << "unchanged";
  EXPECT_TRUE(Call(FUNCTION_COMPORTWRITE, {CBasicVariable(7), CBasicVariable(u"x")}));
  EXPECT_EQ(Result(), "before");
  EXPECT_TRUE(Call(FUNCTION_COMPORTCLOSE, {CBasicVariable(7)}));
  EXPECT_EQ(Result(), "True");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ComPortFunctionsTest, a_script_sees_a_port_that_does_not_open_as_empty_and_false) {
  EXPECT_TRUE(Run("print comportopen(7)\nprint \"[\"; comportread(7); \"]\"\nif comportwrite(7, \"x\") = True then\n"
                  "print \"written\"\nelse\nprint \"not written\"\nendif\n"));
  EXPECT_EQ(m_ui.Output(), "True\n[]\nnot written\n");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ComPortFunctionsTest, an_unknown_port_gives_the_empty_text) {
  EXPECT_TRUE(Call(FUNCTION_COMPORTREAD, {CBasicVariable(5)}));
  EXPECT_EQ(m_result.GetType(), BVT_STRING);
  EXPECT_EQ(Result(), "");
  EXPECT_TRUE(Call(FUNCTION_COMPORTWRITE, {CBasicVariable(5), CBasicVariable(u"x")}));
  EXPECT_EQ(m_result.GetType(), BVT_STRING);
  EXPECT_EQ(Result(), "");
  EXPECT_TRUE(Call(FUNCTION_COMPORTCLOSE, {CBasicVariable(5)}));
  EXPECT_EQ(Result(), "False");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ComPortFunctionsTest, too_few_arguments_report_24) {
  for (const FUNCTION_TYPE function :
       {FUNCTION_COMPORTOPEN, FUNCTION_COMPORTCLOSE, FUNCTION_COMPORTREAD, FUNCTION_COMPORTWRITE}) {
    m_ui.Forget();
    EXPECT_FALSE(Call(function, {}));
    EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{24}) << function;
    EXPECT_EQ(Result(), "before");
  }
  m_ui.Forget();
  EXPECT_FALSE(Call(FUNCTION_COMPORTWRITE, {CBasicVariable(1)}));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{24});
}

TEST_F(ComPortFunctionsTest, another_code_reports_21) {
  EXPECT_FALSE(Call(FUNCTION_SIN, {CBasicVariable(1)}));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{21});
  EXPECT_EQ(Result(), "before");
}

TEST_F(ComPortFunctionsTest, a_write_of_513_characters_is_false) {
  EXPECT_TRUE(Run("x = comportopen(1)\nprint comportwrite(1, repeat(\"x\", 513))\n"
                  "print comportwrite(1, repeat(\"y\", 512))\n"));
  EXPECT_EQ(m_ui.Output(), "False\nTrue\n");
  EXPECT_EQ(m_far.Receive(600, 200), std::string(512, 'y'));
}

TEST_F(ComPortFunctionsTest, a_write_sends_the_text_of_any_value) {
  EXPECT_TRUE(Run("x = comportopen(1)\nprint comportwrite(1, 2.5)\nprint comportwrite(1, int(7))\n"));
  EXPECT_EQ(m_ui.Output(), "True\nTrue\n");
  EXPECT_EQ(m_far.Receive(9), "2.5000007");
}

TEST_F(ComPortFunctionsTest, opening_a_number_again_closes_the_old_port_first) {
  EXPECT_TRUE(Call(FUNCTION_COMPORTOPEN, {CBasicVariable(1)}));
  EXPECT_TRUE(Call(FUNCTION_COMPORTOPEN, {CBasicVariable(1), CBasicVariable(9600)}));
  ASSERT_TRUE(State().comPorts.Find(1)->IsOpen()) << "the device was free again";
  EXPECT_EQ(Settings(1).baudRate, 9600U);
  // Also when the new one fails.
  m_devices.Link(1, "missing");
  EXPECT_TRUE(Call(FUNCTION_COMPORTOPEN, {CBasicVariable(1)}));
  EXPECT_FALSE(State().comPorts.Find(1)->IsOpen());
  EXPECT_FALSE(m_far.IsExclusive());
}

TEST_F(ComPortFunctionsTest, a_device_opens_in_one_interpreter_only) {
  CBrindle other;
  CBasicVariableArray args;
  args.Add(CBasicVariable(1));
  CBasicVariable result;
  EXPECT_TRUE(Access::ExecComPortOperation(other, result, args, FUNCTION_COMPORTOPEN));
  EXPECT_TRUE(Call(FUNCTION_COMPORTOPEN, {CBasicVariable(1)}));
  EXPECT_TRUE(Access::State(other).comPorts.Find(1)->IsOpen());
  EXPECT_FALSE(State().comPorts.Find(1)->IsOpen());
}

TEST_F(ComPortFunctionsTest, ports_stay_open_across_runs_until_the_interpreter_ends) {
  EXPECT_TRUE(Run("x = comportopen(1)\n"));
  EXPECT_TRUE(Run("print comportwrite(1, \"again\")\n", "second.bas"));
  EXPECT_EQ(m_ui.Output(), "True\n");
  EXPECT_EQ(m_far.Receive(5), "again");
  EXPECT_TRUE(m_far.IsExclusive());
  m_pInterpreter.reset();
  EXPECT_FALSE(m_far.IsExclusive());
}

TEST_F(ComPortFunctionsTest, the_key_of_a_port_has_16_bits) {
  EXPECT_TRUE(Call(FUNCTION_COMPORTOPEN, {CBasicVariable(1)}));
  EXPECT_TRUE(Call(FUNCTION_COMPORTCLOSE, {CBasicVariable(65537)}));
  EXPECT_EQ(Result(), "True");
  EXPECT_EQ(State().comPorts.Find(1), nullptr);
}

TEST_F(ComPortFunctionsTest, a_read_of_nothing_is_the_empty_text_after_the_time_out) {
  EXPECT_TRUE(Call(FUNCTION_COMPORTOPEN, {CBasicVariable(1), CBasicVariable(9600), CBasicVariable(0), CBasicVariable(0),
                                          CBasicVariable(150)}));
  const auto start = Clock::now();
  EXPECT_TRUE(Call(FUNCTION_COMPORTREAD, {CBasicVariable(1)}));
  EXPECT_GE(ElapsedSince(start), 150);
  EXPECT_LT(ElapsedSince(start), 150 + kMargin);
  EXPECT_EQ(m_result.GetType(), BVT_STRING);
  EXPECT_EQ(Result(), "");
}

TEST(ComPortTableTest, nothing_is_added_without_a_port) {
  ComPortTable table;
  EXPECT_FALSE(table.Add(1, nullptr));
  EXPECT_EQ(table.Find(1), nullptr);
  EXPECT_TRUE(table.Add(1, std::make_unique<ComPort>(1)));
  EXPECT_TRUE(table.Add(2, std::make_unique<ComPort>(2)));
  table.CloseAll();
  EXPECT_EQ(table.Find(1), nullptr);
  EXPECT_FALSE(table.Close(2));
}

} // namespace
} // namespace brindle
