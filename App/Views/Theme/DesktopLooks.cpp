// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme/DesktopLooks.h"

#include "Views/Display.h"
#include "Views/Theme/Colors.h"
#include "Views/Theme/Contrast.h"
#include "Views/Theme/Fonts.h"

#include <QApplication>

namespace lumora {
namespace {

/// What a palette of our own is made of.
struct Colors {
  QColor window, base, text, button, accent;
};

Colors colorsFor(bool dark, bool highContrast) {
  if (highContrast) {
    return dark ? Colors{Qt::black, Qt::black, Qt::white, {0x30, 0x30, 0x30}, {0x4c, 0x9a, 0xff}}
                : Colors{Qt::white, Qt::white, Qt::black, {0xdd, 0xdd, 0xdd}, {0x0b, 0x3f, 0x9e}};
  }
  return dark ? Colors{{0x2b, 0x2b, 0x2e},
                       {0x1f, 0x1f, 0x22},
                       {0xf2, 0xf2, 0xf4},
                       {0x3c, 0x3c, 0x40},
                       {0x3d, 0x8b, 0xf2}}
              : Colors{{0xf6, 0xf6, 0xf7},
                       Qt::white,
                       {0x1d, 0x1d, 0x1f},
                       {0xe6, 0xe6, 0xe9},
                       {0x1f, 0x6f, 0xeb}};
}

/// Black or white, whichever reads better on it.
QColor textOn(const QColor& color) {
  return contrast(Qt::white, color) >= contrast(Qt::black, color) ? Qt::white : Qt::black;
}

void setAccent(QPalette& palette, const QColor& accent) {
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, textOn(accent));
  palette.setColor(QPalette::Link, accent);
}

QPalette paletteOf(const Colors& colors) {
  QPalette palette(colors.button, colors.window);
  palette.setColor(QPalette::Base, colors.base);
  palette.setColor(QPalette::AlternateBase, colors.button);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                          QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(role, colors.text);
    palette.setColor(QPalette::Disabled, role, mixed(colors.text, colors.window, 0.4));
  }
  palette.setColor(QPalette::ToolTipBase, colors.base);
  palette.setColor(QPalette::PlaceholderText, textColor(TextColor::secondary, palette));
  setAccent(palette, colors.accent);
  return palette;
}

}  // namespace

QPalette paletteFor(const Appearance& appearance, const QPalette& desktops) {
  QPalette palette = desktops;
  palette.setResolveMask(0);
  const bool wantsDark = appearance.colorScheme == Appearance::ColorScheme::dark;
  const bool wantsLight = appearance.colorScheme == Appearance::ColorScheme::light;
  const bool dark = wantsDark || (isDark(desktops) && !wantsLight);
  if (dark != isDark(desktops) || (appearance.highContrast && !isHighContrast(desktops))) {
    palette = paletteOf(colorsFor(dark, appearance.highContrast));
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
  if (!appearance.font) return;
  // An X display has the factor in its resolution.
  QApplication::setFont(fontOf(*appearance.font, isOnWayland() ? appearance.textScale : 1));
}

}  // namespace lumora
