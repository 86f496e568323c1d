// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/FakeHost.h"

#include "History/HistoryFile.h"

namespace lumora::test {

std::vector<Sample> minuteSamples(Date end, int minutes) {
  constexpr int kHalfCycle = 360;
  std::vector<Sample> samples;
  for (int minute = minutes - 1; minute >= 0; --minute) {
    const int phase = minute % (2 * kHalfCycle);
    const bool charging = phase >= kHalfCycle;
    const int level = charging ? 2 * kHalfCycle - phase : phase;
    samples.push_back(
        {secondsSince1970(end) - 60.0 * minute, 20 + level * 80 / kHalfCycle, charging, charging});
  }
  return samples;
}

AppModel& FakeHost::model() {
  if (!model_) {
    model_.emplace(AppModel::Services{clock, runLoop, powerSources, lowPowerMode, sleepEvents,
                                      centre, bundle, files, store, "/data"});
  }
  return *model_;
}

void FakeHost::setBattery(std::int64_t percent, const Dictionary& description,
                          const Dictionary& registry) {
  Dictionary source = description;
  source.merge(Dictionary{{"Type", "InternalBattery"},
                          {"Current Capacity", percent},
                          {"Max Capacity", 100},
                          {"Power Source State", "Battery Power"}});
  powerSources.sources = {source};
  powerSources.registry = registry;
}

void FakeHost::setHistory(const std::vector<Sample>& samples) {
  files.edit("/data/Lumora/history.json", encodeSamples(samples).value_or(""));
}

}  // namespace lumora::test
