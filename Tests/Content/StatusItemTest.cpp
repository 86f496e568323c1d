// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/StatusItem.h"
#include "Support/Builders.h"
#include "Support/ScopedTimeZone.h"

#include <array>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using enum TextPlace;

const Prefs kBoth{.showPercent = true, .showTime = true};
const Prefs kPercent{.showPercent = true, .showTime = false};
const Prefs kTime{.showPercent = false, .showTime = true};
const Prefs kNeither{.showPercent = false, .showTime = false};

bool everything(const std::string& /*name*/) { return true; }
bool nothing(const std::string& /*name*/) { return false; }

BatteryState at82() { return {.hasBattery = true, .percent = 82, .minutesToEmpty = 185}; }

StatusItemFace face(const BatteryState& state, const Prefs& prefs, TextPlace place) {
  return statusItemFace(state, false, prefs, place, everything);
}

TEST(StatusItem, ShowsPercentAndTimeAsTheUserWants) {
  struct Row {
    Prefs prefs;
    std::optional<std::int64_t> minutes;
    const char* text = "";
  };
  for (const Row& row :
       {Row{kBoth, 185, "82% · 3:05"}, Row{kPercent, 185, "82%"}, Row{kTime, 185, "3:05"},
        Row{kNeither, 185, ""}, Row{kBoth, std::nullopt, "82%"}, Row{kTime, std::nullopt, ""}}) {
    BatteryState state = at82();
    state.minutesToEmpty = row.minutes;
    const bool none = std::string_view(row.text).empty();
    const auto beside = face(state, row.prefs, label);
    EXPECT_EQ(beside.label, none ? "" : std::string(" ") + row.text);
    EXPECT_EQ(beside.tooltipTitle, state.stateText());
    const auto within = face(state, row.prefs, wide);
    EXPECT_EQ(within.drawn ? within.drawn->text : "", row.text);
    EXPECT_EQ(within.drawn.has_value(), !none);
  }
}

TEST(StatusItem, IsANamedIconWithoutATextWithoutABattery) {
  for (const TextPlace place : {label, wide, inside}) {
    EXPECT_EQ(face({}, kBoth, place), (StatusItemFace{.iconName = "lumora-battery-0-symbolic",
                                                      .tooltipTitle = "No battery found"}));
  }
}

TEST(StatusItem, IsANamedIconEverywhereWithoutAText) {
  for (const TextPlace place : {label, wide, inside}) {
    EXPECT_EQ(face(at82(), kNeither, place),
              (StatusItemFace{.iconName = "lumora-battery-75-symbolic",
                              .tooltipTitle = "On battery, 3 h 5 min left"}));
  }
}

TEST(StatusItem, TakesTheFirstImageThatExists) {
  const BatteryState charging = test::charging(50);
  EXPECT_EQ(statusItemFace(charging, false, kPercent, label, everything).iconName,
            "lumora-battery-100-bolt-symbolic");
  const auto second = [](const std::string& name) { return name == "bolt.fill"; };
  EXPECT_EQ(statusItemFace(charging, false, kPercent, label, second).iconName,
            "lumora-bolt-fill-symbolic");
  EXPECT_EQ(statusItemFace(charging, false, kPercent, label, nothing).iconName, "");
}

TEST(StatusItem, NamesTheIconAfterItsImage) {
  EXPECT_EQ(iconName("battery.100.bolt"), "lumora-battery-100-bolt-symbolic");
  EXPECT_EQ(iconName("battery"), "lumora-battery-symbolic");
  EXPECT_EQ(iconName(""), "");
}

TEST(StatusItem, PutsTheTextBesideTheNamedIconWhereThereIsALabel) {
  EXPECT_EQ(face(at82(), kBoth, label),
            (StatusItemFace{.iconName = "lumora-battery-75-symbolic",
                            .label = " 82% · 3:05",
                            .labelGuide = " 88% · 8:88",
                            .tooltipTitle = "On battery, 3 h 5 min left"}));
}

TEST(StatusItem, KeepsTheGuideWhileOnlyDigitsChange) {
  BatteryState later = at82();
  later.percent = 79;
  later.minutesToEmpty = 122;
  EXPECT_EQ(face(later, kBoth, label).labelGuide, face(at82(), kBoth, label).labelGuide);
}

TEST(StatusItem, DrawsTheWholeTextIntoAWideIcon) {
  EXPECT_EQ(face(at82(), kBoth, wide),
            (StatusItemFace{.drawn = DrawnIcon{BatteryPicture::onBattery, 82, "82% · 3:05"},
                            .tooltipTitle = "On battery, 3 h 5 min left"}));
}

TEST(StatusItem, KeepsTheChargeOfADrawingThatTellsOnlyTheTime) {
  EXPECT_EQ(face(at82(), kTime, wide).drawn, (DrawnIcon{BatteryPicture::onBattery, 82, "3:05"}));
}

