// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme/Colors.h"

#include "Views/Theme/Contrast.h"

#include <cstdlib>

namespace lumora {
namespace {

constexpr double kTextContrast = 4.5;
constexpr double kMarkContrast = 3;
constexpr double kHighContrast = 7;
constexpr double kSecondaryShare = 0.65;
constexpr double kNeutralShare = 0.4;
constexpr float kAreaOpacity = 0.1F;
constexpr float kChargedOpacity = 0.16F;

QColor windowOf(const QPalette& palette) {
  return palette.color(QPalette::Active, QPalette::Window);
}

QColor textOf(const QPalette& palette) {
  return palette.color(QPalette::Active, QPalette::WindowText);
}

/// A little of the text's colour over whatever lies beneath.
QColor veil(const QPalette& palette, double opacity) {
  QColor color = textOf(palette);
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

/// Of a control's ground: on dark, a pressed one sinks.
double fieldOpacity(const QPalette& palette, Touch touch) {
  const bool dark = isDark(palette);
  switch (touch) {
    case Touch::hovered:
      return dark ? 0.16 : 0.13;
    case Touch::pressed:
      return dark ? 0.06 : 0.19;
    case Touch::none:
      break;
  }
  return dark ? 0.12 : 0.08;
}

QColor opaqueCard(const QPalette& palette) { return over(windowOf(palette), cardColor(palette)); }

QColor legibleText(const QColor& color, const QPalette& palette) {
  return legible(color, {windowOf(palette), opaqueCard(palette)},
                 isHighContrast(palette) ? kHighContrast : kTextContrast);
}

QColor secondaryColor(const QPalette& palette) {
  const double share = isHighContrast(palette) ? 1 : kSecondaryShare;
  return legibleText(mixed(textOf(palette), windowOf(palette), share), palette);
}

QColor translucent(QColor color, float opacity) {
  color.setAlphaF(opacity);
  return color;
}

/// A tint as it is before it is made legible.
QColor plainColor(Tint tint, const QPalette& palette) {
  const bool dark = isDark(palette);
  const bool strong = isHighContrast(palette);
  const auto choose = [&](QRgb onDark, QRgb onLight, QRgb onWhite) {
    return QColor::fromRgb(dark ? onDark : strong ? onWhite : onLight);
  };
  switch (tint) {
    case Tint::accent:
      return palette.color(QPalette::Active, QPalette::Highlight);
    case Tint::green:
      return choose(0x3fc65f, 0x1e8e3e, 0x0b5a22);
    case Tint::orange:
      return choose(0xffa03c, 0xbf5b00, 0x7a3a00);
    case Tint::red:
      return choose(0xff6b61, 0xd02c22, 0x9a1410);
  }
  return {};
}

/// Marks lie on the window or a card, some of them on a track or in a well there.
QColor legibleMark(const QColor& color, const QPalette& palette) {
  const QColor window = windowOf(palette);
  const QColor mark = legible(color, {window, opaqueCard(palette)},
                              isHighContrast(palette) ? kHighContrast : kMarkContrast);
  return legible(mark, {over(window, trackColor(palette)), over(window, wellColor(palette))},
                 kMarkContrast);
}

}  // namespace

QColor textColor(TextColor color, const QPalette& palette) {
  switch (color) {
    case TextColor::primary:
      return textOf(palette);
    case TextColor::secondary:
      return secondaryColor(palette);
    case TextColor::link:
      return legibleText(plainColor(Tint::accent, palette), palette);
    case TextColor::green:
      return legibleText(plainColor(Tint::green, palette), palette);
    case TextColor::orange:
      return legibleText(plainColor(Tint::orange, palette), palette);
    case TextColor::red:
      return legibleText(plainColor(Tint::red, palette), palette);
  }
  return {};
}

TextColor textColorFor(Tint tint) {
  switch (tint) {
    case Tint::accent:
      return TextColor::link;
    case Tint::green:
      return TextColor::green;
    case Tint::orange:
      return TextColor::orange;
    case Tint::red:
      return TextColor::red;
  }
  return TextColor::primary;
}

QColor markColor(Tint tint, const QPalette& palette) {
  return legibleMark(plainColor(tint, palette), palette);
}

QColor neutralMarkColor(const QPalette& palette) {
  return legibleMark(mixed(textOf(palette), windowOf(palette), kNeutralShare), palette);
}

QColor trackColor(const QPalette& palette) { return translucent(secondaryColor(palette), 0.2F); }

QColor gridColor(const QPalette& palette) { return translucent(secondaryColor(palette), 0.25F); }

QColor areaColor(Tint tint, const QPalette& palette) {
  const float opacity = tint == Tint::green ? kChargedOpacity : kAreaOpacity;
  return translucent(markColor(tint, palette), opacity);
}

QColor knobColor(const QColor& track) {
  return contrast(Qt::white, track) >= kMarkContrast ? Qt::white : Qt::black;
}

QColor raisedColor(const QPalette& palette) {
  return isDark(palette) ? palette.color(QPalette::Active, QPalette::Button).lighter(125)
                         : palette.color(QPalette::Active, QPalette::Base);
}

QColor wellColor(const QPalette& palette) { return veil(palette, 0.08); }

QColor cardColor(const QPalette& palette) {
  return isDark(palette) ? veil(palette, 0.06) : palette.color(QPalette::Active, QPalette::Base);
}

QColor fieldColor(const QPalette& palette, Touch touch) {
  return veil(palette, fieldOpacity(palette, touch));
}

QColor actionColor(const QPalette& palette, Touch touch) {
  const QColor accent = markColor(Tint::accent, palette);
  // White is wanted on it, and most accents are dark enough for that with a little help.
  const QColor darker = legible(accent, {Qt::white}, kTextContrast);
  const bool takesWhite = contrast(Qt::white, accent) >= kMarkContrast &&
                          contrast(darker, windowOf(palette)) >= kMarkContrast;
  const double touched = touch == Touch::none ? 0 : touch == Touch::hovered ? 0.1 : 0.2;
  return mixed(takesWhite ? Qt::black : Qt::white, takesWhite ? darker : accent, touched);
}

QColor dangerFieldColor(const QPalette& palette, Touch touch) {
  return translucent(textColor(TextColor::red, palette),
                     static_cast<float>(fieldOpacity(palette, touch)) + 0.04F);
}

QColor dangerColor(const QPalette& palette) {
  const QColor field = dangerFieldColor(palette, isDark(palette) ? Touch::hovered : Touch::pressed);
  return legible(textColor(TextColor::red, palette),
                 {over(windowOf(palette), field), over(opaqueCard(palette), field)},
                 isHighContrast(palette) ? kHighContrast : kTextContrast);
}

QColor popupColor(const QPalette& palette) {
  return isDark(palette) ? mixed(textOf(palette), windowOf(palette), 0.08)
                         : palette.color(QPalette::Active, QPalette::Base);
}

QColor hairlineColor(const QPalette& palette) {
  return veil(palette, isHighContrast(palette) ? 0.7 : 0.12);
}

QColor outlineColor(const QPalette& palette) {
  return veil(palette, isHighContrast(palette) ? 0.7 : 0.25);
}

QColor focusColor(const QPalette& palette) { return markColor(Tint::accent, palette); }

bool isDark(const QPalette& palette) { return windowOf(palette).lightness() < 128; }

bool isHighContrast(const QPalette& palette) {
  return std::abs(windowOf(palette).lightness() - textOf(palette).lightness()) == 255;
}

}  // namespace lumora
