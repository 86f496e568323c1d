// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "StatusItem.h"

namespace lumora {
namespace {

constexpr const char* kSeparator = " · ";

std::string image(const BatteryState& state,
                  const std::function<bool(const std::string&)>& hasImage) {
  for (const std::string& name : state.symbolNames()) {
    if (hasImage(name)) return name;
  }
  return {};
}

}  // namespace

StatusItemContent statusItemContent(const BatteryState& state, const Prefs& prefs,
                                    const std::function<bool(const std::string&)>& hasImage) {
  StatusItemContent content{.symbol = image(state, hasImage), .tooltip = state.stateText()};
  if (!state.hasBattery) return content;
  if (prefs.showPercent) {
    content.percent = std::to_string(state.percent);
    content.text = content.percent + "%";
  }
  if (const auto time = state.shortTime(); prefs.showTime && time) {
    content.text += (content.text.empty() ? "" : kSeparator) + *time;
  }
  return content;
}

Menu statusMenu(const BatteryState& state, std::optional<Date> snoozeUntil,
                const std::function<std::string(Date)>& formatTime,
                const StatusMenuActions& actions) {
  const std::string percent =
      state.hasBattery ? std::to_string(state.percent) + "%" + kSeparator : "";
  return {{"Open Lumora", actions.open},
          {percent + state.stateText(), nullptr},
          snoozeUntil ? MenuEntry{"End snooze (until " + formatTime(*snoozeUntil) + ")",
                                  actions.cancelSnooze}
                      : MenuEntry{"Snooze 1 hour", actions.snooze},
          {"Settings…", actions.openSettings},
          {"Quit", actions.quit}};
}

}  // namespace lumora
