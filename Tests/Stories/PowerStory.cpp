// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What batteries, plugs and their controllers do to a person who only wants to work.
#include "Machine.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include <gmock/gmock.h>

namespace lumora::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The plug moves, and rests for as long.
void movePlug(Machine& machine, std::initializer_list<seconds> rests) {
  for (const seconds rest : rests) {
    machine.model().state()->pluggedIn ? machine.unplug() : machine.plugIn();
    machine.stay(rest);
  }
}

TEST(PowerStory, ALoosePlugIsToldOnceAndShownAsItIs) {
  Machine machine(85);
  machine.start();
  for (int i = 0; i < 100; ++i) {
    machine.plugIn();
    EXPECT_TRUE(machine.model().state()->pluggedIn);
    EXPECT_TRUE(machine.model().state()->isCharging);
    machine.stay(seconds(3));
    machine.unplug();
    EXPECT_FALSE(machine.model().state()->pluggedIn);
    machine.stay(seconds(3));
  }
  EXPECT_THAT(machine.told(),
              ElementsAre("Mon 08:00 chargeLimit: Battery is at 85%. Unplug to keep it healthy."));
  // Each move has its sample, and the minutes have theirs.
  EXPECT_EQ(machine.model().history().samples().size(), 1U + 200U + 10U);
}

TEST(PowerStory, InOutAndInAgainIsToldAsIfItHadMovedOnce) {
  Machine machine(85);
  machine.start();
  machine.stay(minutes(30));
  movePlug(machine, {seconds(20), seconds(20), minutes(60)});
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:30 chargeLimit", "Mon 08:36 chargeLimit",
                                           "Mon 08:41 chargeLimit", "Mon 08:46 chargeLimit"));
}

TEST(PowerStory, InOutAndInAgainWithoutRepeatsIsToldOnce) {
  Machine machine(85);
  machine.start();
  machine.defaults().set("repeatReminder", false);
  movePlug(machine, {seconds(60), seconds(60), hours(6)});
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:00 chargeLimit"));
}

TEST(PowerStory, OutInAndOutAgainIsToldAsIfItHadMovedOnce) {
  Machine machine(15);
  machine.plugIn();
  machine.start();
  machine.stay(minutes(30));
  movePlug(machine, {seconds(40), seconds(40), minutes(60)});
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:30 low", "Mon 08:30 lowPower"));
}

TEST(PowerStory, MovesThatTakeTheirTimeAreEachTold) {
  Machine machine(15);
  machine.plugIn();
  machine.start();
  movePlug(machine, {seconds(61), seconds(61), seconds(61)});
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:00 low", "Mon 08:00 lowPower", "Mon 08:02 low",
                                           "Mon 08:02 lowPower"));
}

/// A charger that restarts every three seconds while the battery runs from 60 to 1 % in two hours,
/// and the clock is set on the way.
std::vector<std::string> runDownAtARestlessCharger(seconds clockSetBy) {
  Machine machine(60);
  machine.start();
  for (int percent = 60; percent > 0; --percent) {
    machine.battery(percent);
    if (percent % 7 == 0) machine.setClock(clockSetBy);
    for (int i = 0; i < 20; ++i) movePlug(machine, {seconds(3), seconds(3)});
  }
  return machine.kinds();
}

TEST(PowerStory, ALowBatteryAtARestlessChargerIsToldOnceAndAtOnce) {
  // 30 % is passed after 62 minutes, 20 % after 80; the plug is out after three seconds.
  EXPECT_THAT(runDownAtARestlessCharger(seconds(0)),
              ElementsAre("Mon 09:02 lowPower", "Mon 09:20 low"));
}

TEST(PowerStory, ClocksThatAreSetDoNotMakeARestlessChargerTellMoreOrLess) {
  EXPECT_EQ(runDownAtARestlessCharger(hours(1)).size(), 2U);
  EXPECT_EQ(runDownAtARestlessCharger(-hours(1)).size(), 2U);
}

TEST(PowerStory, ARestlessPlugDoesNotSwallowTheNextDaysReminder) {
  Machine machine(25);
  machine.start();
  machine.defaults().set("lowPowerEnabled", false);
  for (int day = 1; day <= 2; ++day) {
    for (int percent = 25; percent > 15; --percent) {
      machine.battery(percent);
      for (int i = 0; i < 10; ++i) movePlug(machine, {seconds(3), seconds(3)});
    }
    machine.battery(70);
    machine.stayUntil(8, 0);
  }
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:05 low", "Tue 08:05 low"));
}

