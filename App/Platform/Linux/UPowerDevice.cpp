// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/UPowerDevice.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lumora {
namespace {

using State = UPowerDevice::State;

// UPower itself gives no estimate beyond these for one battery.
constexpr std::int64_t kLongestToEmpty = std::int64_t{240} * 3600;
constexpr std::int64_t kLongestToFull = std::int64_t{20} * 3600;

std::vector<UPowerDevice> machineBatteries(const std::vector<UPowerDevice>& devices) {
  std::vector<UPowerDevice> batteries;
  std::copy_if(devices.begin(), devices.end(), std::back_inserter(batteries),
               [](const UPowerDevice& device) { return device.isMachineBattery(); });
  return batteries;
}

double sum(const std::vector<UPowerDevice>& batteries, double UPowerDevice::*field) {
  return std::accumulate(
      batteries.begin(), batteries.end(), 0.0,
      [field](double total, const UPowerDevice& battery) { return total + battery.*field; });
}

bool anyIs(const std::vector<UPowerDevice>& batteries, State state) {
  return std::any_of(batteries.begin(), batteries.end(),
                     [state](const UPowerDevice& battery) { return battery.state == state; });
}

/// Charging or discharging if one of them is; full only if nothing speaks against it.
State commonState(const std::vector<UPowerDevice>& batteries) {
  for (const State state : {State::charging, State::discharging, State::pendingCharge,
                            State::pendingDischarge, State::empty, State::fullyCharged}) {
    if (anyIs(batteries, state)) return state;
  }
  return State::unknown;
}

std::int64_t secondsFor(double wattHours, double watts, std::int64_t longest) {
  if (!(watts > 0) || !(wattHours > 0)) return 0;
  const double seconds = wattHours / watts * 3600;
  return seconds <= static_cast<double>(longest) ? static_cast<std::int64_t>(seconds) : 0;
}

/// Several batteries as one, the way they feed the machine. Not empty.
UPowerDevice combined(const std::vector<UPowerDevice>& batteries) {
  if (batteries.size() == 1) return batteries.front();

  UPowerDevice whole = batteries.front();
  whole.state = commonState(batteries);
  whole.energy = sum(batteries, &UPowerDevice::energy);
  whole.energyFull = sum(batteries, &UPowerDevice::energyFull);
  whole.energyFullDesign = sum(batteries, &UPowerDevice::energyFullDesign);
  whole.energyRate = sum(batteries, &UPowerDevice::energyRate);
  if (whole.energyFull > 0) whole.percentage = whole.energy / whole.energyFull * 100;
  whole.timeToEmpty = 0;
  whole.timeToFull = 0;
  if (whole.state == State::discharging) {
    whole.timeToEmpty = secondsFor(whole.energy, whole.energyRate, kLongestToEmpty);
  } else if (whole.state == State::charging) {
    whole.timeToFull =
        secondsFor(whole.energyFull - whole.energy, whole.energyRate, kLongestToFull);
  }
  for (const UPowerDevice& battery : batteries) {
    whole.chargeCycles = std::max(whole.chargeCycles, battery.chargeCycles);
    whole.temperature = std::max(whole.temperature, battery.temperature);
    whole.voltage = std::max(whole.voltage, battery.voltage);
    if (&battery != &batteries.front()) whole.model += " + " + battery.model;
  }
  return whole;
}

/// Some machines never announce their adapter; the battery's state tells it all the same.
bool onMains(const std::vector<UPowerDevice>& devices, State state) {
  const bool online = std::any_of(devices.begin(), devices.end(), [](const UPowerDevice& device) {
    return device.type == UPowerDevice::Type::linePower && device.online;
  });
  return online || state == State::charging || state == State::pendingCharge ||
         state == State::fullyCharged;
}

std::int64_t minutes(std::int64_t seconds) { return seconds > 0 ? seconds / 60 : -1; }

/// The number counted in parts of `parts` to the whole.
std::int64_t inParts(int parts, double value) {
  constexpr double kMost = 9.0e15;
  return std::isfinite(value) ? std::llround(std::clamp(value * parts, -kMost, kMost)) : 0;
}

template <typename T>
void take(const Glib::VariantBase& properties, const char* name, T& field) {
  field = valueUnder<T>(name, properties, field);
}

}  // namespace

