// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Pixels.h"
#include "Views/Popover/PopoverWindowTest.h"
#include "Views/Style/WindowFrame.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

bool always(const QScreen& /*screen*/) { return true; }

/// Whether windows are blended now.
bool blended = false;
bool asItIs(const QScreen& /*screen*/) { return blended; }

TEST(PopoverWindow, HasTheCornersOfTheDesktopsPanelsBesideItsControls) {
  EXPECT_EQ(cornerRadius("breeze"), 5);
  EXPECT_EQ(cornerRadius("fusion"), 12);
}

TEST(PopoverWindow, IsRoundWithAShadowWhereWindowsAreBlended) {
  Machine machine;
  PopoverWindow window(machine.host, always);
  window.showAt(ScreenPoint{400, 10});
  QCoreApplication::processEvents();
  EXPECT_EQ(window.width(), 8 + 340 + 8);
  const QImage image = picture(window);
  const int right = image.width() - 1;
  const int bottom = image.height() - 1;
  const auto alpha = [&](int x, int y) { return image.pixelColor(x, y).alpha(); };
  const int middle = right / 2;
  for (const bool top : {true, false}) {
    for (const bool left : {true, false}) {
      const auto at = [&](int in) {
        return QPoint(left ? in : right - in, top ? in : bottom - in);
      };
      // Nothing in the window's corner, little beside the round one, all within it.
      EXPECT_EQ(image.pixelColor(at(0)).alpha(), 0);
      EXPECT_LT(image.pixelColor(at(9)).alpha(), 80);
      EXPECT_EQ(image.pixelColor(at(14)).alpha(), 255);
    }
    // The shadow grows lighter up to the window's edge.
    int last = 255;
    for (int out = 0; out < 8; ++out) {
      const int now = alpha(middle, top ? 7 - out : bottom - 7 + out);
      EXPECT_LT(now, last) << out;
      last = now;
    }
    EXPECT_LT(last, 8);
    EXPECT_GT(alpha(middle, top ? 7 : bottom - 7), 30);
  }
  EXPECT_EQ(alpha(middle, 8), 255);
  EXPECT_EQ(alpha(8, bottom / 2), 255);
  EXPECT_EQ(alpha(right - 8, bottom / 2), 255);
  EXPECT_EQ(alpha(middle, bottom - 8), 255);
}

TEST(PopoverWindow, StandsInTheSamePlaceWithAShadow) {
  Machine machine;
  PopoverWindow square(machine.host);
  PopoverWindow round(machine.host, always);
  for (const std::optional<ScreenPoint> click : {std::optional<ScreenPoint>{},
                                                 {ScreenPoint{400, 10}},
                                                 {ScreenPoint{1, 790}},
                                                 {ScreenPoint{790, 300}}}) {
    square.showAt(click);
    const QRect expected = square.geometry();
    square.close();
    round.showAt(click);
    EXPECT_EQ(round.geometry().adjusted(8, 8, -8, -8), expected);
    round.close();
  }
}

TEST(PopoverWindow, TakesAClickOnItsShadowForOneElsewhere) {
  Machine machine;
  PopoverWindow window(machine.host, always);
  window.showAt(ScreenPoint{400, 10});
  const QRect popover = window.rect().adjusted(8, 8, -8, -8);
  QTest::mouseClick(&window, Qt::LeftButton, {}, popover.topLeft() + QPoint(20, 0));
  EXPECT_TRUE(window.isVisible());
  QTest::mouseClick(&window, Qt::LeftButton, {}, popover.bottomLeft() + QPoint(20, 1));
  EXPECT_FALSE(window.isVisible());
}

/// Where no window may choose its place.
struct Spread : Machine {
  PopoverWindow window{host, always, false};
};

/// What of its window is no more transparent than a shadow.
QRect shown(PopoverWindow& window) {
  const QImage image = picture(window);
  QRect found;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y).alpha() == 255) found |= QRect(x, y, 1, 1);
    }
  }
  return found;
}

