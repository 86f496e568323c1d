// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alerts/AlertEngine.h"
#include "Alerts/DeliveryGate.h"
#include "Alerts/Notifier.h"
#include "AppModel/ClockJumps.h"
#include "Base/Date.h"
#include "Base/Lifetime.h"
#include "Base/Observable.h"
#include "Battery/BatteryReader.h"
#include "Battery/BatteryState.h"
#include "History/HistoryStore.h"
#include "Platform/Bundle.h"
#include "Platform/Clock.h"
#include "Platform/LowPowerMode.h"
#include "Platform/NotificationCentre.h"
#include "Platform/PowerSources.h"
#include "Platform/RunLoop.h"
#include "Platform/SleepEvents.h"
#include "Preferences/AlertKind.h"
#include "Preferences/DefaultsStore.h"
#include "Preferences/Prefs.h"
#include "Storage/Files.h"

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
    timer,   ///< Every 60 seconds, up to 10 late.
    wake,    ///< Three seconds after the machine woke up; since it fell asleep reminders wait.
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

  /// Takes one reading: publishes it, records it in the history and sends the reminders that are
  /// due. At `launch` and `wake` none goes out; what is in force is taken as known. While a missing
  /// battery may yet come, or come back (`PowerSources::standing`), reminders and plugged-in time
  /// stay as they are; a launch or wake-up then takes place with the first settled account.
  void refresh(Reason reason);

  /// Holds reminders back for 3600 seconds from now; a second call begins the hour anew.
  void snooze();

  /// Ends a snooze.
  void cancelSnooze();

  /// Deletes all samples.
  void resetHistory();

  /// Writes the history: before sleep and at the end of the program.
  void saveHistory();

  /// The last reading. It changes only when a reading differs.
  Observable<BatteryState>& state() { return state_; }

  /// The system has told nothing of its power sources yet, or no longer does: the state has no
  /// battery, and that is all that is known.
  Observable<bool>& looking() { return looking_; }

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
  Date now();
  void moveDates(Seconds jump, Date now);
  void updatePluggedSince(const BatteryState& reading, Date now, Reason reason);
  void remind(const BatteryState& reading, Date now, Reason reason);
  void willSleep();
  void didWake();
  bool mayDeliver(const Prefs& prefs, Date now);
  bool stillSo(AlertKind kind, Seconds posted);
  void lookAgainIn(Seconds delay);

  Clock& clock_;
  RunLoop& runLoop_;
  LowPowerMode& lowPowerMode_;
  SleepEvents& sleepEvents_;
  Files& files_;
  DefaultsStore& defaults_;

  Observable<BatteryState> state_{BatteryState{}};
  Observable<bool> looking_{false};
  Observable<std::optional<Date>> pluggedSince_{std::nullopt};
  Observable<std::int64_t> historyVersion_{0};
  Observable<std::optional<Date>> snoozeUntil_;
  BatteryReader reader_;
  HistoryStore history_;
  Notifier notifier_;
  AlertEngine engine_;
  DeliveryGate gate_;
  ClockJumps clockJumps_;
  bool lookingAgain_ = false;
  // From the announcement of a sleep until the refresh after it.
  bool asleep_ = false;
  std::int64_t sleeps_ = 0;
  // The launch or wake-up that found no settled account: the first one takes its place.
  std::optional<Reason> owed_;

  std::thread::id mainThread_ = std::this_thread::get_id();
  Lifetime lifetime_;
};

}  // namespace lumora
