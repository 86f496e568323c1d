// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alerts/AlertEngine.h"
#include "Preferences/DefaultsStore.h"
#include "Support/Builders.h"
#include "Support/MemoryFiles.h"

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lumora::test {

/// An engine with everything it looks at. The calls give the kinds that it reminded of.
class EngineFixture : public testing::Test {
 protected:
  std::vector<PendingAlert> alerts(const BatteryState& state, bool canDeliver = true) {
    return engine.run({.state = state,
                       .since = since,
                       .now = now,
                       .prefs = prefs,
                       .canDeliver = canDeliver,
                       .prime = false},
                      defaults);
  }

  std::string run(const BatteryState& state) { return kinds(alerts(state)); }

  std::string runHeld(const BatteryState& state) { return kinds(alerts(state, false)); }

  std::string prime(const BatteryState& state) {
    return kinds(engine.run({.state = state,
                             .since = since,
                             .now = now,
                             .prefs = prefs,
                             .canDeliver = false,
                             .prime = true},
                            defaults));
  }

  /// Forgets all episodes.
  void startAnew() { engine = AlertEngine{}; }

  void pass(double seconds) { now += Seconds{seconds}; }

  void pluggedInFor(double hours) { since = now - Seconds{hours * 3600}; }

  bool healthAlertSent() const { return defaults.boolForKey("healthAlertSent"); }

  MemoryFiles files;
  DefaultsStore defaults{files, "/config/defaults.json"};
  AlertEngine engine;
  Prefs prefs;
  Date now = dateSince1970(1'700'000'000);
  std::optional<Date> since;
};

}  // namespace lumora::test
