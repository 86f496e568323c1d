// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/BatteryReader.h"
#include "Consequences.h"
#include "Fuzzer.h"
#include "Platform/Linux/UPowerDevice.h"
#include "Script.h"
#include "Support/FakeLowPowerMode.h"
#include "Support/FakePowerSources.h"
#include "Support/MemoryFiles.h"

#include <map>
#include <string>

namespace lumora::test {

/// Each section "[name]" tells properties of the device of that name; they are read after each.
void fuzz(std::string_view input) {
  std::map<std::string, UPowerDevice> devices;
  FakePowerSources sources;
  FakeLowPowerMode lowPowerMode;
  const BatteryReader reader(sources, lowPowerMode);
  MemoryFiles files;
  DefaultsStore defaults(files, "/settings/Lumora/defaults.json");
  Consequences consequences(defaults);
  Date now = kNow;
  for (const auto& [name, values] : sectionsFrom(input)) {
    devices[name].update(Glib::Variant<Properties>::create({values.begin(), values.end()}));
    std::vector<UPowerDevice> told;
    told.reserve(devices.size());
    for (const auto& [path, device] : devices) told.push_back(device);
    sources.sources = powerSourceDescriptions(told);
    sources.registry = batteryRegistryEntry(told, 65);
    consequences.follow(reader.read(), now, kNow - Seconds(3600));
    now += Seconds(60);
  }
}

}  // namespace lumora::test
