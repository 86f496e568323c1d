// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "StatusItem.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

bool everything(const std::string& /*name*/) { return true; }
bool nothing(const std::string& /*name*/) { return false; }

BatteryState onBattery() { return {.hasBattery = true, .percent = 82, .minutesToEmpty = 185}; }

TEST(StatusItem, ShowsPercentAndTimeAsTheUserWants) {
  struct Row {
    bool showPercent = false;
    bool showTime = false;
    std::optional<std::int64_t> minutes;
    const char* text = "";
    const char* percent = "";
  };
  for (const Row& row : {
           Row{true, true, 185, "82% · 3:05", "82"},
           Row{true, false, 185, "82%", "82"},
           Row{false, true, 185, "3:05", ""},
           Row{false, false, 185, "", ""},
           Row{true, true, std::nullopt, "82%", "82"},
           Row{false, true, std::nullopt, "", ""},
       }) {
    BatteryState state = onBattery();
    state.minutesToEmpty = row.minutes;
    const Prefs prefs{.showPercent = row.showPercent, .showTime = row.showTime};
    const auto content = statusItemContent(state, prefs, everything);
    EXPECT_EQ(content.text, row.text);
    EXPECT_EQ(content.percent, row.percent);
    EXPECT_EQ(content.tooltip, state.stateText());
  }
}

TEST(StatusItem, HasNoTextWithoutABattery) {
  const auto content = statusItemContent({}, {.showPercent = true, .showTime = true}, everything);
  EXPECT_EQ(content, (StatusItemContent{.symbol = "battery.0", .tooltip = "No battery found"}));
}

TEST(StatusItem, TakesTheFirstImageThatExists) {
  const BatteryState charging{.hasBattery = true, .isCharging = true, .pluggedIn = true};
  EXPECT_EQ(statusItemContent(charging, {}, everything).symbol, "battery.100.bolt");
  const auto second = [](const std::string& name) { return name == "bolt.fill"; };
  EXPECT_EQ(statusItemContent(charging, {}, second).symbol, "bolt.fill");
  EXPECT_EQ(statusItemContent(charging, {}, nothing).symbol, "");
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
        state, snoozeUntil, [](Date) { return "14:35"; },
        {call("open"), call("snooze"), call("cancel"), call("settings"), call("quit")});
  }

  std::string called;
};

TEST_F(StatusMenuTest, TellsTheStateAndOffersWhatCanBeDone) {
  EXPECT_EQ(linesOf(menu(onBattery(), std::nullopt)),
            "Open Lumora\n-82% · On battery, 3 h 5 min left\nSnooze 1 hour\nSettings…\nQuit\n");
  EXPECT_EQ(linesOf(menu({}, std::nullopt)),
            "Open Lumora\n-No battery found\nSnooze 1 hour\nSettings…\nQuit\n");
}

TEST_F(StatusMenuTest, DoesWhatItsLinesSay) {
  for (const MenuEntry& entry : menu(onBattery(), std::nullopt)) {
    if (entry.chosen) entry.chosen();
  }
  EXPECT_EQ(called, "opensnoozesettingsquit");
}

TEST_F(StatusMenuTest, TellsTheEndOfASnoozeAndEndsIt) {
  const Menu snoozed = menu(onBattery(), dateSince1970(0));
  EXPECT_EQ(snoozed[2].label, "End snooze (until 14:35)");
  snoozed[2].chosen();
  EXPECT_EQ(called, "cancel");
}

}  // namespace
}  // namespace lumora::test
