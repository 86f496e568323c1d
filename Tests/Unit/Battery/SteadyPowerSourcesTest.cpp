// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/SteadyPowerSources.h"
#include "Support/Builders.h"
#include "Support/FakePowerSources.h"
#include "Support/FakeRunLoop.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using std::chrono::seconds;

class SteadyPowerSourcesTest : public testing::Test {
 protected:
  SteadyPowerSourcesTest() {
    steady.observe([this] {
      ++changes;
      told();
    });
  }

  /// What the system says now, and what is told of it.
  Dictionary say(const Dictionary& source) {
    sources.sources = {source};
    return told();
  }

  Dictionary told() { return steady.descriptions()->front(); }

  void pass(seconds duration) { runLoop.advance(duration); }

  FakeClock clock;
  FakeRunLoop runLoop{clock};
  FakePowerSources sources;
  SteadyPowerSources steady{sources, clock, runLoop};
  int changes = 0;
};

TEST_F(SteadyPowerSourcesTest, TellsWhatIsThereWhenItIsCalm) {
  EXPECT_EQ(say(batterySource(60)), batterySource(60));
  EXPECT_EQ(say(pluggedInSource(60)), pluggedInSource(60));
  EXPECT_EQ(say(batterySource(61)), batterySource(61));
  pass(seconds(60));
  EXPECT_EQ(say(pluggedInSource(62)), pluggedInSource(62));
  EXPECT_EQ(say(batterySource(62)), batterySource(62));
}

TEST_F(SteadyPowerSourcesTest, HoldsTheThirdChangeWithinAMinuteForFifteenSeconds) {
  say(batterySource(60));
  say(pluggedInSource(60));
  pass(seconds(30));
  say(batterySource(60));
  pass(seconds(29));
  EXPECT_EQ(say(pluggedInSource(61)), batterySource(61));
  pass(seconds(14));
  EXPECT_EQ(told(), batterySource(61));
  pass(seconds(1));
  EXPECT_EQ(told(), pluggedInSource(61));
}

TEST_F(SteadyPowerSourcesTest, LooksAgainByItselfWhileItHoldsSomethingBack) {
  say(batterySource(60));
  say(pluggedInSource(60));
  say(batterySource(60));
  say(pluggedInSource(60));
  EXPECT_EQ(changes, 0);
  pass(seconds(16));
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(told(), pluggedInSource(60));
  pass(seconds(600));
  EXPECT_EQ(changes, 1);
}

TEST_F(SteadyPowerSourcesTest, HoldsASuddenZeroForAMinute) {
  say(batterySource(57));
  EXPECT_EQ(say(batterySource(0)), batterySource(57));
  pass(seconds(59));
  EXPECT_EQ(told(), batterySource(57));
  pass(seconds(1));
  EXPECT_EQ(told(), batterySource(0));
}

TEST_F(SteadyPowerSourcesTest, BelievesAZeroThatWasComing) {
  say(batterySource(5));
  EXPECT_EQ(say(batterySource(0)), batterySource(0));
}

TEST_F(SteadyPowerSourcesTest, HoldsNothingAgainstANewBattery) {
  say(batterySource(57));
  sources.sources = std::vector<Dictionary>{};
  EXPECT_TRUE(steady.descriptions()->empty());
  EXPECT_EQ(say(batterySource(0)), batterySource(0));
}

TEST_F(SteadyPowerSourcesTest, HandsOnWhatItKnowsNothingOf) {
  EXPECT_EQ(steady.descriptions(), std::nullopt);
  EXPECT_EQ(steady.registryEntry(), std::nullopt);
  sources.registry = Dictionary{{"CycleCount", 3}};
  EXPECT_EQ(steady.registryEntry(), sources.registry);
  for (const Dictionary& odd : {Dictionary{}, Dictionary{{"Current Capacity", "zero"}},
                                Dictionary{{"Power Source State", 3}}}) {
    EXPECT_EQ(say(odd), odd);
  }
}

TEST_F(SteadyPowerSourcesTest, IsNotObservedWhereTheSystemIsNot) {
  FakePowerSources blind;
  blind.observable = false;
  EXPECT_FALSE(SteadyPowerSources(blind, clock, runLoop).observe([] {}));
}

}  // namespace
}  // namespace lumora::test
