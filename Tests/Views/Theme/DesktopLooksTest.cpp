// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme/Colors.h"
#include "Views/Theme/DesktopLooks.h"

#include <QApplication>
#include <QEvent>
#include <QFont>
#include <QTimer>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using ColorScheme = Appearance::ColorScheme;

const QPalette kLight(QColor(0xee, 0xee, 0xee));
const QPalette kDark(QColor(0x22, 0x22, 0x22));

TEST(PaletteFor, FollowsTheColorSchemeThatIsWished) {
  EXPECT_TRUE(isDark(paletteFor({ColorScheme::dark, {}}, kLight)));
  EXPECT_FALSE(isDark(paletteFor({ColorScheme::light, {}}, kDark)));
}

TEST(PaletteFor, KeepsTheDesktopsPaletteWhereItIsRight) {
  for (const auto scheme : {ColorScheme::noPreference, ColorScheme::light}) {
    EXPECT_EQ(paletteFor({scheme, {}}, kLight).color(QPalette::Window),
              kLight.color(QPalette::Window));
    EXPECT_EQ(paletteFor({scheme, {}}, kLight).resolveMask(), 0U);
  }
  for (const auto scheme : {ColorScheme::noPreference, ColorScheme::dark}) {
    EXPECT_EQ(paletteFor({scheme, {}}, kDark).color(QPalette::Window),
              kDark.color(QPalette::Window));
    EXPECT_EQ(paletteFor({scheme, {}}, kDark).resolveMask(), 0U);
  }
}

TEST(PaletteFor, TakesTheAccentThatIsWished) {
  const QPalette palette = paletteFor({ColorScheme::noPreference, 0xC01C28U}, kLight);
  EXPECT_EQ(palette.color(QPalette::Highlight), QColor(0xC0, 0x1C, 0x28));
  EXPECT_EQ(palette.color(QPalette::Link), QColor(0xC0, 0x1C, 0x28));
  EXPECT_EQ(palette.color(QPalette::HighlightedText), QColor(Qt::white));
  const QPalette yellow = paletteFor({ColorScheme::noPreference, 0xF6D32DU}, kLight);
  EXPECT_EQ(yellow.color(QPalette::HighlightedText), QColor(Qt::black));
}

TEST(PaletteFor, HasTheStrongestColorsWhereHighContrastIsWished) {
  for (const auto scheme : {ColorScheme::dark, ColorScheme::light, ColorScheme::noPreference}) {
    for (const auto& desktops : {kLight, kDark}) {
      Appearance wish{scheme, 0xC88800U};
      wish.highContrast = true;
      const QPalette palette = paletteFor(wish, desktops);
      EXPECT_TRUE(isHighContrast(palette));
      EXPECT_EQ(isDark(palette), scheme == ColorScheme::noPreference ? isDark(desktops)
                                                                     : scheme == ColorScheme::dark);
      EXPECT_NE(palette.color(QPalette::Highlight), QColor::fromRgb(0xC88800));
    }
  }
}

TEST(PaletteFor, KeepsADesktopsOwnHighContrast) {
  QPalette strong(Qt::yellow, Qt::black);
  strong.setColor(QPalette::WindowText, Qt::white);
  Appearance wish{ColorScheme::dark, {}};
  wish.highContrast = true;
  EXPECT_EQ(paletteFor(wish, strong).color(QPalette::Button), QColor(Qt::yellow));
}

/// What Qt tells of the palettes that it gets while its loop runs: whether each is dark.
class Witness : public QObject {
 public:
  /// Runs the loop while `change` is made.
  std::vector<bool> during(const std::function<void()>& change) {
    QTimer::singleShot(0, [&] {
      qApp->installEventFilter(this);
      change();
      qApp->removeEventFilter(this);
      QApplication::quit();
    });
    QApplication::exec();
    return dark_;
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool told = watched == qApp && event->type() == QEvent::ApplicationPaletteChange;
    if (told) dark_.push_back(isDark(QApplication::palette()));
    return false;
  }

 private:
  std::vector<bool> dark_;
};

/// Leaves Qt as it was.
class DesktopLooksTest : public testing::Test {
 public:
  ~DesktopLooksTest() override {
    looks.apply({});
    QApplication::setFont(font_);
  }

 protected:
  DesktopLooks looks;

 private:
  QFont font_ = QApplication::font();
};

TEST_F(DesktopLooksTest, ComeAndGo) {
  const QPalette before = QApplication::palette();
  ASSERT_FALSE(isDark(before));
  looks.apply({ColorScheme::dark, 0xC01C28U});
  EXPECT_TRUE(isDark(QApplication::palette()));
  EXPECT_EQ(QApplication::palette().color(QPalette::Highlight), QColor(0xC0, 0x1C, 0x28));
  looks.apply({ColorScheme::light, 0xC01C28U});
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), before.color(QPalette::Window));
  EXPECT_EQ(QApplication::palette().color(QPalette::Highlight), QColor(0xC0, 0x1C, 0x28));
  looks.apply({});
  for (const auto role : {QPalette::Window, QPalette::WindowText, QPalette::Highlight,
                          QPalette::HighlightedText, QPalette::Link}) {
    EXPECT_EQ(QApplication::palette().color(role), before.color(role)) << role;
  }
}

TEST_F(DesktopLooksTest, GoFromOneToTheNextWithoutTheDesktopsOwnBetween) {
  Appearance wish{ColorScheme::dark, 0x3584E4U};
  looks.apply(wish);
  wish.accent = 0xC01C28U;
  EXPECT_EQ(Witness().during([&] { looks.apply(wish); }), std::vector<bool>{true});
}

TEST_F(DesktopLooksTest, LeaveTheColorsAloneWhenOnlyTheTextSizeChanges) {
  Appearance wish{ColorScheme::dark, {}};
  wish.font = "Sans 11";
  looks.apply(wish);
  wish.font = "Sans 14";
  EXPECT_EQ(Witness().during([&] { looks.apply(wish); }), std::vector<bool>{});
  EXPECT_DOUBLE_EQ(QApplication::font().pointSizeF(), 14);
}

TEST_F(DesktopLooksTest, LeaveTheFontToTheDesktopThatTellsNone) {
  const QFont usual = QApplication::font();
  looks.apply({});
  EXPECT_EQ(QApplication::font(), usual);
  Appearance wish;
  wish.font = "Serif 14";
  wish.textScale = 2;  // an X display, and so this one, has it in its resolution
  looks.apply(wish);
  EXPECT_EQ(QApplication::font().families(), QStringList{"Serif"});
  EXPECT_DOUBLE_EQ(QApplication::font().pointSizeF(), 14);
}

}  // namespace
}  // namespace lumora::test
