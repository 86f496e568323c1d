// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Battery/BatteryState.h"
#include "Platform/Date.h"
#include "Platform/StatusItemContent.h"
#include "Preferences/Prefs.h"

#include <functional>
#include <optional>
#include <string>

namespace lumora {

/// What the item shows of a battery. `hasImage` tells whether there is an image of a name.
StatusItemContent statusItemContent(const BatteryState& state, const Prefs& prefs,
                                    const std::function<bool(const std::string&)>& hasImage);

/// What the lines of the item's menu do.
struct StatusMenuActions {
  std::function<void()> open;
  std::function<void()> snooze;
  std::function<void()> cancelSnooze;
  std::function<void()> openSettings;
  std::function<void()> quit;
};

/// The item's menu. `formatTime` writes a time of day.
Menu statusMenu(const BatteryState& state, std::optional<Date> snoozeUntil,
                const std::function<std::string(Date)>& formatTime,
                const StatusMenuActions& actions);

}  // namespace lumora
