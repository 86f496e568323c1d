// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Power/PackHealth.h"
#include "Linux/WaitFor.h"
#include "Support/TemporaryFolder.h"

#include <chrono>
#include <fstream>
#include <iterator>
#include <map>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;

UPowerDevice battery(const std::string& name = "BAT0") {
  return {.type = UPowerDevice::Type::battery,
          .state = UPowerDevice::State::discharging,
          .powerSupply = true,
          .isPresent = true,
          .energyFull = 42.5,
          .energyFullDesign = 50,
          .chargeCycles = 120,
          .nativePath = name};
}

class PackHealthTest : public testing::Test {
 protected:
  void kernel(const std::map<std::string, std::string>& attributes) {
    std::filesystem::create_directory(pack);
    for (const auto& [attribute, value] : attributes) {
      std::ofstream(pack / attribute) << value << '\n';
    }
  }

  /// What the kernel says of a pack with just these attributes.
  PackHealth health(const std::map<std::string, std::string>& attributes) {
    std::filesystem::remove_all(pack);
    kernel(attributes);
    return readPackHealth(pack);
  }

  void take(const UPowerDevice& device, double second) { reader.take({device}, Seconds{second}); }

  /// The device, once all readings under way are in.
  UPowerDevice corrected(UPowerDevice device) {
    reader.correct(device);
    return device;
  }

  bool becomes(const UPowerDevice& device, double energyFull) {
    return waitFor([&] { return corrected(device).energyFull == energyFull; });
  }

  /// Whether a reading is begun, seen by its end: the kernel's figures are changed for it.
  bool readsAt(const UPowerDevice& device, double second) {
    static int cycles = 1000;
    const std::int32_t before = corrected(device).chargeCycles;
    kernel({{"cycle_count", std::to_string(++cycles)}});
    take(device, second);
    return waitFor([&] { return corrected(device).chargeCycles != before; }, 300ms);
  }

  static std::ptrdiff_t threads() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
  }

  TemporaryFolder folder;
  const std::filesystem::path pack = folder.path() / "BAT0";
  int changes = 0;
  PackHealthReader reader{folder.path(), [this] { ++changes; }};
};

TEST_F(PackHealthTest, IsTheShareOfEnergyOrOfCharge) {
  EXPECT_EQ(health({{"energy_full", "39000000"},
                    {"energy_full_design", "50000000"},
                    {"cycle_count", "321"}}),
            (PackHealth{0.78, 321}));
  EXPECT_EQ(health({{"charge_full", "3900000"}, {"charge_full_design", "5000000"}}),
            (PackHealth{0.78, std::nullopt}));
  EXPECT_EQ(health({{"energy_full", "45"},
                    {"energy_full_design", "50"},
                    {"charge_full", "1"},
                    {"charge_full_design", "2"}})
                .share,
            0.9);
}

TEST_F(PackHealthTest, IsAbsentWhereTheKernelDoesNotSayOrLies) {
  const std::vector<std::map<std::string, std::string>> lies = {
      {},
      {{"energy_full", "39000000"}},
      {{"energy_full_design", "50000000"}},
      {{"energy_full", "39000000"}, {"charge_full_design", "5000000"}},
      {{"energy_full", "0"}, {"energy_full_design", "50000000"}},
      {{"energy_full", "39000000"}, {"energy_full_design", "0"}},
      {{"energy_full", "-1"}, {"energy_full_design", "-1"}},
      {{"energy_full", "much"}, {"energy_full_design", "more"}},
      {{"energy_full", "99999999999999999999"}, {"energy_full_design", "50000000"}},
      {{"cycle_count", "0"}},
      {{"cycle_count", "-1"}},
      {{"cycle_count", "4294967296"}}};
  for (const auto& lie : lies) EXPECT_EQ(health(lie), PackHealth{});
  EXPECT_EQ(readPackHealth("/nonexistent"), PackHealth{});
}

TEST_F(PackHealthTest, PutsTheKernelsFiguresInThePlaceOfUPowers) {
  kernel({{"energy_full", "39000000"}, {"energy_full_design", "50000000"}, {"cycle_count", "7"}});
  take(battery(), 100);
  EXPECT_TRUE(reader.isAwaited());
  EXPECT_EQ(corrected(battery()), battery());
  EXPECT_TRUE(becomes(battery(), 39));
  EXPECT_FALSE(reader.isAwaited());
  EXPECT_EQ(changes, 1);
  UPowerDevice expected = battery();
  expected.energyFull = 39;
  expected.chargeCycles = 7;
  EXPECT_EQ(corrected(battery()), expected);
}

TEST_F(PackHealthTest, LeavesUPowersFiguresWhereTheKernelHasNone) {
  take(battery(), 100);
  EXPECT_TRUE(waitFor([&] { return changes == 1; }));
  EXPECT_EQ(corrected(battery()), battery());
}

