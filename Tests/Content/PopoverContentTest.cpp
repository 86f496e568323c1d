// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/TimeText.h"
#include "Content/PopoverContent.h"
#include "Support/Builders.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

const Date kNow = dateSince1970(1'790'000'000);

BatteryContent content(const BatteryState& state, std::optional<Date> pluggedSince = {},
                       std::optional<Date> snoozeUntil = {}) {
  return batteryContent(state, pluggedSince, snoozeUntil, kNow).value();
}

std::vector<DetailRow> rowsOf(const BatteryState& state) { return content(state).details; }

BatteryState withPower(double volts, double amperes) {
  BatteryState state = onBattery(50);
  state.voltage = volts;
  state.amperage = amperes;
  return state;
}

BatteryState withCycles(std::int64_t count) {
  BatteryState state = onBattery(50);
  state.cycleCount = count;
  return state;
}

TEST(PopoverContent, IsAbsentWithoutABattery) {
  EXPECT_FALSE(batteryContent(BatteryState{}, kNow, kNow, kNow));
}

TEST(PopoverContent, HasNothingMoreThanTheLevelAndTheStateOfABareBattery) {
  const BatteryContent bare = content(onBattery(42));
  EXPECT_EQ(bare.percent, 42);
  EXPECT_EQ(bare.stateText, "On battery, estimating time left…");
  EXPECT_EQ(bare.pluggedInFor, std::nullopt);
  EXPECT_EQ(bare.snoozedUntil, std::nullopt);
  EXPECT_EQ(bare.cycles, std::nullopt);
  EXPECT_TRUE(bare.details.empty());
}

TEST(PopoverContent, HasARedRingUpToTwentyPercentOnBatteryAlone) {
  EXPECT_EQ(content(onBattery(20)).ringTint, Tint::red);
  EXPECT_EQ(content(onBattery(0)).ringTint, Tint::red);
  EXPECT_EQ(content(onBattery(21)).ringTint, Tint::accent);
  EXPECT_EQ(content(pluggedIn(20)).ringTint, Tint::accent);
  EXPECT_EQ(content(charging(20)).ringTint, Tint::green);
}

TEST(PopoverContent, HasAGreenRingWhileChargingAndWhenFull) {
  BatteryState charged = pluggedIn(97);
  charged.isCharged = true;
  EXPECT_EQ(content(charging(50)).ringTint, Tint::green);
  EXPECT_EQ(content(charged).ringTint, Tint::green);
  EXPECT_EQ(content(pluggedIn(100)).ringTint, Tint::green);
  EXPECT_EQ(content(pluggedIn(99)).ringTint, Tint::accent);
  EXPECT_EQ(content(onBattery(100)).ringTint, Tint::accent);
}

TEST(PopoverContent, IsRedBeforeItIsGreen) {
  BatteryState state = onBattery(20);
  state.isCharging = true;
  EXPECT_EQ(content(state).ringTint, Tint::red);
}

TEST(PopoverContent, TellsHowLongItHasBeenPluggedInInWholeMinutes) {
  const auto since = [](double seconds) {
    return content(pluggedIn(50), kNow - Seconds(seconds)).pluggedInFor.value();
  };
  EXPECT_EQ(since(59), "Plugged in for 1 min");
  EXPECT_EQ(since(119.9), "Plugged in for 1 min");
  EXPECT_EQ(since(120), "Plugged in for 2 min");
  EXPECT_EQ(since(3900), "Plugged in for 1 h 5 min");
  EXPECT_EQ(since(-500), "Plugged in for 1 min");
  // A time that no integer counts: a history with such a sample can be written by hand.
  EXPECT_EQ(since(-1e300), "Plugged in for 1 min");
  EXPECT_EQ(since(1e300), "Plugged in for 150000000000000 h");
}

TEST(PopoverContent, ShowsTheEndOfASnoozeAlsoWhenItHasPassed) {
  const Date past = kNow - Seconds(60);
  EXPECT_EQ(content(onBattery(50), {}, past).snoozedUntil,
            "Alerts snoozed until " + timeOfDayText(past));
}

TEST(PopoverContent, TintsTheCyclesByTheirNumber) {
  struct Case {
    std::int64_t count = 0;
    CycleBar bar;
  };
  for (const auto& [count, bar] : {
           Case{0, {"0 of 1000", 0, Tint::accent}},
           Case{412, {"412 of 1000", 412, Tint::accent}},
           Case{700, {"700 of 1000", 700, Tint::accent}},
           Case{701, {"701 of 1000", 701, Tint::orange}},
           Case{900, {"900 of 1000", 900, Tint::orange}},
           Case{901, {"901 of 1000", 901, Tint::red}},
           Case{1000, {"1000 of 1000", 1000, Tint::red}},
           Case{1200, {"1200 of 1000", 1000, Tint::red}},
       }) {
    EXPECT_EQ(content(withCycles(count)).cycles, bar) << count;
  }
}

TEST(PopoverContent, ShowsTheHealthWithItsLabelAndTint) {
  const auto row = [](std::int64_t full) {
    return rowsOf(withCapacity(onBattery(50), full, 1000)).at(0);
  };
  EXPECT_EQ(row(901), (DetailRow{"Battery health", "90% · Good", Tint::green}));
  EXPECT_EQ(row(900), (DetailRow{"Battery health", "90% · Fair", Tint::orange}));
  EXPECT_EQ(row(800), (DetailRow{"Battery health", "80% · Fair", Tint::orange}));
  EXPECT_EQ(row(799), (DetailRow{"Battery health", "80% · Worn", Tint::red}));
  EXPECT_EQ(row(870), (DetailRow{"Battery health", "87% · Fair", Tint::orange}));
  // Halves go to the even neighbour, as C writes them.
  EXPECT_EQ(row(885).value, "88% · Fair");
  EXPECT_EQ(row(875).value, "88% · Fair");
}

TEST(PopoverContent, HasNoHealthWithoutBothCapacities) {
  EXPECT_TRUE(rowsOf(withCapacity(onBattery(50), 900, 0)).empty());
  BatteryState state = onBattery(50);
  state.designCapacity = 1000;
  EXPECT_TRUE(rowsOf(state).empty());
}

TEST(PopoverContent, ShowsTheTemperatureWithOneDecimal) {
  BatteryState state = onBattery(50);
  state.temperatureC = 31.44;
  EXPECT_EQ(rowsOf(state), (std::vector<DetailRow>{{"Temperature", "31.4 °C", std::nullopt}}));
  state.temperatureC = -0.25;
  EXPECT_EQ(rowsOf(state).at(0).value, "-0.2 °C");
}

TEST(PopoverContent, ShowsThePowerThatFlowsInOrOut) {
  EXPECT_EQ(rowsOf(withPower(12, 2.1)).at(0), (DetailRow{"Power in", "25.2 W", std::nullopt}));
  EXPECT_EQ(rowsOf(withPower(12, -2.1)).at(0), (DetailRow{"Power out", "25.2 W", std::nullopt}));
  EXPECT_EQ(rowsOf(withPower(1, 0.1)).at(0).value, "0.1 W");
  EXPECT_TRUE(rowsOf(withPower(12, -0.005)).empty());
  EXPECT_TRUE(rowsOf(withPower(1, 0.099)).empty());
  EXPECT_TRUE(rowsOf(withPower(12, 0)).empty());
  BatteryState state = onBattery(50);
  state.amperage = 2;
  EXPECT_TRUE(rowsOf(state).empty());
}

TEST(PopoverContent, ShowsTheAdapterOnlyWhilePluggedIn) {
  BatteryState state = pluggedIn(50);
  state.adapterWatts = 96;
  EXPECT_EQ(rowsOf(state), (std::vector<DetailRow>{{"Adapter", "96 W", std::nullopt}}));
  state.pluggedIn = false;
  EXPECT_TRUE(rowsOf(state).empty());
}

TEST(PopoverContent, OrdersItsRows) {
  BatteryState state = withCapacity(charging(50), 870, 1000);
  state.temperatureC = 30;
  state.voltage = 12;
  state.amperage = 1;
  state.adapterWatts = 65;
  std::vector<std::string> labels;
  for (const DetailRow& row : rowsOf(state)) labels.push_back(row.label);
  EXPECT_EQ(labels,
            (std::vector<std::string>{"Battery health", "Temperature", "Power in", "Adapter"}));
}

TEST(DayRows, WriteEachDay) {
  const std::vector<DaySummary> days = {{kNow, 72, 41, 80, 65},
                                        {kNow - Seconds(86'400), 5, 5, 5, 0}};
  EXPECT_EQ(dayRows(days, 7),
            (std::vector<DayRow>{{dayText(days[0].day), "72%", "41–80%", "1 h 5 min"},
                                 {dayText(days[1].day), "5%", "5–5%", "–"}}));
}

TEST(DayRows, WriteAMinuteOfCharging) {
  const std::vector<DaySummary> day = {{kNow, 1, 1, 1, 1}};
  EXPECT_EQ(dayRows(day, 7).at(0).charging, "1 min");
  EXPECT_TRUE(dayRows({}, 7).empty());
}

TEST(DayRows, AreNoMoreThanWasAskedFor) {
  std::vector<DaySummary> days;
  for (int ahead = 7300; ahead > -7; --ahead) {
    days.push_back({kNow + Seconds(ahead * 86'400.0), 50, 50, 50, 0});
  }
  const auto rows = dayRows(days, 7);
  ASSERT_EQ(rows.size(), 7U);
  EXPECT_EQ(rows.front().day, dayText(kNow));
  EXPECT_EQ(rows.back().day, dayText(days.back().day));
}

}  // namespace
}  // namespace lumora::test
