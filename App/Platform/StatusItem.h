// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// Where a tray has room for the item's text: beside the icon, in an icon as wide as it needs, or
/// only inside the square of the icon.
enum class TextPlace { label, wide, inside };

/// What an icon tells of a battery besides its charge. Each looks different without its colour,
/// too.
enum class BatteryPicture { noBattery, onBattery, low, pluggedIn, charging, full };

/// An icon drawn for one reading, because no file can hold it: a battery with its charge.
struct DrawnIcon {
  BatteryPicture picture = BatteryPicture::noBattery;
  int percent = 0;   ///< The charge, 0 to 100; it fills the battery.
  std::string text;  ///< Beside the battery, which makes the icon wide. Empty: a square icon with
                     ///< the percent as a number on it.

  bool operator==(const DrawnIcon&) const = default;
};

/// A picture: 32 bits a pixel, alpha first, not premultiplied, row by row from the top.
struct Icon {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> argb;

  bool operator==(const Icon&) const = default;
};

/// What the item in the desktop's tray shows, in the one form that this tray has room for.
struct StatusItemFace {
  std::string iconName;            ///< Of a symbol's file; empty when the icon is drawn, or none.
  std::optional<DrawnIcon> drawn;  ///< Never together with a name.
  std::string label;               ///< Beside the icon.
  std::string labelGuide;    ///< As wide as the label, and the same while only its digits change.
  std::string tooltipTitle;  ///< The battery's state.
  std::string tooltipText;   ///< The text, where the tray shows less than the whole of it.

  bool operator==(const StatusItemFace&) const = default;
};

/// A line of the item's menu.
struct MenuEntry {
  std::string label;
  /// Absent: the line only tells something and cannot be chosen.
  std::function<void()> chosen;
};

using Menu = std::vector<MenuEntry>;

}  // namespace lumora
