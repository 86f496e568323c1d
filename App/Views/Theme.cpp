// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme.h"

#include <QApplication>

namespace lumora {
namespace {

bool isDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

QColor mixed(const QColor& one, const QColor& other, double share) {
  return QColor::fromRgbF(static_cast<float>(one.redF() * share + other.redF() * (1 - share)),
                          static_cast<float>(one.greenF() * share + other.greenF() * (1 - share)),
                          static_cast<float>(one.blueF() * share + other.blueF() * (1 - share)));
}

/// A little of the text's colour over whatever lies beneath.
QColor veil(const QPalette& palette, double opacity) {
  QColor color = palette.color(QPalette::Active, QPalette::WindowText);
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

QPalette plainPalette(bool dark) {
  const QColor window = dark ? QColor(0x2b, 0x2b, 0x2e) : QColor(0xf6, 0xf6, 0xf7);
  const QColor base = dark ? QColor(0x1f, 0x1f, 0x22) : Qt::white;
  const QColor text = dark ? QColor(0xf2, 0xf2, 0xf4) : QColor(0x1d, 0x1d, 0x1f);
  const QColor button = dark ? QColor(0x3c, 0x3c, 0x40) : QColor(0xe6, 0xe6, 0xe9);
  QPalette palette(button, window);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, button);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                          QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, mixed(text, window, 0.4));
  }
  palette.setColor(QPalette::ToolTipBase, base);
  palette.setColor(QPalette::PlaceholderText, mixed(text, window, 0.6));
  palette.setColor(QPalette::Highlight, dark ? QColor(0x4c, 0x9a, 0xff) : QColor(0x1f, 0x6f, 0xeb));
  palette.setColor(QPalette::HighlightedText, dark ? Qt::black : Qt::white);
  return palette;
}

}  // namespace

QFont fontFor(TextRole role) {
  QFont font = QApplication::font();
  const auto scale = [&font](double factor) {
    if (font.pointSizeF() > 0) {
      font.setPointSizeF(font.pointSizeF() * factor);
    } else {
      font.setPixelSize(qRound(font.pixelSize() * factor));
    }
  };
  switch (role) {
    case TextRole::headline:
      font.setWeight(QFont::DemiBold);
      break;
    case TextRole::body:
    case TextRole::callout:
      break;
    case TextRole::caption:
      scale(0.9);
      break;
    case TextRole::caption2:
      scale(0.85);
      break;
  }
  return font;
}

QColor colorOf(Tint tint, const QPalette& palette) {
  const bool dark = isDark(palette);
  switch (tint) {
    case Tint::accent:
      return palette.color(QPalette::Active, QPalette::Highlight);
    case Tint::green:
      return dark ? QColor(0x3f, 0xc6, 0x5f) : QColor(0x1e, 0x8e, 0x3e);
    case Tint::orange:
      return dark ? QColor(0xff, 0xa0, 0x3c) : QColor(0xbf, 0x5b, 0x00);
    case Tint::red:
      return dark ? QColor(0xff, 0x6b, 0x61) : QColor(0xd0, 0x2c, 0x22);
  }
  return {};
}

QColor secondaryColor(const QPalette& palette) {
  return mixed(palette.color(QPalette::Active, QPalette::WindowText),
               palette.color(QPalette::Active, QPalette::Window), 0.65);
}

QColor raisedColor(const QPalette& palette) {
  return isDark(palette) ? palette.color(QPalette::Button).lighter(125)
                         : palette.color(QPalette::Base);
}

QColor cardColor(const QPalette& palette) {
  return isDark(palette) ? veil(palette, 0.06) : palette.color(QPalette::Base);
}

QColor fieldColor(const QPalette& palette) { return veil(palette, isDark(palette) ? 0.16 : 0.08); }

QColor troughColor(const QPalette& palette) { return veil(palette, isDark(palette) ? 0.25 : 0.2); }

QColor hairlineColor(const QPalette& palette) { return veil(palette, 0.12); }

QPen focusPen(const QPalette& palette) { return {colorOf(Tint::accent, palette), 2}; }

QPalette paletteFor(const Appearance& appearance, const QPalette& desktops) {
  QPalette palette = desktops;
  const bool wantsDark = appearance.colorScheme == Appearance::ColorScheme::dark;
  const bool wantsLight = appearance.colorScheme == Appearance::ColorScheme::light;
  if ((wantsDark && !isDark(desktops)) || (wantsLight && isDark(desktops))) {
    palette = plainPalette(wantsDark);
  }
  if (appearance.accent) {
    const QColor accent = QColor::fromRgb(*appearance.accent);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText,
                     qGray(accent.rgb()) < 150 ? QColor(Qt::white) : QColor(Qt::black));
  }
  palette.setColor(QPalette::Link, palette.color(QPalette::Active, QPalette::Highlight));
  return palette;
}

}  // namespace lumora
