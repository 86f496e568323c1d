// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alerts/AlertEngine.h"
#include "Alerts/Notifier.h"
#include "Battery/BatteryReader.h"
#include "History/HistoryStore.h"
#include "Lifetime.h"
#include "Observable.h"
#include "Platform/Clock.h"
#include "Platform/SleepEvents.h"
#include "Preferences/DefaultsStore.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <thread>

namespace lumora {

/// The spine: it refreshes on a timer and on events, publishes what the views show, and sees that
/// reminders go out. Everything happens on the thread that made it; a callback that comes on
/// another one ends the process.
class AppModel {
 public:
  /// Why a refresh runs.
  enum class Reason {
    launch,  ///< Once, at the start.
    change,  ///< A power source or the power-saving mode changed, or the popover opens.
    timer,   ///< Every minute.
    wake,    ///< Three seconds after the machine woke up.
  };

  /// What the model needs from the system. All must outlive it.
  struct Services {
    Clock& clock;
    RunLoop& runLoop;
    PowerSources& powerSources;
    LowPowerMode& lowPowerMode;
    SleepEvents& sleepEvents;
    NotificationCentre& notificationCentre;
    const Bundle& bundle;
    Files& files;
    DefaultsStore& defaults;
    std::filesystem::path applicationSupport;  ///< The folder for programs' own data.
  };

  explicit AppModel(const Services& services);

  /// Runs the first refresh and installs everything that triggers later ones. Call it once.
  void start();

  void refresh(Reason reason);

  /// Holds reminders back for one hour from now.
  void snooze();

  /// Ends a snooze.
  void cancelSnooze();

  /// Deletes all samples.
  void resetHistory();

  /// Writes the history now: before sleep and at the end of the program.
  void saveHistory();

  /// The last reading. It changes only when a reading differs.
  Observable<BatteryState>& state() { return state_; }

  /// Since when the machine has been on external power; absent on battery or without one.
  Observable<std::optional<Date>>& pluggedSince() { return pluggedSince_; }

  /// Grows with every refresh and reset: views of the history read the store again.
  Observable<std::int64_t>& historyVersion() { return historyVersion_; }

  /// The end of the snooze as shown. It may have passed until a refresh clears it.
  Observable<std::optional<Date>>& snoozeUntil() { return snoozeUntil_; }

  const HistoryStore& history() const { return history_; }
  Notifier& notifier() { return notifier_; }

 private:
  std::function<void()> onModelsThread(std::function<void()> task) const;
  void updatePluggedSince(const BatteryState& reading, Date now, Reason reason);
  bool mayDeliver(const Prefs& prefs, Date now);

  Clock& clock_;
  RunLoop& runLoop_;
  LowPowerMode& lowPowerMode_;
  SleepEvents& sleepEvents_;
  DefaultsStore& defaults_;

  Observable<BatteryState> state_{BatteryState{}};
  Observable<std::optional<Date>> pluggedSince_{std::nullopt};
  Observable<std::int64_t> historyVersion_{0};
  Observable<std::optional<Date>> snoozeUntil_;
  BatteryReader reader_;
  HistoryStore history_;
  Notifier notifier_;
  AlertEngine engine_;

  std::thread::id mainThread_ = std::this_thread::get_id();
  Lifetime lifetime_;
};

}  // namespace lumora
