// A connection to the session's or the system's bus, and calls over it that end in time.
// Room: components. Used by: BusObject, conversion.
// May touch: the bus.
// Must not: run its own threads or handlers; it only speaks when a script calls.
// Invariant: a call is answered, or fails within the time-out or as soon as the run is to stop; failures throw
// std::runtime_error.
#pragma once

#include <systemd/sd-bus.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace brindle {

struct MessageRelease {
  void operator()(sd_bus_message* message) const noexcept { sd_bus_message_unref(message); }
};
using BusMessage = std::unique_ptr<sd_bus_message, MessageRelease>;

// Throws with the system's text when a call of the binding failed; its result otherwise.
int Checked(int result, const char* what);

class Bus {
public:
  // The one connection of its kind, made anew when the last one broke or nobody held it any more.
  [[nodiscard]] static std::shared_ptr<Bus> Connect(bool system);

  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;
  ~Bus();

  [[nodiscard]] BusMessage NewCall(const std::string& service, const std::string& path, const std::string& interface,
                                   const std::string& member);
  // The answer; an error that the service sent is thrown with its text and its name.
  [[nodiscard]] BusMessage Call(const BusMessage& message);
  [[nodiscard]] bool IsOpen() const noexcept { return sd_bus_is_open(m_pBus) > 0; }

private:
  explicit Bus(sd_bus* bus) noexcept : m_pBus(bus) {}
  [[nodiscard]] bool Await();

  sd_bus* m_pBus;
};

} // namespace brindle
