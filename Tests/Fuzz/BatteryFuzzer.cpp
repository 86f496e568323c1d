// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/BatteryReader.h"
#include "Consequences.h"
#include "Fuzzer.h"
#include "Script.h"
#include "Support/FakeLowPowerMode.h"
#include "Support/FakePowerSources.h"
#include "Support/MemoryFiles.h"

namespace lumora::test {

/// What the power sources tell: sections "[source]", "[registry]", and "[read]" to have it read,
/// which happens in the end as well.
void fuzz(std::string_view input) {
  FakePowerSources sources;
  FakeLowPowerMode lowPowerMode;
  const BatteryReader reader(sources, lowPowerMode);
  MemoryFiles files;
  DefaultsStore defaults(files, "/settings/Lumora/defaults.json");
  Consequences consequences(defaults);
  Date now = kNow;
  const auto read = [&] {
    consequences.follow(reader.read(), now, kNow - Seconds(3600));
    now += Seconds(60);
  };
  for (const auto& [name, values] : sectionsFrom(input)) {
    Dictionary dictionary;
    for (const auto& [key, value] : values) dictionary.emplace(key, valueFrom(value));
    if (name == "[source]") {
      if (!sources.sources) sources.sources.emplace();
      sources.sources->push_back(dictionary);
    } else if (name == "[registry]") {
      sources.registry = dictionary;
    } else if (name == "[read]") {
      read();
      sources.sources.reset();
      sources.registry.reset();
      lowPowerMode.enabled = dictionary.contains("low power");
    }
  }
  read();
}

}  // namespace lumora::test
