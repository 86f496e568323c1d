// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/BatteryReader.h"
#include "Linux/Laptop.h"
#include "Linux/Power/UPower.h"
#include "Linux/WaitFor.h"
#include "Support/FakeLowPowerMode.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;

/// Reads the simulated laptop's batteries through the real UPower.
class UPowerTest : public testing::Test {
 protected:
  void SetUp() override {
    laptop.reset();
    connect();
  }

  void connect(std::chrono::milliseconds patience = kPatience) {
    upower.emplace(std::string(g_getenv("UMOCKDEV_DIR")) + "/sys/class/power_supply");
    bool ready = false;
    upower->whenReady(patience, [&] { ready = true; });
    ASSERT_TRUE(waitFor([&] { return ready; }, kPatience / 2));
    upower->observe([this] { told.push_back(read()); });
  }

  /// Has a change told, and with it the last of what the start brought; from then on each telling
  /// counts.
  void settle() {
    laptop.setBattery("BAT0", {{"percent", variant(59)}});
    ASSERT_TRUE(becomes([](const BatteryState& state) { return state.percent == 59; }));
    told = {read()};
  }

  BatteryState read() {
    FakeLowPowerMode mode;
    return BatteryReader(*upower, mode).read();
  }

  /// Puts a UPower in place that says whatever it is told to, and waits until it has been heard.
  void useMock() {
    laptop.mockUPower(true);
    laptop.setMockProperty("Percentage", variant(61.0));
    ASSERT_TRUE(becomes([](const BatteryState& state) { return state.percent == 61; }));
    drainMainLoop();
  }

  bool becomes(const std::function<bool(const BatteryState&)>& condition) {
    return waitFor([&] { return condition(read()); });
  }

  Laptop laptop;
  std::optional<UPower> upower;
  std::vector<BatteryState> told;
};

TEST_F(UPowerTest, ReadsTheOneBattery) {
  const BatteryState state = read();
  EXPECT_TRUE(state.hasBattery);
  EXPECT_EQ(state.percent, 60);
  EXPECT_FALSE(state.isCharging);
  EXPECT_FALSE(state.pluggedIn);
  EXPECT_EQ(state.sourceName, "LP-50");
  EXPECT_EQ(state.cycleCount, 120);
  EXPECT_EQ(state.designCapacity, 50'000);
  EXPECT_EQ(state.fullCapacity, 45'000);
  EXPECT_DOUBLE_EQ(state.temperatureC.value_or(0), 31.2);
  EXPECT_DOUBLE_EQ(state.voltage.value_or(0), 11.4);
  EXPECT_NEAR(*state.voltage * state.amperage.value_or(0), -10, 0.01);
  // 27 Wh at 10 W.
  EXPECT_EQ(state.minutesToEmpty, 162);
  EXPECT_EQ(state.minutesToFull, std::nullopt);
  EXPECT_EQ(state.adapterWatts, std::nullopt);
}

TEST_F(UPowerTest, TellsAnEventWhenTheBatteryChanges) {
  laptop.setBattery("BAT0", {{"percent", variant(59)}});
  // The first event may be of the reading before.
  EXPECT_TRUE(waitFor([&] { return !told.empty() && told.back().percent == 59; }));
}

TEST_F(UPowerTest, ChargesOnTheAdapter) {
  laptop.setAdapter(true);
  laptop.setBattery("BAT0", {{"status", variant("Charging")}});
  EXPECT_TRUE(becomes([](const BatteryState& state) {
    return state.pluggedIn && state.isCharging && state.minutesToFull == 108 &&
           !state.minutesToEmpty && state.amperage > 0;
  }));
}

TEST_F(UPowerTest, IsFull) {
  laptop.setAdapter(true);
  laptop.setBattery("BAT0", {{"status", variant("Full")}, {"percent", variant(100)}});
  EXPECT_TRUE(becomes([](const BatteryState& state) {
    return state.pluggedIn && state.isCharged && state.percent == 100;
  }));
}

TEST_F(UPowerTest, FollowsAPackThatWears) {
  EXPECT_EQ(read().fullCapacity, 45'000);
  // UPower reads it only when it starts or a pack is put in.
  laptop.setAdapter(true);
  laptop.setBattery("BAT0", {{"full", variant(39.0)},
                             {"cycles", variant(500)},
                             {"percent", variant(100)},
                             {"status", variant("Full")}});
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.fullCapacity == 39'000; }));
  EXPECT_EQ(read().designCapacity, 50'000);
  EXPECT_EQ(read().cycleCount, 500);
}

TEST_F(UPowerTest, HoldsTheChargeOnTheAdapter) {
  laptop.setAdapter(true);
  laptop.setBattery("BAT0", {{"status", variant("Not charging")}, {"percent", variant(80)}});
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.percent == 80; }));
  EXPECT_EQ(read().stateText(), "Plugged in, not charging");
}

TEST_F(UPowerTest, IsPluggedInWhenOnlyTheBatterySaysSo) {
  laptop.setBattery("BAT0", {{"status", variant("Not charging")}});
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.pluggedIn; }));
  EXPECT_FALSE(read().isCharging);
}

