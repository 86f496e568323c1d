// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What the history costs at several lengths, beside a copy of the same bytes and two JSON
// libraries.
#include "Content/ChartPoints.h"
#include "History/HistoryFile.h"
#include "History/HistoryStore.h"
#include "Linux/System/LocalFiles.h"
#include "Support/MemoryFiles.h"
#include "Support/TemporaryFolder.h"

#include <cstring>

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace lumora::benchmark {
namespace {

const Date kNow = dateSince1970(1'790'000'000.25);
constexpr double kDay = 86'400;

/// So many samples up to now, a minute apart, or closer where the thirty days would not hold them.
std::vector<Sample> samplesUpToNow(std::int64_t count) {
  constexpr double kThirtyDays = 30 * kDay;
  const double spacing = std::min(60.0, (kThirtyDays - 60) / static_cast<double>(count));
  std::vector<Sample> samples;
  for (std::int64_t i = 0; i < count; ++i) {
    const bool charging = i % 720 < 360;
    const std::int64_t level = charging ? i % 720 : 720 - i % 720;
    // Timers come a little late, and the clock has fractions.
    const double before = spacing * static_cast<double>(count - 1 - i);
    const double time = secondsSince1970(kNow) - before - 1e-6 * static_cast<double>(i % 720);
    samples.push_back({time, 20 + level * 80 / 360, charging, charging});
  }
  return samples;
}

/// The same in a store whose disk is memory.
struct Stored {
  explicit Stored(std::int64_t count)
      : samples(samplesUpToNow(count)), text(*encodeSamples(samples)) {
    files.edit("/data/Lumora/history.json", text);
    store.emplace(files, "/data", kNow);
  }

  std::vector<Sample> samples;
  std::string text;
  test::MemoryFiles files;
  std::optional<HistoryStore> store;
};

/// From a file.
void load(::benchmark::State& state) {
  const Stored stored(state.range(0));
  const test::TemporaryFolder folder;
  LocalFiles files;
  files.replace(folder.path() / "Lumora" / "history.json", stored.text);
  for (auto _ : state) {
    const HistoryStore store(files, folder.path(), kNow);
    if (store.samples().size() != stored.samples.size()) state.SkipWithError("some are missing");
  }
}

void encode(::benchmark::State& state) {
  const Stored stored(state.range(0));
  for (auto _ : state) ::benchmark::DoNotOptimize(encodeSamples(stored.samples));
}

void save(::benchmark::State& state) {
  Stored stored(state.range(0));
  for (auto _ : state) stored.store->save(kNow);
}

void samplesOfADay(::benchmark::State& state) {
  const Stored stored(state.range(0));
  for (auto _ : state) ::benchmark::DoNotOptimize(stored.store->samples(kNow - Seconds(kDay)));
}

void summariesOfAWeek(::benchmark::State& state) {
  const Stored stored(state.range(0));
  for (auto _ : state) ::benchmark::DoNotOptimize(stored.store->dailySummaries(7, kNow));
}

void pointsOfADay(::benchmark::State& state) {
  const Stored stored(state.range(0));
  for (auto _ : state) {
    ::benchmark::DoNotOptimize(chartPoints(stored.store->samples(kNow - Seconds(kDay))));
  }
}

void pointsOfAWeek(::benchmark::State& state) {
  const Stored stored(state.range(0));
  for (auto _ : state) {
    ::benchmark::DoNotOptimize(chartPoints(stored.store->samples(kNow - Seconds(7 * kDay))));
  }
}

void copyTheText(::benchmark::State& state) {
  const Stored stored(state.range(0));
  std::string copy(stored.text.size(), ' ');
  for (auto _ : state) {
    std::memcpy(copy.data(), stored.text.data(), copy.size());
    ::benchmark::ClobberMemory();
  }
}

void nlohmannParses(::benchmark::State& state) {
  const Stored stored(state.range(0));
  for (auto _ : state) ::benchmark::DoNotOptimize(nlohmann::json::parse(stored.text));
}

void nlohmannWrites(::benchmark::State& state) {
  const Stored stored(state.range(0));
  const auto document = nlohmann::json::parse(stored.text);
  for (auto _ : state) ::benchmark::DoNotOptimize(document.dump());
}

void rapidjsonParses(::benchmark::State& state) {
  const Stored stored(state.range(0));
  for (auto _ : state) {
    rapidjson::Document document;
    document.Parse(stored.text.c_str());
    ::benchmark::DoNotOptimize(document.Size());
  }
}

void rapidjsonWrites(::benchmark::State& state) {
  const Stored stored(state.range(0));
  rapidjson::Document document;
  document.Parse(stored.text.c_str());
  for (auto _ : state) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer writer(buffer);
    document.Accept(writer);
    ::benchmark::DoNotOptimize(buffer.GetString());
  }
}

void lengths(::benchmark::internal::Benchmark* benchmark) {
  for (const std::int64_t count : {1'000, 10'000, 43'200, 432'000}) benchmark->Arg(count);
}

BENCHMARK(load)->Apply(lengths);
BENCHMARK(encode)->Apply(lengths);
BENCHMARK(save)->Apply(lengths);
BENCHMARK(samplesOfADay)->Apply(lengths);
BENCHMARK(summariesOfAWeek)->Apply(lengths);
BENCHMARK(pointsOfADay)->Apply(lengths);
BENCHMARK(pointsOfAWeek)->Apply(lengths);
BENCHMARK(copyTheText)->Apply(lengths);
BENCHMARK(nlohmannParses)->Apply(lengths);
BENCHMARK(nlohmannWrites)->Apply(lengths);
BENCHMARK(rapidjsonParses)->Apply(lengths);
BENCHMARK(rapidjsonWrites)->Apply(lengths);

}  // namespace
}  // namespace lumora::benchmark

BENCHMARK_MAIN();
