// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

namespace lumora {

/// How the user wants programs to look, as far as the desktop says.
struct Appearance {
  enum class ColorScheme { noPreference, dark, light };

  ColorScheme colorScheme = ColorScheme::noPreference;
  std::optional<std::uint32_t> accent;  ///< 0xRRGGBB; absent: the theme's own.

  bool operator==(const Appearance&) const = default;
};

}  // namespace lumora
