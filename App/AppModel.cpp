// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppModel.h"

#include "Preferences/Prefs.h"

#include <cstdlib>
#include <utility>

namespace lumora {
namespace {

constexpr std::chrono::seconds kRefreshInterval{60};
constexpr std::chrono::seconds kRefreshTolerance{10};
// The power sources take a moment to tell the truth after a sleep.
constexpr std::chrono::milliseconds kWakeDelay{3000};
constexpr Seconds kSnooze{3600};

/// After these the machine may have been plugged in for long, and reminders begin anew.
bool startsOver(AppModel::Reason reason) {
  return reason == AppModel::Reason::launch || reason == AppModel::Reason::wake;
}

}  // namespace

AppModel::AppModel(const Services& services)
    : clock_(services.clock),
      runLoop_(services.runLoop),
      lowPowerMode_(services.lowPowerMode),
      sleepEvents_(services.sleepEvents),
      defaults_(services.defaults),
      snoozeUntil_(Prefs::snoozeUntil(services.defaults, services.clock.now())),
      reader_(services.powerSources, services.lowPowerMode),
      history_(services.files, services.applicationSupport, services.clock.now()),
      notifier_(services.notificationCentre, services.bundle, services.runLoop) {}

void AppModel::start() {
  notifier_.setup();
  notifier_.onSnooze = onModelsThread([this] { snooze(); });
  refresh(Reason::launch);
  reader_.startObserving(onModelsThread([this] { refresh(Reason::change); }));
  runLoop_.repeatEvery(kRefreshInterval, kRefreshTolerance,
                       onModelsThread([this] { refresh(Reason::timer); }));
  lowPowerMode_.observe(onModelsThread([this] { refresh(Reason::change); }));
  sleepEvents_.observe(onModelsThread([this] { saveHistory(); }), onModelsThread([this] {
                         runLoop_.runAfter(kWakeDelay,
                                           onModelsThread([this] { refresh(Reason::wake); }));
                       }));
}

void AppModel::refresh(Reason reason) {
  const BatteryState reading = reader_.read();
  const Date now = clock_.now();
  updatePluggedSince(reading, now, reason);
  if (reading != *state_) state_.set(reading);
  history_.record(reading, now,
                  reason == Reason::change ? HistoryStore::Force::no : HistoryStore::Force::yes);
  historyVersion_.set(*historyVersion_ + 1);

  const Prefs prefs = Prefs::current(defaults_);
  AlertEngine::Input input{.state = reading, .since = *pluggedSince_, .now = now, .prefs = prefs};
  if (startsOver(reason)) {
    input.prime = true;
    engine_.run(input, defaults_);
    return;
  }

  input.canDeliver = mayDeliver(prefs, now);
  for (const PendingAlert& alert : engine_.run(input, defaults_)) {
    const auto sound = prefs.sounds.find(alert.kind);
    notifier_.post(alert, sound == prefs.sounds.end() ? "default" : sound->second);
  }
}

void AppModel::updatePluggedSince(const BatteryState& reading, Date now, Reason reason) {
  if (!reading.hasBattery || !reading.pluggedIn) {
    if (*pluggedSince_) pluggedSince_.set(std::nullopt);
    return;
  }
  if (*pluggedSince_) return;
  pluggedSince_.set(startsOver(reason) ? history_.pluggedSinceEstimate(now).value_or(now) : now);
}

/// Not during a snooze, nor in quiet hours. A snooze that has run out is no longer shown.
bool AppModel::mayDeliver(const Prefs& prefs, Date now) {
  if (Prefs::snoozeUntil(defaults_, now)) return false;
  if (*snoozeUntil_) snoozeUntil_.set(std::nullopt);
  return !prefs.inQuietHours(now);
}

void AppModel::snooze() {
  const Date now = clock_.now();
  Prefs::setSnoozeUntil(defaults_, now + kSnooze);
  snoozeUntil_.set(Prefs::snoozeUntil(defaults_, now));
}

void AppModel::cancelSnooze() {
  Prefs::setSnoozeUntil(defaults_, std::nullopt);
  snoozeUntil_.set(std::nullopt);
}

void AppModel::resetHistory() {
  history_.setSamples({});
  history_.save(clock_.now());
  historyVersion_.set(*historyVersion_ + 1);
}

void AppModel::saveHistory() { history_.save(clock_.now()); }

/// A callback for the platform: `task` while the model lives, on the model's thread alone.
std::function<void()> AppModel::onModelsThread(std::function<void()> task) const {
  return [mainThread = mainThread_, guarded = lifetime_.guard(std::move(task))] {
    if (std::this_thread::get_id() != mainThread) std::abort();
    guarded();
  };
}

}  // namespace lumora
