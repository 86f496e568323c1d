// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What the desktop has its say in: its own style, and its palette.
#include "Views/Controls/Disclosure.h"
#include "Views/Controls/LinkButton.h"
#include "Views/Controls/SegmentedPicker.h"
#include "Views/Controls/Stepper.h"
#include "Views/Controls/Switch.h"
#include "Views/Pixels.h"
#include "Views/Style/Style.h"
#include "Views/Style/StyleKeeper.h"

#include <QApplication>
#include <QProxyStyle>
#include <QRadioButton>
#include <QStyleFactory>
#include <memory>
#include <utility>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

/// A widget with its children as a style draws it.
QImage drawnBy(const char* style, QWidget& widget) {
  const std::unique_ptr<QStyle> owned(QStyleFactory::create(style));
  QList<QWidget*> all = widget.findChildren<QWidget*>() << &widget;
  for (auto* each : all) each->setStyle(owned.get());
  widget.resize(200, 40);
  QImage image = widget.grab().toImage();
  for (auto* each : all) each->setStyle(nullptr);
  return image;
}

TEST(StylesOfDesktops, DrawNothingOfWhatOnlyLumoraHas) {
  Switch toggle;
  toggle.setChecked(true);
  Stepper stepper({0, 10}, [](std::int64_t) {});
  Disclosure disclosure(TextRole::callout, "Daily summary");
  LinkButton link(TextRole::caption, "Cancel");
  SegmentedPicker picker({"24 hours", "7 days"}, [](int) {});
  for (QWidget* widget : {static_cast<QWidget*>(&toggle), static_cast<QWidget*>(&stepper),
                          static_cast<QWidget*>(&disclosure), static_cast<QWidget*>(&link),
                          static_cast<QWidget*>(&picker)}) {
    widget->resize(200, 40);
    EXPECT_EQ(differences(picture(*widget), drawnBy("windows", *widget)), 0)
        << widget->metaObject()->className();
    // Some styles draw more of one in all its buttons, and where the focus is.
    EXPECT_TRUE(widget->findChildren<QRadioButton*>().isEmpty());
  }
}

TEST(StylesOfDesktops, AreLeftAloneWhereTheyAreGood) {
  EXPECT_TRUE(isGood("breeze"));
  for (const char* other : {"fusion", "windows", "gtk2", ""}) EXPECT_FALSE(isGood(other)) << other;
}

TEST(StylesOfDesktops, AreNotTakenElsewhere) {
  QApplication::setStyle("windows");
  installStyle();
  EXPECT_NE(dynamic_cast<Style*>(QApplication::style()), nullptr);
}

TEST(StylesOfDesktops, AreSetInVain) {
  const StyleKeeper keeper;
  QWidget window;
  window.ensurePolished();
  QApplication::setStyle("windows");
  EXPECT_EQ(dynamic_cast<Style*>(QApplication::style()), nullptr);
  QCoreApplication::processEvents();
  EXPECT_NE(dynamic_cast<Style*>(QApplication::style()), nullptr);
}

TEST(StylesPalette, IsOurOwnWhereTheDesktopHasNone) {
  Style style;
  const std::unique_ptr<QStyle> fusion(QStyleFactory::create("fusion"));
  QPalette palette = fusion->standardPalette();
  style.polish(palette);
  EXPECT_EQ(palette.color(QPalette::Window), QColor(0xf6, 0xf6, 0xf7));
  EXPECT_EQ(palette.color(QPalette::Highlight), QColor(0x1f, 0x6f, 0xeb));
}

/// A toolkit whose own palette follows the desktop, while applications keep that of their start.
class OldToolkit : public QProxyStyle {
 public:
  explicit OldToolkit(QPalette start) : QProxyStyle("fusion"), now(std::move(start)) {}
  QPalette standardPalette() const override { return now; }

  QPalette now;
};

TEST(StylesPalette, FollowsTheToolkitsWhereApplicationsKeepTheirFirst) {
  const QPalette light(QColor(0xef, 0xef, 0xef));
  const QPalette dark(QColor(0x32, 0x32, 0x32));
  for (const bool startsDark : {false, true}) {
    const QPalette start = startsDark ? dark : light;
    auto* toolkit = new OldToolkit(start);
    Style style(toolkit);
    for (const bool isNowDark : {startsDark, !startsDark, startsDark}) {
      toolkit->now = isNowDark ? dark : light;
      QPalette palette = start;
      style.polish(palette);
      EXPECT_EQ(palette.color(QPalette::Window),
                isNowDark ? QColor(0x2b, 0x2b, 0x2e) : QColor(0xf6, 0xf6, 0xf7));
    }
  }
}

TEST(StylesPalette, HasAGroundWhereTheDesktopsLetsThrough) {
  Style style;
  for (const bool dark : {false, true}) {
    QPalette palette(dark ? Qt::white : Qt::black, QColor(0x80, 0x40, 0x40), Qt::gray, Qt::gray,
                     Qt::gray, dark ? Qt::white : Qt::black, Qt::white,
                     dark ? Qt::black : Qt::white, Qt::transparent);
    style.polish(palette);
    const QColor ground = palette.color(QPalette::Active, QPalette::Window);
    EXPECT_EQ(ground, dark ? QColor(0x2b, 0x2b, 0x2e) : QColor(0xf6, 0xf6, 0xf7));
    EXPECT_EQ(palette.color(QPalette::Inactive, QPalette::Window), ground);
    EXPECT_EQ(palette.color(QPalette::Disabled, QPalette::Window), ground);
  }
}

TEST(StylesPalette, IsTheDesktopsWithWhatIsDisabledHalfAsStrong) {
  Style style;
  QPalette palette(QColor(0xd4, 0xd0, 0xc8));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, QColor(0x20, 0x40, 0x60));
  }
  const QPalette desktopsOwn = palette;
  style.polish(palette);
  for (const auto role : {QPalette::Window, QPalette::WindowText, QPalette::Base, QPalette::Text,
                          QPalette::Button, QPalette::Highlight}) {
    EXPECT_EQ(palette.color(QPalette::Active, role), desktopsOwn.color(QPalette::Active, role));
  }
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    EXPECT_EQ(palette.color(QPalette::Disabled, role), QColor(0x7a, 0x88, 0x94)) << role;
  }
}

}  // namespace
}  // namespace lumora::test
