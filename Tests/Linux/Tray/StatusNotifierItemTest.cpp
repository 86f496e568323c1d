// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Tray/StatusItemFixture.h"

#include <fstream>
#include <tuple>

namespace lumora::test {
namespace {

using Pixmap = std::tuple<std::int32_t, std::int32_t, std::vector<guint8>>;
using Pixmaps = std::vector<Pixmap>;
using ToolTip = std::tuple<Glib::ustring, Pixmaps, Glib::ustring, Glib::ustring>;

class StatusNotifierItemTest : public StatusItemFixture {};

TEST_F(StatusNotifierItemTest, TellsWhatItIs) {
  TrayDouble tray(xfce());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(tray.registrations(), Names{address});
  EXPECT_EQ(text(tray, "Id"), "lumora");
  EXPECT_EQ(text(tray, "Title"), "Lumora");
  EXPECT_EQ(text(tray, "Status"), "Active");
  EXPECT_EQ(text(tray, "Category"), "Hardware");
  EXPECT_EQ(text(tray, "IconThemePath"), icons.path().string());
  EXPECT_EQ(text(tray, "IconAccessibleDesc"), "Battery");
  const Properties all = tray.properties(address);
  EXPECT_EQ(all.size(), 21U);
  EXPECT_EQ(all.at("Menu").get_type_string(), "o");
  EXPECT_EQ(all.at("ItemIsMenu").print(), "false");
  EXPECT_EQ(all.at("WindowId").print(), "0");
  for (const char* unused :
       {"OverlayIconName", "AttentionIconName", "AttentionMovieName", "AttentionAccessibleDesc"}) {
    EXPECT_EQ(text(tray, unused), "") << unused;
  }
}

TEST_F(StatusNotifierItemTest, IsNowhereBeforeItHasSomethingToShow) {
  TrayDouble tray(gnome());
  EXPECT_TRUE(tray.scan().empty());
  EXPECT_TRUE(tray.registrations().empty());
  EXPECT_TRUE(tray.properties(address).empty());
}

TEST_F(StatusNotifierItemTest, IsGoneWithItsObject) {
  TrayDouble tray(gnome());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(tray.shown(), Names{address});
  item.reset();
  EXPECT_TRUE(tray.shown().empty());
}

TEST_F(StatusNotifierItemTest, HasALabelBesideANamedIconOnGnome) {
  TrayDouble tray(gnome());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(tray.shown(), Names{address});
  EXPECT_EQ(text(tray, "XAyatanaLabel"), " 82% · 3:05");
  EXPECT_EQ(text(tray, "XAyatanaLabelGuide"), " 88% · 8:88");
  EXPECT_EQ(text(tray, "IconName"), "lumora-battery-75-symbolic");
  EXPECT_TRUE(property<Pixmaps>(tray, "IconPixmap").empty());
  EXPECT_TRUE(drawn.empty());
}

TEST_F(StatusNotifierItemTest, IsLoadedOnceByATrayThatAlsoLooksByItself) {
  TrayDouble tray(gnome());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(tray.scan(), Names{});
  EXPECT_EQ(tray.shown(), Names{address});
}

TEST_F(StatusNotifierItemTest, TellsItsLabelAgainToATrayThatAskedTooEarly) {
  TrayDouble tray(gnome());
  item->show();
  for (const std::size_t times : {1U, 2U}) {
    ASSERT_TRUE(registers(tray, times));
    runLoop.advance(std::chrono::milliseconds(1999));
    heardBy(tray);
    EXPECT_EQ(tray.labelOf(address), "");
    runLoop.advance(std::chrono::milliseconds(1));
    EXPECT_EQ(heardBy(tray), Names{"PropertiesChanged"});
    EXPECT_EQ(tray.labelOf(address), " 82% · 3:05");
    tray.showItems();
  }
}

TEST_F(StatusNotifierItemTest, TellsNoLabelAgainThatItDoesNotHave) {
  TrayDouble tray(xfce());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  heardBy(tray);
  runLoop.advance(std::chrono::seconds(10));
  EXPECT_EQ(heardBy(tray), Names{});
}

TEST_F(StatusNotifierItemTest, TellsOtherBytesOfThePictureToATrayThatLostThem) {
  picture = {{3, 1, {255, 1, 2, 3, 0, 0, 0, 0, 0, 0, 0, 0}}};
  TrayDouble tray(cinnamon());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  const Pixmaps asDrawn{{3, 1, picture[0].argb}};
  EXPECT_EQ(property<Pixmaps>(tray, "IconPixmap"), asDrawn);
  runLoop.advance(std::chrono::milliseconds(1999));
  heardBy(tray);
  EXPECT_EQ(property<Pixmaps>(tray, "IconPixmap"), asDrawn);
  runLoop.advance(std::chrono::milliseconds(1));
  EXPECT_EQ(heardBy(tray), (Names{"PropertiesChanged", "NewIcon"}));
  // What differs is transparent.
  EXPECT_EQ(property<Pixmaps>(tray, "IconPixmap"),
            (Pixmaps{{3, 1, {255, 1, 2, 3, 0, 0, 0, 1, 0, 0, 0, 1}}}));
  // A tray that comes later gets other bytes than it had, too.
  tray.showItems();
  ASSERT_TRUE(registers(tray, 2));
  runLoop.advance(std::chrono::seconds(2));
  EXPECT_EQ(property<Pixmaps>(tray, "IconPixmap"), asDrawn);
}

TEST_F(StatusNotifierItemTest, TellsItOnceWhereATrayComesAndShowsItemsAtOnce) {
  picture = {{1, 1, {0, 0, 0, 0}}};
  TrayDouble tray(cinnamon());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  tray.showItems();
  ASSERT_TRUE(registers(tray, 2));
  heardBy(tray);
  runLoop.advance(std::chrono::seconds(10));
  EXPECT_EQ(heardBy(tray), (Names{"PropertiesChanged", "NewIcon"}));
  EXPECT_EQ(property<Pixmaps>(tray, "IconPixmap"), (Pixmaps{{1, 1, {0, 0, 0, 1}}}));
}

TEST_F(StatusNotifierItemTest, TellsNothingAgainOnceItIsGone) {
  TrayDouble tray(gnome());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  item.reset();
  heardBy(tray);
  runLoop.advance(std::chrono::seconds(10));
  EXPECT_EQ(heardBy(tray), Names{});
}

TEST_F(StatusNotifierItemTest, TakesTheTokenBeforeTheDoubleClickOfGnome) {
  TrayDouble tray(gnome());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  tray.doubleClick(address, {1150, 14}, "token-1");
  EXPECT_EQ(events, (Names{"token token-1", "click 1150,14"}));
}

TEST_F(StatusNotifierItemTest, DrawsThePercentageAndHasATooltipOnKde) {
  TrayDouble tray(kde());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(text(tray, "IconName"), "");
  EXPECT_EQ(property<Pixmaps>(tray, "IconPixmap"), (Pixmaps{{1, 1, {255, 1, 2, 3}}}));
  EXPECT_EQ(property<ToolTip>(tray, "ToolTip"),
            (ToolTip{"", {}, "On battery, 3 h 5 min left", "82% · 3:05"}));
  EXPECT_EQ(text(tray, "XAyatanaLabel"), "");
  EXPECT_EQ(drawn, Names{"82"});
}

TEST_F(StatusNotifierItemTest, ShowsOnceWhereASecondRegistrationIsIgnored) {
  TrayDouble tray(kde());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  tray.showItems();
  ASSERT_TRUE(registers(tray, 2));
  tray.click(address, {-3, 2000});
  EXPECT_EQ(tray.shown(), Names{address});
  EXPECT_EQ(events, Names{"click -3,2000"});
}

TEST_F(StatusNotifierItemTest, HasNoNameThatATrayWithoutFallbackFailsToFind) {
  TrayDouble tray(lxqt());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(tray.iconFor(address), "a pixmap");
  prefs = {.showPercent = false, .showTime = false};
  item->show();
  EXPECT_EQ(tray.iconFor(address), "nothing");
  std::ofstream(icons.path() / "lumora-battery-75-symbolic.svg") << "<svg/>";
  EXPECT_EQ(tray.iconFor(address), "lumora-battery-75-symbolic");
}

TEST_F(StatusNotifierItemTest, DrawsTheWholeTextWhereIconsMayBeWide) {
  TrayDouble tray(waybar());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_FALSE(property<Pixmaps>(tray, "IconPixmap").empty());
  EXPECT_EQ(drawn, Names{"82% · 3:05"});
  EXPECT_EQ(std::get<3>(property<ToolTip>(tray, "ToolTip")), "");
}

TEST_F(StatusNotifierItemTest, DrawsTheWholeTextForMatesApplet) {
  TrayDouble tray(mate());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  tray.properties(address);
  EXPECT_EQ(drawn, Names{"82% · 3:05"});
}

TEST_F(StatusNotifierItemTest, HandsOnTheOtherClicks) {
  TrayDouble tray(xfce());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  tray.callItem(address, "SecondaryActivate", arguments(7, 8));
  tray.callItem(address, "XAyatanaSecondaryActivate", arguments(std::uint32_t{99}));
  tray.callItem(address, "ContextMenu", arguments(7, 8));
  tray.callItem(address, "Scroll", arguments(120, Glib::ustring("vertical")));
  EXPECT_EQ(events, (Names{"click 7,8", "click"}));
}

TEST_F(StatusNotifierItemTest, RefusesStrangeCallsAndGoesOn) {
  TrayDouble tray(xfce());
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  const Glib::ustring word = "word";
  EXPECT_EQ(tray.callItem(address, "Activate").error, kInvalidArguments);
  EXPECT_EQ(tray.callItem(address, "Activate", arguments(word, word)).error, kInvalidArguments);
  EXPECT_EQ(tray.callItem(address, "Scroll", arguments(word, 1)).error, kInvalidArguments);
  EXPECT_EQ(tray.callItem(address, "ProvideXdgActivationToken", arguments(1)).error,
            kInvalidArguments);
  EXPECT_EQ(tray.callItem(address, "Explode").error, kUnknownMethod);
  const auto set = tray.client().call(
      laptop.session()->get_unique_name(), kPath, "org.freedesktop.DBus.Properties", "Set",
      Glib::VariantContainerBase::create_tuple(
          {variant("org.kde.StatusNotifierItem"), variant("Title"),
           Glib::Variant<Glib::VariantBase>::create(variant("Other"))}));
  EXPECT_FALSE(set.values);
  EXPECT_TRUE(events.empty());
  tray.click(address, {1, 2});
  EXPECT_EQ(events, Names{"click 1,2"});
}

TEST_F(StatusNotifierItemTest, SaysBrokenTextsAsFarAsTheyCanBeRead) {
  TrayDouble tray(gnome());
  face = [](TextPlace) { return StatusItemFace{.label = " 82\xFF%", .tooltipTitle = "\xC3"}; };
  item->show();
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(text(tray, "XAyatanaLabel"), " 82\uFFFD%");
  EXPECT_EQ(std::get<2>(property<ToolTip>(tray, "ToolTip")), "\uFFFD");
}

TEST_F(StatusNotifierItemTest, DoesNothingWithoutABus) {
  StatusNotifierItem nowhere(nullptr, runLoop, {"lumora", "Lumora", ""}, {});
  nowhere.show();
  drainMainLoop();
}

}  // namespace
}  // namespace lumora::test
