// PseudoTerminal: a serial device that a test plays, and the folder that ports are looked up in.
// Room: tests. Used by: unit tests of serial lines and ports.
// May touch: pseudo-terminals, a fresh folder, the environment variable BRINDLE_DEVICES.
// Must not: become the controlling terminal of the test program.
// Invariant: the far side is kept open by an observer, so that closing the port under test is no hang-up.
#pragma once

#include <asm/termbits.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

// Sets BRINDLE_DEVICES to a folder of its own, and gives the variable back at the end.
class DeviceFolder {
public:
  DeviceFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "brindle-devices-XXXXXX").string();
    m_path = mkdtemp(pattern.data());
    if (const char* before = std::getenv("BRINDLE_DEVICES"))
      m_before = before;
    setenv("BRINDLE_DEVICES", m_path.c_str(), 1);
  }
  DeviceFolder(const DeviceFolder&) = delete;
  DeviceFolder& operator=(const DeviceFolder&) = delete;
  ~DeviceFolder() {
    if (m_before.empty())
      unsetenv("BRINDLE_DEVICES");
    else
      setenv("BRINDLE_DEVICES", m_before.c_str(), 1);
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }

  [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
  void Link(int port, const std::filesystem::path& device) const {
    const std::filesystem::path link = m_path / ("com" + std::to_string(port));
    std::filesystem::remove(link);
    std::filesystem::create_symlink(device, link);
  }

private:
  std::filesystem::path m_path;
  std::string m_before;
};

class PseudoTerminal {
public:
  PseudoTerminal() {
    m_nMaster = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    char name[64] = "";
    if (m_nMaster < 0 || grantpt(m_nMaster) != 0 || unlockpt(m_nMaster) != 0 ||
        ptsname_r(m_nMaster, name, sizeof name) != 0)
      throw std::runtime_error("no pseudo-terminal");
    m_device = name;
    m_nObserver = open(name, O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
  }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;
  ~PseudoTerminal() {
    HangUp();
    close(m_nObserver);
  }

  [[nodiscard]] const std::string& Device() const { return m_device; }

  // What the other side of the line does.
  void Send(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t put = write(m_nMaster, bytes.data(), bytes.size());
      if (put <= 0)
        throw std::runtime_error("the pseudo-terminal takes nothing");
      bytes.remove_prefix(static_cast<std::size_t>(put));
    }
  }
  // What came out of the port: `count` bytes, or fewer when nothing follows for a while.
  [[nodiscard]] std::string Receive(std::size_t count, int milliseconds = 2000) const {
    std::string bytes;
    while (bytes.size() < count) {
      pollfd entry{m_nMaster, POLLIN, 0};
      char buffer[4096];
      if (poll(&entry, 1, milliseconds) <= 0)
        break;
      const ssize_t got = read(m_nMaster, buffer, std::min(sizeof buffer, count - bytes.size()));
      if (got <= 0)
        break;
      bytes.append(buffer, static_cast<std::size_t>(got));
    }
    return bytes;
  }
  // Whether nothing comes out of the port for a moment.
  [[nodiscard]] bool IsSilent() const { return Receive(1, 100).empty(); }
  void HangUp() {
    if (m_nMaster >= 0)
      close(std::exchange(m_nMaster, -1));
  }

  // What the port has made of the device.
  [[nodiscard]] termios2 Modes() const {
    termios2 modes{};
    ioctl(m_nObserver, TCGETS2, &modes);
    return modes;
  }
  [[nodiscard]] bool IsExclusive() const {
    int exclusive = -1;
    ioctl(m_nObserver, TIOCGEXCL, &exclusive);
    return exclusive != 0;
  }
  [[nodiscard]] int BytesWaiting() const {
    int count = -1;
    ioctl(m_nObserver, FIONREAD, &count);
    return count;
  }
  // What is sent reaches the port a moment later.
  [[nodiscard]] bool AwaitBytes(int count) const {
    for (int attempt = 0; attempt < 500; ++attempt) {
      if (BytesWaiting() >= count)
        return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
  }

private:
  int m_nMaster = -1;
  int m_nObserver = -1;
  std::string m_device;
};
