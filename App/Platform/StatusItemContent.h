// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace lumora {

/// What the item in the desktop's tray shows.
struct StatusItemContent {
  std::string symbol;   ///< Name of an image, such as "battery.75"; empty: none.
  std::string text;     ///< Beside the image, such as "82% · 3:05"; empty: none.
  std::string percent;  ///< The part of `text` that fits into a small square, "82"; may be empty.
  std::string tooltip;

  bool operator==(const StatusItemContent&) const = default;
};

/// A line of the item's menu.
struct MenuEntry {
  std::string label;
  /// Absent: the line only tells something and cannot be chosen.
  std::function<void()> chosen;
};

using Menu = std::vector<MenuEntry>;

}  // namespace lumora
