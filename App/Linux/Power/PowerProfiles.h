// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/ObjectProperties.h"
#include "Linux/Bus/ServiceWatch.h"
#include "Linux/Power/GracePeriod.h"
#include "Platform/LowPowerMode.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace lumora {

/// The power-saving mode as the power-profiles daemon tells it on the system bus. It has a name of
/// its own and one in UPower's family; some versions own only one of them. The latter is believed
/// where both answer. When the daemon goes away, what it said last stands for the
/// ten seconds of `GracePeriod`.
class PowerProfiles final : public LowPowerMode {
 public:
  PowerProfiles();

  bool isEnabled() const override;
  void observe(std::function<void()> changed) override;

 private:
  /// One of the names the daemon may have.
  struct Name {
    Name(PowerProfiles& owner, const char* busName, const char* path);

    PowerProfiles& owner;
    std::optional<std::string> activeProfile;  // absent once nobody owns the name any more
    GracePeriod grace;
    std::unique_ptr<ObjectProperties> properties;
    ServiceWatch watch;
  };

  void update(Name& name, std::optional<std::string> activeProfile);

  std::function<void()> changed_;
  Name current_;
  Name former_;
};

}  // namespace lumora
