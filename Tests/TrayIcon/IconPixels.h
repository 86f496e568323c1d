// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/StatusItem.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumora::test {

struct Pixel {
  std::uint8_t alpha = 0;
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  auto operator<=>(const Pixel&) const = default;  // NOLINT(modernize-use-nullptr)
};

inline Pixel pixelAt(const Icon& icon, int x, int y) {
  const auto* argb = &icon.argb[static_cast<std::size_t>(y * icon.width + x) * 4];
  return {argb[0], argb[1], argb[2], argb[3]};
}

/// Relative luminance as WCAG 2.1 defines it, 0 to 1, of the colour without its alpha.
inline double luminance(const Pixel& pixel) {
  const auto linear = [](std::uint8_t part) {
    const double value = part / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(pixel.red) + 0.7152 * linear(pixel.green) + 0.0722 * linear(pixel.blue);
}

/// Of two luminances, as WCAG 2.1 defines it: 1 to 21.
inline double contrast(double one, double other) {
  return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

/// Neither black, grey nor white.
inline bool isColored(const Pixel& pixel) {
  const auto [least, most] = std::minmax({pixel.red, pixel.green, pixel.blue});
  return pixel.alpha == 255 && most - least > 60;
}

/// What is left of an icon when its colours are taken away: where it is light, and where it is not.
inline std::vector<bool> shape(const Icon& icon) {
  std::vector<bool> light;
  for (int y = 0; y < icon.height; ++y) {
    for (int x = 0; x < icon.width; ++x) {
      const Pixel pixel = pixelAt(icon, x, y);
      light.push_back(pixel.alpha > 127 && luminance(pixel) > 0.4);
    }
  }
  return light;
}

}  // namespace lumora::test