TEST_F(UPowerTest, StaysPluggedInWhileAWeakAdapterLetsItDischarge) {
  laptop.setAdapter(true);
  EXPECT_TRUE(becomes([](const BatteryState& state) {
    return state.pluggedIn && !state.isCharging && state.amperage.value_or(0) < 0;
  }));
}

TEST_F(UPowerTest, AddsTwoBatteriesOfDifferentSizeUp) {
  laptop.setBattery("BAT1", {{"percent", variant(10)},
                             {"full", variant(15.0)},
                             {"design", variant(20.0)},
                             {"power", variant(0.0)},
                             {"cycles", variant(300)},
                             {"status", variant("Unknown")}});
  // 27 of 45 Wh and 1.5 of 15 Wh: 28.5 of 60 Wh.
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.percent == 48; }));
  const BatteryState state = read();
  EXPECT_EQ(state.designCapacity, 70'000);
  EXPECT_EQ(state.fullCapacity, 60'000);
  EXPECT_EQ(state.cycleCount, 300);
  EXPECT_EQ(state.minutesToEmpty, 171);
}

TEST_F(UPowerTest, DoesNotTakeAMouseOrAUpsForTheBattery) {
  laptop.addMouse(7);
  laptop.addUps(99);
  laptop.setBattery("BAT0", {{"percent", variant(55)}});
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.percent == 55; }));
  EXPECT_EQ(read().designCapacity, 50'000);
}

TEST_F(UPowerTest, HasNoBatteryBesideAMouseAndAUps) {
  laptop.addMouse(7);
  laptop.addUps(99);
  laptop.removeDevice("BAT0");
  EXPECT_TRUE(becomes([](const BatteryState& state) { return !state.hasBattery; }));
  EXPECT_EQ(read(), BatteryState{});
}

TEST_F(UPowerTest, TellsAtOnceThatTheBatteryIsGoneAndSettlesAfterTheGracePeriod) {
  laptop.removeDevice("BAT0");
  EXPECT_TRUE(becomes([](const BatteryState& state) { return !state.hasBattery; }));
  EXPECT_EQ(upower->standing(), PowerSources::Standing::waiting);
  told.clear();
  EXPECT_TRUE(waitFor([&] { return upower->standing() == PowerSources::Standing::settled; }));
  EXPECT_EQ(told.size(), 1U);
}

TEST_F(UPowerTest, NeverSettlesWithoutABatteryThatRegistersAnew) {
  bool settledWithout = false;
  upower->observe([&] {
    settledWithout = settledWithout ||
                     (!read().hasBattery && upower->standing() == PowerSources::Standing::settled);
  });
  for (int percent = 50; percent < 55; ++percent) {
    laptop.removeDevice("BAT0");
    EXPECT_TRUE(becomes([](const BatteryState& state) { return !state.hasBattery; }));
    laptop.setBattery("BAT0", {{"percent", variant(percent)}});
    EXPECT_TRUE(becomes([=](const BatteryState& state) { return state.percent == percent; }));
    EXPECT_EQ(upower->standing(), PowerSources::Standing::settled);
  }
  EXPECT_FALSE(settledWithout);
}

TEST_F(UPowerTest, FollowsAPackThatIsPulledAndAnotherPutIn) {
  laptop.setBattery("BAT0", {{"present", variant(false)}});
  EXPECT_TRUE(becomes([](const BatteryState& state) { return !state.hasBattery; }));
  laptop.setBattery("BAT0", {{"present", variant(true)},
                             {"percent", variant(90)},
                             {"full", variant(30.0)},
                             {"design", variant(30.0)}});
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.percent == 90; }));
  EXPECT_EQ(read().designCapacity, 30'000);
}

TEST_F(UPowerTest, FollowsABatteryThatComesAndGoes) {
  laptop.removeDevice("BAT0");
  EXPECT_TRUE(becomes([](const BatteryState& state) { return !state.hasBattery; }));
  laptop.setBattery("BAT0", {{"percent", variant(42)}});
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.percent == 42; }));
}

TEST_F(UPowerTest, IsQuietWhileNothingChanges) {
  useMock();
  laptop.setMockProperty("Percentage", variant(62.0));
  ASSERT_TRUE(becomes([](const BatteryState& state) { return state.percent == 62; }));
  told.clear();
  laptop.setMockProperty("Percentage", variant(62.0));
  laptop.setMockProperty("Luminosity", variant(5.0));
  EXPECT_FALSE(waitFor([&] { return !told.empty(); }, 1s));
  laptop.setMockProperty("Percentage", variant(63.0));
  EXPECT_TRUE(waitFor([&] { return told.size() == 1 && told.front().percent == 63; }));
  laptop.mockUPower(false);
}

