// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/FakeHost.h"
#include "Views/PopoverView.h"

#include <QApplication>

#include <benchmark/benchmark.h>

namespace lumora::benchmark {
namespace {

constexpr int kWeekMinutes = 7 * 24 * 60;

/// A new reading in an open popover that shows a week of minute samples, up to the drawn picture.
void redrawAWeek(::benchmark::State& state) {
  test::FakeHost host;
  host.setHistory(test::minuteSamples(host.now(), kWeekMinutes));
  host.setBattery(50);
  host.model().refresh(AppModel::Reason::launch);
  PopoverView view(host);
  view.show();
  for (auto* button : view.findChildren<QAbstractButton*>()) {
    if (button->text() == "7 days" || button->text() == "Daily summary") button->click();
  }
  QApplication::processEvents();
  std::int64_t percent = 50;
  for (auto _ : state) {
    percent = percent == 50 ? 51 : 50;
    host.setBattery(percent);
    host.model().refresh(AppModel::Reason::change);
    QApplication::processEvents();
    ::benchmark::DoNotOptimize(view.grab());
  }
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
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
