// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/StatusItemContent.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

/// Where a tray has room for the item's text: beside the icon, in an icon as wide as it needs, or
/// only inside the square of the icon.
enum class TextPlace { label, wide, inside };

/// A picture: 32 bits a pixel, alpha first, not premultiplied, row by row from the top.
struct Icon {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> argb;

  bool operator==(const Icon&) const = default;
};

/// An icon that no file holds: an image with a text.
struct DrawnIcon {
  std::string symbol;
  std::string text;
  TextPlace place = TextPlace::inside;

  bool operator==(const DrawnIcon&) const = default;
};

/// What a tray gets of a content, given where it has room for text.
struct StatusItemFace {
  std::string iconName;            ///< Empty when the icon is drawn, or when there is none.
  std::optional<DrawnIcon> drawn;  ///< Never together with a name.
  std::string label;
  std::string labelGuide;  ///< As wide as the label, and the same while only its digits change.
  std::string tooltipTitle;
  std::string tooltipText;  ///< The text, where the tray shows less than the whole of it.

  bool operator==(const StatusItemFace&) const = default;
};

/// The name by which trays look the image up, such as "lumora-battery-100-bolt-symbolic" for
/// "battery.100.bolt"; empty for no image.
std::string iconName(std::string_view symbol);

StatusItemFace statusItemFace(const StatusItemContent& content, TextPlace place);

}  // namespace lumora
