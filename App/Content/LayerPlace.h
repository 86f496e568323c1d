// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/ScreenPoint.h"
#include "Content/PopoverPlace.h"

#include <algorithm>
#include <optional>

namespace lumora {

/// The two edges of a screen, or of what its panels leave of it, that a popover hangs on, and how
/// far from each, in pixels of the toolkit.
struct LayerPlace {
  bool atTop = true;
  bool atLeft = false;
  int marginX = kPopoverGap;
  int marginY = kPopoverGap;

  bool operator==(const LayerPlace&) const = default;
};

/// What Wayland does not tell of a desktop's panels.
struct Panels {
  bool atBottom = false;  ///< As long as nobody has changed that.
  int rise = 0;           ///< Beyond what they reserve of the screen, in pixels of the toolkit.
};

/// A click on a tray's item on Wayland as the toolkit counts: the tray reports it in pixels `scale`
/// of which are one of the toolkit's. Absent where the tray does not know, or counts from its own
/// icon: a tray in the screen's upper left corner, as far as a wide icon goes, is not believed.
inline std::optional<ScreenPoint> clickedInLayer(ScreenPoint reported, double scale) {
  constexpr int kWidestIcon = 128;
  constexpr int kHighestPanel = 48;
  if (reported.x < kWidestIcon && reported.y < kHighestPanel) return std::nullopt;
  return ScreenPoint{static_cast<int>(reported.x / scale), static_cast<int>(reported.y / scale)};
}

/// Where a popover of `size` hangs that belongs to `click`: beside the panel that was clicked,
/// which is the one at the nearest edge, centred along it on the click. Without a click it stands
/// in the corner where the tray usually is: at the right, at the top unless panels are usually at
/// the bottom.
inline LayerPlace layerPlace(std::optional<ScreenPoint> click, ScreenSize size,
                             const ScreenRect& screen, const Panels& panels) {
  const int gap = kPopoverGap + panels.rise;
  if (!click) return {.atTop = !panels.atBottom, .marginY = gap};
  const int left = click->x - screen.x;
  const int right = screen.right() - click->x;
  const int top = click->y - screen.y;
  const int bottom = screen.bottom() - click->y;
  const int toSide = std::min(left, right);
  const int toTopOrBottom = std::min(top, bottom);
  LayerPlace place{.atTop = top < bottom, .atLeft = left < right};
  if (toTopOrBottom <= toSide) {
    place.marginX = std::max(kPopoverGap, toSide - size.width / 2);
    place.marginY = gap;
  } else {
    place.marginX = gap;
    place.marginY = std::max(kPopoverGap, toTopOrBottom - size.height / 2);
  }
  return place;
}

}  // namespace lumora
