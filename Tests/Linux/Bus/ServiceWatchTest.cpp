// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Bus/BusCall.h"
#include "Linux/Bus/ServiceWatch.h"
#include "Linux/Power/PowerProfiles.h"
#include "Linux/Power/UPower.h"
#include "Linux/Session/Logind.h"
#include "Linux/WaitFor.h"
#include "Support/TemporaryFolder.h"

#include <csignal>

#include <gtest/gtest.h>
#include <sys/wait.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;

constexpr const char* kName = "org.lumora.Test";
// With those of the system's services, of which none answers.
constexpr const char* kNames[] = {"org.freedesktop.UPower", "org.freedesktop.login1",
                                  "net.hadess.PowerProfiles",
                                  "org.freedesktop.UPower.PowerProfiles", kName};

/// A system bus that can be started and killed, and a service on it.
class ServiceWatchTest : public testing::Test {
 protected:
  ServiceWatchTest() { Glib::setenv("DBUS_SYSTEM_BUS_ADDRESS", address); }

 public:
  ~ServiceWatchTest() override {
    if (daemon != 0) endBus();
  }

 protected:
  void startBus() {
    daemon = fork();
    if (daemon == 0) {
      execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--nopidfile",
             ("--address=" + address).c_str(), nullptr);
      _exit(1);
    }
    ASSERT_TRUE(waitFor([this] {
      try {
        service = Gio::DBus::Connection::create_for_address_sync(
            address, Gio::DBus::ConnectionFlags::AUTHENTICATION_CLIENT |
                         Gio::DBus::ConnectionFlags::MESSAGE_BUS_CONNECTION);
      } catch (const Glib::Error&) {
        return false;
      }
      return true;
    }));
    constexpr std::uint32_t kDoNotQueue = 4;
    for (const char* name : kNames) {
      const auto reply = callMethodAndWait(
          service, {.remote = kMessageBus,
                    .method = "RequestName",
                    .arguments = busArguments<Glib::ustring, std::uint32_t>(name, kDoNotQueue)});
      ASSERT_TRUE(reply.succeeded());
    }
  }

  void endBus() {
    kill(daemon, SIGKILL);
    waitpid(std::exchange(daemon, 0), nullptr, 0);
    service.reset();
  }

  void watch() {
    watch_.emplace(
        Gio::DBus::BusType::SYSTEM, kName, ServiceWatch::Start::ifRunning,
        [this](const BusConnection&) { there = true; }, [this] { there = false; });
  }

  /// Lets all who listen hear who owns their names: the library takes it for a fault of the program
  /// when the bus ends before that.
  static void settle() {
    const auto bus = Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SYSTEM);
    // A service that may be started is asked for that first, and then for its owner.
    for (int answers = 0; answers < 2; ++answers) {
      EXPECT_TRUE(callMethodAndWait(bus, {.remote = kMessageBus, .method = "GetId"}).succeeded());
      drainMainLoop();
    }
  }

  bool becomes(bool wanted) {
    return waitFor([&] { return there == wanted; });
  }

  TemporaryFolder folder;
  const std::string address = "unix:path=" + (folder.path() / "bus").string();
  pid_t daemon = 0;
  BusConnection service;
  std::optional<ServiceWatch> watch_;
  std::optional<bool> there;
};

TEST_F(ServiceWatchTest, JoinsABusThatComesLater) {
  watch();
  EXPECT_TRUE(becomes(false));
  startBus();
  EXPECT_TRUE(becomes(true));
}

TEST_F(ServiceWatchTest, JoinsARestartedBusAgainWithAllWhoListen) {
  startBus();
  // Who keeps the old connection would keep it for all.
  UPower upower(folder.path());
  PowerProfiles profiles;
  Logind logind;
  watch();
  EXPECT_TRUE(becomes(true));
  settle();
  endBus();
  EXPECT_TRUE(becomes(false));
  startBus();
  EXPECT_TRUE(becomes(true));
}

}  // namespace
}  // namespace lumora::test
