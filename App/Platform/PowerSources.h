// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Value.h"

#include <functional>
#include <optional>
#include <vector>

namespace lumora {

/// The system's account of its power sources, in dictionaries. Reading is immediate: no I/O, no
/// waiting. A key may be missing and a value of any type or size: `BatteryReader` passes over what
/// is not as said here.
///
/// `descriptions`, one dictionary for each source; the first usable battery is read:
///
/// | Key                | Type   | Unit, range, sentinel                                       |
/// |--------------------|--------|-------------------------------------------------------------|
/// | Type               | text   | "InternalBattery" is the machine's; others are passed over  |
/// | Is Present         | bool   | false: an empty bay; missing counts as present              |
/// | Name               | text   | as the maker or the kernel calls it                         |
/// | Current Capacity   | number | in the unit of Max Capacity; without it there is no battery |
/// | Max Capacity       | number | above 0; here 100, so that the other is a percentage        |
/// | Is Charging        | bool   | taking charge now                                           |
/// | Is Charged         | bool   | the system calls it full                                    |
/// | Power Source State | text   | "AC Power": on mains; anything else: on battery             |
/// | Time to Full Charge| number | minutes; -1: no estimate                                    |
/// | Time to Empty      | number | minutes; -1: no estimate                                    |
///
/// `registryEntry`:
///
/// | Key                | Type   | Unit, range, sentinel                                       |
/// |--------------------|--------|-------------------------------------------------------------|
/// | CycleCount         | number | charge cycles, 0 or more                                    |
/// | DesignCapacity     | number | mWh as new, above 0                                         |
/// | AppleRawMaxCapacity| number | mWh today; believed from 30 to 130 % of the design's        |
/// | Temperature        | number | hundredths of a degree Celsius                              |
/// | Voltage            | number | mV, above 0                                                 |
/// | Amperage           | number | mA; negative while discharging                              |
/// | AdapterDetails     | dictionary | "Watts": number, what the adapter is rated for, 1 or more |
///
/// `BatteryReader` knows some keys more, of other systems: NominalChargeCapacity and MaxCapacity
/// in place of AppleRawMaxCapacity, InstantAmperage in place of Amperage.
///
/// On Linux `powerSourceDescriptions` and `batteryRegistryEntry` (Battery/PowerSupplies.h) fill all
/// of them from what UPower tells (Linux/Power/UPower.h), "Watts" from sysfs (AdapterRating.h),
/// today's capacity and the cycles from sysfs, too, where the kernel tells them (PackHealth.h).
/// Capacities of several packs are added up. A key whose value is unknown is left out.
class PowerSources {
 public:
  /// How far an account without a battery is to be believed.
  enum class Standing {
    looking,  ///< Nothing is told yet, or any more, of what there is.
    waiting,  ///< None is told, but one may come within a grace period: at the start, or again.
    settled,  ///< What is told is so.
  };

  virtual ~PowerSources() = default;

  /// One description for each power source, in the system's order; absent when the system gives
  /// none.
  virtual std::optional<std::vector<Dictionary>> descriptions() = 0;

  /// What the battery itself reports (cycles, capacities, temperature, voltage, current) and the
  /// adapter; absent when there is no such entry.
  virtual std::optional<Dictionary> registryEntry() const = 0;

  /// Of the present account; settled where there is a battery. Its change is told as any other.
  virtual Standing standing() const = 0;

  /// Calls `changed` on the main thread whenever the power-source situation changes, once for a
  /// burst of changes (debounced, see Linux/Power/ChangeCoalescer.h). False when the system cannot
  /// be observed; it may be asked again then.
  virtual bool observe(std::function<void()> changed) = 0;
};

}  // namespace lumora
