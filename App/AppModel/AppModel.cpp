// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppModel/AppModel.h"

#include "Preferences/Prefs.h"
#include "Preferences/SoundNames.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace lumora {
namespace {

constexpr std::chrono::seconds kRefreshInterval{60};
constexpr std::chrono::seconds kRefreshTolerance{10};
// The power sources take a moment to tell the truth after a sleep.
constexpr std::chrono::milliseconds kWakeDelay{3000};
constexpr Seconds kSnooze{3600};
// Within which a reminder that nobody was there to show may still be shown.
constexpr Seconds kLatestReminder{600};

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
      files_(services.files),
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
  sleepEvents_.observe(onModelsThread([this] { willSleep(); }),
                       onModelsThread([this] { didWake(); }));
}

void AppModel::willSleep() {
  asleep_ = true;
  ++sleeps_;
  saveHistory();
  files_.whenWritten([hold = sleepEvents_.hold()] {});
}

void AppModel::didWake() {
  runLoop_.runAfter(kWakeDelay, onModelsThread([this, sleep = sleeps_] {
                      // It may have fallen asleep again meanwhile.
                      if (sleep == sleeps_) asleep_ = false;
                      refresh(Reason::wake);
                    }));
}

void AppModel::refresh(Reason reason) {
  const BatteryState reading = reader_.read();
  const Date now = this->now();
  const auto standing = reader_.standing();
  const bool settled = reading.hasBattery || standing == PowerSources::Standing::settled;
  if (!settled && startsOver(reason)) owed_ = reason;
  if (settled && owed_) reason = *std::exchange(owed_, std::nullopt);
  if (settled) updatePluggedSince(reading, now, reason);
  const bool looking = !settled && standing == PowerSources::Standing::looking;
  if (looking != *looking_) looking_.set(looking);
  if (reading != *state_) state_.set(reading);
  history_.record(reading, now,
                  reason == Reason::change ? HistoryStore::Force::no : HistoryStore::Force::yes);
  historyVersion_.set(*historyVersion_ + 1);
  if (settled) remind(reading, now, reason);
}

void AppModel::remind(const BatteryState& reading, Date now, Reason reason) {
  const Seconds uptime = clock_.sinceBoot();
  gate_.take(reading, uptime);
  const Prefs prefs = Prefs::current(defaults_);
  AlertEngine::Input input{.state = reading, .since = *pluggedSince_, .now = now, .prefs = prefs};
  if (startsOver(reason)) {
    input.prime = true;
    engine_.run(input, defaults_);
    return;
  }

  input.canDeliver = mayDeliver(prefs, now);
  if (const Seconds left = gate_.holdLeft(uptime); left > Seconds{0}) return lookAgainIn(left);
  for (const PendingAlert& alert : engine_.run(input, defaults_)) {
    if (!gate_.admit(alert.kind, uptime)) continue;
    const auto sound = prefs.sounds.find(alert.kind);
    notifier_.post(
        alert, sound == prefs.sounds.end() ? kDefaultSoundName : sound->second,
        lifetime_.guard([this, kind = alert.kind, uptime] { return stillSo(kind, uptime); }));
  }
}

/// Whether what could not be shown when it was posted may be shown now.
bool AppModel::stillSo(AlertKind kind, Seconds posted) {
  if (clock_.sinceBoot() - posted > kLatestReminder) return false;
  const Prefs prefs = Prefs::current(defaults_);
  const Date now = this->now();
  return mayDeliver(prefs, now) &&
         engine_.stillSo(kind,
                         {.state = *state_, .since = *pluggedSince_, .now = now, .prefs = prefs});
}

void AppModel::updatePluggedSince(const BatteryState& reading, Date now, Reason reason) {
  if (!reading.hasBattery || !reading.pluggedIn) {
    if (*pluggedSince_) pluggedSince_.set(std::nullopt);
    return;
  }
  if (*pluggedSince_) return;
  pluggedSince_.set(startsOver(reason) ? history_.pluggedSinceEstimate(now).value_or(now) : now);
}

/// Not during a sleep, a snooze or quiet hours. A snooze that has run out is no longer shown.
bool AppModel::mayDeliver(const Prefs& prefs, Date now) {
  if (Prefs::snoozeUntil(defaults_, now)) return false;
  if (*snoozeUntil_) snoozeUntil_.set(std::nullopt);
  return !asleep_ && !prefs.inQuietHours(now);
}

/// For what would only be looked at with the next minute.
void AppModel::lookAgainIn(Seconds delay) {
  if (std::exchange(lookingAgain_, true)) return;
  runLoop_.runAfter(std::chrono::ceil<std::chrono::milliseconds>(delay), onModelsThread([this] {
                      lookingAgain_ = false;
                      refresh(Reason::change);
                    }));
}

void AppModel::snooze() {
  const Date now = this->now();
  Prefs::setSnoozeUntil(defaults_, now + kSnooze);
  snoozeUntil_.set(Prefs::snoozeUntil(defaults_, now));
}

void AppModel::cancelSnooze() {
  Prefs::setSnoozeUntil(defaults_, std::nullopt);
  snoozeUntil_.set(std::nullopt);
}

void AppModel::resetHistory() {
  history_.setSamples({});
  history_.save(now());
  historyVersion_.set(*historyVersion_ + 1);
}

void AppModel::saveHistory() { history_.save(now()); }

/// The time, for all that happens. A clock that was set comes to light here.
Date AppModel::now() {
  const Date now = clock_.now();
  const Seconds jump = clockJumps_.look(now, clock_.sinceBoot());
  if (jump != Seconds{0}) moveDates(jump, now);
  return now;
}

/// Dates that stand for how long something has lasted or will last go along with the clock.
void AppModel::moveDates(Seconds jump, Date now) {
  const Date before = now - jump;
  // Of a history with a better clock than this one was, it may lie ahead.
  if (*pluggedSince_) pluggedSince_.set(std::min(**pluggedSince_, before) + jump);
  engine_.chargeLast += jump;
  history_.clockWasSet(jump);
  if (const auto until = Prefs::snoozeUntil(defaults_, before)) {
    Prefs::setSnoozeUntil(defaults_, *until + jump);
    snoozeUntil_.set(Prefs::snoozeUntil(defaults_, now));
  }
}

/// A callback for the platform: `task` while the model lives, on the model's thread alone.
std::function<void()> AppModel::onModelsThread(std::function<void()> task) const {
  return [mainThread = mainThread_, guarded = lifetime_.guard(std::move(task))] {
    if (std::this_thread::get_id() != mainThread) std::abort();
    guarded();
  };
}

}  // namespace lumora
