// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace lumora {

/// How the user wants programs to look, as far as the desktop says.
struct Appearance {
  enum class ColorScheme { noPreference, dark, light };

  ColorScheme colorScheme = ColorScheme::noPreference;
  std::optional<std::uint32_t> accent;  ///< 0xRRGGBB; absent: the theme's own.
  bool highContrast = false;
  /// Family, style and size in points, as Pango writes it: "Cantarell 11". Absent: the theme's own.
  std::optional<std::string> font;
  double textScale = 1;  ///< How much larger than usual text is wished; above 0.

  bool reducedMotion = false;  ///< What moves only to please is to stand still.
  bool animations = true;      ///< Whether the desktop itself shows how things get where they are.

  bool operator==(const Appearance&) const = default;
};

}  // namespace lumora
