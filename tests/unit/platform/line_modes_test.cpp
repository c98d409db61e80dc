// Settings of a serial line as terminal modes, and what is tried with a device that refuses some.
#include "platform/serial_line.h"

#include "support/pseudo_terminal.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace brindle {
namespace {

constexpr std::uint32_t kParityFlags = PARENB | PARODD | CMSPAR;

TEST(SerialModes, say_what_the_settings_say) {
  struct Row {
    const char* name;
    LineSettings settings;
    std::uint32_t control; // of the flags compared here
    std::uint32_t input;
  };
  const auto with = [](auto change) {
    LineSettings settings;
    change(settings);
    return settings;
  };
  using S = LineSettings;
  const Row rows[] = {
      {"as they come", {}, CS8, 0},
      {"5 data bits", with([](S& s) { s.dataBits = 5; }), CS5, 0},
      {"6 data bits", with([](S& s) { s.dataBits = 6; }), CS6, 0},
      {"7 data bits", with([](S& s) { s.dataBits = 7; }), CS7, 0},
      {"9 data bits are 8", with([](S& s) { s.dataBits = 9; }), CS8, 0},
      {"odd parity", with([](S& s) { s.parity = 1; }), CS8 | PARENB | PARODD, 0},
      {"even parity", with([](S& s) { s.parity = 2; }), CS8 | PARENB, 0},
      {"mark parity", with([](S& s) { s.parity = 3; }), CS8 | PARENB | PARODD | CMSPAR, 0},
      {"space parity", with([](S& s) { s.parity = 4; }), CS8 | PARENB | CMSPAR, 0},
      {"parity 5 is none", with([](S& s) { s.parity = 5; }), CS8, 0},
      {"parity is checked", with([](S& s) { s.parityCheck = true; }), CS8, INPCK},
      {"one and a half stop bits are two", with([](S& s) { s.stopBits = 1; }), CS8 | CSTOPB, 0},
      {"two stop bits", with([](S& s) { s.stopBits = 2; }), CS8 | CSTOPB, 0},
      {"stop bits 3 are one", with([](S& s) { s.stopBits = 3; }), CS8, 0},
      {"CTS alone", with([](S& s) { s.ctsOutputFlow = true; }), CS8 | CRTSCTS, 0},
      {"RTS alone", with([](S& s) { s.rts = SignalControl::Handshake; }), CS8 | CRTSCTS, 0},
      {"RTS off", with([](S& s) { s.rts = SignalControl::Off; }), CS8, 0},
      {"DSR and DTR have no flag", with([](S& s) {
         s.dsrOutputFlow = true;
         s.dtr = SignalControl::Handshake;
       }),
       CS8, 0},
      {"XON/XOFF of output", with([](S& s) { s.xonXoffOutput = true; }), CS8, IXON},
      {"XON/XOFF of input", with([](S& s) { s.xonXoffInput = true; }), CS8, IXOFF},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    // Whatever the device had before.
    for (const std::uint32_t before : {0U, ~0U}) {
      LineModes current{before, before, before, before, before, before, 1, 2, 3, 4};
      const LineModes modes = ModesFor(row.settings, current);
      EXPECT_EQ(modes.control & (CSIZE | CSTOPB | kParityFlags | static_cast<std::uint32_t>(CRTSCTS)), row.control);
      EXPECT_EQ(modes.control & (CREAD | CLOCAL | HUPCL), static_cast<std::uint32_t>(CREAD | CLOCAL | HUPCL));
      EXPECT_EQ(modes.input & (INPCK | IXON | IXOFF), row.input);
      EXPECT_EQ(modes.input & (BRKINT | PARMRK | IGNPAR | ISTRIP | INLCR | IGNCR | ICRNL | IXANY | IGNBRK),
                static_cast<std::uint32_t>(IGNBRK));
      EXPECT_EQ(modes.output & OPOST, 0U);
      EXPECT_EQ(modes.local & (ISIG | ICANON | ECHO | ECHONL | IEXTEN), 0U);
      EXPECT_EQ(modes.start, 0x11);
      EXPECT_EQ(modes.stop, 0x13);
      EXPECT_EQ(modes.leastBytes, 1);
      EXPECT_EQ(modes.readTime, 0);
    }
  }
}

TEST(SerialModes, every_rate_is_asked_for_as_it_is) {
  struct Row {
    std::uint32_t baudRate;
    std::uint32_t code;
  };
  const Row rows[] = {
      {1, BOTHER},         {50, B50},           {75, B75},           {110, B110},         {134, B134},
      {150, B150},         {200, B200},         {300, B300},         {600, B600},         {1200, B1200},
      {1800, B1800},       {2400, B2400},       {4800, B4800},       {7200, BOTHER},      {9600, B9600},
      {12345, BOTHER},     {14400, BOTHER},     {19200, B19200},     {28800, BOTHER},     {38400, B38400},
      {56000, BOTHER},     {57600, B57600},     {76800, BOTHER},     {115200, B115200},   {128000, BOTHER},
      {230400, B230400},   {250000, BOTHER},    {256000, BOTHER},    {460800, B460800},   {500000, B500000},
      {576000, B576000},   {921600, B921600},   {1000000, B1000000}, {1152000, B1152000}, {1500000, B1500000},
      {2000000, B2000000}, {2500000, B2500000}, {3000000, B3000000}, {3500000, B3500000}, {4000000, B4000000},
      {12000000, BOTHER},
  };
  PseudoTerminal far;
  DeviceFolder folder;
  folder.Link(1, far.Device());
  SerialLine line;
  ASSERT_TRUE(line.Open(u"COM1:"));
  for (const Row& row : rows) {
    SCOPED_TRACE(row.baudRate);
    LineSettings settings;
    settings.baudRate = row.baudRate;
    const LineModes modes = ModesFor(settings, {});
    EXPECT_EQ(modes.control & CBAUD, row.code);
    EXPECT_EQ(modes.control >> IBSHIFT & CBAUD, 0U) << "input as output";
    EXPECT_EQ(modes.inputSpeed, row.baudRate);
    EXPECT_EQ(modes.outputSpeed, row.baudRate);
    // And the system takes it.
    EXPECT_TRUE(line.Configure(settings));
    EXPECT_EQ(far.Modes().c_ospeed, row.baudRate);
    EXPECT_EQ(far.Modes().c_ispeed, row.baudRate);
  }
}

TEST(SerialModes, rate_0_keeps_the_rate) {
  LineModes current;
  current.control = B19200;
  current.inputSpeed = current.outputSpeed = 19200;
  LineSettings settings;
  settings.baudRate = 0;
  const LineModes modes = ModesFor(settings, current);
  EXPECT_EQ(modes.control & CBAUD, static_cast<std::uint32_t>(B19200));
  EXPECT_EQ(modes.outputSpeed, 19200U);
}

TEST(SerialModes, what_the_settings_do_not_speak_of_stays) {
  LineModes current;
  current.output = ONLCR;
  current.local = NOFLSH;
  current.input = IUTF8;
  const LineModes modes = ModesFor({}, current);
  EXPECT_EQ(modes.output, static_cast<std::uint32_t>(ONLCR));
  EXPECT_EQ(modes.local, static_cast<std::uint32_t>(NOFLSH));
  EXPECT_EQ(modes.input, static_cast<std::uint32_t>(IUTF8 | IGNBRK));
}

TEST(SerialModes, a_device_that_refuses_is_asked_for_less_and_less) {
  LineSettings wanted;
  EXPECT_EQ(NearestSettings(wanted).front(), wanted);
  wanted = {.baudRate = 12000,
            .parityCheck = true,
            .ctsOutputFlow = true,
            .dsrOutputFlow = true,
            .dtr = SignalControl::Handshake,
            .rts = SignalControl::Handshake,
            .xonXoffOutput = true,
            .xonXoffInput = true,
            .dataBits = 7,
            .parity = 3,
            .stopBits = 2};
  const std::vector<LineSettings> tries = NearestSettings(wanted);
  ASSERT_EQ(tries.size(), 6U);
  LineSettings expected = wanted;
  EXPECT_EQ(tries[0], expected);
  expected.parity = 0;
  expected.parityCheck = false;
  EXPECT_EQ(tries[1], expected) << "without mark parity";
  expected.ctsOutputFlow = expected.dsrOutputFlow = expected.xonXoffOutput = expected.xonXoffInput = false;
  expected.dtr = expected.rts = SignalControl::On;
  EXPECT_EQ(tries[2], expected) << "without a handshake";
  expected.baudRate = 9600;
  EXPECT_EQ(tries[3], expected) << "with the nearest standard rate";
  expected.dataBits = 8;
  expected.stopBits = 0;
  EXPECT_EQ(tries[4], expected) << "with the frame that every device has";
  expected.baudRate = 0;
  EXPECT_EQ(tries[5], expected) << "at the device's own rate";
}

TEST(SerialModes, the_nearest_standard_rate_is_nearest_by_ratio) {
  struct Row {
    std::uint32_t wanted;
    std::uint32_t nearest;
  };
  // 14000 : 9600 is 1.46, 19200 : 14000 is 1.37.
  const Row rows[] = {{1, 50}, {14000, 19200}, {13000, 9600}, {9600, 9600}, {5000000, 4000000}, {~0U, 4000000}};
  for (const Row& row : rows) {
    LineSettings settings;
    settings.baudRate = row.wanted;
    std::vector<std::uint32_t> rates;
    for (const LineSettings& candidate : NearestSettings(settings))
      if (rates.empty() || candidate.baudRate != rates.back())
        rates.push_back(candidate.baudRate);
    const bool isStandard = row.wanted == row.nearest;
    EXPECT_EQ(rates, (isStandard ? std::vector<std::uint32_t>{row.wanted, 0}
                                 : std::vector<std::uint32_t>{row.wanted, row.nearest, 0}));
  }
}

} // namespace
} // namespace brindle
