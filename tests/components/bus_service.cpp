// A service on the session bus for tests: every type in both directions, results that scripts cannot take, an error,
// a call that is never answered, and an end in the middle.
#include <systemd/sd-bus.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

std::string label = "first";
double level = 0.5;

int Echo(sd_bus_message* call, void*, sd_bus_error*) {
  sd_bus_message* reply = nullptr;
  int result = sd_bus_message_new_method_return(call, &reply);
  if (result >= 0)
    result = sd_bus_message_copy(reply, call, 1);
  if (result >= 0)
    result = sd_bus_send(nullptr, reply, nullptr);
  sd_bus_message_unref(reply);
  return result;
}

int Several(sd_bus_message* call, void*, sd_bus_error*) {
  return sd_bus_reply_method_return(call, "sib", "several", 7, 1);
}

int Texts(sd_bus_message* call, void*, sd_bus_error*) {
  return sd_bus_reply_method_return(call, "as", 3, "one", "two", "three");
}

int None(sd_bus_message* call, void*, sd_bus_error*) {
  return sd_bus_reply_method_return(call, "as", 0);
}

int Variants(sd_bus_message* call, void*, sd_bus_error*) {
  return sd_bus_reply_method_return(call, "av", 3, "i", 5, "s", "text", "v", "d", 2.5);
}

int Wide(sd_bus_message* call, void*, sd_bus_error*) {
  return sd_bus_reply_method_return(call, "xtxu", INT64_MIN, UINT64_MAX, INT64_C(5000000000), UINT32_MAX);
}

int Paths(sd_bus_message* call, void*, sd_bus_error*) {
  return sd_bus_reply_method_return(call, "ao", 2, "/test/object", "/test/other");
}

int Here(sd_bus_message* call, void*, sd_bus_error*) {
  return sd_bus_reply_method_return(call, "o", "/test/object");
}

int Nowhere(sd_bus_message* call, void*, sd_bus_error*) {
  return sd_bus_reply_method_return(call, "o", "/no/such/object");
}

int Structure(sd_bus_message* call, void*, sd_bus_error*) {
  std::puts("structure was called");
  return sd_bus_reply_method_return(call, "(is)", 1, "a");
}

int HiddenStructure(sd_bus_message* call, void*, sd_bus_error*) {
  return sd_bus_reply_method_return(call, "v", "(is)", 1, "a");
}

int Refuse(sd_bus_message*, void*, sd_bus_error* error) {
  return sd_bus_error_set(error, "test.Error.Refused", "The door is locked");
}

int Silent(sd_bus_message*, void*, sd_bus_error*) {
  return 1; // handled, but nobody will ever hear of it
}

int Calling(sd_bus_message* call, void*, sd_bus_error*) {
  std::puts("called");
  std::fflush(stdout);
  return sd_bus_reply_method_return(call, "");
}

int Quit(sd_bus_message*, void*, sd_bus_error*) {
  std::_Exit(0);
}

int GetLabel(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*) {
  return sd_bus_message_append(reply, "s", label.c_str());
}

int SetLabel(sd_bus*, const char*, const char*, const char*, sd_bus_message* value, void*, sd_bus_error*) {
  const char* text = nullptr;
  const int result = sd_bus_message_read(value, "s", &text);
  if (result >= 0)
    label = text;
  return result;
}

int GetLevel(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*) {
  return sd_bus_message_append(reply, "d", level);
}

int SetLevel(sd_bus*, const char*, const char*, const char*, sd_bus_message* value, void*, sd_bus_error*) {
  return sd_bus_message_read(value, "d", &level);
}

int GetModes(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*) {
  return sd_bus_message_append(reply, "au", 3, 1U, 2U, 3U);
}

const sd_bus_vtable kMembers[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("EchoY", "y", "y", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoN", "n", "n", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoQ", "q", "q", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoI", "i", "i", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoU", "u", "u", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoX", "x", "x", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoT", "t", "t", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoD", "d", "d", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoB", "b", "b", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoS", "s", "s", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoG", "g", "g", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoO", "o", "o", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoV", "v", "v", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoAs", "as", "as", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EchoStructure", "(ii)", "", Echo, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Several", "", "sib", Several, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Texts", "", "as", Texts, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("None", "", "as", None, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Variants", "", "av", Variants, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Wide", "", "xtxu", Wide, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Paths", "", "ao", Paths, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Here", "", "o", Here, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Nowhere", "", "o", Nowhere, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Structure", "", "(is)", Structure, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("HiddenStructure", "", "v", HiddenStructure, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Refuse", "", "", Refuse, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Silent", "", "", Silent, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Calling", "", "", Calling, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Quit", "", "", Quit, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_WRITABLE_PROPERTY("Label", "s", GetLabel, SetLabel, 0, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_WRITABLE_PROPERTY("Level", "d", GetLevel, SetLevel, 0, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_PROPERTY("Modes", "au", GetModes, 0, 0),
    SD_BUS_VTABLE_END};

} // namespace

int main() {
  sd_bus* bus = nullptr;
  if (sd_bus_open_user(&bus) < 0)
    return 1;
  if (sd_bus_add_object_vtable(bus, nullptr, "/test/object", "test.Members", kMembers, nullptr) < 0 ||
      sd_bus_request_name(bus, "test.Service", 0) < 0)
    return 1;
  std::puts("ready");
  std::fflush(stdout);
  for (;;) {
    const int result = sd_bus_process(bus, nullptr);
    if (result < 0)
      break;
    std::fflush(stdout);
    if (result == 0 && sd_bus_wait(bus, UINT64_MAX) < 0 && errno != EINTR)
      break;
  }
  sd_bus_unref(bus);
  return 0;
}