bool UPowerDevice::isMachineBattery() const {
  return type == Type::battery && powerSupply && isPresent;
}

void UPowerDevice::update(const Glib::VariantBase& properties) {
  auto typeNumber = static_cast<std::uint32_t>(type);
  auto stateNumber = static_cast<std::uint32_t>(state);
  take(properties, "Type", typeNumber);
  take(properties, "State", stateNumber);
  type = static_cast<Type>(typeNumber);
  state = static_cast<State>(stateNumber);

  take(properties, "PowerSupply", powerSupply);
  take(properties, "IsPresent", isPresent);
  take(properties, "Online", online);
  constexpr double kNotTold = -1;
  double percent = percentage.value_or(kNotTold);
  take(properties, "Percentage", percent);
  if (percent != kNotTold) percentage = percent;
  take(properties, "Energy", energy);
  take(properties, "EnergyFull", energyFull);
  take(properties, "EnergyFullDesign", energyFullDesign);
  take(properties, "EnergyRate", energyRate);
  take(properties, "Voltage", voltage);
  take(properties, "Temperature", temperature);
  take(properties, "ChargeCycles", chargeCycles);
  take(properties, "TimeToEmpty", timeToEmpty);
  take(properties, "TimeToFull", timeToFull);

  Glib::ustring text = model;
  take(properties, "Model", text);
  model = text.raw();
  text = nativePath;
  take(properties, "NativePath", text);
  nativePath = text.raw();
}

std::vector<Dictionary> powerSourceDescriptions(const std::vector<UPowerDevice>& devices) {
  const auto batteries = machineBatteries(devices);
  if (batteries.empty()) return {};
  const UPowerDevice battery = combined(batteries);

  Dictionary description = {
      {"Type", "InternalBattery"},
      {"Is Present", true},
      {"Name", battery.model.empty() ? battery.nativePath : battery.model},
      {"Max Capacity", 100},
      {"Is Charging", battery.state == State::charging},
      {"Is Charged", battery.state == State::fullyCharged},
      {"Power Source State", onMains(devices, battery.state) ? "AC Power" : "Battery Power"},
      {"Time to Full Charge", minutes(battery.timeToFull)},
      {"Time to Empty", minutes(battery.timeToEmpty)},
  };
  if (battery.percentage) description.emplace("Current Capacity", *battery.percentage);
  return {description};
}

std::optional<Dictionary> batteryRegistryEntry(const std::vector<UPowerDevice>& devices,
                                               std::optional<int> adapterWatts) {
  const auto batteries = machineBatteries(devices);
  if (batteries.empty()) return std::nullopt;
  const UPowerDevice battery = combined(batteries);

  Dictionary entry;
  if (battery.chargeCycles > 0) entry.emplace("CycleCount", std::int64_t{battery.chargeCycles});
  if (battery.energyFullDesign > 0) {
    entry.emplace("DesignCapacity", inParts(1000, battery.energyFullDesign));
  }
  if (battery.energyFull > 0) {
    entry.emplace("AppleRawMaxCapacity", inParts(1000, battery.energyFull));
  }
  if (battery.temperature != 0) entry.emplace("Temperature", inParts(100, battery.temperature));
  if (battery.voltage > 0) {
    const bool outward = battery.state == State::discharging;
    const double amperes = battery.energyRate / battery.voltage;
    entry.emplace("Voltage", inParts(1000, battery.voltage));
    entry.emplace("Amperage", inParts(1000, outward ? -amperes : amperes));
  }
  if (adapterWatts) entry.emplace("AdapterDetails", Dictionary{{"Watts", *adapterWatts}});
  return entry;
}

}  // namespace lumora
