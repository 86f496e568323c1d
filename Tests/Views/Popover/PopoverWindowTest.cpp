// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/FakeHost.h"
#include "Views/Patience.h"
#include "Views/Pixels.h"
#include "Views/Popover/PopoverWindow.h"
#include "Views/Style/WindowFrame.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWindow>
#include <fstream>

#include <gtest/gtest.h>
#include <qpa/qwindowsysteminterface.h>

namespace lumora::test {
namespace {

long residentKiB() {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word) {
    if (word == "VmRSS:") break;
  }
  long size = 0;
  status >> size;
  return size;
}

/// Gives the screen another size.
void screenBecomes(const QRect& area) {
  QWindowSystemInterface::handleScreenGeometryChange(QGuiApplication::primaryScreen(), area, area);
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

/// A machine with a battery and a week of history.
struct Machine {
  Machine() {
    // Away from the edges, where a pointer would be the one that clicked.
    QCursor::setPos(400, 400);
    host.setBattery(73);
    host.setHistory(minuteSamples(host.now(), 7 * 1440));
    host.model().refresh(AppModel::Reason::change);
  }

  FakeHost host;
};

/// Its popover.
struct Popover : Machine {
  PopoverWindow window{host};
};

TEST(PopoverWindow, ClosesOnEscape) {
  Popover popover;
  PopoverWindow& window = popover.window;
  window.showAt(ScreenPoint{400, 10});
  EXPECT_TRUE(window.isVisible());
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
}

TEST(PopoverWindow, GoesWithItsMonitor) {
  Popover popover;
  popover.window.showAt(ScreenPoint{400, 10});
  emit qApp->screenRemoved(QGuiApplication::primaryScreen());
  EXPECT_FALSE(popover.window.isVisible());
}

TEST(PopoverWindow, StaysClosedForTheClickThatClosedIt) {
  FakeHost host;
  PopoverWindow window(host);
  EXPECT_FALSE(window.isShownToTheUser());
  window.showAt(ScreenPoint{400, 10});
  EXPECT_TRUE(window.isShownToTheUser());
  QTest::mouseClick(&window, Qt::LeftButton, {}, {-20, -20});
  EXPECT_FALSE(window.isVisible());
  EXPECT_TRUE(window.isShownToTheUser());
  EXPECT_TRUE(waitFor([&] { return !window.isShownToTheUser(); }));
  window.showAt(ScreenPoint{400, 10});
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_FALSE(window.isShownToTheUser());
}

TEST(PopoverWindow, ComesBackToTheScreenAsItWas) {
  Popover popover;
  PopoverWindow& window = popover.window;
  window.showAt(ScreenPoint{400, 10});
  for (auto* button : window.findChildren<QAbstractButton*>()) {
    if (button->text() == "7 days" || button->text() == "Daily summary") button->click();
  }
  QCoreApplication::processEvents();
  const QImage before = picture(window);
  const QPoint place = window.pos();
  window.close();
  window.leaveScreen();
  EXPECT_EQ(window.windowHandle(), nullptr);
  EXPECT_FALSE(window.isShownToTheUser());

  window.showAt(ScreenPoint{400, 10});
  QCoreApplication::processEvents();
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(window.pos(), place);
  EXPECT_EQ(picture(window), before);
}

TEST(PopoverWindow, IsAsLargeAsItsContent) {
  Popover popover;
  FakeHost& host = popover.host;
  PopoverWindow& window = popover.window;
  window.showAt(std::nullopt);
  QCoreApplication::processEvents();
  const int tall = window.height();
  EXPECT_EQ(window.width(), 340);
  host.powerSources.sources.reset();
  host.model().refresh(AppModel::Reason::change);
  EXPECT_TRUE(waitFor([&] { return window.height() < tall; }));
}

TEST(PopoverWindow, OpensAThousandTimesInTheSameMemory) {
  FakeHost host;
  host.setBattery(73);
  host.setHistory(minuteSamples(host.now(), 600));
  PopoverWindow window(host);
  const auto openAndClose = [&] {
    host.model().refresh(AppModel::Reason::change);
    window.showAt(std::nullopt);
    QCoreApplication::processEvents();
    window.close();
    QCoreApplication::processEvents();
  };
  for (int i = 0; i < 100; ++i) openAndClose();
  const long before = residentKiB();
  for (int i = 0; i < 1000; ++i) openAndClose();
  EXPECT_LT(residentKiB() - before, 1024);
}

/// Writes down each size and place of a window while it is on the screen.
class Watch : public QObject {
 public:
  explicit Watch(QWidget& window) : window_(window) { window.installEventFilter(this); }

  QList<QRect> seen;

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    const auto type = event->type();
    if (type == QEvent::Show) seen << window_.geometry();
    const bool changed = type == QEvent::Resize || type == QEvent::Move;
    if (changed && window_.isVisible()) seen << window_.geometry();
    return false;
  }

 private:
  QWidget& window_;
};

QAbstractButton* button(const QWidget& window, const QString& text) {
  for (auto* found : window.findChildren<QAbstractButton*>()) {
    if (found->text() == text) return found;
  }
  return nullptr;
}

const Dictionary kEverything = {{"CycleCount", 412},     {"DesignCapacity", 50'000},
                                {"MaxCapacity", 43'500}, {"Temperature", 3140},
                                {"Voltage", 12'000},     {"Amperage", -2100}};

TEST(PopoverWindow, IsAFramelessPopupWithItsNameAndNothingElse) {
  Popover popover;
  const Qt::WindowFlags flags = popover.window.windowFlags();
  EXPECT_EQ(flags & Qt::WindowType_Mask, Qt::Popup);
  EXPECT_TRUE(flags.testFlag(Qt::FramelessWindowHint));
  EXPECT_EQ(popover.window.windowTitle(), "Lumora");
  EXPECT_TRUE(popover.window.autoFillBackground());
}

TEST(PopoverWindow, HasItsSizeAndPlaceBeforeItIsSeen) {
  Popover popover;
  FakeHost& host = popover.host;
  Watch watch(popover.window);
  for (const bool snoozed : {false, true}) {
    if (snoozed) host.model().snooze();
    host.setBattery(73, {{"Time to Empty", 185}}, snoozed ? kEverything : Dictionary{});
    host.model().refresh(AppModel::Reason::change);
    watch.seen.clear();
    popover.window.showAt(ScreenPoint{400, 790});
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    ASSERT_FALSE(watch.seen.empty());
    for (const QRect& rect : watch.seen) EXPECT_EQ(rect, watch.seen.first());
    EXPECT_EQ(watch.seen.first(), popover.window.geometry());
    EXPECT_EQ(popover.window.geometry().bottom() + 1, 790 - 8);
    popover.window.close();
  }
}

TEST(PopoverWindow, OpensAtThePointerWhereTheTrayCountsFromItsPanel) {
  Popover popover;
  QCursor::setPos(600, 5);
  popover.window.showAt(ScreenPoint{0, 26});
  EXPECT_NEAR(popover.window.geometry().center().x(), 600, 1);
}

TEST(PopoverWindow, FitsItsScreenWhenThatBecomesSmaller) {
  const QRect usual = QGuiApplication::primaryScreen()->geometry();
  Popover popover;
  const PopoverWindow& window = popover.window;
  popover.window.showAt(ScreenPoint{700, 790});
  const QRect before = window.geometry();
  const QRect small(0, 0, 500, 350);
  screenBecomes(small);
  EXPECT_TRUE(small.contains(window.geometry()));
  screenBecomes(usual);
  EXPECT_EQ(window.geometry(), before);
}

TEST(PopoverWindow, StaysWhereItWasClickedWhenItsScreenChanges) {
  const QRect usual = QGuiApplication::primaryScreen()->geometry();
  ASSERT_EQ(usual, QRect(0, 0, 800, 800));
  Popover popover;
  popover.window.showAt(ScreenPoint{600, 790});
  screenBecomes(QRect(0, 0, 1600, 1200));
  const QRect now = popover.window.geometry();
  EXPECT_NEAR(now.center().x(), 1400, 1);
  EXPECT_EQ(now.bottom() + 1, 1190 - kPopoverGap);
  screenBecomes(usual);
}

TEST(PopoverWindow, StandsStillWhileTheUnfoldedTableIsRenewed) {
  Popover popover;
  FakeHost& host = popover.host;
  popover.window.showAt(std::nullopt);
  button(popover.window, "Daily summary")->click();
  QCoreApplication::processEvents();
  Watch watch(popover.window);
  const auto labels = popover.window.findChildren<QLabel*>();
  for (int minute = 1; minute <= 30; ++minute) {
    host.clock.time += Seconds(60);
    host.setBattery(73 - minute, {}, {});
    host.model().refresh(AppModel::Reason::timer);
    for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
  }
  EXPECT_EQ(watch.seen, QList<QRect>{});
  EXPECT_EQ(popover.window.findChildren<QLabel*>(), labels);
}

TEST(PopoverWindow, TakesItsNewSizeAndPlaceInOneStep) {
  Popover popover;
  FakeHost& host = popover.host;
  for (const int click : {10, 790}) {
    host.setBattery(73, {}, {});
    host.model().refresh(AppModel::Reason::change);
    popover.window.showAt(ScreenPoint{400, click});
    for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
    const QRect before = popover.window.geometry();
    Watch watch(popover.window);
    for (const bool comes : {true, false}) {
      watch.seen.clear();
      host.setBattery(73, {}, comes ? kEverything : Dictionary{});
      host.model().refresh(AppModel::Reason::change);
      for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
      ASSERT_FALSE(watch.seen.empty());
      for (const QRect& rect : watch.seen) EXPECT_EQ(rect, watch.seen.last());
      const QRect now = popover.window.geometry();
      EXPECT_EQ(now.height() > before.height(), comes);
      // At its panel it stands still.
      EXPECT_EQ(click == 10 ? now.top() : now.bottom(),
                click == 10 ? before.top() : before.bottom());
    }
    EXPECT_EQ(popover.window.geometry(), before);
    popover.window.close();
  }
}

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

TEST(PopoverWindow, ScrollsWhereTheScreenIsTooLow) {
  const ScopedFontSize large(18);
  Popover popover;
  FakeHost& host = popover.host;
  host.setBattery(73, {{"Time to Empty", 185}}, kEverything);
  host.model().refresh(AppModel::Reason::change);
  PopoverWindow& window = popover.window;
  window.showAt(ScreenPoint{400, 10});
  button(window, "Daily summary")->click();
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  EXPECT_TRUE(screen.contains(window.geometry()));
  EXPECT_EQ(window.height(), screen.height() - 16);
  EXPECT_GT(window.width(), 340);

  const auto* bar = window.findChild<QScrollArea*>()->verticalScrollBar();
  EXPECT_TRUE(bar->isVisible());
  EXPECT_EQ(bar->value(), 0);
  const auto isSeen = [&](const QWidget* widget) {
    return window.rect().contains(QRect(widget->mapTo(&window, QPoint()), widget->size()));
  };
  EXPECT_FALSE(isSeen(button(window, "Quit")));
  // With the keyboard all is reached, and seen.
  for (int i = 0; i < 6 && !button(window, "Quit")->hasFocus(); ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_TRUE(button(window, "Quit")->hasFocus());
  EXPECT_TRUE(isSeen(button(window, "Quit")));
  // Folded again it may fit, or scrolls less; never does it leave the screen.
  button(window, "Daily summary")->click();
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
  EXPECT_TRUE(screen.contains(window.geometry()));
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

TEST(PopoverWindow, DoesNotScrollWhereItFits) {
  Popover popover;
  popover.window.showAt(ScreenPoint{400, 10});
  button(popover.window, "Daily summary")->click();
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
  EXPECT_EQ(popover.window.width(), 340);
  EXPECT_FALSE(popover.window.findChild<QScrollArea*>()->verticalScrollBar()->isVisible());
}

}  // namespace
}  // namespace lumora::test
