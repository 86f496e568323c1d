// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "RealModel.h"

#include <benchmark/benchmark.h>

namespace lumora::benchmark {
namespace {

guint32 messagesSent() {
  using Gio::DBus::BusType;
  guint32 sent = 0;
  for (const auto bus : {BusType::SYSTEM, BusType::SESSION}) {
    sent += g_dbus_connection_get_last_serial(Gio::DBus::Connection::get_sync(bus)->gobj());
  }
  return sent;
}

void refresh(::benchmark::State& state, AppModel::Reason reason) {
  RealModel model;
  const guint32 before = messagesSent();
  for (auto _ : state) model->refresh(reason);
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
