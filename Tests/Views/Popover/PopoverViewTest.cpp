// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Pixels.h"
#include "Views/Popover/PopoverView.h"
#include "Views/ViewTest.h"

#include <QAccessible>
#include <QPushButton>

namespace lumora::test {
namespace {

using PopoverViewTest = ViewTest;

TEST_F(PopoverViewTest, IsAsWideAsItShouldBe) {
  EXPECT_EQ(open().width(), 340);
  EXPECT_EQ(only<RingView>()->size(), QSize(104, 104));
  EXPECT_EQ(only<HistoryChart>()->height(), 110);
}

TEST_F(PopoverViewTest, ShowsItsTextsFromTopToBottom) {
  open();
  EXPECT_EQ(texts(),
            (QStringList{"On battery, 3 h 5 min left", "Cycle count", "412 of 1000",
                         "Lumora can only remind you. A Mac app cannot stop the charger."}));
  EXPECT_EQ(only<RingView>()->value(), 73);
}

TEST_F(PopoverViewTest, ShowsOnlyANoticeAndButtonsWithoutABattery) {
  host.powerSources.sources.reset();
  open();
  EXPECT_EQ(
      texts(),
      (QStringList{"No battery found", "This Mac does not report a battery, so Lumora stays quiet.",
                   "Lumora can only remind you. A Mac app cannot stop the charger."}));
  EXPECT_FALSE(only<RingView>()->isVisible());
  EXPECT_FALSE(only<SegmentedPicker>()->isVisible());
  EXPECT_FALSE(only<HistoryChart>()->isVisible());
  EXPECT_FALSE(only<DailySummaryView>()->isVisible());
  EXPECT_TRUE(button("Quit")->isVisible());
  EXPECT_TRUE(button(QStringLiteral("Settings…"))->isVisible());
}

TEST_F(PopoverViewTest, FollowsTheModelWhileItIsOpen) {
  open();
  host.setBattery(74, {{"Power Source State", "AC Power"}, {"Is Charging", true}});
  refresh();
  EXPECT_EQ(texts().first(), QStringLiteral("Charging, estimating time to full…"));
  EXPECT_EQ(texts()[1], "Plugged in for 1 min");
  EXPECT_EQ(only<RingView>()->value(), 74);
  host.powerSources.sources.reset();
  refresh();
  EXPECT_EQ(texts().first(), "No battery found");
  host.setBattery(75);
  refresh();
  EXPECT_EQ(only<RingView>()->value(), 75);
}

TEST_F(PopoverViewTest, SaysThatItLooksForABatteryWhileNobodyHasSaidThatThereIsNone) {
  host.powerSources.sources.reset();
  host.powerSources.stands = PowerSources::Standing::looking;
  open();
  EXPECT_EQ(texts().first(), "Looking for the battery…");
  EXPECT_EQ(view->accessibleName(), "Looking for the battery…");
}

TEST_F(PopoverViewTest, DrawsNothingWhileItIsHidden) {
  open().hide();
  host.setBattery(50);
  refresh();
  EXPECT_EQ(only<RingView>()->value(), 73);
  view->show();
  EXPECT_EQ(only<RingView>()->value(), 50);
}

TEST_F(PopoverViewTest, GrowsAndShrinksWithItsRows) {
  open();
  const int before = view->sizeHint().height();
  host.setBattery(73, {}, {{"CycleCount", 412}, {"Temperature", 3140}});
  refresh();
  const int grown = view->sizeHint().height();
  EXPECT_GT(grown, before);
  host.setBattery(73, {}, {});
  refresh();
  EXPECT_TRUE(waitFor([&] { return view->sizeHint().height() < before; }));
}

TEST_F(PopoverViewTest, CancelsASnooze) {
  host.model().snooze();
  open();
  EXPECT_TRUE(texts().contains("Alerts snoozed until 15:13"));
  host.centre.added.clear();
  click("Cancel");
  QCoreApplication::processEvents();
  EXPECT_FALSE(*host.model().snoozeUntil());
  EXPECT_EQ(Prefs::snoozeUntil(host.store, host.now()), std::nullopt);
  EXPECT_FALSE(button("Cancel")->isVisible());
}

TEST_F(PopoverViewTest, ShowsASnoozeThatHasRunOutUntilTheModelClearsIt) {
  host.model().snooze();
  open();
  host.clock.time += Seconds(3 * 3600);
  view->hide();
  view->show();
  EXPECT_TRUE(button("Cancel")->isVisible());
  refresh();
  EXPECT_FALSE(button("Cancel")->isVisible());
}

TEST_F(PopoverViewTest, HandsItsButtonsOn) {
  open();
  click(QStringLiteral("Settings…"));
  EXPECT_EQ(host.calls, "settings ");
  click("Quit");
  EXPECT_EQ(host.calls, "settings quit ");
}

TEST_F(PopoverViewTest, WorksFromTheKeyboardAlone) {
  open();
  QStringList visited;
  for (int i = 0; i < 6; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    visited << QAccessible::queryAccessibleInterface(QApplication::focusWidget())
                   ->text(QAccessible::Name);
  }
  EXPECT_EQ(visited, (QStringList{"24 hours", "Charge history", "Daily summary",
                                  QStringLiteral("Settings…"), "Quit", "24 hours"}));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  EXPECT_EQ(only<SegmentedPicker>()->current(), 1);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
  EXPECT_EQ(only<SegmentedPicker>()->current(), 0);
  button("Daily summary")->setFocus();
  QTest::keyClick(button("Daily summary"), Qt::Key_Space);
  EXPECT_TRUE(only<DailySummaryView>()->isUnfolded());
  button("Quit")->setFocus();
  QTest::keyClick(button("Quit"), Qt::Key_Space);
  EXPECT_EQ(host.calls, "quit ");
}

TEST_F(PopoverViewTest, PressesTheFocusedButtonWithTheReturnKey) {
  host.model().snooze();
  open();
  for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
    const auto press = [this, key](const QString& text) {
      button(text)->setFocus();
      QTest::keyClick(button(text), key);
    };
    host.calls.clear();
    press(QStringLiteral("Settings…"));
    press("Quit");
    EXPECT_EQ(host.calls, "settings quit ");
    const bool unfolded = only<DailySummaryView>()->isUnfolded();
    press("Daily summary");
    EXPECT_NE(only<DailySummaryView>()->isUnfolded(), unfolded);
    press("7 days");
    EXPECT_EQ(only<SegmentedPicker>()->current(), 1);
    press("24 hours");
    EXPECT_EQ(only<SegmentedPicker>()->current(), 0);
    host.model().snooze();
    QCoreApplication::processEvents();
    press("Cancel");
    EXPECT_FALSE(*host.model().snoozeUntil());
  }
}

TEST_F(PopoverViewTest, TellsAScreenReaderNamesAndValues) {
  open();
  const auto value = [](QWidget* widget) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
    return accessible->text(QAccessible::Name) + " " +
           accessible->valueInterface()->currentValue().toString() + " of " +
           accessible->valueInterface()->maximumValue().toString();
  };
  EXPECT_EQ(value(only<RingView>()), "Battery level 73 of 100");
  EXPECT_EQ(value(only<CycleBarView>()), "Cycle count 412 of 1000");
  for (auto* control : view->findChildren<QAbstractButton*>()) {
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name).isEmpty());
  }
  EXPECT_EQ(QAccessible::queryAccessibleInterface(button("24 hours"))->role(),
            QAccessible::RadioButton);
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(button("24 hours"))->state().checked);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(button("Daily summary"))->role(),
            QAccessible::CheckBox);
}

