#include "bus.h"

#include "brindle/stop_request.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <system_error>

#include <poll.h>

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

namespace {

struct SlotRelease {
  void operator()(sd_bus_slot* slot) const noexcept { sd_bus_slot_unref(slot); }
};

int KeepReply(sd_bus_message* reply, void* place, sd_bus_error*) {
  static_cast<BusMessage*>(place)->reset(sd_bus_message_ref(reply));
  return 1;
}

[[noreturn]] void Fail(const std::string& text) {
  throw std::runtime_error("D-Bus: " + text);
}

// Milliseconds until the earlier of two moments, rounded up; -1 where there is none.
int WaitTime(std::uint64_t busMicroseconds, std::optional<CStopRequest::Clock::time_point> deadline) {
  using std::chrono::ceil, std::chrono::microseconds, std::chrono::milliseconds;
  const auto now = std::chrono::duration_cast<microseconds>(CStopRequest::Clock::now().time_since_epoch());
  std::optional<microseconds> until;
  if (deadline)
    until = ceil<microseconds>(deadline->time_since_epoch());
  if (busMicroseconds != UINT64_MAX) {
    const auto bus = microseconds(static_cast<std::int64_t>(std::min<std::uint64_t>(busMicroseconds, INT64_MAX)));
    until = until ? std::min(*until, bus) : bus;
  }
  if (!until)
    return -1;
  return static_cast<int>(std::clamp<std::int64_t>(ceil<milliseconds>(*until - now).count(), 0, INT_MAX));
}

} // namespace

// Until there is something to do for the connection; false when the run that waits is to stop.
bool Bus::Await() {
  const int events = Checked(sd_bus_get_events(m_pBus), "the connection is lost");
  std::uint64_t timeout = 0; // by the monotonic clock, as the deadline is
  Checked(sd_bus_get_timeout(m_pBus, &timeout), "the connection is lost");
  std::array<pollfd, 2> entries = {pollfd{sd_bus_get_fd(m_pBus), static_cast<short>(events), 0},
                                   pollfd{CStopRequest::Descriptor(), POLLIN, 0}};
  if (CStopRequest::IsMade())
    return false;
  if (::poll(entries.data(), entries.size(), WaitTime(timeout, CStopRequest::Deadline())) < 0 && errno != EINTR)
    Checked(-errno, "the connection cannot be waited for");
  return !CStopRequest::IsMade();
}

BusMessage Bus::Call(const BusMessage& message) {
  BusMessage reply;
  sd_bus_slot* slot = nullptr;
  Checked(sd_bus_call_async(m_pBus, &slot, message.get(), &KeepReply, &reply, TimeoutInMicroseconds()),
          "the call cannot be sent");
  // A call that is given up is forgotten here: its answer, should it come, finds nobody.
  const std::unique_ptr<sd_bus_slot, SlotRelease> pending(slot);
  while (reply == nullptr) {
    // What comes unasked goes first, or it would pile up.
    if (Checked(sd_bus_process(m_pBus, nullptr), "the connection is lost") == 0 && reply == nullptr && !Await())
      Fail("the call was given up, since the run is to stop");
  }
  if (sd_bus_message_is_method_error(reply.get(), nullptr) <= 0)
    return reply;
  if (sd_bus_message_get_errno(reply.get()) == ETIMEDOUT && IsOpen())
    Fail("the service did not answer in time");
  const sd_bus_error* const error = sd_bus_message_get_error(reply.get());
  Fail(std::string(error->message != nullptr ? error->message : error->name) + " (" + error->name + ")");
}

} // namespace brindle
