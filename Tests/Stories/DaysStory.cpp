// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Days with a laptop, and nights.
#include "Machine.h"

#include <gmock/gmock.h>

namespace lumora::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

TEST(DaysStory, AWeekOfNormalDays) {
  Machine machine(70);
  machine.start();
  std::vector<std::string> told;
  std::vector<std::string> history;
  for (const std::string day : {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"}) {
    // Work from 8 o'clock, down to 18 %; then the charger, a little too long, and on to the
    // evening.
    machine.goTo(18, minutes(4));
    machine.stay(minutes(1));
    machine.plugIn();
    machine.goTo(80, minutes(2));
    machine.stay(minutes(12));
    machine.unplug();
    machine.goTo(71, minutes(5));
    machine.stayUntil(20, 0);
    for (const char* line : {" 10:44 lowPower", " 11:20 low", " 13:33 chargeLimit",
                             " 13:38 chargeLimit", " 13:43 chargeLimit"}) {
      told.push_back(day + line);
    }
    // One a minute, one for each percent, and one for the launch, or for the change over night and
    // for the wake-up.
    history.push_back(day + " 08:00:00 to 11:29:00 battery 70 to 18 %: " +
                      std::to_string(209 + 52 + (day == "Mon" ? 1 : 2)));
    history.push_back(day + " 11:29:00 to 13:45:00 charging 18 to 80 %: 199");
    history.push_back(day + " 13:45:00 to 20:00:00 battery 80 to 71 %: 385");
    machine.sleep(hours(12), 70);
  }
  EXPECT_EQ(machine.kinds(), told);
  history.push_back("Mon 08:00:00 to 08:00:00 battery 70 to 70 %: 1");
  EXPECT_EQ(machine.history(), history);
}

TEST(DaysStory, SleepsAtSixtyAndWakesUpAtNineAndIsNotToldWhatItSees) {
  Machine machine(60);
  machine.start();
  machine.stay(minutes(10));
  machine.sleep(hours(9), 9);
  machine.stay(minutes(10));
  EXPECT_THAT(machine.told(), IsEmpty());
  // From the wake-up on everything is as ever.
  machine.plugIn();
  machine.stay(minutes(1));
  machine.unplug();
  EXPECT_THAT(machine.told(),
              ElementsAre("Mon 17:21 low: Battery is at 9%. Plug in soon.",
                          "Mon 17:21 lowPower: Battery is at 9%. Turn on Low Power Mode (System "
                          "Settings, Battery) to stretch it."));
}

TEST(DaysStory, WakesUpAsLowAsItFellAsleep) {
  Machine machine(25);
  machine.start();
  machine.goTo(20, minutes(3));
  machine.stay(minutes(5));
  machine.sleep(hours(3), 19);
  machine.stay(hours(1));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:15 low"));
}

TEST(DaysStory, TheLidClosedForAWeek) {
  Machine machine(75);
  machine.start();
  machine.stay(minutes(30));
  machine.sleep(hours(7 * 24), 41);
  machine.stay(minutes(30));
  EXPECT_THAT(machine.told(), IsEmpty());
  EXPECT_THAT(machine.history(), ElementsAre("Mon 08:00:00 to 08:30:00 battery 75 to 75 %: 31",
                                             "Mon 08:30:00 to 09:00:00 battery 41 to 41 %: 32"));
}

TEST(DaysStory, ANightOnTheChargerIsNoNewsInTheMorning) {
  Machine machine(70);
  machine.start();
  machine.plugIn();
  machine.stay(minutes(5));
  machine.sleep(hours(8), 100);
  machine.stay(minutes(30));
  EXPECT_THAT(machine.told(), IsEmpty());
}

TEST(DaysStory, ANightAtTheLimitIsNoNewsInTheMorning) {
  Machine machine(78);
  machine.start();
  machine.plugIn();
  machine.goTo(80, minutes(2));
  machine.adapter(true, BatteryPack::State::heldOnMains);
  machine.stay(minutes(1));
  machine.sleep(hours(7), 80);
  machine.stay(minutes(30));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:04 chargeLimit"));
}

}  // namespace
}  // namespace lumora::test
