// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/PowerSupplies.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lumora {
namespace {

using State = BatteryPack::State;

// Longer estimates are noise of a power near zero.
constexpr std::int64_t kLongestToEmpty = std::int64_t{240} * 3600;
constexpr std::int64_t kLongestToFull = std::int64_t{20} * 3600;

double sum(const std::vector<BatteryPack>& packs, double BatteryPack::*field) {
  return std::accumulate(
      packs.begin(), packs.end(), 0.0,
      [field](double total, const BatteryPack& pack) { return total + pack.*field; });
}

bool anyIs(const std::vector<BatteryPack>& packs, State state) {
  return std::any_of(packs.begin(), packs.end(),
                     [state](const BatteryPack& pack) { return pack.state == state; });
}

/// Charging or discharging if one of them is; full only if nothing speaks against it.
State commonState(const std::vector<BatteryPack>& packs) {
  for (const State state : {State::charging, State::discharging, State::heldOnMains,
                            State::heldOnBattery, State::empty, State::full}) {
    if (anyIs(packs, state)) return state;
  }
  return State::unknown;
}

std::int64_t secondsFor(double wattHours, double watts, std::int64_t longest) {
  if (!(watts > 0) || !(wattHours > 0)) return 0;
  const double seconds = wattHours / watts * 3600;
  return seconds <= static_cast<double>(longest) ? static_cast<std::int64_t>(seconds) : 0;
}

/// Several packs as one, the way they feed the machine. Not empty.
BatteryPack combined(const std::vector<BatteryPack>& packs) {
  if (packs.size() == 1) return packs.front();

  BatteryPack whole = packs.front();
  whole.state = commonState(packs);
  whole.energy = sum(packs, &BatteryPack::energy);
  whole.energyFull = sum(packs, &BatteryPack::energyFull);
  whole.energyFullDesign = sum(packs, &BatteryPack::energyFullDesign);
  whole.power = sum(packs, &BatteryPack::power);
  if (whole.energyFull > 0) whole.percent = whole.energy / whole.energyFull * 100;
  whole.secondsToEmpty = 0;
  whole.secondsToFull = 0;
  if (whole.state == State::discharging) {
    whole.secondsToEmpty = secondsFor(whole.energy, whole.power, kLongestToEmpty);
  } else if (whole.state == State::charging) {
    whole.secondsToFull = secondsFor(whole.energyFull - whole.energy, whole.power, kLongestToFull);
  }
  for (const BatteryPack& pack : packs) {
    whole.cycles = std::max(whole.cycles, pack.cycles);
    whole.temperature = std::max(whole.temperature, pack.temperature);
    whole.voltage = std::max(whole.voltage, pack.voltage);
    if (&pack != &packs.front()) whole.name += " + " + pack.name;
  }
  return whole;
}

bool onMains(bool adapterOnline, State state) {
  return adapterOnline || state == State::charging || state == State::heldOnMains ||
         state == State::full;
}

std::int64_t minutes(std::int64_t seconds, std::int64_t longest) {
  return seconds > 0 && seconds <= longest ? seconds / 60 : -1;
}

/// The number counted in parts of `parts` to the whole.
std::int64_t inParts(int parts, double value) {
  constexpr double kMost = 9.0e15;
  return std::isfinite(value) ? std::llround(std::clamp(value * parts, -kMost, kMost)) : 0;
}

}  // namespace

std::vector<Dictionary> powerSourceDescriptions(const PowerSupplies& supplies) {
  if (supplies.packs.empty()) return {};
  const BatteryPack battery = combined(supplies.packs);

  Dictionary description = {
      {"Type", "InternalBattery"},
      {"Is Present", true},
      {"Name", battery.name},
      {"Max Capacity", 100},
      {"Is Charging", battery.state == State::charging},
      {"Is Charged", battery.state == State::full},
      {"Power Source State",
       onMains(supplies.adapterOnline, battery.state) ? "AC Power" : "Battery Power"},
      {"Time to Full Charge", minutes(battery.secondsToFull, kLongestToFull)},
      {"Time to Empty", minutes(battery.secondsToEmpty, kLongestToEmpty)},
  };
  if (battery.percent) description.emplace("Current Capacity", *battery.percent);
  return {description};
}

std::optional<Dictionary> batteryRegistryEntry(const PowerSupplies& supplies) {
  if (supplies.packs.empty()) return std::nullopt;
  const BatteryPack battery = combined(supplies.packs);

  Dictionary entry;
  if (battery.cycles > 0) entry.emplace("CycleCount", battery.cycles);
  if (battery.energyFullDesign > 0) {
    entry.emplace("DesignCapacity", inParts(1000, battery.energyFullDesign));
  }
  if (battery.energyFull > 0) {
    entry.emplace("AppleRawMaxCapacity", inParts(1000, battery.energyFull));
  }
  if (battery.temperature != 0) entry.emplace("Temperature", inParts(100, battery.temperature));
  if (battery.voltage > 0) {
    const bool outward = battery.state == State::discharging;
    const double amperes = battery.power / battery.voltage;
    entry.emplace("Voltage", inParts(1000, battery.voltage));
    entry.emplace("Amperage", inParts(1000, outward ? -amperes : amperes));
  }
  if (supplies.adapterWatts) {
    entry.emplace("AdapterDetails", Dictionary{{"Watts", *supplies.adapterWatts}});
  }
  return entry;
}

}  // namespace lumora
