// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme/Palettes.h"

#include "Views/Theme/Colors.h"
#include "Views/Theme/Contrast.h"
#include "Views/Theme/Tokens.h"

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

constexpr int kMiddleLightness = 127;

}  // namespace

QPalette ownPalette(bool dark, bool highContrast) {
  const Colors colors = colorsFor(dark, highContrast);
  QPalette palette(colors.button, colors.window);
  palette.setColor(QPalette::Base, colors.base);
  palette.setColor(QPalette::AlternateBase, colors.button);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                          QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(role, colors.text);
  }
  palette.setColor(QPalette::ToolTipBase, colors.base);
  palette.setColor(QPalette::PlaceholderText, textColor(TextColor::secondary, palette));
  fadeDisabled(palette);
  setAccent(palette, colors.accent);
  return palette;
}

void groundWindows(QPalette& palette) {
  const QColor ground = palette.color(QPalette::Active, QPalette::Window);
  if (ground.alpha() == 255) return;
  const bool lightText =
      palette.color(QPalette::Active, QPalette::WindowText).lightness() > kMiddleLightness;
  palette.setColor(QPalette::Window, over(colorsFor(lightText, false).window, ground));
}

void fadeDisabled(QPalette& palette) {
  const QColor ground = palette.color(QPalette::Active, QPalette::Window);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    const QColor color = palette.color(QPalette::Active, role);
    palette.setColor(QPalette::Disabled, role, mixed(color, ground, kDisabledOpacity));
  }
}

void setAccent(QPalette& palette, const QColor& accent) {
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, textOn(accent));
  palette.setColor(QPalette::Link, accent);
}

}  // namespace lumora
