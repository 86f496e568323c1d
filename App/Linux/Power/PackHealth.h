// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"
#include "Base/Lifetime.h"
#include "Linux/Power/UPowerDevice.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumora {

/// What the kernel says of a pack's age; absent what it does not tell, or tells as 0 or less.
struct PackHealth {
  std::optional<double> share;         ///< Full capacity today of the design's; 1 as new.
  std::optional<std::int32_t> cycles;  ///< Charge cycles.

  bool operator==(const PackHealth&) const = default;
};

/// Reads it from the pack's folder under /sys/class/power_supply: energy_full and
/// energy_full_design (µWh), or else charge_full and charge_full_design (µAh), and cycle_count. The
/// firmware is asked and may take its time: not for the main thread.
PackHealth readPackHealth(const std::filesystem::path& pack);

/// Keeps the health of the packs true while UPower runs, which reads it only when it starts or a
/// pack is put in. The kernel is asked off the main loop, one reading at a time: when a pack is
/// first seen, when one becomes full or ceases to be, and after an hour.
class PackHealthReader {
 public:
  /// `powerSupplies` is the kernel's folder of them. `changed` runs on the main thread when there
  /// is news, and when the first reading of a pack is in or has taken a second (a
  /// timeout).
  PackHealthReader(std::filesystem::path powerSupplies, std::function<void()> changed)
      : powerSupplies_(std::move(powerSupplies)), changed_(std::move(changed)) {}

  /// What UPower says of its devices now; `uptime` is of `Clock::sinceBoot`.
  void take(std::vector<UPowerDevice> devices, Seconds uptime);

  /// Reads anew if it is time to. Cheap; call it as often as you like.
  void look(Seconds uptime);

  /// A pack's health is on its way for the first time, since less than a second.
  bool isAwaited() const { return awaited_; }

  /// Puts the kernel's figures in the place of UPower's, unless UPower has told others since.
  void correct(UPowerDevice& device) const;

 private:
  /// What the kernel said, and what UPower had told when it was asked.
  struct Reading {
    double energyFull = 0;
    double energyFullDesign = 0;
    std::int32_t chargeCycles = -1;
    PackHealth health;

    bool operator==(const Reading&) const = default;
  };
  struct Pack {
    bool isFull = false;
    Reading last;
  };
  using Readings = std::map<std::string, Reading>;  ///< By the kernel's name.

  bool isDue(Seconds uptime) const;
  void read(Seconds uptime);
  void onRead(const Readings& readings);

  std::filesystem::path powerSupplies_;
  std::function<void()> changed_;
  std::vector<UPowerDevice> devices_;
  std::map<std::string, Pack> packs_;  ///< By the kernel's name, also those that have gone.
  Seconds readAt_{0};
  bool reading_ = false;
  bool awaited_ = false;
  Lifetime lifetime_;
};

}  // namespace lumora
