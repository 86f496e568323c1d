// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AppModel/AppModel.h"
#include "Battery/PowerSupplies.h"
#include "Support/FakeLowPowerMode.h"
#include "Support/FakeRunLoop.h"
#include "Support/FakeSleepEvents.h"
#include "Support/MemoryFiles.h"
#include "Support/ScopedTimeZone.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumora::test {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

/// A laptop with a battery, an adapter and Lumora, whose days pass as fast as can be. It starts on
/// Monday, 2 March 2026, at 08:00 UTC, on battery.
class Machine {
 public:
  using State = BatteryPack::State;

  explicit Machine(double percent);

  /// Starts Lumora, or starts it again.
  void start();
  void end();

  void battery(double percent);
  void adapter(bool online, State state);
  void plugIn() { adapter(true, State::charging); }
  void unplug() { adapter(false, State::discharging); }
  /// Any pack may be changed, or others added; then say so.
  std::vector<BatteryPack>& packs() { return power_.supplies.packs; }
  void changed() { power_.change(); }
  /// The battery is no longer told of, or not yet; `comeBack` tells of it again.
  void lose(PowerSources::Standing standing);
  void comeBack();

  void stay(seconds duration) { runLoop_.advance(duration); }
  /// One percent after the other, each after `each`.
  void goTo(int percent, seconds each);
  /// Saves, sleeps, and wakes up with that percent. UPower tells it at once.
  void sleep(seconds duration, double percentAtWake);
  /// Puts the clock on by so much.
  void setClock(seconds forward) { clock_.set(forward); }
  /// On the clock's time of day, of the time zone that holds, the next time it comes.
  void stayUntil(int hour, int minute);

  AppModel& model() { return *model_; }
  DefaultsStore& defaults() { return *defaults_; }

  /// "Mon 09:12 low: Battery is at 20%. Plug in soon.", in the time zone that holds then.
  const std::vector<std::string>& told() const { return told_; }
  /// The same without the texts: "Mon 09:12 low".
  std::vector<std::string> kinds() const;

  /// The samples, those of the same flags no more than a minute apart as one:
  /// "Mon 08:00:00 to 10:00:00 battery 60 to 30 %: 151".
  std::vector<std::string> history() const;

 private:
  /// The power supplies, and who hears of their changes.
  struct Power final : PowerSources {
    std::optional<std::vector<Dictionary>> descriptions() override;
    std::optional<Dictionary> registryEntry() const override;
    Standing standing() const override { return stands; }
    bool observe(std::function<void()> changed) override;
    void change() const;

    PowerSupplies supplies;
    Standing stands = Standing::settled;
    std::vector<std::function<void()>> observers;
  };

  /// A server that notes what it shows, and when.
  struct Server final : NotificationCentre {
    explicit Server(Machine& owner) : machine(owner) {}
    void setResponseHandler(ResponseHandler /*handler*/) override {}
    void setCategories(std::vector<NotificationCategory> /*given*/) override {}
    void authorizationStatus(std::function<void(AuthorizationStatus)> /*answer*/) override {}
    void requestAuthorization() override {}
    void add(NotificationRequest request, StillSo stillSo) override;

    Machine& machine;
  };

  BatteryPack& machineBattery() { return power_.supplies.packs.front(); }

  std::vector<BatteryPack> lost_;
  FakeClock clock_;
  FakeRunLoop runLoop_{clock_};
  Power power_;
  FakeLowPowerMode lowPowerMode_;
  FakeSleepEvents sleepEvents_;
  Server server_{*this};
  Bundle bundle_{"/opt/Lumora.app", "org.example.Lumora"};
  MemoryFiles files_;
  std::optional<DefaultsStore> defaults_;
  std::unique_ptr<AppModel> model_;
  std::vector<std::string> told_;
};

/// A moment as the clock on the wall shows it: "%a %H:%M" and the like.
std::string wallTime(Date date, const char* format);

}  // namespace lumora::test
