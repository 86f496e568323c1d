// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Power/PackHealth.h"

#include "Linux/System/Background.h"
#include "Linux/System/MainLoop.h"

#include <algorithm>
#include <fstream>
#include <utility>

namespace lumora {
namespace {

constexpr Seconds kReadAgain{3600};
constexpr std::chrono::milliseconds kLongestWait{1000};

std::optional<std::int64_t> positive(const std::filesystem::path& attribute) {
  std::ifstream file(attribute);
  std::int64_t value = 0;
  return file >> value && value > 0 ? std::optional(value) : std::nullopt;
}

std::optional<double> share(const std::filesystem::path& pack, const std::string& quantity) {
  const auto full = positive(pack / (quantity + "_full"));
  const auto design = positive(pack / (quantity + "_full_design"));
  if (!full || !design) return std::nullopt;
  return static_cast<double>(*full) / static_cast<double>(*design);
}

/// The kernel's name of the pack; older releases of UPower tell the path to it.
std::string nameOf(const UPowerDevice& device) {
  const std::string name = std::filesystem::path(device.nativePath).filename();
  return name == "." || name == ".." ? std::string() : name;
}

bool isFull(const UPowerDevice& device) {
  return device.state == UPowerDevice::State::fullyCharged;
}

}  // namespace

PackHealth readPackHealth(const std::filesystem::path& pack) {
  PackHealth health{.share = share(pack, "energy")};
  if (!health.share) health.share = share(pack, "charge");
  const auto cycles = positive(pack / "cycle_count");
  if (cycles && std::in_range<std::int32_t>(*cycles)) {
    health.cycles = static_cast<std::int32_t>(*cycles);
  }
  return health;
}

void PackHealthReader::take(std::vector<UPowerDevice> devices, Seconds uptime) {
  std::erase_if(devices, [](const UPowerDevice& device) {
    return !device.isMachineBattery() || nameOf(device).empty();
  });
  devices_ = std::move(devices);
  look(uptime);
}

void PackHealthReader::look(Seconds uptime) {
  if (!reading_ && isDue(uptime)) read(uptime);
}

bool PackHealthReader::isDue(Seconds uptime) const {
  if (devices_.empty()) return false;
  if (uptime - readAt_ >= kReadAgain) return true;
  return std::any_of(devices_.begin(), devices_.end(), [this](const UPowerDevice& device) {
    const auto known = packs_.find(nameOf(device));
    return known == packs_.end() || known->second.isFull != isFull(device);
  });
}

void PackHealthReader::read(Seconds uptime) {
  reading_ = true;
  readAt_ = uptime;
  const auto readings = std::make_shared<Readings>();
  for (const UPowerDevice& device : devices_) {
    const auto [known, isNew] = packs_.try_emplace(nameOf(device));
    awaited_ = awaited_ || isNew;
    known->second.isFull = isFull(device);
    readings->emplace(known->first, Reading{.energyFull = device.energyFull,
                                            .energyFullDesign = device.energyFullDesign,
                                            .chargeCycles = device.chargeCycles});
  }
  runInBackground(
      [folder = powerSupplies_, readings] {
        for (auto& [name, reading] : *readings) reading.health = readPackHealth(folder / name);
      },
      lifetime_.guard([this, readings] { onRead(*readings); }));
  if (!awaited_) return;
  MainLoop().runAfter(kLongestWait, lifetime_.guard([this] {
    if (std::exchange(awaited_, false)) changed_();
  }));
}

void PackHealthReader::onRead(const Readings& readings) {
  reading_ = false;
  bool news = std::exchange(awaited_, false);
  for (const auto& [name, reading] : readings) {
    Reading& last = packs_[name].last;
    news = news || last != reading;
    last = reading;
  }
  if (news) changed_();
}

void PackHealthReader::correct(UPowerDevice& device) const {
  const auto known = packs_.find(nameOf(device));
  if (known == packs_.end()) return;
  const Reading& last = known->second.last;
  if (last.energyFull != device.energyFull || last.energyFullDesign != device.energyFullDesign ||
      last.chargeCycles != device.chargeCycles) {
    return;
  }
  if (last.health.share) device.energyFull = device.energyFullDesign * *last.health.share;
  if (last.health.cycles) device.chargeCycles = *last.health.cycles;
}

}  // namespace lumora
