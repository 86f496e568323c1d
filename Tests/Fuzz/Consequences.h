// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alerts/AlertEngine.h"
#include "Base/Date.h"
#include "Battery/BatteryReader.h"
#include "Battery/BatteryState.h"
#include "Fuzzer.h"
#include "Preferences/DefaultsStore.h"
#include "Preferences/Prefs.h"
#include "Support/FakeLowPowerMode.h"
#include "Support/FakePowerSources.h"
#include "Support/MemoryFiles.h"

#include <optional>

namespace lumora::test {

/// Whatever was read, a state keeps what its fields promise.
void expectSound(const BatteryState& state);

/// Follows readings through all that they lead to: reminders, the item in the tray with its menu,
/// and the popover. Ends the fuzzer where something does not fit together.
class Consequences {
 public:
  /// With the settings as they are now. `defaults` must outlive this.
  explicit Consequences(DefaultsStore& defaults)
      : defaults_(defaults), prefs_(Prefs::current(defaults)) {}

  /// A refresh at `now`, plugged in since `since`.
  void follow(const BatteryState& state, Date now, std::optional<Date> since);

 private:
  DefaultsStore& defaults_;
  Prefs prefs_;
  AlertEngine engine_;
};

/// A machine whose readings are followed, a minute after one another.
class ReadMachine {
 public:
  void read() {
    consequences_.follow(reader_.read(), now_, kNow - Seconds(3600));
    now_ += Seconds(60);
  }

  FakePowerSources sources;
  FakeLowPowerMode lowPowerMode;

 private:
  const BatteryReader reader_{sources, lowPowerMode};
  MemoryFiles files_;
  DefaultsStore defaults_{files_, "/settings/Lumora/defaults.json"};
  Consequences consequences_{defaults_};
  Date now_ = kNow;
};

}  // namespace lumora::test
