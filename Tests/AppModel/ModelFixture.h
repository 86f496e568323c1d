// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AppModel/AppModel.h"
#include "History/HistoryFile.h"
#include "Support/Builders.h"
#include "Support/FakeLowPowerMode.h"
#include "Support/FakeNotificationCentre.h"
#include "Support/FakePowerSources.h"
#include "Support/FakeRunLoop.h"
#include "Support/FakeSleepEvents.h"
#include "Support/MemoryFiles.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lumora::test {

/// A model among fakes. It is made at the first use, so a test can prepare what it finds.
class ModelFixture : public testing::Test {
 protected:
  using Reason = AppModel::Reason;

  AppModel& model() {
    if (!model_) {
      model_ = std::make_unique<AppModel>(AppModel::Services{.clock = clock,
                                                             .runLoop = runLoop,
                                                             .powerSources = powerSources,
                                                             .lowPowerMode = lowPowerMode,
                                                             .sleepEvents = sleepEvents,
                                                             .notificationCentre = centre,
                                                             .bundle = bundle,
                                                             .files = files,
                                                             .defaults = defaults,
                                                             .applicationSupport = "/data"});
    }
    return *model_;
  }

  void endModel() {
    subscriptions_.clear();
    model_.reset();
  }

  /// Records each announcement of the four properties with the value that they then have.
  void watchProperties() {
    AppModel& watched = model();
    subscriptions_ = {watched.state().subscribe([&] {
                        recorder.add("state " + std::to_string(watched.state()->percent));
                      }),
                      watched.pluggedSince().subscribe(
                          [&] { recorder.add("pluggedSince " + ago(*watched.pluggedSince())); }),
                      watched.historyVersion().subscribe([&] {
                        recorder.add("historyVersion " + std::to_string(*watched.historyVersion()));
                      }),
                      watched.snoozeUntil().subscribe(
                          [&] { recorder.add("snoozeUntil " + ago(*watched.snoozeUntil())); })};
    recorder.take();
  }

  void plugIn(int percent) { powerSources.sources = {pluggedInSource(percent)}; }
  void unplug(int percent) { powerSources.sources = {batterySource(percent)}; }
  void removeBattery() { powerSources.sources.reset(); }

  /// Refreshes and tells the identifiers of what was posted.
  std::string posted(Reason reason) {
    centre.added.clear();
    model().refresh(reason);
    std::string identifiers;
    for (const auto& request : centre.added) {
      identifiers += (identifiers.empty() ? "" : " ") + request.identifier;
    }
    return identifiers;
  }

  void pass(double seconds) { clock.time += Seconds{seconds}; }

  /// Lays a history beside which the model will start: plugged in or not, so many seconds ago.
  void givenHistory(const std::vector<std::pair<double, bool>>& samples) {
    std::vector<Sample> list;
    list.reserve(samples.size());
    for (const auto& [before, plugged] : samples) {
      list.push_back({secondsSince1970(clock.time) - before, 50, false, plugged});
    }
    files.edit("/data/Lumora/history.json", *encodeSamples(list));
  }

  std::vector<Sample> samples() {
    const auto all = model().history().samples();
    return {all.begin(), all.end()};
  }

  std::vector<Sample> savedSamples() const {
    std::string text = files.text("/data/Lumora/history.json").value_or("");
    return decodeSamples(text).value_or(std::vector<Sample>{});
  }

  Recorder recorder;
  FakeClock clock{&recorder};
  FakeRunLoop runLoop{clock, &recorder};
  FakePowerSources powerSources{&recorder};
  FakeLowPowerMode lowPowerMode{&recorder};
  FakeSleepEvents sleepEvents{&recorder};
  FakeNotificationCentre centre{&recorder};
  Bundle bundle{"/opt/Lumora.app", "org.example.Lumora"};
  MemoryFiles files{&recorder};
  DefaultsStore defaults{files, "/config/defaults.json"};

 private:
  std::string ago(std::optional<Date> date) const {
    if (!date) return "absent";
    return std::to_string(static_cast<int>((clock.time - *date).count())) + " s ago";
  }

  std::unique_ptr<AppModel> model_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace lumora::test
