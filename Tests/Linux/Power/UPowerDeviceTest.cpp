// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Power/UPowerDevice.h"

#include <utility>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using State = UPowerDevice::State;
using Type = UPowerDevice::Type;

UPowerDevice battery() {
  return {.type = Type::battery,
          .state = State::charging,
          .powerSupply = true,
          .isPresent = true,
          .percentage = 50,
          .energy = 25,
          .energyFull = 50,
          .energyFullDesign = 60,
          .energyRate = 10,
          .voltage = 12.5,
          .temperature = 31.2,
          .chargeCycles = 77,
          .timeToEmpty = 1,
          .timeToFull = 9000,
          .model = "Pack",
          .nativePath = "BAT0"};
}

UPowerDevice adapter(bool online) { return {.type = Type::linePower, .online = online}; }

Glib::VariantBase told(const Properties& properties) {
  return Glib::Variant<Properties>::create(properties);
}

TEST(UPowerDevice, TakesOnlyWhatIsThereAndOfTheRightType) {
  UPowerDevice device = battery();
  const UPowerDevice before = device;
  device.update({});
  EXPECT_EQ(device, before);
  device.update(Glib::Variant<bool>::create(true));
  EXPECT_EQ(device, before);
  device.update(told({{"UpdateTime", Glib::Variant<guint64>::create(5)}}));
  EXPECT_EQ(device, before);
  device.update(told({{"Percentage", Glib::Variant<double>::create(51)},
                      {"Voltage", Glib::Variant<Glib::ustring>::create("much")},
                      {"State", Glib::Variant<guint32>::create(2)}}));
  EXPECT_EQ(device.percentage, 51);
  EXPECT_EQ(device.voltage, before.voltage);
  EXPECT_EQ(device.state, State::discharging);
  device.update(told({{"Percentage", Glib::Variant<Glib::ustring>::create("half")}}));
  EXPECT_EQ(device.percentage, 51);
}

TEST(UPowerDevice, IsAPackWithAllThatItTold) {
  const BatteryPack expected = {.state = BatteryPack::State::charging,
                                .percent = 50,
                                .energy = 25,
                                .energyFull = 50,
                                .energyFullDesign = 60,
                                .power = 10,
                                .voltage = 12.5,
                                .temperature = 31.2,
                                .cycles = 77,
                                .secondsToEmpty = 1,
                                .secondsToFull = 9000,
                                .name = "Pack"};
  EXPECT_EQ(battery().pack(), expected);
}

TEST(UPowerDevice, HasTheKernelsNameWithoutAModel) {
  UPowerDevice nameless = battery();
  nameless.model.clear();
  EXPECT_EQ(nameless.pack().name, "BAT0");
}

TEST(UPowerDevice, NamesItsStates) {
  using PackState = BatteryPack::State;
  const std::vector<std::pair<std::uint32_t, PackState>> states = {
      {0, PackState::unknown},       {1, PackState::charging}, {2, PackState::discharging},
      {3, PackState::empty},         {4, PackState::full},     {5, PackState::heldOnMains},
      {6, PackState::heldOnBattery}, {7, PackState::unknown}};
  for (const auto& [number, expected] : states) {
    UPowerDevice device = battery();
    device.update(told({{"State", Glib::Variant<guint32>::create(number)}}));
    EXPECT_EQ(device.pack().state, expected) << number;
  }
}

TEST(PowerSuppliesOfUPower, AreThePacksInTheirBaysAndTheAdapters) {
  UPowerDevice absent = battery();
  absent.isPresent = false;
  UPowerDevice mouse = battery();
  mouse.powerSupply = false;
  UPowerDevice ups = battery();
  ups.type = static_cast<Type>(3);
  EXPECT_EQ(powerSupplies({}), PowerSupplies{});
  EXPECT_EQ(powerSupplies({absent, mouse, ups, adapter(false)}), PowerSupplies{});
  EXPECT_EQ(powerSupplies({mouse, battery(), battery(), adapter(false), adapter(true)}),
            (PowerSupplies{.packs = {battery().pack(), battery().pack()}, .adapterOnline = true}));
  // Only a line-power device is an adapter.
  mouse.online = true;
  EXPECT_FALSE(powerSupplies({mouse}).adapterOnline);
}

}  // namespace
}  // namespace lumora::test
