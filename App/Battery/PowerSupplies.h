// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// One battery pack that feeds the machine and is in its bay, in SI units.
struct BatteryPack {
  enum class State {
    unknown,
    charging,
    discharging,
    empty,
    full,
    heldOnMains,    ///< On the adapter, not charging: a charge limit, or too warm.
    heldOnBattery,  ///< Gives nothing; another pack does.
  };

  State state = State::unknown;
  std::optional<double> percent;    ///< 0 to 100; absent until it was told.
  double energy = 0;                ///< Wh left; 0 unknown, as for the next three.
  double energyFull = 0;            ///< Wh when full, today.
  double energyFullDesign = 0;      ///< Wh when full, as new.
  double power = 0;                 ///< W in or out, never negative: the state has the direction.
  double voltage = 0;               ///< V; 0 unknown.
  double temperature = 0;           ///< Degrees Celsius; 0 unknown.
  std::int64_t cycles = 0;          ///< Charge cycles; 0 or less unknown.
  std::int64_t secondsToEmpty = 0;  ///< 0: no estimate.
  std::int64_t secondsToFull = 0;   ///< 0: no estimate.
  std::string name;

  bool operator==(const BatteryPack&) const = default;
};

/// What feeds the machine. Peripherals, a UPS and packs that are not in their bay are left out.
struct PowerSupplies {
  std::vector<BatteryPack> packs;
  bool adapterOnline = false;       ///< An adapter says that it gives power.
  std::optional<int> adapterWatts;  ///< What it is rated for; absent when unknown.

  bool operator==(const PowerSupplies&) const = default;
};

/// The descriptions of `PowerSources::descriptions`: one battery for all packs, none without a
/// pack. Several packs count as one whose energies are added up. The machine is on mains when an
/// adapter says so or, because some adapters never announce themselves, when the battery charges,
/// is full or is held on mains. Estimates of more than 240 hours to empty or 20 to full are none.
std::vector<Dictionary> powerSourceDescriptions(const PowerSupplies& supplies);

/// The entry of `PowerSources::registryEntry`: energies, cycles and measurements of the packs, of
/// cycles, temperature and voltage the highest; absent without a pack.
std::optional<Dictionary> batteryRegistryEntry(const PowerSupplies& supplies);

}  // namespace lumora
