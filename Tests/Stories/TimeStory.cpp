// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Quiet hours, snoozes, and clocks that change.
#include "Machine.h"
#include "Support/Builders.h"

#include <gmock/gmock.h>

namespace lumora::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Quiet from 22:00 until 07:00.
void beQuietAtNight(Machine& machine) { machine.defaults().set("quietEnabled", true); }

TEST(TimeStory, QuietHoursHoldTheReminderUntilTheMorning) {
  Machine machine(60);
  machine.start();
  beQuietAtNight(machine);
  machine.stayUntil(23, 0);
  machine.battery(15);
  machine.stayUntil(6, 59);
  EXPECT_THAT(machine.told(), IsEmpty());
  machine.stayUntil(9, 0);
  EXPECT_THAT(machine.kinds(), ElementsAre("Tue 07:00 low", "Tue 07:00 lowPower"));
}

TEST(TimeStory, WhatIsOverByTheMorningIsNotTold) {
  Machine machine(60);
  machine.start();
  beQuietAtNight(machine);
  machine.stayUntil(23, 0);
  machine.battery(15);
  machine.stayUntil(1, 0);
  machine.plugIn();
  machine.goTo(50, minutes(2));
  machine.stayUntil(9, 0);
  EXPECT_THAT(machine.told(), IsEmpty());
}

/// Sleeps until so many days later, and then lives through a night that begins with a low battery.
void liveThroughANight(Machine& machine, int days) {
  machine.start();
  beQuietAtNight(machine);
  machine.sleep(hours(24 * days), 60);
  machine.stayUntil(23, 0);
  machine.battery(15);
  machine.stayUntil(9, 0);
}

TEST(TimeStory, TheNightInWhichSummerTimeBegins) {
  const ScopedTimeZone zone("Europe/Berlin");
  Machine machine(60);
  liveThroughANight(machine, 26);  // Saturday, 28 March
  EXPECT_THAT(machine.kinds(), ElementsAre("Sun 07:00 low", "Sun 07:00 lowPower"));
  // A day of 23 hours, with one sample a minute, one of the wake-up and one of the change.
  EXPECT_EQ(machine.history().back(), "Sat 09:00:03 to 09:00:00 battery 60 to 15 %: 1382");
}

TEST(TimeStory, TheNightInWhichSummerTimeEnds) {
  const ScopedTimeZone zone("Europe/Berlin");
  Machine machine(60);
  liveThroughANight(machine, 26 + 210);  // Saturday, 24 October
  EXPECT_THAT(machine.kinds(), ElementsAre("Sun 07:00 low", "Sun 07:00 lowPower"));
  // From 10 o'clock, in a night that has its third hour twice.
  EXPECT_EQ(machine.history().back(), "Sat 10:00:03 to 09:00:00 battery 60 to 15 %: 1442");
}

TEST(TimeStory, ASnoozeOutlivesARestart) {
  Machine machine(25);
  machine.start();
  machine.battery(20);
  machine.model().snooze();
  machine.stay(minutes(20));
  machine.plugIn();
  machine.stay(minutes(1));
  machine.start();
  machine.unplug();
  machine.stay(minutes(38));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:00 low"));
  machine.stay(minutes(2));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:00 low", "Mon 09:00 low", "Mon 09:00 lowPower"));
}

TEST(TimeStory, AFlightToAnotherTimeZone) {
  Machine machine(60);
  std::optional<ScopedTimeZone> zone(std::in_place, "Europe/Berlin");
  machine.start();
  beQuietAtNight(machine);
  machine.stayUntil(21, 30);
  // In New York it is half past three in the afternoon.
  zone.emplace("America/New_York");
  machine.battery(20);
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 15:30 low", "Mon 15:30 lowPower"));
  machine.stayUntil(22, 0);
  machine.plugIn();
  machine.goTo(80, seconds(30));
  machine.stayUntil(7, 0);
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 15:30 low", "Mon 15:30 lowPower",
                                           "Tue 07:00 chargeLimit", "Tue 07:00 tooLong"));
}

TEST(TimeStory, AClockThatIsSetBackIsNoReasonToHoldBack) {
  Machine machine(60);
  machine.start();
  machine.plugIn();
  machine.unplug();
  machine.plugIn();
  machine.setClock(-hours(24));
  machine.battery(80);
  EXPECT_THAT(machine.kinds(), ElementsAre("Sun 08:00 chargeLimit"));
}

