// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Consequences.h"
#include "Fuzzer.h"
#include "Script.h"

namespace lumora::test {

/// What the power sources tell: sections "[source]", "[registry]", and "[read]" to have it read,
/// which happens in the end as well.
void fuzz(std::string_view input) {
  ReadMachine machine;
  FakePowerSources& told = machine.sources;
  for (const auto& [name, values] : sectionsFrom(input)) {
    Dictionary dictionary;
    for (const auto& [key, value] : values) dictionary.emplace(key, valueFrom(value));
    if (name == "[source]") {
      if (!told.sources) told.sources.emplace();
      told.sources->push_back(dictionary);
    } else if (name == "[registry]") {
      told.registry = dictionary;
    } else if (name == "[read]") {
      machine.read();
      told.sources.reset();
      told.registry.reset();
      machine.lowPowerMode.enabled = dictionary.contains("low power");
    }
  }
  machine.read();
}

}  // namespace lumora::test