TEST(PowerStory, APersonWhoTriesThePlugSeesItAtOnce) {
  Machine machine(60);
  machine.start();
  machine.plugIn();
  EXPECT_TRUE(machine.model().state()->pluggedIn);
  machine.stay(seconds(2));
  machine.unplug();
  EXPECT_FALSE(machine.model().state()->pluggedIn);
  machine.stay(minutes(2));
  machine.plugIn();
  EXPECT_TRUE(machine.model().state()->pluggedIn);
}

TEST(PowerStory, NinetyNineAndAHundredInTurnIsOneEpisode) {
  Machine machine(79);
  machine.adapter(true, BatteryPack::State::charging);
  machine.start();
  machine.battery(100);
  for (int i = 0; i < 30; ++i) {
    machine.stay(minutes(1));
    machine.battery(99);
    machine.stay(minutes(1));
    machine.battery(100);
  }
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:00 chargeLimit", "Mon 08:05 chargeLimit",
                                           "Mon 08:10 chargeLimit", "Mon 08:15 chargeLimit"));
  // One sample at the start and one that it is full, then one a minute and one for each change.
  EXPECT_THAT(machine.history(), ElementsAre("Mon 08:00:00 to 09:00:00 charging 79 to 100 %: 122"));
}

TEST(PowerStory, JumpsOverThresholdsTellWhatIsSoNow) {
  Machine machine(85);
  machine.start();
  machine.stay(minutes(5));
  machine.battery(15);
  machine.stay(minutes(5));
  machine.plugIn();
  machine.battery(97);
  machine.stay(seconds(30));
  EXPECT_THAT(machine.told(),
              ElementsAre("Mon 08:05 low: Battery is at 15%. Plug in soon.",
                          "Mon 08:05 lowPower: Battery is at 15%. Turn on Low Power Mode (System "
                          "Settings, Battery) to stretch it.",
                          "Mon 08:10 chargeLimit: Battery is at 97%. Unplug to keep it healthy."));
}

TEST(PowerStory, ASingleZeroIsShownAndNotTold) {
  Machine machine(57);
  machine.start();
  machine.stay(minutes(3));
  machine.battery(0);
  EXPECT_EQ(machine.model().state()->percent, 0);
  machine.stay(seconds(50));
  machine.battery(57);
  machine.stay(minutes(3));
  EXPECT_THAT(machine.told(), IsEmpty());
  EXPECT_THAT(machine.history(), ElementsAre("Mon 08:00:00 to 08:06:00 battery 57 to 57 %: 9"));
  const auto samples = machine.model().history().samples();
  EXPECT_EQ(std::count_if(samples.begin(), samples.end(),
                          [](const Sample& sample) { return sample.p == 0; }),
            1);
}

TEST(PowerStory, ASingleZeroAtTheLimitBeginsNothingAnew) {
  Machine machine(79);
  machine.plugIn();
  machine.start();
  machine.battery(80);
  machine.stay(minutes(30));
  EXPECT_EQ(machine.told().size(), 4U);
  machine.battery(0);
  machine.stay(seconds(30));
  machine.battery(80);
  machine.stay(minutes(30));
  EXPECT_EQ(machine.told().size(), 4U);
}

TEST(PowerStory, ARealFallToZeroIsToldWithinAMinute) {
  Machine machine(25);
  machine.start();
  machine.stay(seconds(30));
  machine.battery(0);
  machine.stay(seconds(54));
  EXPECT_THAT(machine.told(), IsEmpty());
  machine.stay(seconds(1));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:01 low"));
  machine.stay(minutes(10));
  EXPECT_EQ(machine.told().size(), 1U);
}

TEST(PowerStory, AFallToZeroIsToldWithinAMinuteWhateverTheClockDoes) {
  for (const seconds forward : {-hours(24), hours(24)}) {
    Machine machine(57);
    machine.start();
    machine.battery(0);
    machine.setClock(forward);
    machine.stay(seconds(30));
    EXPECT_THAT(machine.told(), IsEmpty());
    machine.stay(seconds(25));
    EXPECT_EQ(machine.told().size(), 2U);
  }
}

TEST(PowerStory, ABatteryThatRunsEmptyIsToldToTheEnd) {
  Machine machine(3);
  machine.start();
  machine.goTo(0, minutes(1));
  EXPECT_EQ(machine.model().state()->percent, 0);
}

TEST(PowerStory, ALaptopThatHoldsAtTheLimitIsToldOfItOnceAndFour) {
  Machine machine(70);
  machine.start();
  machine.plugIn();
  machine.goTo(80, minutes(2));
  machine.adapter(true, BatteryPack::State::heldOnMains);
  machine.stay(hours(7));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:20 chargeLimit", "Mon 08:25 chargeLimit",
                                           "Mon 08:30 chargeLimit", "Mon 08:35 chargeLimit"));
  machine.stay(hours(24));
  EXPECT_EQ(machine.told().size(), 5U);
  EXPECT_EQ(
      machine.told().back(),
      "Mon 16:01 tooLong: Plugged in for over 8 h at 80%. Unplug it to let the battery rest.");
}

