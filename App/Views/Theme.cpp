// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QHash>
#include <QStringList>
#include <cstdlib>

namespace lumora {
namespace {

constexpr double kLargestFont = 100;  // points or pixels

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
                       {0x4c, 0x9a, 0xff}}
              : Colors{{0xf6, 0xf6, 0xf7},
                       Qt::white,
                       {0x1d, 0x1d, 0x1f},
                       {0xe6, 0xe6, 0xe9},
                       {0x1f, 0x6f, 0xeb}};
}

/// Black or white, whichever reads better on it.
QColor textOn(const QColor& color) { return qGray(color.rgb()) < 150 ? Qt::white : Qt::black; }

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
  palette.setColor(QPalette::PlaceholderText, secondaryColor(palette));
  palette.setColor(QPalette::Highlight, colors.accent);
  palette.setColor(QPalette::HighlightedText, textOn(colors.accent));
  return palette;
}

/// Whether it is black on white or white on black: the choice of somebody who needs it.
bool isHighContrast(const QPalette& palette) {
  const auto lightness = [&palette](QPalette::ColorRole role) {
    return palette.color(QPalette::Active, role).lightness();
  };
  return std::abs(lightness(QPalette::Window) - lightness(QPalette::WindowText)) == 255;
}

/// Whether the word is a size: points, or pixels with "px" behind.
bool takeSize(QString word, double scale, QFont& font) {
  const bool pixels = word.endsWith("px");
  if (pixels) word.chop(2);
  bool isNumber = false;
  const double size = word.toDouble(&isNumber) * scale;
  if (!isNumber) return false;
  if (!(size >= 1 && size < kLargestFont)) return true;
  pixels ? font.setPixelSize(qRound(size)) : font.setPointSizeF(size);
  return true;
}

/// Whether the word is a style of those that Pango knows.
bool takeStyle(QString word, QFont& font) {
  const QHash<QString, QFont::Weight> weights = {
      {"thin", QFont::Thin},         {"ultralight", QFont::ExtraLight},
      {"light", QFont::Light},       {"semilight", QFont::Light},
      {"book", QFont::Normal},       {"regular", QFont::Normal},
      {"normal", QFont::Normal},     {"medium", QFont::Medium},
      {"semibold", QFont::DemiBold}, {"demibold", QFont::DemiBold},
      {"bold", QFont::Bold},         {"ultrabold", QFont::ExtraBold},
      {"heavy", QFont::Black},       {"black", QFont::Black}};
  word = word.toLower().remove('-');
  if (const auto weight = weights.find(word); weight != weights.end()) {
    font.setWeight(*weight);
  } else if (word == "italic" || word == "oblique") {
    font.setItalic(true);
  } else if (word.endsWith("condensed")) {
    font.setStretch(QFont::Condensed);
  } else if (word.endsWith("expanded")) {
    font.setStretch(QFont::Expanded);
  } else {
    return false;
  }
  return true;
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

QColor secondaryColor(const QPalette& palette) {
  return mixed(palette.color(QPalette::Active, QPalette::WindowText),
               palette.color(QPalette::Active, QPalette::Window),
               isHighContrast(palette) ? 1 : 0.65);
}

QColor raisedColor(const QPalette& palette) {
  return isDark(palette) ? palette.color(QPalette::Button).lighter(125)
                         : palette.color(QPalette::Base);
}

QColor cardColor(const QPalette& palette) {
  return isDark(palette) ? veil(palette, 0.06) : palette.color(QPalette::Base);
}

QColor fieldColor(const QPalette& palette) { return veil(palette, isDark(palette) ? 0.16 : 0.08); }

QColor wellColor(const QPalette& palette) { return veil(palette, 0.08); }

QColor troughColor(const QPalette& palette) {
  if (isHighContrast(palette)) return veil(palette, 0.55);
  return veil(palette, isDark(palette) ? 0.25 : 0.2);
}

QColor hairlineColor(const QPalette& palette) {
  return veil(palette, isHighContrast(palette) ? 0.7 : 0.12);
}

QPen focusPen(const QPalette& palette) { return {colorOf(Tint::accent, palette), 2}; }

QPalette paletteFor(const Appearance& appearance, const QPalette& desktops) {
  QPalette palette = desktops;
  const bool wantsDark = appearance.colorScheme == Appearance::ColorScheme::dark;
  const bool wantsLight = appearance.colorScheme == Appearance::ColorScheme::light;
  const bool dark = wantsDark || (isDark(desktops) && !wantsLight);
  if (dark != isDark(desktops) || (appearance.highContrast && !isHighContrast(desktops))) {
    palette = paletteOf(colorsFor(dark, appearance.highContrast));
  }
  // Any colour may be hard to see on black or white.
  if (appearance.accent && !appearance.highContrast) {
    const QColor accent = QColor::fromRgb(*appearance.accent);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, textOn(accent));
  }
  palette.setColor(QPalette::Link, palette.color(QPalette::Active, QPalette::Highlight));
  return palette;
}

QFont fontOf(const std::string& description, double scale) {
  QFont font = QApplication::font();
  // Behind an "@" stand the axes of variable fonts.
  QStringList words =
      QString::fromStdString(description).section('@', 0, 0).split(' ', Qt::SkipEmptyParts);
  if (!words.isEmpty() && takeSize(words.last(), scale, font)) words.removeLast();
  while (!words.isEmpty() && !QFontDatabase::families().contains(words.join(' ')) &&
         takeStyle(words.last(), font)) {
    words.removeLast();
  }
  QString family = words.join(' ');
  if (family.endsWith(',')) family.chop(1);
  if (!family.isEmpty()) font.setFamilies({family});
  return font;
}

void applyAppearance(const Appearance& appearance) {
  // First the desktop's own, as it is by now.
  QApplication::setPalette(QPalette());
  QApplication::setPalette(paletteFor(appearance, QApplication::palette()));
  if (!appearance.font) return;
  // An X display has the factor in its resolution.
  const bool scales = QGuiApplication::platformName().startsWith("wayland");
  QApplication::setFont(fontOf(*appearance.font, scales ? appearance.textScale : 1));
}

}  // namespace lumora
