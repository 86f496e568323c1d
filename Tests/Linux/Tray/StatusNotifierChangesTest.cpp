// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Tray/StatusItemFixture.h"

namespace lumora::test {
namespace {

/// What trays hear of a change, and which trays hear.
class StatusNotifierChangesTest : public StatusItemFixture {};

TEST_F(StatusNotifierChangesTest, SaysNothingWhileNothingChanges) {
  TrayDouble tray(xfce());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  heardBy(tray);
  item->show();
  item->show();
  EXPECT_EQ(heardBy(tray), Names{});
}

TEST_F(StatusNotifierChangesTest, AnnouncesANewDrawing) {
  TrayDouble tray(xfce());
  prefs.showTime = false;
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  heardBy(tray);
  state.percent = 81;
  item->show();
  EXPECT_EQ(heardBy(tray), (Names{"PropertiesChanged", "NewIcon"}));
}

TEST_F(StatusNotifierChangesTest, AnnouncesANewLabelAlone) {
  TrayDouble tray(gnome());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  heardBy(tray);
  state.percent = 81;
  item->show();
  EXPECT_EQ(heardBy(tray), (Names{"PropertiesChanged", "XAyatanaNewLabel"}));
  EXPECT_EQ(text(tray, "XAyatanaLabel"), " 81% · 3:05");
}

TEST_F(StatusNotifierChangesTest, AnnouncesANewTooltipAlone) {
  TrayDouble tray(xfce());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  heardBy(tray);
  state.minutesToEmpty = 184;
  item->show();
  EXPECT_EQ(heardBy(tray), (Names{"PropertiesChanged", "NewToolTip"}));
}

TEST_F(StatusNotifierChangesTest, AnnouncesTheWayFromADrawingToANamedIcon) {
  TrayDouble tray(xfce());
  prefs.showTime = false;
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  heardBy(tray);
  prefs = {.showPercent = false, .showTime = false};
  item->show();
  EXPECT_EQ(heardBy(tray), (Names{"PropertiesChanged", "NewIcon"}));
  EXPECT_EQ(text(tray, "IconName"), "lumora-battery-75-symbolic");
}

TEST_F(StatusNotifierChangesTest, DrawsOnlyForATrayThatAsksAndOnceForEachDrawing) {
  item->show();
  state.percent = 81;
  item->show();
  drainMainLoop();
  EXPECT_TRUE(drawn.empty());
  TrayDouble tray(xfce());
  ASSERT_TRUE(registers(tray, 1));
  tray.properties(address);
  state.minutesToEmpty = 184;
  item->show();
  tray.properties(address);
  EXPECT_EQ(drawn, Names{"81"});
  state.isCharging = true;
  item->show();
  tray.properties(address);
  EXPECT_EQ(drawn, (Names{"81", "81"}));
}

TEST_F(StatusNotifierChangesTest, AppearsInATrayThatComesLater) {
  item->show();
  drainMainLoop();
  TrayDouble tray(gnome());
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(text(tray, "XAyatanaLabel"), " 82% · 3:05");
}

TEST_F(StatusNotifierChangesTest, AppearsAgainInATrayThatRestarted) {
  item->show();
  {
    TrayDouble tray(kde());
    ASSERT_TRUE(registers(tray, 1));
  }
  TrayDouble tray(kde());
  EXPECT_TRUE(registers(tray, 1));
  EXPECT_EQ(tray.shown(), Names{address});
}

TEST_F(StatusNotifierChangesTest, MovesToATrayThatTakesThePlaceOfAnother) {
  TrayDouble first(waybar());
  item->show();
  ASSERT_TRUE(registers(first, 1));
  TrayDouble second(waybar());
  ASSERT_TRUE(registers(second, 1));
  EXPECT_EQ(second.registrations(), Names{address});
}

TEST_F(StatusNotifierChangesTest, RegistersAgainOnceTheTrayShowsItems) {
  TrayDouble tray(waybar());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_TRUE(tray.shown().empty());
  tray.showItems();
  EXPECT_TRUE(registers(tray, 2));
  EXPECT_EQ(tray.shown(), Names{address});
}

TEST_F(StatusNotifierChangesTest, LooksAsTheNewTrayNeedsIt) {
  TrayDouble first(xfce());
  prefs.showTime = false;
  item->show();
  ASSERT_TRUE(registers(first, 1));
  heardBy(first);
  TrayDouble second(gnome());
  ASSERT_TRUE(registers(second, 1));
  EXPECT_EQ(heardBy(first), (Names{"PropertiesChanged", "NewIcon", "XAyatanaNewLabel"}));
  EXPECT_EQ(text(second, "XAyatanaLabel"), " 82%");
  EXPECT_EQ(text(second, "IconName"), "lumora-battery-75-symbolic");
}

TEST_F(StatusNotifierChangesTest, IsThereWithoutATraySayingNothing) {
  BusClient bystander;
  bystander.hear(kPath);
  item->show();
  EXPECT_EQ(bystander.heard(laptop.session()->get_unique_name()), Names{});
  EXPECT_FALSE(
      bystander.properties(laptop.session()->get_unique_name(), kPath, "org.kde.StatusNotifierItem")
          .empty());
}

}  // namespace
}  // namespace lumora::test