TEST(PopoverWindow, StandsAtTheClickInASpreadWindowWhereItMayNotChooseItsPlace) {
  Spread spread;
  PopoverWindow& window = spread.window;
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  for (const int x : {400, 790}) {
    window.showAt(ScreenPoint{x, 10});
    QCoreApplication::processEvents();
    EXPECT_EQ(window.geometry(), screen);
    const QRect popover = shown(window);
    EXPECT_EQ(popover.width(), 340);
    EXPECT_EQ(popover.top(), 8);
    EXPECT_EQ(popover.left(), std::min(x - 170, screen.width() - 8 - 340));
    button(window, "Daily summary")->click();
    QCoreApplication::processEvents();
    const QRect unfolded = shown(window);
    EXPECT_NE(unfolded.height(), popover.height());
    EXPECT_EQ(unfolded.topRight(), popover.topRight());
    button(window, "Daily summary")->click();
    window.close();
    window.leaveScreen();
  }
}

TEST(PopoverWindow, ClosesByAClickIntoTheRestOfItsSpreadWindow) {
  Spread spread;
  PopoverWindow& window = spread.window;
  window.showAt(ScreenPoint{400, 10});
  QCoreApplication::processEvents();
  const QRect popover = shown(window);
  QTest::mouseClick(&window, Qt::LeftButton, {}, popover.topLeft() + QPoint(20, 4));
  EXPECT_TRUE(window.isVisible());
  QTest::mouseClick(&window, Qt::LeftButton, {}, window.rect().bottomLeft() + QPoint(20, -20));
  EXPECT_FALSE(window.isVisible());
  EXPECT_TRUE(window.isShownToTheUser());
}

TEST(PopoverWindow, ClosesWhereItsSpreadWindowIsPulledOffThePanel) {
  Spread spread;
  PopoverWindow& window = spread.window;
  for (int i = 0; i < 2; ++i) {
    window.showAt(ScreenPoint{400, 10});
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.isVisible());
    window.setWindowState(Qt::WindowNoState);
    QCoreApplication::processEvents();
    EXPECT_FALSE(window.isVisible());
  }
}

TEST(PopoverWindow, IsSquareAgainWhereWindowsAreNoLongerBlended) {
  Machine machine;
  PopoverWindow window(machine.host, asItIs);
  QList<QImage> pictures;
  for (const bool now : {false, true, false, true}) {
    blended = now;
    window.showAt(ScreenPoint{400, 10});
    QCoreApplication::processEvents();
    EXPECT_EQ(window.width(), now ? 356 : 340);
    EXPECT_EQ(window.windowHandle()->requestedFormat().hasAlpha(), now);
    EXPECT_EQ(window.autoFillBackground(), !now);
    pictures << picture(window);
    window.close();
  }
  EXPECT_EQ(pictures[2], pictures[0]);
  EXPECT_EQ(pictures[3], pictures[1]);
  EXPECT_EQ(pictures[0].pixelColor(0, 0).alpha(), 255);
  // What it was while it is open it stays.
  window.showAt(ScreenPoint{400, 10});
  blended = false;
  window.showAt(ScreenPoint{400, 10});
  EXPECT_EQ(window.width(), 356);
}

TEST(PopoverWindow, KeepsItsScrollBarOutOfItsCorners) {
  const ScopedFontSize large(18);
  Machine machine;
  machine.host.setBattery(73, {{"Time to Empty", 185}}, kEverything);
  machine.host.model().refresh(AppModel::Reason::change);
  PopoverWindow window(machine.host, always);
  window.showAt(ScreenPoint{400, 10});
  button(window, "Daily summary")->click();
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  EXPECT_EQ(window.height(), screen.height());
  const auto* bar = window.findChild<QScrollArea*>()->verticalScrollBar();
  EXPECT_TRUE(bar->isVisible());
  EXPECT_GE(bar->mapTo(&window, QPoint()).y(), 8 + 12);
  EXPECT_LE(bar->mapTo(&window, bar->rect().bottomLeft()).y(), window.height() - 1 - 8 - 12);
}

TEST(WindowFrame, RunsAlongTheEdgesAtAnyScale) {
  const QRect popover(0, 0, 40, 20);
  for (const double scale : {1.0, 1.5, 2.0}) {
    QImage image((QSizeF(popover.size()) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    drawSquareFrame(painter, popover, QApplication::palette());
    painter.end();
    const QRgb line = image.pixel(0, image.height() / 2);
    EXPECT_NE(line, QColor(Qt::white).rgb());
    EXPECT_EQ(image.pixel(image.width() - 1, image.height() / 2), line) << scale;
    EXPECT_EQ(image.pixel(image.width() / 2, 0), line) << scale;
    EXPECT_EQ(image.pixel(image.width() / 2, image.height() - 1), line) << scale;
  }
}

}  // namespace
}  // namespace lumora::test
