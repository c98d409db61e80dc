// Settings to terminal modes: the part of SerialLine that calls nothing.
#include "platform/serial_line.h"

#include <asm/termbits.h>

#include <algorithm>
#include <array>

namespace brindle {

namespace {

enum Parity : std::uint8_t { kNone = 0, kOdd = 1, kEven = 2, kMark = 3, kSpace = 4 };

struct StandardSpeed {
  std::uint32_t baudRate;
  std::uint32_t code;
};

// The rates that every driver knows by a code of their own, in rising order.
constexpr std::array kStandardSpeeds = {
    StandardSpeed{50, B50},           StandardSpeed{75, B75},           StandardSpeed{110, B110},
    StandardSpeed{134, B134},         StandardSpeed{150, B150},         StandardSpeed{200, B200},
    StandardSpeed{300, B300},         StandardSpeed{600, B600},         StandardSpeed{1200, B1200},
    StandardSpeed{1800, B1800},       StandardSpeed{2400, B2400},       StandardSpeed{4800, B4800},
    StandardSpeed{9600, B9600},       StandardSpeed{19200, B19200},     StandardSpeed{38400, B38400},
    StandardSpeed{57600, B57600},     StandardSpeed{115200, B115200},   StandardSpeed{230400, B230400},
    StandardSpeed{460800, B460800},   StandardSpeed{500000, B500000},   StandardSpeed{576000, B576000},
    StandardSpeed{921600, B921600},   StandardSpeed{1000000, B1000000}, StandardSpeed{1152000, B1152000},
    StandardSpeed{1500000, B1500000}, StandardSpeed{2000000, B2000000}, StandardSpeed{2500000, B2500000},
    StandardSpeed{3000000, B3000000}, StandardSpeed{3500000, B3500000}, StandardSpeed{4000000, B4000000},
};
static_assert(std::is_sorted(kStandardSpeeds.begin(), kStandardSpeeds.end(),
                             [](const StandardSpeed& a, const StandardSpeed& b) { return a.baudRate < b.baudRate; }));

constexpr std::uint32_t kInputSpeedMask = static_cast<std::uint32_t>(CBAUD) << IBSHIFT;

// Any other rate is given to the kernel as a number.
std::uint32_t SpeedCode(std::uint32_t baudRate) noexcept {
  for (const StandardSpeed& speed : kStandardSpeeds)
    if (speed.baudRate == baudRate)
      return speed.code;
  return BOTHER;
}

// The nearest by ratio, because a line works when the rates differ by a few parts in a hundred.
std::uint32_t NearestStandardRate(std::uint32_t baudRate) noexcept {
  std::uint32_t nearest = kStandardSpeeds.front().baudRate;
  double nearestRatio = 0;
  for (const StandardSpeed& speed : kStandardSpeeds) {
    const double ratio = static_cast<double>(std::min(speed.baudRate, baudRate)) /
                         static_cast<double>(std::max({speed.baudRate, baudRate, std::uint32_t{1}}));
    if (ratio > nearestRatio) {
      nearestRatio = ratio;
      nearest = speed.baudRate;
    }
  }
  return nearest;
}

std::uint32_t DataBitsCode(std::uint8_t dataBits) noexcept {
  switch (dataBits) {
  case 5: return CS5;
  case 6: return CS6;
  case 7: return CS7;
  default: return CS8;
  }
}

// A code that stands for no parity at all asks for none.
std::uint32_t ParityCode(std::uint8_t parity) noexcept {
  switch (parity) {
  case kOdd: return PARENB | PARODD;
  case kEven: return PARENB;
  case kMark: return PARENB | PARODD | CMSPAR;
  case kSpace: return PARENB | CMSPAR;
  default: return 0;
  }
}

} // namespace

LineModes ModesFor(const LineSettings& settings, const LineModes& current) noexcept {
  LineModes modes = current;

  // Bytes pass as they are: no lines, no echo, no signals, no translation; a break is no byte.
  modes.input &= ~static_cast<std::uint32_t>(BRKINT | PARMRK | IGNPAR | INPCK | ISTRIP | INLCR | IGNCR | ICRNL | IXON |
                                             IXOFF | IXANY | IUCLC);
  modes.input |= IGNBRK;
  modes.output &= ~static_cast<std::uint32_t>(OPOST);
  modes.local &= ~static_cast<std::uint32_t>(ISIG | ICANON | ECHO | ECHOE | ECHOK | ECHONL | IEXTEN);
  // A byte that fails the check arrives as a zero byte: the system has no way to hand on the byte and the news.
  if (settings.parityCheck)
    modes.input |= INPCK;
  if (settings.xonXoffOutput)
    modes.input |= IXON;
  if (settings.xonXoffInput)
    modes.input |= IXOFF;
  modes.start = settings.xonCharacter;
  modes.stop = settings.xoffCharacter;
  // With at least one byte asked for, a read of none always means that the line has gone.
  modes.leastBytes = 1;
  modes.readTime = 0;

  // No modem is waited for; the signals drop when the line closes.
  modes.control &= ~(static_cast<std::uint32_t>(CBAUD | CSIZE | CSTOPB | PARENB | PARODD | CMSPAR) |
                     static_cast<std::uint32_t>(CRTSCTS) | kInputSpeedMask);
  modes.control |= CREAD | CLOCAL | HUPCL;
  modes.control |= DataBitsCode(settings.dataBits) | ParityCode(settings.parity);
  // Two stop bits stand for one and a half: an idle line that is half a bit longer is understood everywhere.
  if (settings.stopBits == 1 || settings.stopBits == 2)
    modes.control |= CSTOPB;
  // One flag steers both directions. There is none for DSR and DTR: there the signal is raised and stays so.
  if (settings.ctsOutputFlow || settings.rts == SignalControl::Handshake)
    modes.control |= CRTSCTS;

  // Rate 0 would hang up; the line keeps its own.
  if (settings.baudRate != 0) {
    modes.control |= SpeedCode(settings.baudRate);
    modes.inputSpeed = settings.baudRate;
    modes.outputSpeed = settings.baudRate;
  } else {
    modes.control |= current.control & CBAUD;
  }
  return modes;
}

std::vector<LineSettings> NearestSettings(const LineSettings& wanted) {
  std::vector<LineSettings> tries = {wanted};
  LineSettings next = wanted;
  const auto add = [&tries, &next] {
    if (next != tries.back())
      tries.push_back(next);
  };

  // First what the fewest devices know and the other side notices least.
  if (next.parity > kEven) {
    next.parity = kNone;
    next.parityCheck = false;
  }
  add();
  next.ctsOutputFlow = next.dsrOutputFlow = next.xonXoffOutput = next.xonXoffInput = false;
  next.rts = next.rts == SignalControl::Handshake ? SignalControl::On : next.rts;
  next.dtr = next.dtr == SignalControl::Handshake ? SignalControl::On : next.dtr;
  add();
  if (next.baudRate != 0)
    next.baudRate = NearestStandardRate(next.baudRate);
  add();
  next.parity = kNone;
  next.parityCheck = false;
  next.stopBits = 0;
  next.dataBits = 8;
  add();
  next.baudRate = 0;
  add();
  return tries;
}

} // namespace brindle
