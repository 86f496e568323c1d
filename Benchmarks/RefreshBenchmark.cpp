// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppModel.h"
#include "History/HistoryFile.h"
#include "Month.h"
#include "Platform/Linux/DesktopNotifications.h"
#include "Platform/Linux/LocalFiles.h"
#include "Platform/Linux/Logind.h"
#include "Platform/Linux/MainBundle.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/PowerProfiles.h"
#include "Platform/Linux/UPower.h"
#include "Support/FakeSoundPlayer.h"
#include "Support/TemporaryFolder.h"

#include <benchmark/benchmark.h>

namespace lumora::benchmark {
namespace {

/// Stands still, so that no save falls due.
class StoppedClock final : public Clock {
 public:
  Date now() const override { return dateSince1970(1'790'000'000); }
};

guint32 messagesSent() {
  using Gio::DBus::BusType;
  guint32 sent = 0;
  for (const auto bus : {BusType::SYSTEM, BusType::SESSION}) {
    sent += g_dbus_connection_get_last_serial(Gio::DBus::Connection::get_sync(bus)->gobj());
  }
  return sent;
}

/// A refresh of the model on the real services, with a month of history.
void refresh(::benchmark::State& state, AppModel::Reason reason) {
  const auto session = Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION);
  const test::TemporaryFolder folder;
  StoppedClock clock;
  MainLoop runLoop;
  LocalFiles files;
  const Bundle bundle = mainBundle();
  DefaultsStore defaults(files, folder.path() / "defaults.json");
  UPower upower;
  PowerProfiles profiles;
  Logind logind;
  test::FakeSoundPlayer player;
  PermissionStore permissions(session, "org.lumora.Benchmark");
  DesktopNotifications notifications(session, {"org.lumora.Benchmark", {}}, permissions, player);
  files.replace(folder.path() / "Lumora" / "history.json",
                *encodeSamples(monthOfSamples(clock.now())));
  AppModel model({clock, runLoop, upower, profiles, logind, notifications, bundle, files, defaults,
                  folder.path()});
  const auto context = Glib::MainContext::get_default();
  bool ready = false;
  upower.whenReady(std::chrono::seconds(2), [&] { ready = true; });
  while (!ready) context->iteration(true);
  model.refresh(AppModel::Reason::launch);
  if (!model.state()->hasBattery) state.SkipWithError("there is no battery: use the laptop");

  const guint32 before = messagesSent();
  for (auto _ : state) model.refresh(reason);
  state.counters["D-Bus messages"] = messagesSent() - before;
}
BENCHMARK_CAPTURE(refresh, timer, AppModel::Reason::timer)->Unit(::benchmark::kMicrosecond);
BENCHMARK_CAPTURE(refresh, change, AppModel::Reason::change)->Unit(::benchmark::kMicrosecond);

}  // namespace
}  // namespace lumora::benchmark

int main(int argc, char** argv) {
  Gio::init();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
