// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/BatteryReader.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <string_view>
#include <utility>

namespace lumora {
namespace {

template <typename T>
const T* find(const Dictionary& dictionary, std::string_view key) {
  const auto entry = dictionary.find(key);
  return entry == dictionary.end() ? nullptr : std::get_if<T>(&entry->second.held);
}

bool flag(const Dictionary& dictionary, std::string_view key) {
  const bool* value = find<bool>(dictionary, key);
  return value != nullptr && *value;
}

std::optional<double> number(const Dictionary& dictionary, std::string_view key) {
  if (const auto* integer = find<std::int64_t>(dictionary, key)) {
    return static_cast<double>(*integer);
  }
  const auto* floating = find<double>(dictionary, key);
  if (floating == nullptr || !std::isfinite(*floating)) return std::nullopt;
  return *floating;
}

/// A fractional number is cut toward zero; one that no integer can hold is absent.
std::optional<std::int64_t> integer(const Dictionary& dictionary, std::string_view key) {
  if (const auto* value = find<std::int64_t>(dictionary, key)) return *value;
  constexpr double kTwoTo63 = 9223372036854775808.0;
  const auto value = number(dictionary, key);
  if (!value || *value < -kTwoTo63 || *value >= kTwoTo63) return std::nullopt;
  return static_cast<std::int64_t>(*value);
}

std::optional<std::int64_t> integerFrom(const Dictionary& dictionary, std::string_view key,
                                        std::int64_t least) {
  const auto value = integer(dictionary, key);
  return value && *value >= least ? value : std::nullopt;
}

bool isUsableBattery(const Dictionary& source) {
  const auto* type = find<std::string>(source, "Type");
  if (type == nullptr || *type != "InternalBattery") return false;
  const bool* present = find<bool>(source, "Is Present");
  if (present != nullptr && !*present) return false;
  const auto max = number(source, "Max Capacity");
  return number(source, "Current Capacity") && max && *max > 0;
}

static_assert(FLT_EVAL_METHOD == 0, "a percent is computed in doubles, and with no more digits");

std::int64_t percentOf(double current, double max) {
  return std::llround(std::clamp(current / max * 100, 0.0, 100.0));
}

/// Today's capacity is believed only near the design's: some packs report nonsense under a key.
std::optional<std::int64_t> plausibleFullCapacity(const Dictionary& entry, std::int64_t design) {
  const double lowest = static_cast<double>(design) * 0.3;
  const double highest = static_cast<double>(design) * 1.3;
  for (const auto* key : {"AppleRawMaxCapacity", "NominalChargeCapacity", "MaxCapacity"}) {
    const auto value = integer(entry, key);
    if (!value) continue;
    const auto capacity = static_cast<double>(*value);
    if (lowest <= capacity && capacity <= highest) return value;
  }
  return std::nullopt;
}

}  // namespace

BatteryState BatteryReader::read() const {
  BatteryState state;
  readLive(state);
  state.lowPowerMode = lowPowerMode_.isEnabled();
  if (state.hasBattery) readRegistry(state);
  return state;
}

void BatteryReader::readLive(BatteryState& state) const {
  const auto sources = powerSources_.descriptions();
  if (!sources) return;
  const auto source = std::find_if(sources->begin(), sources->end(), isUsableBattery);
  if (source == sources->end()) return;

  state.hasBattery = true;
  state.percent = percentOf(*number(*source, "Current Capacity"), *number(*source, "Max Capacity"));
  state.isCharging = flag(*source, "Is Charging");
  state.isCharged = flag(*source, "Is Charged");
  const auto* powerSource = find<std::string>(*source, "Power Source State");
  state.pluggedIn = powerSource != nullptr && *powerSource == "AC Power";
  if (const auto* name = find<std::string>(*source, "Name")) state.sourceName = *name;
  state.minutesToFull = integerFrom(*source, "Time to Full Charge", 0);
  state.minutesToEmpty = integerFrom(*source, "Time to Empty", 0);
}

void BatteryReader::readRegistry(BatteryState& state) const {
  const auto entry = powerSources_.registryEntry();
  if (!entry) return;

  state.cycleCount = integerFrom(*entry, "CycleCount", 0);
  state.designCapacity = integerFrom(*entry, "DesignCapacity", 1);
  if (state.designCapacity) {
    state.fullCapacity = plausibleFullCapacity(*entry, *state.designCapacity);
  }
  if (const auto hundredths = integer(*entry, "Temperature")) {
    const double celsius = static_cast<double>(*hundredths) / 100;
    if (celsius > -20 && celsius < 100) state.temperatureC = celsius;
  }
  if (const auto millivolts = integerFrom(*entry, "Voltage", 1)) {
    state.voltage = static_cast<double>(*millivolts) / 1000;
  }
  const bool hasAverage = number(*entry, "Amperage").has_value();
  if (const auto milliamps = integer(*entry, hasAverage ? "Amperage" : "InstantAmperage")) {
    state.amperage = static_cast<double>(*milliamps) / 1000;
  }
  if (const auto* adapter = find<Dictionary>(*entry, "AdapterDetails")) {
    state.adapterWatts = integerFrom(*adapter, "Watts", 1);
  }
}

void BatteryReader::startObserving(std::function<void()> changed) {
  if (observing_) return;
  observing_ = powerSources_.observe(std::move(changed));
}

}  // namespace lumora
