// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Bus/BusCall.h"
#include "Linux/Bus/ServiceWatch.h"
#include "Linux/Power/PowerProfiles.h"
#include "Linux/Power/UPower.h"
#include "Linux/Session/Logind.h"
#include "Linux/WaitFor.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <csignal>
#include <iterator>
#include <mutex>
#include <set>
#include <string>

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

// What is asked of them first.
constexpr const char* kQuestions[] = {
    "/org/freedesktop/UPower EnumerateDevices", "/org/freedesktop/login1 Inhibit",
    "/net/hadess/PowerProfiles GetAll", "/org/freedesktop/UPower/PowerProfiles GetAll"};

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
    g_dbus_connection_add_filter(service->gobj(), note, nullptr, nullptr);
    constexpr std::uint32_t kDoNotQueue = 4;
    for (const char* name : kNames) {
      const auto reply = callMethodAndWait(
          service, {.remote = kMessageBus,
                    .method = "RequestName",
                    .arguments = busArguments<Glib::ustring, std::uint32_t>(name, kDoNotQueue)});
      ASSERT_TRUE(reply.succeeded());
    }
  }

  /// On the connection's own thread: notes the questions that come.
  static GDBusMessage* note(GDBusConnection* /*connection*/, GDBusMessage* message,
                            gboolean isIncoming, gpointer /*data*/) {
    if (isIncoming && g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
      const std::string path = g_dbus_message_get_path(message);
      const std::string question = path + ' ' + g_dbus_message_get_member(message);
      const std::scoped_lock lock(asking);
      if (std::find(std::begin(kQuestions), std::end(kQuestions), question) !=
          std::end(kQuestions)) {
        asked.insert(question);
      }
    }
    return message;
  }

  void endBus() {
    kill(daemon, SIGKILL);
    waitpid(std::exchange(daemon, 0), nullptr, 0);
    service.reset();
    const std::scoped_lock lock(asking);
    asked.clear();
  }

  void watch() {
    watch_.emplace(
        Gio::DBus::BusType::SYSTEM, kName, ServiceWatch::Start::ifRunning,
        [this](const BusConnection&) { there = true; }, [this] { there = false; });
  }

  /// Whether all who listen have asked their services something, and so know who owns the names:
  /// the library takes it for a fault of the program when the bus ends before that.
  static bool settles() {
    return waitFor([] {
      const std::scoped_lock lock(asking);
      return asked.size() == std::size(kQuestions);
    });
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
  // That thread may outlive a test.
  static inline std::mutex asking;  // of the next
  static inline std::set<std::string> asked;
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
  EXPECT_TRUE(settles());
  endBus();
  EXPECT_TRUE(becomes(false));
  startBus();
  EXPECT_TRUE(becomes(true));
  EXPECT_TRUE(settles());
}

}  // namespace
}  // namespace lumora::test
