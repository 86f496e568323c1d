// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeHost.h"
#include "Views/PopoverPlace.h"
#include "Views/PopoverWindow.h"

#include <QAbstractButton>
#include <QTest>
#include <fstream>

#include <gtest/gtest.h>

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

/// The popover of a machine with a battery.
struct Popover {
  Popover() : window(host) {
    host.setBattery(73);
    host.model().refresh(AppModel::Reason::change);
  }

  FakeHost host;
  PopoverWindow window;
};

TEST(PopoverWindow, ClosesOnEscape) {
  Popover popover;
  PopoverWindow& window = popover.window;
  window.showAt(ScreenPoint{400, 10});
  EXPECT_TRUE(window.isVisible());
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
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
  EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isShownToTheUser(); }));
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
  const QPixmap before = window.grab();
  const QPoint place = window.pos();
  window.close();
  window.leaveScreen();
  EXPECT_EQ(window.windowHandle(), nullptr);
  EXPECT_FALSE(window.isShownToTheUser());

  window.showAt(ScreenPoint{400, 10});
  QCoreApplication::processEvents();
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(window.pos(), place);
  EXPECT_EQ(window.grab().toImage(), before.toImage());
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
  EXPECT_TRUE(QTest::qWaitFor([&] { return window.height() < tall; }));
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

TEST(PopoverPlace, StaysOnTheScreenAtTheClick) {
  struct Case {
    std::optional<ScreenPoint> click;
    ScreenPoint corner;
  };
  const ScreenRect screen{100, 50, 1000, 800};
  for (const auto& [click, corner] : {
           Case{ScreenPoint{600, 60}, {430, 68}},      // a panel at the top
           Case{ScreenPoint{600, 840}, {430, 332}},    // a panel at the bottom
           Case{ScreenPoint{1095, 60}, {752, 68}},     // the right corner
           Case{ScreenPoint{105, 60}, {108, 68}},      // the left corner
           Case{ScreenPoint{5000, 5000}, {752, 342}},  // a click from elsewhere
           Case{std::nullopt, {752, 58}},
       }) {
    EXPECT_EQ(popoverPlace(click, {340, 500}, screen), corner);
  }
}

TEST(PopoverPlace, KeepsTheTopOfAPopoverThatIsTooTall) {
  EXPECT_EQ(popoverPlace(ScreenPoint{100, 590}, {340, 900}, {0, 0, 800, 600}), (ScreenPoint{8, 8}));
}

TEST(PopoverPlace, KnowsTheClickWhicheverPixelsTheTrayCounts) {
  const Pointer pointer{{1150, 14}, {1150, 14}, 1};
  EXPECT_EQ(clickedAt({1150, 14}, pointer), pointer.at);
  EXPECT_EQ(clickedAt({1140, 28}, pointer), pointer.at);  // the item's corner
  // Chosen with the keyboard: the pointer is elsewhere.
  EXPECT_EQ(clickedAt({1150, 14}, {{300, 500}, {300, 500}, 1}), (ScreenPoint{1150, 14}));
  EXPECT_EQ(clickedAt({0, 0}, pointer), std::nullopt);

  // On the right of two monitors, each 1800 pixels wide.
  const Pointer doubled{{1950, 14}, {2100, 28}, 2};
  EXPECT_EQ(clickedAt({2100, 28}, doubled), doubled.at);
  EXPECT_EQ(clickedAt({1050, 14}, doubled), doubled.at);
}

}  // namespace
}  // namespace lumora::test
