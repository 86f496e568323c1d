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

/// A color that lets something through, over another.
QColor over(const QColor& below, const QColor& color) {
  const float share = color.alphaF();
  const auto mix = [share](float one, float other) { return one * share + other * (1 - share); };
  return QColor::fromRgbF(mix(color.redF(), below.redF()), mix(color.greenF(), below.greenF()),
                          mix(color.blueF(), below.blueF()));
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

TEST(Theme, ShowsWhichOfSeveralIsChosen) {
  for (const auto& palette : {paletteFor({ColorScheme::dark, {}}, kLight),
                              paletteFor({ColorScheme::light, {}}, kDark), kLight}) {
    const QColor well = over(palette.color(QPalette::Window), wellColor(palette));
    EXPECT_GE(contrast(raisedColor(palette), well), 1.2);
  }
}

TEST(Theme, HasTheStrongestColorsWhereHighContrastIsWished) {
  for (const auto scheme : {ColorScheme::dark, ColorScheme::light, ColorScheme::noPreference}) {
    for (const auto& desktops : {kLight, kDark}) {
      Appearance wish{scheme, 0xC88800U};
      wish.highContrast = true;
      const QPalette palette = paletteFor(wish, desktops);
      EXPECT_EQ(isDark(palette), scheme == ColorScheme::noPreference ? isDark(desktops)
                                                                     : scheme == ColorScheme::dark);
      const QColor window = palette.color(QPalette::Window);
      EXPECT_DOUBLE_EQ(contrast(palette.color(QPalette::WindowText), window), 21);
      EXPECT_DOUBLE_EQ(contrast(secondaryColor(palette), window), 21);
      for (const Tint tint : {Tint::accent, Tint::green, Tint::orange, Tint::red}) {
        EXPECT_GE(contrast(colorOf(tint, palette), window), 7);
      }
      EXPECT_GE(contrast(over(window, hairlineColor(palette)), window), 4.5);
      EXPECT_GE(contrast(over(window, troughColor(palette)), window), 3);
    }
  }
}

TEST(Theme, KeepsADesktopsOwnHighContrast) {
  const QPalette own(Qt::yellow, Qt::black);
  Appearance wish{ColorScheme::dark, {}};
  wish.highContrast = true;
  QPalette strong = own;
  strong.setColor(QPalette::WindowText, Qt::white);
  EXPECT_EQ(paletteFor(wish, strong).color(QPalette::Button), QColor(Qt::yellow));
  EXPECT_EQ(secondaryColor(strong), QColor(Qt::white));
}

TEST(Theme, ReadsAFontAsPangoDescribesIt) {
  const QFont usual = QApplication::font();
  EXPECT_EQ(fontOf("Cantarell 11", 1).families(), QStringList{"Cantarell"});
  EXPECT_DOUBLE_EQ(fontOf("Cantarell 11", 1).pointSizeF(), 11);
  EXPECT_DOUBLE_EQ(fontOf("Noto Sans 10.5", 1.5).pointSizeF(), 15.75);
  EXPECT_EQ(fontOf("Noto Sans, 10.5", 1).families(), QStringList{"Noto Sans"});
  EXPECT_EQ(fontOf("Inter Bold 11", 1).families(), QStringList{"Inter"});
  EXPECT_EQ(fontOf("Inter, Bold 11", 1).families(), QStringList{"Inter"});
  EXPECT_EQ(fontOf("Inter Semi-Bold Italic 11", 1).families(), QStringList{"Inter"});
  EXPECT_EQ(fontOf("Inter Semi-Bold Italic 11", 1).weight(), QFont::DemiBold);
  EXPECT_TRUE(fontOf("Inter Semi-Bold Italic 11", 1).italic());
  EXPECT_EQ(fontOf("Ubuntu Condensed 11", 1).stretch(), QFont::Condensed);
  EXPECT_EQ(fontOf("Inter 11 @wght=500", 1).families(), QStringList{"Inter"});
  EXPECT_DOUBLE_EQ(fontOf("Inter 11 @wght=500", 1).pointSizeF(), 11);
  EXPECT_EQ(fontOf("Inter 15px", 2).pixelSize(), 30);
  EXPECT_EQ(fontOf("Cantarell", 1).pointSizeF(), usual.pointSizeF());
  for (const char* nothing : {"", " ", "@", "0", "-3", "1e9", "inf", "nan", "0px"}) {
    EXPECT_EQ(fontOf(nothing, 1), usual) << nothing;
  }
}

/// Leaves Qt as it was.
class Wishes : public testing::Test {
 public:
  ~Wishes() override {
    applyAppearance({});
    QApplication::setFont(font_);
  }

 private:
  QFont font_ = QApplication::font();
};

TEST_F(Wishes, ComeAndGo) {
  const QColor before = QApplication::palette().color(QPalette::Window);
  ASSERT_FALSE(isDark(QApplication::palette()));
  applyAppearance({ColorScheme::dark, 0xC01C28U});
  EXPECT_TRUE(isDark(QApplication::palette()));
  EXPECT_EQ(QApplication::palette().color(QPalette::Highlight), QColor(0xC0, 0x1C, 0x28));
  applyAppearance({});
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), before);
  EXPECT_NE(QApplication::palette().color(QPalette::Highlight), QColor(0xC0, 0x1C, 0x28));
}

TEST_F(Wishes, LeaveTheFontToTheDesktopThatTellsNone) {
  const QFont usual = QApplication::font();
  applyAppearance({});
  EXPECT_EQ(QApplication::font(), usual);
  Appearance wish;
  wish.font = "Serif 14";
  wish.textScale = 2;  // an X display, and so this one, has it in its resolution
  applyAppearance(wish);
  EXPECT_EQ(QApplication::font().families(), QStringList{"Serif"});
  EXPECT_DOUBLE_EQ(QApplication::font().pointSizeF(), 14);
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