TEST_F(PackHealthTest, BelievesUPowerWhenItHasReadAnew) {
  kernel({{"energy_full", "39000000"}, {"energy_full_design", "50000000"}});
  take(battery(), 100);
  EXPECT_TRUE(becomes(battery(), 39));
  // Another pack in the same bay.
  UPowerDevice other = battery();
  other.energyFull = other.energyFullDesign = 60;
  EXPECT_EQ(corrected(other), other);
}

TEST_F(PackHealthTest, BelievesUPowerWhileTheKernelTakesItsTime) {
  kernel({{"energy_full", "42500000"}, {"energy_full_design", "50000000"}});
  take(battery(), 100);
  EXPECT_TRUE(waitFor([&] { return changes == 1; }));
  UPowerDevice worn = battery();
  worn.energyFull = 39;
  worn.state = UPowerDevice::State::fullyCharged;
  std::filesystem::remove(pack / "energy_full");
  ASSERT_EQ(mkfifo((pack / "energy_full").c_str(), 0600), 0);
  take(worn, 101);
  EXPECT_EQ(corrected(worn).energyFull, 39);
  std::ofstream(pack / "energy_full") << "38500000\n";
  EXPECT_TRUE(becomes(worn, 38.5));
}

TEST_F(PackHealthTest, ReadsOnceAnHour) {
  EXPECT_TRUE(readsAt(battery(), 100));
  EXPECT_FALSE(readsAt(battery(), 101));
  EXPECT_FALSE(readsAt(battery(), 3699));
  EXPECT_TRUE(readsAt(battery(), 3700));
  EXPECT_FALSE(readsAt(battery(), 3800));
}

TEST_F(PackHealthTest, LooksWithoutNewsFromUPowerToo) {
  EXPECT_TRUE(readsAt(battery(), 100));
  kernel({{"energy_full", "39000000"}, {"energy_full_design", "50000000"}});
  reader.look(Seconds{3700});
  EXPECT_TRUE(becomes(battery(), 39));
}

TEST_F(PackHealthTest, ReadsWhenAPackBecomesFullAndWhenItCeasesToBe) {
  UPowerDevice full = battery();
  full.state = UPowerDevice::State::fullyCharged;
  EXPECT_TRUE(readsAt(battery(), 100));
  EXPECT_TRUE(readsAt(full, 101));
  EXPECT_FALSE(readsAt(full, 102));
  EXPECT_TRUE(readsAt(battery(), 103));
}

TEST_F(PackHealthTest, DoesNotReadForAPackThatRegistersAnew) {
  EXPECT_TRUE(readsAt(battery(), 100));
  reader.take({}, Seconds{101});
  EXPECT_FALSE(readsAt(battery(), 102));
}

TEST_F(PackHealthTest, FirmwareThatTakesItsTimeIsAskedOnceAndHoldsNobodyUp) {
  std::filesystem::create_directory(pack);
  // Opening it blocks until somebody writes.
  ASSERT_EQ(mkfifo((pack / "energy_full").c_str(), 0600), 0);
  kernel({{"energy_full_design", "50000000"}});
  const auto begin = std::chrono::steady_clock::now();
  take(battery(), 100);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 1s);
  EXPECT_TRUE(reader.isAwaited());
  EXPECT_TRUE(waitFor([&] { return changes == 1; }, 5s));
  EXPECT_FALSE(reader.isAwaited());
  EXPECT_EQ(corrected(battery()), battery());
  // An hour, and many changes, later it still thinks.
  const auto asking = threads();
  for (int hour = 1; hour < 50; ++hour) take(battery(), 100 + 3600.0 * hour);
  EXPECT_EQ(threads(), asking);
  EXPECT_FALSE(waitFor([&] { return changes != 1; }, 50ms));
  std::ofstream(pack / "energy_full") << "39000000\n";
  EXPECT_TRUE(becomes(battery(), 39));
}

TEST_F(PackHealthTest, StaysInItsFolder) {
  kernel({{"energy_full", "39000000"}, {"energy_full_design", "50000000"}});
  for (const std::string name : {"", "..", ".", "/", "BAT0/.."}) {
    take(battery(name), 100);
    EXPECT_FALSE(reader.isAwaited()) << name;
  }
  take(battery("/sys/devices/LNXSYSTM:00/power_supply/BAT0"), 100);
  EXPECT_TRUE(becomes(battery("/sys/devices/LNXSYSTM:00/power_supply/BAT0"), 39));
}

TEST_F(PackHealthTest, AsksForBatteriesOfTheMachineAlone) {
  UPowerDevice mouse = battery();
  mouse.powerSupply = false;
  take(mouse, 100);
  EXPECT_FALSE(reader.isAwaited());
}

}  // namespace
}  // namespace lumora::test
