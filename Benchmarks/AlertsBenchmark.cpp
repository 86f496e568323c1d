// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/AlertEngine.h"
#include "Linux/System/LocalFiles.h"
#include "Support/TemporaryFolder.h"

#include <benchmark/benchmark.h>

namespace lumora::benchmark {
namespace {

BatteryState pluggedInAbove(std::int64_t percent) {
  BatteryState state;
  state.hasBattery = true;
  state.percent = percent;
  state.pluggedIn = true;
  state.designCapacity = 50'000;
  state.fullCapacity = 45'000;
  return state;
}

/// A machine plugged in at 85 % with every setting at its default.
struct PluggedIn {
  const test::TemporaryFolder folder;
  LocalFiles files;
  DefaultsStore defaults{files, folder.path() / "defaults.json"};
  const Prefs prefs = Prefs::current(defaults);
  const BatteryState battery = pluggedInAbove(85);
  const Date now = dateSince1970(1'790'000'000);

  AlertEngine::Input since(Seconds ago) const {
    return {.state = battery, .since = now - ago, .now = now, .prefs = prefs, .canDeliver = true};
  }
};

/// What nearly every refresh does: conditions in force that have been reminded of.
void runWithNothingDue(::benchmark::State& state) {
  PluggedIn machine;
  const AlertEngine::Input input = machine.since(Seconds(60));
  AlertEngine engine;
  engine.run(input, machine.defaults);
  for (auto _ : state) ::benchmark::DoNotOptimize(engine.run(input, machine.defaults));
}
BENCHMARK(runWithNothingDue)->Unit(::benchmark::kMicrosecond);

/// An alert each time: the charge limit and the long time, from the start.
void runWithTwoDue(::benchmark::State& state) {
  PluggedIn machine;
  const AlertEngine::Input input = machine.since(Seconds(9 * 3600));
  for (auto _ : state) {
    AlertEngine engine;
    if (engine.run(input, machine.defaults).size() != 2) state.SkipWithError("two were due");
  }
}
BENCHMARK(runWithTwoDue)->Unit(::benchmark::kMicrosecond);

}  // namespace
}  // namespace lumora::benchmark

BENCHMARK_MAIN();
