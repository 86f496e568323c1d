// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/ChartPoints.h"
#include "OpenPopover.h"
#include "Views/Style/Style.h"

#include <benchmark/benchmark.h>

namespace lumora::benchmark {
namespace {

void redrawAWeek(::benchmark::State& state) {
  OpenPopover popover;
  for (auto _ : state) ::benchmark::DoNotOptimize(popover.redraw());
}
BENCHMARK(redrawAWeek)->Unit(::benchmark::kMillisecond);

/// The table's rows of a week of minute samples.
void summarizeAWeek(::benchmark::State& state) {
  test::FakeHost host;
  host.setHistory(test::minuteSamples(host.now(), kWeekMinutes));
  const HistoryStore& history = host.model().history();
  for (auto _ : state) ::benchmark::DoNotOptimize(history.dailySummaries(8, host.now()));
}
BENCHMARK(summarizeAWeek)->Unit(::benchmark::kMicrosecond);

void pointsOfAWeek(::benchmark::State& state) {
  test::FakeHost host;
  host.setHistory(test::minuteSamples(host.now(), kWeekMinutes));
  const HistoryStore& history = host.model().history();
  const Date since = host.now() - Seconds(7 * 86'400.0);
  for (auto _ : state) ::benchmark::DoNotOptimize(chartPoints(history.samples(since)));
}
BENCHMARK(pointsOfAWeek)->Unit(::benchmark::kMicrosecond);

}  // namespace
}  // namespace lumora::benchmark

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  lumora::installStyle();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
