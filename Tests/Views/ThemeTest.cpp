// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using ColorScheme = Appearance::ColorScheme;

const QPalette kLight(QColor(0xee, 0xee, 0xee));
const QPalette kDark(QColor(0x22, 0x22, 0x22));

bool isDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

/// Contrast as WCAG 2.1 counts it: 1 for none, 21 for black on white.
double contrast(const QColor& one, const QColor& other) {
  const auto luminance = [](const QColor& color) {
    const auto linear = [](float part) {
      return part <= 0.04045F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
  };
  const double lighter = std::max(luminance(one), luminance(other));
  const double darker = std::min(luminance(one), luminance(other));
  return (lighter + 0.05) / (darker + 0.05);
}

TEST(Theme, FollowsTheColorSchemeThatIsWished) {
  EXPECT_TRUE(isDark(paletteFor({ColorScheme::dark, {}}, kLight)));
  EXPECT_FALSE(isDark(paletteFor({ColorScheme::light, {}}, kDark)));
}

TEST(Theme, KeepsTheDesktopsPaletteWhereItIsRight) {
  for (const auto scheme : {ColorScheme::noPreference, ColorScheme::light}) {
    EXPECT_EQ(paletteFor({scheme, {}}, kLight).color(QPalette::Window),
              kLight.color(QPalette::Window));
  }
  for (const auto scheme : {ColorScheme::noPreference, ColorScheme::dark}) {
    EXPECT_EQ(paletteFor({scheme, {}}, kDark).color(QPalette::Window),
              kDark.color(QPalette::Window));
  }
}

TEST(Theme, TakesTheAccentThatIsWished) {
  const QPalette palette = paletteFor({ColorScheme::noPreference, 0xC01C28U}, kLight);
  EXPECT_EQ(colorOf(Tint::accent, palette), QColor(0xC0, 0x1C, 0x28));
  EXPECT_EQ(palette.color(QPalette::Link), QColor(0xC0, 0x1C, 0x28));
}

TEST(Theme, IsLegibleInBothSchemes) {
  for (const auto& palette : {paletteFor({ColorScheme::dark, {}}, kLight),
                              paletteFor({ColorScheme::light, {}}, kDark), kLight, kDark}) {
    const QColor window = palette.color(QPalette::Window);
    EXPECT_GE(contrast(palette.color(QPalette::WindowText), window), 7);
    EXPECT_GE(contrast(secondaryColor(palette), window), 4.5);
    for (const Tint tint : {Tint::green, Tint::orange, Tint::red}) {
      // Enough for graphics and for text beside which a label stands.
      EXPECT_GE(contrast(colorOf(tint, palette), window), 3);
    }
  }
}

TEST(Theme, ScalesTheDesktopsFontByItsRole) {
  const double size = QApplication::font().pointSizeF();
  EXPECT_DOUBLE_EQ(fontFor(TextRole::callout).pointSizeF(), size);
  EXPECT_DOUBLE_EQ(fontFor(TextRole::caption).pointSizeF(), size * 0.9);
  EXPECT_LT(fontFor(TextRole::caption2).pointSizeF(), fontFor(TextRole::caption).pointSizeF());
  EXPECT_GT(fontFor(TextRole::headline).weight(), fontFor(TextRole::body).weight());
}

}  // namespace
}  // namespace lumora::test
