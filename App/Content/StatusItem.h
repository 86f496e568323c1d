// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"
#include "Base/Texts.h"
#include "Battery/BatteryState.h"
#include "Platform/StatusItem.h"
#include "Preferences/Prefs.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

/// The name by which trays look an image up, such as "lumora-battery-100-bolt-symbolic" for
/// "battery.100.bolt"; empty for no image.
std::string iconName(std::string_view image);

/// What is said of the battery in one line: its state, or, while nobody has said yet whether there
/// is one (`looking`), "Looking for the battery…".
std::string stateText(const BatteryState& state, bool looking);

/// The item as a tray shows it that has room for text at `place`. Its icon is drawn where the text
/// goes into it, else it is the first of the state's images of which `hasImage` says that it
/// exists.
StatusItemFace statusItemFace(const BatteryState& state, bool looking, const Prefs& prefs,
                              TextPlace place,
                              const std::function<bool(const std::string&)>& hasImage);

/// What the lines of the item's menu do.
struct StatusMenuActions {
  std::function<void()> open;
  std::function<void()> snooze;
  std::function<void()> cancelSnooze;
  std::function<void()> openSettings;
  std::function<void()> quit;
};

/// The item's menu. `snoozeUntil` is absent while reminders are not snoozed.
Menu statusMenu(const BatteryState& state, bool looking, std::optional<Date> snoozeUntil,
                const StatusMenuActions& actions);

}  // namespace lumora
