// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/DeliveryGate.h"
#include "Support/Builders.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

constexpr auto kLow = AlertKind::low;

class DeliveryGateTest : public testing::Test {
 protected:
  void at(double second, const BatteryState& reading) { gate.take(reading, Seconds{second}); }
  double holdLeft(double second) const { return gate.holdLeft(Seconds{second}).count(); }
  bool admits(double second, AlertKind kind = kLow) { return gate.admit(kind, Seconds{second}); }

  /// The plug moves at each of these seconds: in, out, in...
  void move(const std::vector<double>& seconds) {
    bool in = false;
    at(seconds.front(), onBattery(60));
    for (const double second : seconds) at(second, (in = !in) ? pluggedIn(60) : onBattery(60));
  }

  DeliveryGate gate;
};

TEST_F(DeliveryGateTest, HasNoSayAtRest) {
  EXPECT_EQ(holdLeft(0), 0);
  EXPECT_TRUE(admits(0));
  at(1, onBattery(60));
  EXPECT_EQ(holdLeft(1), 0);
  for (int second = 1; second < 10; ++second) EXPECT_TRUE(admits(second));
}

TEST_F(DeliveryGateTest, HasNoSayAfterTwoMovesOrThreeThatTakeLonger) {
  move({10, 11});
  EXPECT_TRUE(admits(11));
  EXPECT_TRUE(admits(12));
  gate = {};
  move({10, 70, 130.1});
  EXPECT_TRUE(admits(130.1));
  EXPECT_TRUE(admits(130.2));
}

TEST_F(DeliveryGateTest, DropsWhatComesAgainWhileThePlugIsRestless) {
  move({10, 70, 130});
  EXPECT_TRUE(admits(130));
  EXPECT_FALSE(admits(130));
  EXPECT_TRUE(admits(130, AlertKind::lowPower));
  EXPECT_FALSE(admits(130, AlertKind::lowPower));
}

TEST_F(DeliveryGateTest, DropsWhatCameBeforeThePlugWasRestless) {
  move({10, 11});
  EXPECT_TRUE(admits(11));
  at(12, pluggedIn(60));
  EXPECT_FALSE(admits(12));
}

TEST_F(DeliveryGateTest, RestsTwoMinutesAfterTheThirdMoveFromTheEnd) {
  move({10, 20, 30});
  EXPECT_TRUE(admits(129));
  EXPECT_FALSE(admits(130));
  EXPECT_TRUE(admits(130.1));
}

TEST_F(DeliveryGateTest, AdmitsAKindAgainAfterFiveMinutesWithoutIt) {
  EXPECT_TRUE(admits(0));
  move({280, 285, 290});
  EXPECT_FALSE(admits(299));
  at(580, onBattery(60));
  at(585, pluggedIn(60));
  at(590, onBattery(60));
  // It came last at 299.
  EXPECT_FALSE(admits(598));
  for (const double second : {890, 893, 896}) {
    at(second, second == 893 ? onBattery(60) : pluggedIn(60));
  }
  EXPECT_TRUE(admits(898));
}

TEST_F(DeliveryGateTest, DoubtsASuddenZeroForFiftyFiveSeconds) {
  at(100, onBattery(6));
  at(110, onBattery(0));
  EXPECT_EQ(holdLeft(110), 55);
  at(140, onBattery(0));
  EXPECT_EQ(holdLeft(140), 25);
  EXPECT_EQ(holdLeft(165), 0);
  EXPECT_EQ(holdLeft(1000), 0);
  at(170, onBattery(0));
  EXPECT_EQ(holdLeft(170), 0);
}

TEST_F(DeliveryGateTest, NoLongerDoubtsWhatIsNotZero) {
  at(100, onBattery(57));
  at(110, onBattery(0));
  at(111, onBattery(1));
  EXPECT_EQ(holdLeft(111), 0);
  at(112, onBattery(0));
  EXPECT_EQ(holdLeft(112), 0);
}

TEST_F(DeliveryGateTest, BelievesAZeroThatWasComing) {
  at(100, onBattery(5));
  at(110, onBattery(0));
  EXPECT_EQ(holdLeft(110), 0);
}

TEST_F(DeliveryGateTest, BelievesTheFirstReadingOfABattery) {
  at(100, onBattery(0));
  EXPECT_EQ(holdLeft(100), 0);
  at(110, onBattery(57));
  at(120, BatteryState{});
  at(130, onBattery(0));
  EXPECT_EQ(holdLeft(130), 0);
}

TEST_F(DeliveryGateTest, AForgottenZeroHoldsNothing) {
  at(100, onBattery(57));
  at(110, onBattery(0));
  at(120, BatteryState{});
  EXPECT_EQ(holdLeft(120), 0);
}

}  // namespace
}  // namespace lumora::test
