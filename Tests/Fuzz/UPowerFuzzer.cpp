// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Consequences.h"
#include "Fuzzer.h"
#include "Linux/Power/UPowerDevice.h"
#include "Script.h"

#include <map>
#include <string>

namespace lumora::test {

/// Each section "[name]" tells properties of the device of that name; they are read after each.
void fuzz(std::string_view input) {
  std::map<std::string, UPowerDevice> devices;
  ReadMachine machine;
  for (const auto& [name, values] : sectionsFrom(input)) {
    devices[name].update(Glib::Variant<Properties>::create({values.begin(), values.end()}));
    std::vector<UPowerDevice> told;
    told.reserve(devices.size());
    for (const auto& [path, device] : devices) told.push_back(device);
    PowerSupplies supplies = powerSupplies(told);
    supplies.adapterWatts = 65;
    machine.sources.sources = powerSourceDescriptions(supplies);
    machine.sources.registry = batteryRegistryEntry(supplies);
    machine.read();
  }
}

}  // namespace lumora::test