TEST(StatusItem, DrawsThePercentInsideAndTellsTheRestInTheTooltip) {
  EXPECT_EQ(face(at82(), kBoth, inside),
            (StatusItemFace{.drawn = DrawnIcon{BatteryPicture::onBattery, 82, ""},
                            .tooltipTitle = "On battery, 3 h 5 min left",
                            .tooltipText = "82% · 3:05"}));
}

TEST(StatusItem, DoesNotRepeatInTheTooltipWhatTheIconTells) {
  EXPECT_EQ(face(at82(), kPercent, inside).tooltipText, "");
}

TEST(StatusItem, NamesTheIconWhereNothingFitsIntoIt) {
  EXPECT_EQ(face(at82(), kTime, inside),
            (StatusItemFace{.iconName = "lumora-battery-75-symbolic",
                            .tooltipTitle = "On battery, 3 h 5 min left",
                            .tooltipText = "3:05"}));
}

TEST(StatusItem, LooksTheSameInsideWhileThePercentDoes) {
  BatteryState later = at82();
  later.minutesToEmpty = 184;
  EXPECT_EQ(face(later, kBoth, inside).drawn, face(at82(), kBoth, inside).drawn);
  EXPECT_NE(face(later, kBoth, wide).drawn, face(at82(), kBoth, wide).drawn);
}

TEST(StatusItem, TellsInTheDrawingWhereThePowerComesFrom) {
  using enum BatteryPicture;
  struct Row {
    BatteryState state;
    BatteryPicture picture = noBattery;
  };
  const Row rows[] = {
      {{.hasBattery = true, .percent = 80}, onBattery},
      {{.hasBattery = true, .percent = 80, .pluggedIn = true}, pluggedIn},
      {{.hasBattery = true, .percent = 99, .pluggedIn = true}, pluggedIn},
      {{.hasBattery = true, .percent = 100, .pluggedIn = true}, full},
      {{.hasBattery = true, .percent = 80, .isCharging = true, .pluggedIn = true}, charging},
      {{.hasBattery = true, .percent = 80, .isCharging = true}, charging},
      {{.hasBattery = true, .percent = 97, .pluggedIn = true, .isCharged = true}, full},
      {{.hasBattery = true, .percent = 100}, onBattery},
      {{.hasBattery = true, .percent = 21}, onBattery},
      {{.hasBattery = true, .percent = 20}, low},
      {{.hasBattery = true, .percent = 0}, low},
      {{.hasBattery = true, .percent = 20, .pluggedIn = true}, pluggedIn},
      {{.hasBattery = true, .percent = 9, .isCharging = true, .pluggedIn = true}, charging},
  };
  for (const Row& row : rows) {
    for (const TextPlace place : {wide, inside}) {
      const auto drawn = face(row.state, kPercent, place).drawn.value();
      EXPECT_EQ(drawn.picture, row.picture) << row.state.percent;
      EXPECT_EQ(drawn.percent, row.state.percent);
    }
  }
}

std::string linesOf(const Menu& menu) {
  std::string lines;
  for (const MenuEntry& entry : menu) lines += (entry.chosen ? "" : "-") + entry.label + "\n";
  return lines;
}

class StatusMenuTest : public testing::Test {
 protected:
  Menu menu(const BatteryState& state, std::optional<Date> snoozeUntil) {
    const auto call = [this](const char* name) { return [this, name] { called += name; }; };
    return statusMenu(
        state, false, snoozeUntil,
        {call("open"), call("snooze"), call("cancel"), call("settings"), call("quit")});
  }

  const ScopedTimeZone zone{"Europe/Berlin"};
  std::string called;
};

TEST_F(StatusMenuTest, TellsTheStateAndOffersWhatCanBeDone) {
  EXPECT_EQ(linesOf(menu(at82(), std::nullopt)),
            "Open Lumora\n-82% · On battery, 3 h 5 min left\nSnooze 1 hour\nSettings…\nQuit\n");
  EXPECT_EQ(linesOf(menu({}, std::nullopt)),
            "Open Lumora\n-No battery found\nSnooze 1 hour\nSettings…\nQuit\n");
}

TEST(StatusItem, SaysThatItLooksWhileNobodyHasSaidThatThereIsNoBattery) {
  const auto face = statusItemFace({}, true, kPercent, TextPlace::inside, everything);
  EXPECT_EQ(face.tooltipTitle, "Looking for the battery…");
  EXPECT_EQ(statusMenu({}, true, std::nullopt, {}).at(1).label, "Looking for the battery…");
}

TEST_F(StatusMenuTest, DoesWhatItsLinesSay) {
  for (const MenuEntry& entry : menu(at82(), std::nullopt)) {
    if (entry.chosen) entry.chosen();
  }
  EXPECT_EQ(called, "opensnoozesettingsquit");
}

TEST_F(StatusMenuTest, TellsTheEndOfASnoozeAndEndsIt) {
  const Menu snoozed = menu(at82(), dateSince1970(1'700'000'059));
  EXPECT_EQ(snoozed[2].label, "End snooze (until 23:14)");
  snoozed[2].chosen();
  EXPECT_EQ(called, "cancel");
}

}  // namespace
}  // namespace lumora::test
