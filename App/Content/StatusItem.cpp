// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/StatusItem.h"

#include "Base/NumberText.h"
#include "Base/TimeText.h"
#include "Content/ShownLow.h"

#include <algorithm>

namespace lumora {
namespace {

/// Beside the image: percent and time, as the user wants them; empty for none.
std::string itemText(const BatteryState& state, const Prefs& prefs) {
  if (!state.hasBattery) return {};
  const std::string percent = prefs.showPercent ? percentText(state.percent) : "";
  const std::string time = prefs.showTime ? state.shortTime().value_or("") : "";
  return percent.empty() || time.empty() ? percent + time : joined(percent, time);
}

/// The same for an icon that is drawn, whose figures are the same in all languages.
std::string drawnText(const BatteryState& state, const Prefs& prefs) {
  std::string text = prefs.showPercent ? std::to_string(state.percent) + "%" : "";
  if (const auto minutes = state.minutesLeft(); prefs.showTime && minutes) {
    const std::string rest = std::to_string(*minutes % 60);
    text += (text.empty() ? "" : " · ") + std::to_string(*minutes / 60) +
            (rest.size() < 2 ? ":0" : ":") + rest;
  }
  return text;
}

/// As wide as a text, and the same while only its digits change.
std::string guideOf(std::string text) {
  const std::string widest = numberText(8);
  for (int digit = 0; digit <= 9; ++digit) {
    const std::string written = numberText(digit);
    for (std::size_t at = text.find(written); at != std::string::npos;
         at = text.find(written, at + widest.size())) {
      text.replace(at, written.size(), widest);
    }
  }
  return text;
}

std::string image(const BatteryState& state,
                  const std::function<bool(const std::string&)>& hasImage) {
  for (const std::string& name : state.symbolNames()) {
    if (hasImage(name)) return name;
  }
  return {};
}

/// The same states in the same order as the names of the images, and low besides.
BatteryPicture picture(const BatteryState& state) {
  if (!state.hasBattery) return BatteryPicture::noBattery;
  if (state.isCharged) return BatteryPicture::full;
  if (state.isCharging) return BatteryPicture::charging;
  if (state.pluggedIn) {
    return state.percent < 100 ? BatteryPicture::pluggedIn : BatteryPicture::full;
  }
  return isShownLow(state) ? BatteryPicture::low : BatteryPicture::onBattery;
}

}  // namespace

std::string iconName(std::string_view image) {
  if (image.empty()) return {};
  std::string name = "lumora-" + std::string(image) + "-symbolic";
  std::replace(name.begin(), name.end(), '.', '-');
  return name;
}

std::string stateText(const BatteryState& state, bool looking) {
  return looking ? translated("Looking for the battery…") : state.stateText();
}

StatusItemFace statusItemFace(const BatteryState& state, bool looking, const Prefs& prefs,
                              TextPlace place,
                              const std::function<bool(const std::string&)>& hasImage) {
  StatusItemFace face{.tooltipTitle = stateText(state, looking)};
  const std::string text = itemText(state, prefs);
  const bool hasNumber = state.hasBattery && prefs.showPercent;
  const bool drawn =
      place == TextPlace::wide ? !text.empty() : place == TextPlace::inside && hasNumber;
  if (drawn) {
    face.drawn = DrawnIcon{.picture = picture(state),
                           .percent = static_cast<int>(state.percent),
                           .text = place == TextPlace::wide ? drawnText(state, prefs) : ""};
  } else {
    face.iconName = iconName(image(state, hasImage));
  }
  if (place == TextPlace::label && !text.empty()) {
    // The blank keeps it from the image.
    face.label = " " + text;
    face.labelGuide = guideOf(face.label);
  }
  const bool numberTellsAll = hasNumber && text == percentText(state.percent);
  if (place == TextPlace::inside && !numberTellsAll) face.tooltipText = text;
  return face;
}

Menu statusMenu(const BatteryState& state, bool looking, std::optional<Date> snoozeUntil,
                const StatusMenuActions& actions) {
  const std::string said = stateText(state, looking);
  const std::string told = state.hasBattery ? joined(percentText(state.percent), said) : said;
  return {{translated("Open Lumora"), actions.open},
          {told, nullptr},
          // TRANSLATORS: %1$s is a time of day, "14:35". While snoozed, Lumora does not remind.
          snoozeUntil ? MenuEntry{filled(translated("End snooze (until %1$s)"),
                                         {timeOfDayText(*snoozeUntil)}),
                                  actions.cancelSnooze}
                      // TRANSLATORS: No reminders for one hour. Also a notification's button.
                      : MenuEntry{translated("Snooze 1 hour"), actions.snooze},
          {translated("Settings…"), actions.openSettings},
          {translated("Quit"), actions.quit}};
}

}  // namespace lumora
