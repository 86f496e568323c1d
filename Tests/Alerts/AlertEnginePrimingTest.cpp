// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/EngineFixture.h"

namespace lumora::test {
namespace {

class AlertEnginePriming : public EngineFixture {};

using Kinds = std::set<AlertKind>;

TEST_F(AlertEnginePriming, RemindsOfNothing) {
  pluggedInFor(9);
  EXPECT_EQ(prime(pluggedIn(90)), "");
  EXPECT_EQ(prime(onBattery(15)), "");
}

TEST_F(AlertEnginePriming, SilencesWhatIsInForceUntilItEnded) {
  EXPECT_EQ(prime(pluggedIn(85)), "");
  EXPECT_EQ(engine.suppressed, Kinds{AlertKind::chargeLimit});
  for (int minute = 0; minute < 60; ++minute) {
    pass(60);
    EXPECT_EQ(run(pluggedIn(85)), "");
  }
  EXPECT_EQ(run(onBattery(85)), "");
  EXPECT_TRUE(engine.suppressed.empty());
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
}

TEST_F(AlertEnginePriming, SilencesTheChargeLimitUntilTheLevelDropped) {
  prime(pluggedIn(85));
  EXPECT_EQ(run(pluggedIn(79)), "");
  EXPECT_EQ(run(pluggedIn(80)), "chargeLimit");
}

TEST_F(AlertEnginePriming, SilencesBothKindsOnBattery) {
  prime(onBattery(15));
  EXPECT_EQ(engine.suppressed, (Kinds{AlertKind::low, AlertKind::lowPower}));
  EXPECT_EQ(run(onBattery(15)), "");
  EXPECT_EQ(run(onBattery(25)), "");
  EXPECT_EQ(run(onBattery(20)), "low");
}

TEST_F(AlertEnginePriming, SilencesTooLong) {
  pluggedInFor(9);
  prime(pluggedIn(90));
  EXPECT_EQ(engine.suppressed, (Kinds{AlertKind::chargeLimit, AlertKind::tooLong}));
  EXPECT_EQ(run(pluggedIn(90)), "");
  since.reset();
  EXPECT_EQ(run(pluggedIn(90)), "");
  pluggedInFor(9);
  EXPECT_EQ(run(pluggedIn(90)), "tooLong");
}

TEST_F(AlertEnginePriming, SilencesNotWhatComesIntoForceLater) {
  prime(pluggedIn(79));
  EXPECT_TRUE(engine.suppressed.empty());
  EXPECT_EQ(run(pluggedIn(80)), "chargeLimit");
}

TEST_F(AlertEnginePriming, EndsSilenceAlsoInAHeldCall) {
  prime(pluggedIn(85));
  EXPECT_EQ(runHeld(onBattery(85)), "");
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
}

TEST_F(AlertEnginePriming, AddsNoSilenceInAHeldCall) {
  EXPECT_EQ(runHeld(pluggedIn(85)), "");
  EXPECT_TRUE(engine.suppressed.empty());
}

TEST_F(AlertEnginePriming, EndsEpisodesOutOfForce) {
  run(onBattery(15));
  prime(pluggedIn(50));
  EXPECT_FALSE(engine.lowSent);
  EXPECT_FALSE(engine.lowPowerSent);
}

TEST_F(AlertEnginePriming, StopsTheRepeatsOfARunningEpisode) {
  prefs.longEnabled = false;
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
  pass(3600);
  EXPECT_EQ(prime(pluggedIn(85)), "");
  EXPECT_EQ(engine.chargeSent, 1);
  pass(290);
  EXPECT_EQ(run(pluggedIn(85)), "");
}

TEST_F(AlertEnginePriming, SilencesNoKindThatIsSwitchedOff) {
  prefs.limitEnabled = false;
  prime(pluggedIn(85));
  prefs.limitEnabled = true;
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
}

TEST_F(AlertEnginePriming, IsForgottenWithoutABattery) {
  prime(pluggedIn(85));
  EXPECT_EQ(run(BatteryState{}), "");
  EXPECT_TRUE(engine.suppressed.empty());
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
}

TEST_F(AlertEnginePriming, SilencesNothingWithoutABattery) {
  EXPECT_EQ(prime(BatteryState{}), "");
  EXPECT_EQ(run(pluggedIn(85)), "chargeLimit");
}

TEST_F(AlertEnginePriming, IsForgottenWithAllEpisodesButTheLastTimeWithoutABattery) {
  engine.suppressed = {AlertKind::low};
  engine.chargeSent = 3;
  engine.chargeLast = now;
  engine.lowSent = engine.longSent = engine.lowPowerSent = true;
  AlertEngine expected;
  expected.chargeLast = now;
  EXPECT_EQ(run(BatteryState{}), "");
  EXPECT_EQ(engine, expected);
}

}  // namespace
}  // namespace lumora::test
