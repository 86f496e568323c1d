// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alerts/AlertEngine.h"
#include "Battery/BatteryState.h"
#include "Platform/Date.h"
#include "Preferences/DefaultsStore.h"
#include "Preferences/Prefs.h"

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

}  // namespace lumora::test
