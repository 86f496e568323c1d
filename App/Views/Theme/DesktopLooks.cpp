// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme/DesktopLooks.h"

#include "Views/Display.h"
#include "Views/Theme/Colors.h"
#include "Views/Theme/Fonts.h"
#include "Views/Theme/Glide.h"
#include "Views/Theme/Palettes.h"

#include <QApplication>

namespace lumora {

QPalette paletteFor(const Appearance& appearance, const QPalette& desktops) {
  QPalette palette = desktops;
  palette.setResolveMask(0);
  const bool wantsDark = appearance.colorScheme == Appearance::ColorScheme::dark;
  const bool wantsLight = appearance.colorScheme == Appearance::ColorScheme::light;
  const bool dark = wantsDark || (isDark(desktops) && !wantsLight);
  if (dark != isDark(desktops) || (appearance.highContrast && !isHighContrast(desktops))) {
    palette = ownPalette(dark, appearance.highContrast);
  }
  // Any colour may be hard to see on black or white.
  if (appearance.accent && !appearance.highContrast) {
    setAccent(palette, QColor::fromRgb(*appearance.accent));
  }
  return palette;
}

void DesktopLooks::apply(const Appearance& appearance) {
  if (!covered_) desktops_ = QApplication::palette();
  const QPalette wished = paletteFor(appearance, desktops_);
  covered_ = wished.isBrushSet(QPalette::Active, QPalette::Window);
  // Once, and not by way of the desktop's own: Qt tells widgets later, and some then keep that.
  QApplication::setPalette(wished);
  Glide::allow(appearance.animations && !appearance.reducedMotion);
  if (!appearance.font) return;
  // An X display has the factor in its resolution.
  QApplication::setFont(fontOf(*appearance.font, isOnWayland() ? appearance.textScale : 1));
}

}  // namespace lumora
