// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Power/UPowerDevice.h"

namespace lumora {
namespace {

BatteryPack::State packState(UPowerDevice::State state) {
  switch (state) {
    case UPowerDevice::State::charging:
      return BatteryPack::State::charging;
    case UPowerDevice::State::discharging:
      return BatteryPack::State::discharging;
    case UPowerDevice::State::empty:
      return BatteryPack::State::empty;
    case UPowerDevice::State::fullyCharged:
      return BatteryPack::State::full;
    case UPowerDevice::State::pendingCharge:
      return BatteryPack::State::heldOnMains;
    case UPowerDevice::State::pendingDischarge:
      return BatteryPack::State::heldOnBattery;
    case UPowerDevice::State::unknown:
      break;
  }
  return BatteryPack::State::unknown;
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

BatteryPack UPowerDevice::pack() const {
  return {.state = packState(state),
          .percent = percentage,
          .energy = energy,
          .energyFull = energyFull,
          .energyFullDesign = energyFullDesign,
          .power = energyRate,
          .voltage = voltage,
          .temperature = temperature,
          .cycles = chargeCycles,
          .secondsToEmpty = timeToEmpty,
          .secondsToFull = timeToFull,
          .name = model.empty() ? nativePath : model};
}

PowerSupplies powerSupplies(const std::vector<UPowerDevice>& devices) {
  PowerSupplies supplies;
  for (const UPowerDevice& device : devices) {
    if (device.isMachineBattery()) supplies.packs.push_back(device.pack());
    if (device.type == UPowerDevice::Type::linePower && device.online) {
      supplies.adapterOnline = true;
    }
  }
  return supplies;
}

}  // namespace lumora
