#include "bus.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <system_error>

namespace brindle {

namespace {

constexpr unsigned kUsualSeconds = 10;
constexpr unsigned kMostSeconds = 3600;

std::uint64_t TimeoutInMicroseconds() {
  unsigned seconds = kUsualSeconds;
  if (const char* const chosen = std::getenv("BRINDLE_DBUS_TIMEOUT")) {
    const unsigned long number = std::strtoul(chosen, nullptr, 10);
    if (number >= 1 && number <= kMostSeconds)
      seconds = static_cast<unsigned>(number);
  }
  return std::uint64_t{seconds} * 1000000;
}

} // namespace

int Checked(int result, const char* what) {
  if (result < 0)
    throw std::runtime_error(std::string("D-Bus: ") + what + ": " + std::generic_category().message(-result));
  return result;
}

std::shared_ptr<Bus> Bus::Connect(bool system) {
  static std::array<std::weak_ptr<Bus>, 2> connections;
  std::weak_ptr<Bus>& known = connections[system ? 1 : 0];
  if (auto bus = known.lock(); bus != nullptr && bus->IsOpen())
    return bus;
  sd_bus* opened = nullptr;
  Checked(system ? sd_bus_open_system(&opened) : sd_bus_open_user(&opened),
          system ? "no connection to the system bus" : "no connection to the session bus");
  std::shared_ptr<Bus> bus(new Bus(opened));
  known = bus;
  return bus;
}

Bus::~Bus() {
  sd_bus_flush_close_unref(m_pBus);
}

BusMessage Bus::NewCall(const std::string& service, const std::string& path, const std::string& interface,
                        const std::string& member) {
  sd_bus_message* message = nullptr;
  Checked(sd_bus_message_new_method_call(m_pBus, &message, service.c_str(), path.c_str(), interface.c_str(),
                                         member.c_str()),
          "the call cannot be made");
  return BusMessage(message);
}

BusMessage Bus::Call(const BusMessage& message) {
  // What came unasked since the last call goes first, or it would pile up.
  while (sd_bus_process(m_pBus, nullptr) > 0) {
  }
  sd_bus_error error = SD_BUS_ERROR_NULL;
  sd_bus_message* reply = nullptr;
  const int result = sd_bus_call(m_pBus, message.get(), TimeoutInMicroseconds(), &error, &reply);
  if (result < 0) {
    std::string text = error.message != nullptr ? error.message : std::generic_category().message(-result);
    if (error.name != nullptr)
      text += std::string(" (") + error.name + ")";
    sd_bus_error_free(&error);
    if (result == -ETIMEDOUT)
      text = "the service did not answer in time";
    throw std::runtime_error("D-Bus: " + text);
  }
  return BusMessage(reply);
}

} // namespace brindle
