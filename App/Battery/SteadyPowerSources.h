// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Lifetime.h"
#include "Platform/Clock.h"
#include "Platform/PowerSources.h"
#include "Platform/RunLoop.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// Power sources without their slips, so that nobody is reminded of what is not so:
/// - a loose plug. The third change of the power source within a minute, and those that follow, are
///   told when they have lasted for 15 seconds; until then the source is told as it was, with the
///   percent of now.
/// - a battery that says 0 % out of the blue, as controllers do that are busy. That is told when it
///   has lasted for a minute.
class SteadyPowerSources final : public PowerSources {
 public:
  /// All must outlive this.
  SteadyPowerSources(PowerSources& sources, const Clock& clock, RunLoop& runLoop)
      : sources_(sources), clock_(clock), runLoop_(runLoop) {}

  std::optional<std::vector<Dictionary>> descriptions() override;
  std::optional<Dictionary> registryEntry() const override { return sources_.registryEntry(); }
  bool observe(std::function<void()> changed) override;

 private:
  Dictionary steady(const Dictionary& source);
  bool isLoose(const Dictionary& source, Date now);
  bool isSlip(const Dictionary& source, Date now);
  void lookAgain();

  PowerSources& sources_;
  const Clock& clock_;
  RunLoop& runLoop_;
  std::function<void()> changed_;
  /// What is known of the battery that is there.
  struct Known {
    std::optional<Dictionary> told;          ///< What was told last.
    std::optional<std::string> powerSource;  ///< What the system said last.
    Date switchedAt = kDistantPast;          ///< When that changed.
    Date switchedBefore = kDistantPast;      ///< And the time before.
    bool restless = false;                   ///< It was the third change within a minute.
    std::optional<Date> emptySince;
  };

  Known known_;
  bool lookingAgain_ = false;
  Lifetime lifetime_;
};

}  // namespace lumora
