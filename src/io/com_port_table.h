// The serial ports that a script has opened, by number.
// Room: io. Used by: the serial port functions, the end of an interpreter.
// May touch: ports.
// Invariant: a port that leaves the table is closed.
#pragma once

#include "io/com_port.h"

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

namespace brindle {

class ComPortTable {
public:
  // A port that stands under the number is closed first. False when there is nothing to add.
  bool Add(std::uint16_t number, std::unique_ptr<ComPort> port) {
    if (!port)
      return false;
    Close(number);
    m_ports[number] = std::move(port);
    return true;
  }
  [[nodiscard]] ComPort* Find(std::uint16_t number) const {
    const auto port = m_ports.find(number);
    return port == m_ports.end() ? nullptr : port->second.get();
  }
  // False when there is no such port.
  bool Close(std::uint16_t number) { return m_ports.erase(number) != 0; }
  void CloseAll() noexcept { m_ports.clear(); }

private:
  std::map<std::uint16_t, std::unique_ptr<ComPort>> m_ports;
};

} // namespace brindle
