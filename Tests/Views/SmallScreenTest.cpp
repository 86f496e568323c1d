// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// On a laptop's screen of 1366 by 768 that the desktop scales by one and a half: 911 by 512.
#include "Support/TemporaryFolder.h"
#include "Views/Children.h"
#include "Views/FakeHost.h"
#include "Views/Pixels.h"
#include "Views/Popover/PopoverWindow.h"
#include "Views/Popover/RingView.h"
#include "Views/Settings/SettingsWindow.h"
#include "Views/Theme/Colors.h"
#include "Views/UnseenScreen.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QTest>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

constexpr double kScale = 1.5;

const Dictionary kEverything = {{"CycleCount", 412},     {"DesignCapacity", 50'000},
                                {"MaxCapacity", 43'500}, {"Temperature", 3140},
                                {"Voltage", 12'000},     {"Amperage", 2100}};
const Dictionary kCharging = {
    {"Power Source State", "AC Power"}, {"Is Charging", true}, {"Time to Full Charge", 72}};

QRect screen() { return QGuiApplication::primaryScreen()->availableGeometry(); }

void settle() {
  for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
}

/// Whether all of a widget can be seen in its window.
bool isSeen(const QWidget& widget) {
  return widget.visibleRegion().boundingRect() == widget.rect();
}

/// Each of the window's controls that the tab key reaches, once; how many they are. What scrolls
/// them is none.
template <typename Look>
int goThroughControls(QWidget& window, const Look& look) {
  QSet<QWidget*> seen;
  window.activateWindow();
  while (true) {
    QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &window,
                    Qt::Key_Tab);
    settle();
    QWidget* now = QApplication::focusWidget();
    if (now == nullptr || seen.contains(now)) return static_cast<int>(seen.size());
    seen << now;
    if (dynamic_cast<QAbstractScrollArea*>(now) == nullptr) look(*now);
  }
}

class SmallScreenTest : public testing::TestWithParam<double> {
 protected:
  SmallScreenTest() {
    host.clock.time = dateSince1970(1'795'525'980);
    host.setBattery(73, kCharging, kEverything);
    host.setHistory(minuteSamples(host.clock.time - Seconds(60), 7 * 1440));
    host.model().refresh(AppModel::Reason::change);
    host.model().snooze();
  }

  ScopedFontSize size{GetParam()};
  FakeHost host;
};

TEST_P(SmallScreenTest, IsWhatItSays) {
  EXPECT_EQ(screen(), QRect(0, 0, 911, 512));
  EXPECT_EQ(QGuiApplication::primaryScreen()->devicePixelRatio(), kScale);
}

TEST_P(SmallScreenTest, TheUnfoldedPopoverStaysOnItWhereverItOpens) {
  PopoverWindow window(host);
  window.showAt(std::nullopt);
  button(window, "Daily summary")->click();
  for (const auto& click :
       {std::optional<ScreenPoint>(), std::optional(ScreenPoint{0, 0}),
        std::optional(ScreenPoint{910, 0}), std::optional(ScreenPoint{0, 511}),
        std::optional(ScreenPoint{910, 511}), std::optional(ScreenPoint{455, 256})}) {
    window.close();
    window.showAt(click);
    settle();
    EXPECT_TRUE(screen().contains(window.frameGeometry())) << window.height();
    button(window, "7 days")->click();
    button(window, "24 hours")->click();
    settle();
    EXPECT_TRUE(screen().contains(window.frameGeometry())) << window.height();
  }
}

TEST_P(SmallScreenTest, ThePopoversControlsAreReachedByTheKeyboardAndTheWheel) {
  PopoverWindow window(host);
  window.showAt(std::nullopt);
  button(window, "Daily summary")->click();
  settle();
  auto& bar = *window.findChild<QScrollArea*>()->verticalScrollBar();
  ASSERT_TRUE(bar.isVisible());
  const int controls = goThroughControls(window, [](const QWidget& control) {
    EXPECT_TRUE(isSeen(control)) << control.metaObject()->className();
  });
  // Cancel, one for the range, the chart, the table's heading, Settings… and Quit.
  EXPECT_GE(controls, 6);
  bar.setValue(0);
  EXPECT_FALSE(isSeen(*button(window, "Quit")));
  for (int turn = 0; turn < 30; ++turn) {
    const QPointF middle(window.rect().center());
    QWheelEvent down(middle, window.mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, {},
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(window.findChild<QScrollArea*>()->viewport(), &down);
  }
  EXPECT_TRUE(isSeen(*button(window, "Quit")));
  QTest::mouseClick(button(window, "Quit"), Qt::LeftButton);
  EXPECT_EQ(host.calls, "quit ");
}

TEST_P(SmallScreenTest, TheRingIsRound) {
  host.setBattery(100, kCharging, kEverything);
  host.model().refresh(AppModel::Reason::change);
  PopoverWindow window(host);
  window.showAt(std::nullopt);
  auto& ring = *childrenOf<RingView>(window).first();
  const QImage image = picture(ring);
  ASSERT_EQ(image.size(), QSize(156, 156));
  const QColor color = markColor(Tint::green, ring.palette());
  const auto isRing = [&](int x, int y) { return distance(image.pixelColor(x, y), color) < 60; };
  // Where it is met from the edge, from all four sides, and where it ends on the way inwards.
  const auto band = [&](const auto& at) {
    int begin = 0;
    while (begin < 78 && !at(begin)) ++begin;
    int end = begin;
    while (end < 78 && at(end)) ++end;
    return std::pair(begin, end);
  };
  const auto left = band([&](int i) { return isRing(i, 78); });
  // From 0.5 to 11.5 pixels off the edge.
  EXPECT_NEAR(left.first, 0.5 * kScale, 1);
  EXPECT_NEAR(left.second, 11.5 * kScale, 1);
  for (const auto& other : {band([&](int i) { return isRing(155 - i, 78); }),
                            band([&](int i) { return isRing(78, i); }),
                            band([&](int i) { return isRing(78, 155 - i); })}) {
    EXPECT_NEAR(other.first, left.first, 1);
    EXPECT_NEAR(other.second, left.second, 1);
  }
  // On the way from a corner to the middle: the circle is as wide there.
  const auto slanting = band([&](int i) { return isRing(i, i); });
  constexpr double kRoot = 1.41421356;
  EXPECT_NEAR((78 - slanting.first) * kRoot, 78 - left.first, 2);
  EXPECT_NEAR((78 - slanting.second) * kRoot, 78 - left.second, 2);
}

TEST_P(SmallScreenTest, TheSettingsFitAndTheirControlsAreReached) {
  SettingsWindow window(host);
  window.present();
  settle();
  EXPECT_TRUE(screen().contains(window.frameGeometry())) << window.height();
  const int controls = goThroughControls(window, [](const QWidget& control) {
    EXPECT_TRUE(isSeen(control)) << control.accessibleName().toStdString();
  });
  // Quiet hours are off, and with them their two times.
  EXPECT_GE(controls, 19);
}

TEST_P(SmallScreenTest, TheSettingsFitThatWereLastOnALargerOne) {
  SettingsWindow window(host);
  window.present();
  window.close();
  window.setFixedSize(480, 720);
  window.move(900, 300);
  window.present();
  settle();
  EXPECT_TRUE(screen().contains(window.frameGeometry())) << window.height();
  // Where it was put on this one it stays.
  window.move(100, 10);
  window.close();
  window.present();
  settle();
  EXPECT_EQ(window.pos(), QPoint(100, 10));
}

TEST_P(SmallScreenTest, TheQuestionsFit) {
  for (const char* asks : {"Charge limit", "Reset History…"}) {
    SettingsWindow window(host);
    window.present();
    for (auto* found : window.findChildren<QAbstractButton*>()) {
      if (found->text() == asks || found->accessibleName() == asks) found->click();
    }
    host.centre.answerStatus(AuthorizationStatus::notDetermined);
    host.runLoop.drain();
    settle();
    auto* dialog = window.findChild<QDialog*>();
    ASSERT_NE(dialog, nullptr) << asks;
    EXPECT_TRUE(screen().contains(dialog->frameGeometry())) << asks;
    for (auto* found : dialog->findChildren<QAbstractButton*>()) {
      EXPECT_TRUE(isSeen(*found)) << asks;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(AtPoints, SmallScreenTest, testing::Values(10.0, 11.0, 16.0));

}  // namespace
}  // namespace lumora::test

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("LC_ALL", "C.UTF-8");
  const lumora::test::TemporaryFolder folder;
  lumora::test::useUnseenScreen(folder.path() / "screens.json", 911, 512, lumora::test::kScale);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