TEST_F(UPowerTest, TellsNoReadingTwice) {
  settle();
  // Events that change nothing but when they were: in whole seconds.
  for (int i = 0; i < 2; ++i) {
    laptop.setBattery("BAT0", {});
    waitFor([&] { return told.size() > 1; }, 1100ms);
  }
  laptop.setBattery("BAT0", {{"percent", variant(61)}});
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.percent == 61; }));
  EXPECT_EQ(std::adjacent_find(told.begin(), told.end()), told.end()) << told.size();
}

TEST_F(UPowerTest, IsReadyWhenNobodyIsThere) {
  laptop.kill("upower");
  connect();
  EXPECT_EQ(read(), BatteryState{});
  EXPECT_EQ(upower->standing(), PowerSources::Standing::looking);
  laptop.start("upower");
  EXPECT_TRUE(waitFor([&] { return read().percent == 60; }));
  EXPECT_EQ(upower->standing(), PowerSources::Standing::settled);
}

TEST_F(UPowerTest, WaitsForAHungServiceNoLongerThanItsPatience) {
  laptop.hang("upower");
  connect(2s);
  EXPECT_EQ(read(), BatteryState{});
  laptop.resume("upower");
  EXPECT_TRUE(waitFor([&] { return read().percent == 60; }));
}

TEST_F(UPowerTest, KeepsWhatItKnewWhileTheServiceRestarts) {
  laptop.kill("upower");
  bool lost = false;
  upower->observe([&] { lost = lost || !read().hasBattery; });
  drainMainLoop();
  EXPECT_EQ(read().percent, 60);
  laptop.setBattery("BAT0", {{"percent", variant(44)}});
  laptop.start("upower");
  EXPECT_TRUE(waitFor([&] { return read().percent == 44; }));
  EXPECT_FALSE(lost);
}

TEST_F(UPowerTest, ForgetsABatteryThatNobodyReportsAnyMore) {
  laptop.kill("upower");
  EXPECT_TRUE(waitFor([&] { return !read().hasBattery; }));
  EXPECT_EQ(std::count_if(told.begin(), told.end(),
                          [](const BatteryState& state) { return !state.hasBattery; }),
            1);
  // Nobody has said that there is none.
  EXPECT_EQ(upower->standing(), PowerSources::Standing::looking);
  laptop.start("upower");
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.hasBattery; }));
  EXPECT_EQ(upower->standing(), PowerSources::Standing::settled);
}

TEST_F(UPowerTest, WaitsAtTheStartForABatteryThatIsNotThere) {
  laptop.removeDevice("BAT0");
  connect();
  EXPECT_TRUE(becomes([](const BatteryState& state) { return !state.hasBattery; }));
  EXPECT_EQ(upower->standing(), PowerSources::Standing::waiting);
}

TEST_F(UPowerTest, MakesOneChangeOfABurst) {
  useMock();
  told.clear();
  const auto start = std::chrono::steady_clock::now();
  laptop.propertyBurst(10'000);
  laptop.setMockProperty("Percentage", variant(33.0));
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.percent == 33; }));
  // A burst that takes longer is told every so often.
  const auto longest = 1500ms;
  EXPECT_LE(told.size(),
            1 + static_cast<std::size_t>((std::chrono::steady_clock::now() - start) / longest));
  laptop.mockUPower(false);
}

TEST_F(UPowerTest, NeverLosesTheBatteryWhileANewServiceIsSlow) {
  bool lost = false;
  upower->observe([&] { lost = lost || !read().hasBattery; });
  laptop.mockSlowUPower(500ms);
  laptop.setMockProperty("Percentage", variant(44.0));
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.percent == 44; }));
  EXPECT_FALSE(lost);
  laptop.mockUPower(false);
}

TEST_F(UPowerTest, AsksAgainForDevicesThatAreNotTold) {
  laptop.mockRefusingUPower(2);
  laptop.setMockProperty("Percentage", variant(44.0));
  EXPECT_TRUE(waitFor([&] { return read().percent == 44; }, 20s));
  laptop.mockUPower(false);
}

TEST_F(UPowerTest, PassesOverAPropertyOfTheWrongType) {
  useMock();
  laptop.setMockProperty("Voltage", variant("high"));
  laptop.setMockProperty("Percentage", variant(true));
  laptop.setMockProperty("IsPresent", variant(1.5));
  laptop.setMockProperty("Energy", variant(26.0));
  laptop.setMockProperty("State", variant(std::uint32_t{1}));
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.isCharging; }));
  EXPECT_EQ(read().percent, 61);
  EXPECT_EQ(read().voltage, 11.4);
  laptop.setMockProperty("Percentage", variant(12.0));
  EXPECT_TRUE(becomes([](const BatteryState& state) { return state.percent == 12; }));
  laptop.mockUPower(false);
}

}  // namespace
}  // namespace lumora::test
