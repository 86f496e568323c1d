// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What batteries, plugs and their controllers do to a person who only wants to work.
#include "Machine.h"

#include <gmock/gmock.h>

namespace lumora::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// In for three seconds and out for three.
void jiggleThePlug(Machine& machine, int times) {
  for (int i = 0; i < times; ++i) {
    machine.plugIn();
    machine.stay(seconds(3));
    machine.unplug();
    machine.stay(seconds(3));
  }
}

TEST(PowerStory, ALoosePlugIsToldOnce) {
  Machine machine(85);
  machine.start();
  jiggleThePlug(machine, 100);
  EXPECT_THAT(machine.told(),
              ElementsAre("Mon 08:00 chargeLimit: Battery is at 85%. Unplug to keep it healthy."));
  // In and out were seen, then only the minutes.
  EXPECT_THAT(machine.history(), ElementsAre("Mon 08:00:00 to 08:00:00 battery 85 to 85 %: 1",
                                             "Mon 08:00:00 to 08:00:00 charging 85 to 85 %: 1",
                                             "Mon 08:00:03 to 08:10:00 battery 85 to 85 %: 11"));
}

TEST(PowerStory, ALoosePlugThatHoldsAtLastIsBelieved) {
  Machine machine(60);
  machine.start();
  jiggleThePlug(machine, 10);
  machine.plugIn();
  machine.stay(seconds(14));
  EXPECT_FALSE(machine.model().state()->pluggedIn);
  machine.stay(seconds(18));
  EXPECT_TRUE(machine.model().state()->pluggedIn);
  EXPECT_TRUE(machine.model().state()->isCharging);
  EXPECT_THAT(machine.told(), IsEmpty());
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
  machine.adapter(true, UPowerDevice::State::charging);
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

TEST(PowerStory, ASingleZeroIsNobodysBusiness) {
  Machine machine(57);
  machine.start();
  machine.stay(minutes(3));
  machine.battery(0);
  EXPECT_EQ(machine.model().state()->percent, 57);
  machine.stay(seconds(30));
  machine.battery(57);
  machine.stay(minutes(3));
  EXPECT_THAT(machine.told(), IsEmpty());
  EXPECT_THAT(machine.history(), ElementsAre("Mon 08:00:00 to 08:06:00 battery 57 to 57 %: 7"));
}

TEST(PowerStory, AZeroThatStaysIsTold) {
  Machine machine(57);
  machine.start();
  machine.battery(0);
  machine.stay(minutes(2));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:01 low", "Mon 08:01 lowPower"));
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
  machine.adapter(true, UPowerDevice::State::pendingCharge);
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
  machine.adapter(true, UPowerDevice::State::discharging);
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
  UPowerDevice dead = machine.devices().front();
  dead.isPresent = true;
  dead.state = UPowerDevice::State::unknown;
  dead.percentage = 0;
  dead.energy = dead.energyFull = dead.energyRate = 0;
  machine.devices().push_back(dead);
  machine.start();
  EXPECT_EQ(machine.model().state()->percent, 60);
  machine.stay(minutes(10));
  EXPECT_THAT(machine.told(), IsEmpty());
  machine.goTo(20, minutes(1));
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:41 lowPower", "Mon 08:50 low"));
}

TEST(PowerStory, APackPulledAndPutBackIsNewToLumora) {
  Machine machine(15);
  machine.start();
  machine.stay(minutes(5));
  machine.devices().front().isPresent = false;
  machine.changed();
  EXPECT_FALSE(machine.model().state()->hasBattery);
  machine.stay(minutes(5));
  machine.devices().front().isPresent = true;
  machine.changed();
  machine.stay(minutes(5));
  // It was low from the start, and so not news; another pack that is low is.
  EXPECT_THAT(machine.kinds(), ElementsAre("Mon 08:10 low", "Mon 08:10 lowPower"));
  EXPECT_THAT(machine.history(), ElementsAre("Mon 08:00:00 to 08:05:00 battery 15 to 15 %: 6",
                                             "Mon 08:11:00 to 08:15:00 battery 15 to 15 %: 5"));
}

}  // namespace
}  // namespace lumora::test
