// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/HistoryFile.h"
#include "History/HistoryStore.h"
#include "Linux/System/LocalFiles.h"
#include "Month.h"
#include "Support/TemporaryFolder.h"

#include <benchmark/benchmark.h>

namespace lumora::benchmark {
namespace {

const Date kNow = dateSince1970(1'790'000'000.25);

/// A store on a full file: read, decode, sort, prune.
void loadAMonth(::benchmark::State& state) {
  const test::TemporaryFolder folder;
  LocalFiles files;
  const auto json = encodeSamples(monthOfSamples(kNow));
  files.replace(folder.path() / "Lumora" / "history.json", *json);
  for (auto _ : state) {
    const HistoryStore store(files, folder.path(), kNow);
    if (store.samples().size() != 43'200) state.SkipWithError("not all samples were loaded");
  }
  state.counters["bytes"] = static_cast<double>(json->size());
}
BENCHMARK(loadAMonth)->Unit(::benchmark::kMillisecond);

void encodeAMonth(::benchmark::State& state) {
  const auto samples = monthOfSamples(kNow);
  for (auto _ : state) ::benchmark::DoNotOptimize(encodeSamples(samples));
}
BENCHMARK(encodeAMonth)->Unit(::benchmark::kMillisecond);

/// Encoding, writing, flushing to the disk and renaming: the disk's part is its own.
void saveAMonth(::benchmark::State& state) {
  const test::TemporaryFolder folder;
  LocalFiles files;
  HistoryStore store(files, folder.path(), kNow);
  store.setSamples(monthOfSamples(kNow));
  for (auto _ : state) store.save(kNow);
}
BENCHMARK(saveAMonth)->Unit(::benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace lumora::benchmark

BENCHMARK_MAIN();