TEST_F(PopoverViewTest, UnfoldsTheTableOfDays) {
  open();
  EXPECT_FALSE(texts().contains("Range"));
  const int folded = view->sizeHint().height();
  click("Daily summary");
  EXPECT_TRUE(texts().contains("Day"));
  EXPECT_TRUE(texts().contains("Charging"));
  EXPECT_TRUE(texts().contains("Tue 24"));
  EXPECT_GT(view->sizeHint().height(), folded);
  click("Daily summary");
  EXPECT_FALSE(texts().contains("Tue 24"));
  EXPECT_TRUE(waitFor([&] { return view->sizeHint().height() == folded; }));
}

TEST_F(PopoverViewTest, EmptiesWhenTheHistoryIsReset) {
  open();
  click("Daily summary");
  host.model().resetHistory();
  QCoreApplication::processEvents();
  EXPECT_TRUE(
      texts().contains(QStringLiteral("Collecting history… a graph appears after a few minutes.")));
  EXPECT_FALSE(texts().contains("Tue 24"));
}

TEST_F(ViewTest, FollowsTheDesktopsFontWhileItIsOpen) {
  open();
  const QFont usual = QApplication::font();
  const int height = view->sizeHint().height();
  std::map<QWidget*, double> sizes;
  for (auto* widget : view->findChildren<QWidget*>()) {
    if (widget->isVisible()) sizes[widget] = widget->font().pointSizeF();
  }
  QFont larger = usual;
  larger.setPointSizeF(usual.pointSizeF() * 1.5);
  QApplication::setFont(larger);
  QCoreApplication::processEvents();
  for (const auto& [widget, size] : sizes) {
    EXPECT_NEAR(widget->font().pointSizeF(), size * 1.5, 0.01)
        << widget->metaObject()->className() << " " << widget->accessibleName().toStdString();
  }
  EXPECT_GT(view->sizeHint().height(), height);
  QApplication::setFont(usual);
}

}  // namespace
}  // namespace lumora::test
