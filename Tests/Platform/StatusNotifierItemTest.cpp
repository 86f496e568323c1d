// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "StatusItemFixture.h"

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
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(tray.registrations(), Names{busName});
  EXPECT_EQ(text(tray, "Id"), "lumora");
  EXPECT_EQ(text(tray, "Title"), "Lumora");
  EXPECT_EQ(text(tray, "Status"), "Active");
  EXPECT_EQ(text(tray, "Category"), "Hardware");
  EXPECT_EQ(text(tray, "IconThemePath"), icons.path().string());
  EXPECT_EQ(text(tray, "IconAccessibleDesc"), "Battery");
  const Properties all = tray.properties(busName);
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
  EXPECT_TRUE(tray.properties(busName).empty());
}

TEST_F(StatusNotifierItemTest, IsGoneWithItsName) {
  TrayDouble tray(gnome());
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(tray.scan().size(), 1U);
  item.reset();
  EXPECT_TRUE(tray.scan().empty());
  EXPECT_TRUE(tray.properties(busName).empty());
}

TEST_F(StatusNotifierItemTest, HasALabelBesideANamedIconOnGnome) {
  TrayDouble tray(gnome());
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(tray.shown(), Names{busName});
  EXPECT_EQ(text(tray, "XAyatanaLabel"), " 82% · 3:05");
  EXPECT_EQ(text(tray, "XAyatanaLabelGuide"), " 88% · 8:88");
  EXPECT_EQ(text(tray, "IconName"), "lumora-battery-75-symbolic");
  EXPECT_TRUE(property<Pixmaps>(tray, "IconPixmap").empty());
  EXPECT_TRUE(drawn.empty());
}

TEST_F(StatusNotifierItemTest, IsOneItemForATrayThatAlsoLooksByItself) {
  TrayDouble tray(gnome());
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  const auto found = tray.scan();
  ASSERT_EQ(found.size(), 1U);
  const auto owner = tray.client().call("org.freedesktop.DBus", "/", "org.freedesktop.DBus",
                                        "GetNameOwner", arguments(Glib::ustring(busName)));
  EXPECT_EQ(std::string(owner.get<Glib::ustring>()), found.front());
}

TEST_F(StatusNotifierItemTest, TakesTheTokenBeforeTheDoubleClickOfGnome) {
  TrayDouble tray(gnome());
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  tray.doubleClick(busName, {1150, 14}, "token-1");
  EXPECT_EQ(events, (Names{"token token-1", "click 1150,14"}));
}

TEST_F(StatusNotifierItemTest, DrawsThePercentageAndHasATooltipOnKde) {
  TrayDouble tray(kde());
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(text(tray, "IconName"), "");
  EXPECT_EQ(property<Pixmaps>(tray, "IconPixmap"), (Pixmaps{{1, 1, {255, 1, 2, 3}}}));
  EXPECT_EQ(property<ToolTip>(tray, "ToolTip"), (ToolTip{"", {}, "On battery", "82% · 3:05"}));
  EXPECT_EQ(text(tray, "XAyatanaLabel"), "");
  EXPECT_EQ(drawn, Names{"82"});
}

TEST_F(StatusNotifierItemTest, ShowsOnceWhereASecondRegistrationIsIgnored) {
  TrayDouble tray(kde());
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  tray.showItems();
  ASSERT_TRUE(registers(tray, 2));
  tray.click(busName, {-3, 2000});
  EXPECT_EQ(tray.shown(), Names{busName});
  EXPECT_EQ(events, Names{"click -3,2000"});
}

TEST_F(StatusNotifierItemTest, HasNoNameThatATrayWithoutFallbackFailsToFind) {
  TrayDouble tray(lxqt());
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(tray.iconFor(busName), "a pixmap");
  content.text = content.percent = "";
  item->show(content);
  EXPECT_EQ(tray.iconFor(busName), "nothing");
  std::ofstream(icons.path() / "lumora-battery-75-symbolic.svg") << "<svg/>";
  EXPECT_EQ(tray.iconFor(busName), "lumora-battery-75-symbolic");
}

TEST_F(StatusNotifierItemTest, DrawsTheWholeTextWhereIconsMayBeWide) {
  TrayDouble tray(waybar());
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_FALSE(property<Pixmaps>(tray, "IconPixmap").empty());
  EXPECT_EQ(drawn, Names{"82% · 3:05"});
  EXPECT_EQ(std::get<3>(property<ToolTip>(tray, "ToolTip")), "");
}

TEST_F(StatusNotifierItemTest, HandsOnTheOtherClicks) {
  TrayDouble tray(xfce());
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  tray.callItem(busName, "SecondaryActivate", arguments(7, 8));
  tray.callItem(busName, "XAyatanaSecondaryActivate", arguments(std::uint32_t{99}));
  tray.callItem(busName, "ContextMenu", arguments(7, 8));
  tray.callItem(busName, "Scroll", arguments(120, Glib::ustring("vertical")));
  EXPECT_EQ(events, (Names{"click 7,8", "click"}));
}

TEST_F(StatusNotifierItemTest, RefusesStrangeCallsAndGoesOn) {
  TrayDouble tray(xfce());
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  const Glib::ustring word = "word";
  EXPECT_EQ(tray.callItem(busName, "Activate").error, kInvalidArguments);
  EXPECT_EQ(tray.callItem(busName, "Activate", arguments(word, word)).error, kInvalidArguments);
  EXPECT_EQ(tray.callItem(busName, "Scroll", arguments(word, 1)).error, kInvalidArguments);
  EXPECT_EQ(tray.callItem(busName, "ProvideXdgActivationToken", arguments(1)).error,
            kInvalidArguments);
  EXPECT_EQ(tray.callItem(busName, "Explode").error, kUnknownMethod);
  const auto set =
      tray.client().call(busName, "/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Set",
                         Glib::VariantContainerBase::create_tuple(
                             {variant("org.kde.StatusNotifierItem"), variant("Title"),
                              Glib::Variant<Glib::VariantBase>::create(variant("Other"))}));
  EXPECT_FALSE(set.values);
  EXPECT_TRUE(events.empty());
  tray.click(busName, {1, 2});
  EXPECT_EQ(events, Names{"click 1,2"});
}

TEST_F(StatusNotifierItemTest, SaysBrokenTextsAsFarAsTheyCanBeRead) {
  TrayDouble tray(gnome());
  content.text = "82\xFF%";
  content.tooltip = "\xC3";
  item->show(content);
  ASSERT_TRUE(registers(tray, 1));
  EXPECT_EQ(text(tray, "XAyatanaLabel"), " 82\uFFFD%");
  EXPECT_EQ(std::get<2>(property<ToolTip>(tray, "ToolTip")), "\uFFFD");
}

TEST_F(StatusNotifierItemTest, DoesNothingWithoutABus) {
  StatusNotifierItem nowhere(nullptr, {"lumora", "Lumora", ""}, {});
  nowhere.show(content);
  drainMainLoop();
}

}  // namespace
}  // namespace lumora::test
