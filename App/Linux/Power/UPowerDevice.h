// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Battery/PowerSupplies.h"
#include "Linux/Bus/Variants.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// One device as UPower describes it (interface org.freedesktop.UPower.Device). A property that was
/// never told has the value here; one of another type than documented is passed over.
struct UPowerDevice {
  enum class Type : std::uint32_t { unknown = 0, linePower = 1, battery = 2 };
  enum class State : std::uint32_t {
    unknown = 0,
    charging = 1,
    discharging = 2,
    empty = 3,
    fullyCharged = 4,
    pendingCharge = 5,
    pendingDischarge = 6,
  };

  Type type = Type::unknown;
  State state = State::unknown;
  bool powerSupply = false;  ///< Feeds the machine, not a device beside it.
  bool isPresent = false;
  bool online = false;  ///< A line-power device gives power.
  std::optional<double> percentage;
  double energy = 0;               ///< Wh; 0 unknown, as for the next three.
  double energyFull = 0;           ///< Wh
  double energyFullDesign = 0;     ///< Wh
  double energyRate = 0;           ///< W, whatever the direction.
  double voltage = 0;              ///< V; 0 unknown.
  double temperature = 0;          ///< Degrees Celsius; 0 unknown.
  std::int32_t chargeCycles = -1;  ///< -1 unknown, and 0 from drivers that do not count.
  std::int64_t timeToEmpty = 0;    ///< Seconds; 0 no estimate.
  std::int64_t timeToFull = 0;     ///< Seconds; 0 no estimate.
  std::string model;
  std::string nativePath;

  bool operator==(const UPowerDevice&) const = default;

  /// A battery of the machine that is in its bay.
  bool isMachineBattery() const;

  /// Takes over those of the properties that are here.
  void update(const Glib::VariantBase& properties);

  /// The device as a pack; it has the kernel's name where it has no model.
  BatteryPack pack() const;
};

/// Those of the devices that feed the machine. What the adapter is rated for UPower does not know.
PowerSupplies powerSupplies(const std::vector<UPowerDevice>& devices);

}  // namespace lumora