TEST(PowerStory, AWeakChargerCountsAsPluggedIn) {
  Machine machine(35);
  machine.start();
  machine.adapter(true, BatteryPack::State::discharging);
  machine.goTo(10, minutes(4));
  EXPECT_THAT(machine.told(), IsEmpty());
  EXPECT_THAT(machine.history(),
              ElementsAre("Mon 08:00:00 to 08:00:00 battery 35 to 35 %: 1",
                          "Mon 08:00:00 to 09:40:00 plugged in 35 to 10 %: 126"));
  machine.unplug();
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 09:40 low", "Mon 09:40 lowPower"));
}

TEST(PowerStory, ADeadSecondPackChangesNothing) {
  Machine machine(60);
  BatteryPack dead = machine.packs().front();
  dead.state = BatteryPack::State::unknown;
  dead.percent = 0;
  dead.energy = dead.energyFull = dead.power = 0;
  machine.packs().push_back(dead);
  machine.start();
  EXPECT_EQ(machine.model().state()->percent, 60);
  machine.stay(minutes(10));
  EXPECT_THAT(machine.told(), IsEmpty());
  machine.goTo(20, minutes(1));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:41 lowPower", "Mon 08:50 low"));
}

TEST(PowerStory, ABatteryThatRegistersAnewTwentyTimesAMinuteIsToldOnce) {
  Machine machine(16);
  machine.start();
  machine.plugIn();
  machine.unplug();
  for (int i = 0; i < 60; ++i) {
    machine.lose(PowerSources::Standing::waiting);
    EXPECT_FALSE(machine.model().state()->hasBattery);
    machine.stay(seconds(1));
    machine.comeBack();
    machine.stay(seconds(2));
  }
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:00 low", "Mon 08:00 lowPower"));
}

TEST(PowerStory, AnUpgradeOfUPowerRepeatsNothing) {
  for (const seconds away : {seconds(13), seconds(60), seconds(600)}) {
    Machine machine(79);
    machine.plugIn();
    machine.start();
    machine.battery(80);
    machine.stay(hours(9));
    const auto told = machine.told();
    EXPECT_EQ(told.size(), 5U);
    machine.lose(PowerSources::Standing::looking);
    machine.stay(away);
    machine.comeBack();
    machine.stay(hours(9));
    EXPECT_EQ(machine.told(), told);
  }
}

TEST(PowerStory, ASlowLoginTellsNothingOfWhatIsInForce) {
  Machine machine(15);
  machine.lose(PowerSources::Standing::looking);
  machine.start();
  EXPECT_TRUE(*machine.model().looking());
  machine.stay(seconds(45));
  machine.comeBack();
  EXPECT_FALSE(*machine.model().looking());
  machine.stay(minutes(10));
  EXPECT_THAT(machine.told(), IsEmpty());
  machine.plugIn();
  machine.unplug();
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:10 low", "Mon 08:10 lowPower"));
}

TEST(PowerStory, APackThatWearsIsToldOfOnce) {
  Machine machine(60);
  machine.packs().front().energyFull = 0.85 * 50;
  machine.start();
  machine.stay(hours(5));
  machine.packs().front().energyFull = 0.78 * 50;
  machine.changed();
  machine.stay(hours(5));
  machine.start();
  machine.stay(hours(5));
  EXPECT_THAT(machine.told(), ElementsAre("Mon 13:00 health: Battery health has fallen to 78% of "
                                          "its original capacity."));
}

TEST(PowerStory, APackPulledAndPutBackIsNewToLumora) {
  Machine machine(15);
  machine.start();
  machine.stay(minutes(5));
  machine.lose(PowerSources::Standing::waiting);
  machine.stay(seconds(10));
  machine.lose(PowerSources::Standing::settled);
  EXPECT_FALSE(machine.model().state()->hasBattery);
  machine.stay(minutes(5));
  machine.comeBack();
  machine.stay(minutes(4) + seconds(50));
  // It was low from the start, and so not news; another pack that is low is.
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:10 low", "Mon 08:10 lowPower"));
  EXPECT_THAT(machine.history(), ElementsAre("Mon 08:00:00 to 08:05:00 battery 15 to 15 %: 6",
                                             "Mon 08:11:00 to 08:15:00 battery 15 to 15 %: 5"));
}

}  // namespace
}  // namespace lumora::test
