// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Battery/BatteryState.h"
#include "Platform/LowPowerMode.h"
#include "Platform/PowerSources.h"

#include <functional>

namespace lumora {

/// Turns what the system reports into a `BatteryState`. Nothing fails: what is missing or of the
/// wrong kind stays absent, and without a battery the state is the empty one.
class BatteryReader {
 public:
  /// Both must outlive the reader.
  BatteryReader(PowerSources& powerSources, LowPowerMode& lowPowerMode)
      : powerSources_(powerSources), lowPowerMode_(lowPowerMode) {}

  /// The battery as the system reports it now. Immediate: no I/O, no waiting.
  BatteryState read() const;

  /// How far a reading without a battery is to be believed.
  PowerSources::Standing standing() const { return powerSources_.standing(); }

  /// Runs `changed` on the main thread whenever the power sources change. The first registration
  /// that succeeds stays; later ones are ignored.
  void startObserving(std::function<void()> changed);

 private:
  void readLive(BatteryState& state) const;
  void readRegistry(BatteryState& state) const;

  PowerSources& powerSources_;
  LowPowerMode& lowPowerMode_;
  bool observing_ = false;
};

}  // namespace lumora