constexpr hours kTwoYears{2 * 365 * 24};

TEST(TimeStory, OnTheChargerFromTheYear2000ToToday) {
  Machine machine(60);
  machine.setClock(-hours(26 * 365 * 24));
  machine.start();
  machine.plugIn();
  machine.goTo(81, minutes(2));
  machine.stay(minutes(18));
  machine.setClock(hours(26 * 365 * 24));
  machine.stay(hours(7) - minutes(1));
  EXPECT_THAT(machine.kinds(), testing::Not(testing::Contains(testing::HasSubstr("tooLong"))));
  machine.stay(minutes(2));
  EXPECT_THAT(machine.told().back(), testing::HasSubstr("Plugged in for over 8 h"));
}

TEST(TimeStory, OnTheChargerSinceAHistoryThatLiesAheadOfTheClock) {
  Machine machine(60);
  machine.start();
  machine.plugIn();
  machine.goTo(81, minutes(1));
  machine.end();
  machine.setClock(-kTwoYears);
  machine.start();
  machine.stay(minutes(10));
  machine.setClock(kTwoYears + hours(12));
  machine.stay(hours(7));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:20 chargeLimit"));
  machine.stay(hours(1) + minutes(3));
  EXPECT_EQ(machine.told().size(), 2U);
  EXPECT_THAT(machine.told().back(), testing::HasSubstr("Plugged in for over 8 h"));
}

TEST(TimeStory, ASnoozeWithAClockYearsAheadLastsAnHour) {
  Machine machine(60);
  machine.setClock(kTwoYears);
  machine.start();
  machine.model().snooze();
  machine.stay(minutes(10));
  machine.setClock(-kTwoYears);
  machine.battery(20);
  machine.stay(minutes(49));
  EXPECT_THAT(machine.told(), IsEmpty());
  machine.stay(minutes(2));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 09:00 low", "Mon 09:00 lowPower"));
}

TEST(TimeStory, ASnoozeRightAfterTheClockWasSetLastsAnHour) {
  for (const auto set : {-kTwoYears, kTwoYears}) {
    Machine machine(60);
    machine.start();
    machine.setClock(set);
    machine.model().snooze();
    machine.battery(20);
    machine.stay(minutes(59));
    EXPECT_THAT(machine.told(), IsEmpty());
    machine.stay(minutes(2));
    EXPECT_EQ(machine.told().size(), 2U);
  }
}

TEST(TimeStory, ASnoozeThatTheClockLeapsOverHoldsOn) {
  Machine machine(60);
  machine.start();
  machine.model().snooze();
  machine.setClock(hours(5));
  machine.battery(20);
  machine.stay(minutes(59));
  EXPECT_THAT(machine.told(), IsEmpty());
  machine.stay(minutes(2));
  EXPECT_EQ(machine.told().size(), 2U);
}

TEST(TimeStory, AClockThatIsSetBackHoldsNoRepetitionUp) {
  Machine machine(79);
  machine.start();
  machine.plugIn();
  machine.battery(80);
  machine.stay(minutes(2));
  machine.setClock(-hours(24));
  machine.stay(minutes(14));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:00 chargeLimit", "Sun 08:05 chargeLimit",
                                           "Sun 08:10 chargeLimit", "Sun 08:15 chargeLimit"));
}

TEST(TimeStory, ASleepIsNoJump) {
  Machine machine(60);
  machine.start();
  machine.model().snooze();
  machine.plugIn();
  machine.sleep(hours(9), 85);
  machine.stay(minutes(1));
  EXPECT_EQ(*machine.model().snoozeUntil(), std::nullopt);
  EXPECT_EQ(*machine.model().pluggedSince(), utc(2026, 3, 2, 8, 0));
}

TEST(TimeStory, SmallCorrectionsMoveNothing) {
  Machine machine(60);
  machine.start();
  machine.plugIn();
  machine.model().snooze();
  const auto until = *machine.model().snoozeUntil();
  for (int minute = 0; minute < 30; ++minute) {
    machine.setClock(seconds(4));
    machine.stay(minutes(1));
  }
  EXPECT_EQ(*machine.model().snoozeUntil(), until);
  EXPECT_EQ(*machine.model().pluggedSince(), utc(2026, 3, 2, 8, 0));
}

}  // namespace
}  // namespace lumora::test
