// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/PopoverWindowTest.h"

#include "Views/Patience.h"
#include "Views/Pixels.h"

#include <QApplication>
#include <QCursor>
#include <QImage>
#include <QLabel>
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
