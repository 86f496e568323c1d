// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/AlertEngine.h"
#include "Platform/Linux/LocalFiles.h"
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

/// What nearly every refresh does: conditions in force that have been reminded of.
void runWithNothingDue(::benchmark::State& state) {
  const test::TemporaryFolder folder;
  LocalFiles files;
  DefaultsStore defaults(files, folder.path() / "defaults.json");
  const Prefs prefs = Prefs::current(defaults);
  const BatteryState battery = pluggedInAbove(85);
  const Date now = dateSince1970(1'790'000'000);
  const AlertEngine::Input input{
      .state = battery, .since = now - Seconds(60), .now = now, .prefs = prefs, .canDeliver = true};
  AlertEngine engine;
  engine.run(input, defaults);
  for (auto _ : state) ::benchmark::DoNotOptimize(engine.run(input, defaults));
}
BENCHMARK(runWithNothingDue)->Unit(::benchmark::kMicrosecond);

/// An alert each time: the charge limit and the long time, from the start.
void runWithTwoDue(::benchmark::State& state) {
  const test::TemporaryFolder folder;
  LocalFiles files;
  DefaultsStore defaults(files, folder.path() / "defaults.json");
  const Prefs prefs = Prefs::current(defaults);
  const BatteryState battery = pluggedInAbove(85);
  const Date now = dateSince1970(1'790'000'000);
  const AlertEngine::Input input{.state = battery,
                                 .since = now - Seconds(9 * 3600),
                                 .now = now,
                                 .prefs = prefs,
                                 .canDeliver = true};
  for (auto _ : state) {
    AlertEngine engine;
    if (engine.run(input, defaults).size() != 2) state.SkipWithError("two alerts were due");
  }
}
BENCHMARK(runWithTwoDue)->Unit(::benchmark::kMicrosecond);

}  // namespace
}  // namespace lumora::benchmark

BENCHMARK_MAIN();
